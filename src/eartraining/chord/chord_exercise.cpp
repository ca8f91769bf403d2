#include "eartraining/chord/chord_exercise.h"

#include "core/funzioni_mm.h"
#include "eartraining/exercise_context.h"
#include "platform/user_text.h"

#include <algorithm>
#include <utility>

namespace {

constexpr double kSilenceSeconds = 0.3;

/// Without a range the root lies below the keyboard and nothing sounds.
bool sounds(const chord_types::Notes& chord) {
    return std::all_of(chord.begin(), chord.end(), pitch::isPlayable);
}

}  // namespace

ChordExercise::ChordExercise(ExerciseContext& context, chord_types::Notes& chord)
    : EarExercise(context, ExerciseCode::Chord, false), chord_(chord) {}

void ChordExercise::enter() {
    range_.clear();
    setStartVisible(false);
    setResetVisible(false);
    context().showClose(false);
    context().setPrompt(range_prompts::kLowerKey);
    stopSound();
}

void ChordExercise::leave(bool /*keyboardTaken*/) {
    range_.clear();
    stopSound();
}

void ChordExercise::setResetVisible(bool visible) {
    resetVisible_ = visible;
    changed();
}

void ChordExercise::keyClicked(pitch::NoteIndex key) {
    if (range_.complete()) {
        context().message(
            QT_TRANSLATE_NOOP("UserText", "Riconosci il tipo di accordo suonato !!!"));
        return;
    }
    switch (range_.click(key)) {
        case ChordRange::Outcome::AboveLimit:
            context().message(QT_TRANSLATE_NOOP("UserText", "Limite non consentito !!!"));
            break;
        case ChordRange::Outcome::FirstEnd:
            context().markKey(key, true);
            context().setPrompt(range_prompts::kUpperKey);
            context().showClose(false);
            break;
        case ChordRange::Outcome::Completed:
            context().markKey(key, true);
            context().setPrompt(kRecognise);
            setStartVisible(true);
            break;
    }
}

void ChordExercise::keyPlayed(pitch::NoteIndex key, const HeldKeys& held) {
    if (!range_.complete()) {
        choosing_ = held;
        keyClicked(key);
        return;
    }
    choosing_.erase(key);
    const std::optional<int> type = chord_types::typeOf(held);
    if (type && std::none_of(held.begin(), held.end(),
                             [this](pitch::NoteIndex down) { return choosing_.contains(down); }))
        typeClicked(*type);
}

void ChordExercise::startOrStop() {
    if (!range_.complete())
        return;
    const bool starts = !running();
    if (starts) {
        setRunning(true);
        context().resetScore();
    } else {
        setRunning(false);
        silenceChord();
        if (running())
            return;
    }
    context().showClose(!starts);
    setResetVisible(!starts);
    if (starts)
        drawAndPlay();
}

/// In the silence before a chord, which a screen reader's presses come through, nothing is asked.
void ChordExercise::typeClicked(int type) {
    if (inSilence_)
        return;
    const bool right = type == current_;
    context().judge(*this, type, right);
    if (right)
        drawAndPlay();
}

void ChordExercise::toggleAvailable(int type) {
    const auto place = static_cast<std::size_t>(type);
    if (chord_types::kTypes[place].excludable)
        excluded_[place] = !excluded_[place];
}

void ChordExercise::resetRange() {
    for (const pitch::NoteIndex end : {range_.lower(), range_.upper()})
        context().markKey(end, false);
    range_.clear();
    context().setPrompt(range_prompts::kReset);
}

const char* ChordExercise::hint() const {
    if (running())
        return QT_TRANSLATE_NOOP("UserText",
                                 "Clicca il tipo che hai sentito; F4 fa riascoltare l'accordo");
    if (range_.complete())
        return QT_TRANSLATE_NOOP("UserText", "Premi Start per sentire un accordo");
    if (range_.begun())
        return QT_TRANSLATE_NOOP("UserText",
                                 "Va bene anche lo stesso tasto: l'accordo partirà sempre da lì");
    return QT_TRANSLATE_NOOP(
        "UserText", "Clicca due tasti del pianoforte: ogni accordo partirà da uno compreso");
}

std::optional<KeySpan> ChordExercise::span() const {
    if (!range_.complete())
        return std::nullopt;
    return KeySpan{range_.lower(), range_.upper()};
}

void ChordExercise::hearAgain() {
    if (canHearAgain())
        playChord(chord_);
}

void ChordExercise::drawAndPlay() {
    FunzioniMM& funzioniMM = context().funzioniMM();
    const std::int16_t type = drawType();
    const pitch::NoteIndex root = funzioniMM.RandomNoteIndex(range_.lower(), range_.upper());
    if (playChord(chord_types::notesOf(type, pitch::noteNumberOf(root))))
        current_ = type;
}

/// Two types cannot be excluded, so there is always one to draw.
std::int16_t ChordExercise::drawType() {
    std::int16_t type = 0;
    do {
        type = context().funzioniMM().RandomNoteIndex(0, chord_types::kCount - 1);
    } while (!available(type));
    return type;
}

/// A new chord is drawn before the silence that it follows, so that it can be sent ahead. What a
/// screen reader ends or starts in that silence takes its place.
bool ChordExercise::playChord(chord_types::Notes chord) {
    if (endChord()) {
        FunzioniMM& funzioniMM = context().funzioniMM();
        const Instant start = funzioniMM.waits().afterSeconds(kSilenceSeconds);
        if (sounds(chord)) {
            for (const pitch::NoteNumber note : chord)
                context().planNoteOn(note, start);
        }
        inSilence_ = true;
        funzioniMM.waitUntil(start);
        if (!std::exchange(inSilence_, false))
            return false;
    }
    chord_ = chord;
    if (!sounds(chord_)) {
        changed();
        return true;
    }
    if (showsKeys_) {
        for (const pitch::NoteNumber note : chord_)
            context().showNote(note, true);
    }
    for (const pitch::NoteNumber note : chord_)
        context().noteOn(note);
    sounding_ = true;
    changed();
    return true;
}

void ChordExercise::silenceChord() {
    if (endChord())
        context().funzioniMM().WaitSeconds(kSilenceSeconds);
    changed();
}

/// Whether there was a chord to end. The panel is not told: where another chord follows, it stays
/// as it is through the silence.
bool ChordExercise::endChord() {
    sounding_ = false;
    inSilence_ = false;
    if (!sounds(chord_))
        return false;
    for (const pitch::NoteNumber note : chord_)
        context().showNote(note, false);
    for (const pitch::NoteNumber note : chord_)
        context().noteOff(note);
    return true;
}

void ChordExercise::stopSound() {
    if (!sounding_ && !inSilence_)
        return;
    endChord();
    changed();
}
