#include "eartraining/pitch/pitch_exercise.h"

#include "core/funzioni_mm.h"
#include "eartraining/exercise_context.h"
#include "platform/user_text.h"

namespace {

constexpr double kReferenceSeconds = 1.2;
constexpr double kGapSeconds = 0.1;

}  // namespace

PitchExercise::PitchExercise(ExerciseContext& context)
    : EarExercise(context, ExerciseCode::Pitch, false), range_(context.funzioniMM()) {
    context.funzioniMM().setAutoSilence(false);
}

bool PitchExercise::withReference() const {
    return context().funzioniMM().autoSilence();
}

void PitchExercise::toggleMode() {
    context().funzioniMM().setAutoSilence(!withReference());
}

void PitchExercise::keyClicked(pitch::NoteIndex key) {
    if (stopped_)
        return;
    if (!started_)
        choose(key);
    else if (context().funzioniMM().noteDrawn())
        answer(key);
}

void PitchExercise::choose(pitch::NoteIndex key) {
    switch (range_.click(key)) {
        case NoteRange::Outcome::FirstEnd:
            mark(key, true);
            context().setPrompt(range_prompts::kUpperKey);
            context().showClose(false);
            break;
        case NoteRange::Outcome::TooSmall:
            context().message(QT_TRANSLATE_NOOP("UserText", "Intervallo troppo piccolo !!!"));
            break;
        case NoteRange::Outcome::NotAllowed:
            context().message(QT_TRANSLATE_NOOP("UserText", "Intervallo non consentito !!!"));
            break;
        case NoteRange::Outcome::Completed:
            mark(key, true);
            context().setPrompt(kChooseReference);
            break;
        case NoteRange::Outcome::Outside:
            context().message(QT_TRANSLATE_NOOP(
                "UserText", "Scegli il riferimento all'interno dell'intervallo !!!"));
            break;
        case NoteRange::Outcome::Inside:
            chooseReference(key);
            break;
    }
}

void PitchExercise::chooseReference(pitch::NoteIndex key) {
    setStartVisible(true);
    focusStart();
    if (reference_ != 0 && !range_.isEnd(pitch::noteIndexOf(reference_)))
        mark(pitch::noteIndexOf(reference_), false);
    reference_ = pitch::noteNumberOf(key);
    mark(key, true);
    play(key);
}

void PitchExercise::startOrStop() {
    if (running()) {
        setRunning(false);
        stopped_ = true;
        setResetVisible(true);
        context().showClose(true);
        context().setPrompt(range_prompts::kReset);
        silence();
        return;
    }
    setRunning(true);
    stopped_ = false;
    started_ = true;
    setResetVisible(false);
    context().resetScore();
    context().setPrompt(kRecognise);
    playTest(false);
}

const char* PitchExercise::hint() const {
    if (running())
        return QT_TRANSLATE_NOOP(
            "UserText", "Clicca il tasto della nota che hai sentito; F4 la fa riascoltare");
    if (stopped_)
        return QT_TRANSLATE_NOOP(
            "UserText", "Premi Reimposta per un altro intervallo, o Start per usare ancora questo");
    if (startVisible())
        return QT_TRANSLATE_NOOP("UserText", "Puoi cambiarla finché vuoi; poi premi Start");
    if (range_.complete())
        return QT_TRANSLATE_NOOP("UserText",
                                 "Clicca un tasto fra i due segnati: la senti e ti orienti da lì");
    if (range_.begun())
        return QT_TRANSLATE_NOOP(
            "UserText", "Almeno due semitoni più in là: in tutto tre tasti, neri compresi");
    return QT_TRANSLATE_NOOP("UserText",
                             "Clicca un tasto del pianoforte: l'intervallo ne ha almeno tre");
}

std::optional<KeySpan> PitchExercise::span() const {
    if (!range_.complete())
        return std::nullopt;
    return KeySpan{range_.lower(), range_.upper()};
}

void PitchExercise::hearAgain() {
    if (canHearAgain())
        playTest(true);
}

void PitchExercise::reset() {
    context().lockExercises();
    context().resetScore();
    context().setPrompt(range_prompts::kLowerKey);
    setStartVisible(false);
    silence();
    for (const pitch::NoteIndex end : {range_.lower(), range_.upper()})
        mark(end, false);
    mark(pitch::noteIndexOf(reference_), false);
    forgetRange();
    changed();
}

void PitchExercise::enter() {
    setStartVisible(false);
    forgetRange();
    context().setPrompt(range_prompts::kLowerKey);
    stopSound();
}

void PitchExercise::leave(bool keyboardTaken) {
    setResetVisible(false);
    setStartVisible(false);
    if (keyboardTaken || context().funzioniMM().lastNoteIndex() >= 0)
        silence();
    if (keyboardTaken)
        range_.clear();
}

void PitchExercise::forgetRange() {
    started_ = false;
    stopped_ = false;
    range_.clear();
}

void PitchExercise::setResetVisible(bool visible) {
    resetVisible_ = visible;
    changed();
}

void PitchExercise::silence() {
    ++testNumber_;
    play(FunzioniMM::kSilence);
}

void PitchExercise::stopSound() {
    if (sounding_)
        silence();
}

void PitchExercise::answer(pitch::NoteIndex key) {
    const bool right = key == context().funzioniMM().drawnIndex();
    context().judge(*this, key, right, true);
    if (right)
        playTest(false);
}

/// Events run once before the reference sounds, and a screen reader's presses come through its
/// waits; if they start another test or stop, this one is given up.
void PitchExercise::playTest(bool again) {
    const int number = ++testNumber_;
    asked_ = again;
    if (withReference()) {
        context().runtime().yield();
        if (number != testNumber_ || !playReference(again))
            return;
    } else if (again) {
        WaitChain now = context().funzioniMM().waits();
        context().funzioniMM().planDrawnNote(now);
    }
    play(FunzioniMM::kRandomNote);
    asked_ = true;
    changed();
}

/// Whether no other test or stop came in between.
bool PitchExercise::playReference(bool again) {
    const int number = testNumber_;
    const pitch::NoteNumber reference = reference_;
    FunzioniMM& funzioniMM = context().funzioniMM();
    WaitChain waits = funzioniMM.waits();
    context().planNoteOn(reference, waits.reached());
    context().noteOn(reference);
    const Instant end = waits.afterSeconds(kReferenceSeconds);
    const Instant note = waits.afterSeconds(kGapSeconds);
    context().planNoteOff(reference, end);
    again ? funzioniMM.planDrawnNote(waits) : funzioniMM.planRandomNote(waits);
    funzioniMM.waitUntil(end);
    context().noteOff(reference);
    if (number == testNumber_)
        funzioniMM.waitUntil(note);
    return number == testNumber_;
}

void PitchExercise::play(pitch::NoteIndex key) {
    context().funzioniMM().PlayNoteIndex(key);
    const bool endsByItself = key == FunzioniMM::kRandomNote && withReference();
    sounding_ = key != FunzioniMM::kSilence && !endsByItself;
}

void PitchExercise::mark(pitch::NoteIndex key, bool on) {
    context().markKey(key, on);
}
