#include "eartraining/chord/chord_exercise.h"

#include "core/funzioni_mm.h"
#include "eartraining/ear_desk.h"

#include <algorithm>

namespace {

constexpr double kSilenceSeconds = 0.3;

}  // namespace

void ChordExercise::keyClicked(pitch::NoteIndex key) {
    if (range_.complete()) {
        desk_.message("Riconosci il tipo di accordo suonato !!!");
        return;
    }
    switch (range_.click(key)) {
        case ChordRange::Outcome::AboveLimit:
            desk_.message("Limite non consentito !!!");
            break;
        case ChordRange::Outcome::FirstEnd:
            desk_.view().showRangeMark(key, true);
            desk_.setPrompt(EarPrompt::UpperKey);
            desk_.view().showControl(EarControl::cmdEsci, false);
            break;
        case ChordRange::Outcome::Completed:
            desk_.view().showRangeMark(key, true);
            desk_.setPrompt(EarPrompt::RecogniseChord);
            desk_.view().showControl(EarControl::ComdRacStart, true);
            break;
    }
}

void ChordExercise::startOrStop() {
    if (!range_.complete())
        return;
    const bool starts = !desk_.running(EarExercise::Chord);
    if (starts) {
        desk_.start(EarExercise::Chord);
        desk_.resetScore();
    } else {
        desk_.stop(EarExercise::Chord);
        silenceChord();
    }
    desk_.view().showControl(EarControl::cmdEsci, !starts);
    desk_.view().showControl(EarControl::cmdRes, !starts);
    if (starts)
        drawAndPlay();
}

void ChordExercise::typeClicked(int type) {
    const bool right = type == current_;
    desk_.judge(right, false);
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
        desk_.view().showRangeMark(end, false);
    range_.clear();
    desk_.setPrompt(EarPrompt::ResetRange);
}

void ChordExercise::drawAndPlay() {
    drawChord();
    playChord();
}

/// Two types cannot be excluded, so there is always one to draw.
void ChordExercise::drawChord() {
    silenceChord();
    FunzioniMM& funzioniMM = desk_.funzioniMM();
    do {
        current_ = funzioniMM.RandomNoteIndex(0, chord_types::kCount - 1);
    } while (!available(current_));
    const pitch::NoteIndex root = funzioniMM.RandomNoteIndex(range_.lower(), range_.upper());
    chord_ = chord_types::notesOf(current_, pitch::noteNumberOf(root));
}

/// Without a range the root lies below the keyboard and nothing sounds.
void ChordExercise::playChord() {
    if (!std::all_of(chord_.begin(), chord_.end(), pitch::isPlayable))
        return;
    if (showsKeys_) {
        for (const pitch::NoteNumber note : chord_)
            desk_.showNote(note, true);
    }
    for (const pitch::NoteNumber note : chord_)
        desk_.noteOn(note);
    sounding_ = true;
}

void ChordExercise::silenceChord() {
    if (endChord())
        desk_.funzioniMM().WaitSeconds(kSilenceSeconds);
}

/// Whether there was a chord to end.
bool ChordExercise::endChord() {
    sounding_ = false;
    if (!std::all_of(chord_.begin(), chord_.end(), pitch::isPlayable))
        return false;
    for (const pitch::NoteNumber note : chord_)
        desk_.showNote(note, false);
    for (const pitch::NoteNumber note : chord_)
        desk_.noteOff(note);
    return true;
}

void ChordExercise::quiet() {
    if (sounding_)
        endChord();
}
