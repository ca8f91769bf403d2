#include "eartraining/ear_desk.h"

#include "core/funzioni_mm.h"
#include "platform/dialogs.h"

namespace {

constexpr int kVelocity = 90;

}  // namespace

void EarDesk::setPrompt(EarPrompt prompt) {
    prompt_ = prompt;
    view_->showPrompt(prompt);
}

void EarDesk::message(const char* text) {
    dialogs_.message(QString::fromLatin1(text));
}

void EarDesk::resetScore() {
    score_.reset();
    view_->showScore(score_);
}

void EarDesk::judge(bool right, bool alternateColours) {
    const Score::Verdict verdict = right ? Score::Verdict::Right : Score::Verdict::Wrong;
    score_.count(verdict);
    if (alternateColours)
        score_.alternateColour(verdict);
    view_->showScore(score_);
    view_->announceVerdict(score_);
}

void EarDesk::start(EarExercise exercise) {
    running_.insert(exercise);
    view_->showRunning(exercise, true);
    showExerciseMenu();
}

void EarDesk::stop(EarExercise exercise) {
    running_.erase(exercise);
    locked_ = false;
    view_->showRunning(exercise, false);
    showExerciseMenu();
}

void EarDesk::lockExercises() {
    locked_ = true;
    showExerciseMenu();
}

void EarDesk::showExerciseMenu() {
    view_->enableExerciseMenu(!locked_ && running_.empty());
}

void EarDesk::noteOn(pitch::NoteNumber note) {
    funzioniMM_.NoteOn(FunzioniMM::kMelodyChannel, note, kVelocity);
}

void EarDesk::noteOff(pitch::NoteNumber note) {
    funzioniMM_.NoteOff(FunzioniMM::kMelodyChannel, note);
}

void EarDesk::showNote(pitch::NoteNumber note, bool pressed) {
    if (pitch::isPlayable(note))
        view_->showKey(pitch::noteIndexOf(note), pressed);
}
