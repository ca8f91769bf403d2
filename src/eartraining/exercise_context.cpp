#include "eartraining/exercise_context.h"

#include "core/funzioni_mm.h"
#include "eartraining/ear_training_view.h"
#include "platform/dialogs.h"
#include "platform/user_text.h"

namespace {

constexpr int kVelocity = 90;

}  // namespace

ExerciseContext::ExerciseContext(Runtime& runtime, FunzioniMM& funzioniMM, Dialogs& dialogs,
                                 EarTrainingView& view)
    : runtime_(runtime),
      funzioniMM_(funzioniMM),
      dialogs_(dialogs),
      view_(view),
      verdict_(runtime, [&view] { view.hideVerdict(); }) {}

void ExerciseContext::setPrompt(const EarPrompt& prompt) {
    prompt_ = prompt;
    view_.showPrompt(prompt);
    changed_();
}

void ExerciseContext::message(const char* text) {
    dialogs_.message(UserText::tr(text));
}

void ExerciseContext::resetScore() {
    score_.reset();
    view_.showScore(score_);
}

void ExerciseContext::judge(const EarExercise& exercise, int answer, bool right,
                            bool alternateColours) {
    const Verdict verdict = verdictOf(right);
    score_.count(verdict);
    if (alternateColours)
        score_.alternateColour(verdict);
    view_.showScore(score_);
    view_.announceVerdict(score_);
    view_.showVerdict(exercise, answer, verdict);
    verdict_.begin();
}

void ExerciseContext::showExercise(const EarExercise& exercise) {
    view_.showExercise(exercise);
    changed_();
}

void ExerciseContext::focusStart(const EarExercise& exercise) {
    view_.focusStart(exercise);
}

void ExerciseContext::noteOn(pitch::NoteNumber note) {
    funzioniMM_.NoteOn(FunzioniMM::kMelodyChannel, note, kVelocity);
}

void ExerciseContext::noteOff(pitch::NoteNumber note) {
    funzioniMM_.NoteOff(FunzioniMM::kMelodyChannel, note);
}

void ExerciseContext::planNoteOn(pitch::NoteNumber note, Instant at) {
    funzioniMM_.planNoteOn(FunzioniMM::kMelodyChannel, note, kVelocity, at);
}

void ExerciseContext::planNoteOff(pitch::NoteNumber note, Instant at) {
    funzioniMM_.planNoteOff(FunzioniMM::kMelodyChannel, note, at);
}

void ExerciseContext::showNote(pitch::NoteNumber note, bool pressed) {
    if (pitch::isPlayable(note))
        view_.showKey(pitch::noteIndexOf(note), pressed);
}

void ExerciseContext::markKey(pitch::NoteIndex key, bool on) {
    view_.showRangeMark(key, on);
}

void ExerciseContext::clearRangeMarks() {
    view_.clearRangeMarks();
}

void ExerciseContext::showClose(bool on) {
    view_.showClose(on);
}

void ExerciseContext::exerciseStarted() {
    ++running_;
    showExerciseMenu();
}

void ExerciseContext::exerciseStopped() {
    --running_;
    locked_ = false;
    showExerciseMenu();
}

void ExerciseContext::lockExercises() {
    locked_ = true;
    showExerciseMenu();
}

void ExerciseContext::showExerciseMenu() {
    view_.enableExerciseMenu(!locked_ && running_ == 0);
}
