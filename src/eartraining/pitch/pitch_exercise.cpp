#include "eartraining/pitch/pitch_exercise.h"

#include "core/funzioni_mm.h"
#include "eartraining/ear_desk.h"
#include "platform/runtime.h"

namespace {

constexpr double kReferenceSeconds = 1.2;
constexpr double kGapSeconds = 0.1;

}  // namespace

PitchExercise::PitchExercise(EarDesk& desk) : desk_(desk), range_(desk.funzioniMM()) {
    desk_.funzioniMM().setAutoSilence(false);
}

bool PitchExercise::withReference() const {
    return desk_.funzioniMM().autoSilence();
}

void PitchExercise::toggleMode() {
    desk_.funzioniMM().setAutoSilence(!withReference());
}

void PitchExercise::keyClicked(pitch::NoteIndex key) {
    if (stopped_)
        return;
    if (!started_)
        choose(key);
    else if (desk_.funzioniMM().noteDrawn())
        answer(key);
}

void PitchExercise::choose(pitch::NoteIndex key) {
    switch (range_.click(key)) {
        case NoteRange::Outcome::FirstEnd:
            mark(key, true);
            desk_.setPrompt(EarPrompt::UpperKey);
            desk_.view().showControl(EarControl::cmdEsci, false);
            break;
        case NoteRange::Outcome::TooSmall:
            desk_.message("Intervallo troppo piccolo !!!");
            break;
        case NoteRange::Outcome::NotAllowed:
            desk_.message("Intervallo non consentito !!!");
            break;
        case NoteRange::Outcome::Completed:
            mark(key, true);
            desk_.setPrompt(EarPrompt::Reference);
            break;
        case NoteRange::Outcome::Outside:
            desk_.message("Scegli il riferimento all'interno dell'intervallo !!!");
            break;
        case NoteRange::Outcome::Inside:
            chooseReference(key);
            break;
    }
}

void PitchExercise::chooseReference(pitch::NoteIndex key) {
    desk_.view().showControl(EarControl::IntoStart, true);
    desk_.view().focusIntoStart();
    if (reference_ != 0 && !range_.isEnd(pitch::noteIndexOf(reference_)))
        mark(pitch::noteIndexOf(reference_), false);
    reference_ = pitch::noteNumberOf(key);
    mark(key, true);
    play(key);
}

void PitchExercise::startOrStop() {
    if (desk_.running(EarExercise::Pitch)) {
        desk_.stop(EarExercise::Pitch);
        stopped_ = true;
        desk_.view().showControl(EarControl::cmdReimposta, true);
        desk_.view().showControl(EarControl::cmdEsci, true);
        desk_.setPrompt(EarPrompt::ResetRange);
        silence();
        return;
    }
    desk_.start(EarExercise::Pitch);
    stopped_ = false;
    started_ = true;
    desk_.view().showControl(EarControl::cmdReimposta, false);
    desk_.resetScore();
    desk_.setPrompt(EarPrompt::RecogniseNote);
    playTest();
}

void PitchExercise::reset() {
    desk_.lockExercises();
    desk_.resetScore();
    desk_.setPrompt(EarPrompt::LowerKey);
    desk_.view().showControl(EarControl::IntoStart, false);
    silence();
    for (const pitch::NoteIndex end : {range_.lower(), range_.upper()})
        mark(end, false);
    mark(pitch::noteIndexOf(reference_), false);
    leave();
}

void PitchExercise::leave() {
    started_ = false;
    stopped_ = false;
    range_.clear();
}

void PitchExercise::silence() {
    ++turn_;
    play(FunzioniMM::kSilence);
}

void PitchExercise::quiet() {
    if (sounding_)
        silence();
}

void PitchExercise::answer(pitch::NoteIndex key) {
    const bool right = key == desk_.funzioniMM().drawnIndex();
    desk_.judge(right, true);
    if (right)
        playTest();
}

/// Events run once before the reference sounds; what they play or stop overtakes this test.
void PitchExercise::playTest() {
    const int turn = ++turn_;
    if (withReference()) {
        desk_.runtime().yield();
        if (turn != turn_)
            return;
        desk_.noteOn(reference_);
        desk_.funzioniMM().WaitSeconds(kReferenceSeconds);
        desk_.noteOff(reference_);
        desk_.funzioniMM().WaitSeconds(kGapSeconds);
    }
    play(FunzioniMM::kRandomNote);
}

void PitchExercise::play(pitch::NoteIndex key) {
    desk_.funzioniMM().PlayNoteIndex(key);
    const bool endsByItself = key == FunzioniMM::kRandomNote && withReference();
    sounding_ = key != FunzioniMM::kSilence && !endsByItself;
}

void PitchExercise::mark(pitch::NoteIndex key, bool on) {
    desk_.view().showRangeMark(key, on);
}
