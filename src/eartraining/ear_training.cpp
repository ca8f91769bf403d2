#include "eartraining/ear_training.h"

#include "platform/runtime.h"

#include <algorithm>

EarTraining::EarTraining(Runtime& runtime, FunzioniMM& funzioniMM, Dialogs& dialogs,
                         EarTrainingState& state, EarTrainingView& view)
    : runtime_(runtime),
      state_(state),
      context_(runtime, funzioniMM, dialogs, view),
      exercises_(context_, state),
      chosen_(exercises_.all.front()),
      pianoKeys_(runtime, *this, PianoKeys::Backspace::Regular) {}

EarTraining::~EarTraining() = default;

void EarTraining::load() {
    show(*exercises_.all.front());
    context_.resetScore();
    context_.setPrompt(range_prompts::kLowerKey);
}

void EarTraining::activate() {
    for (EarExercise* exercise : exercises_.all) {
        if (exercise->code() == state_.requested())
            open(*exercise);
    }
    pianoKeys_.resetOctave();
    // A key that is still down from the menu's shortcut must not sound a note.
    runtime_.yield();
    pianoKeys_.poll(true);
    while (!closed_ && !runtime_.ending()) {
        runtime_.pump(kForever);
        if (!closed_)
            pollKeys();
    }
    stopSounds();
    pianoKeys_.releaseAll();
}

/// An exercise that does not take the keyboard is only shown: nothing has sounded yet that choosing
/// it would have to end.
void EarTraining::open(EarExercise& exercise) {
    if (exercise.chosen())
        return;
    if (exercise.takesKeyboard())
        choose(exercise);
    else
        show(exercise);
}

void EarTraining::pollKeys() {
    pianoKeys_.poll();
    for (const KeyCode key : PianoKeys::kRowEnds) {
        if (runtime_.held(key))
            pianoKeys_.keyDown(key);
        else
            pianoKeys_.keyUp(key);
    }
}

bool EarTraining::anyRunning() const {
    return std::any_of(exercises_.all.begin(), exercises_.all.end(),
                       [](const EarExercise* exercise) { return exercise->running(); });
}

bool EarTraining::unload() {
    if (anyRunning() || context_.prompt().keepsWindowOpen)
        return false;
    closed_ = true;
    state_.forgetRequest();
    stopSounds();
    pianoKeys_.releaseAll();
    return true;
}

void EarTraining::keyClicked(pitch::NoteIndex key) {
    chosen_->keyClicked(key);
}

void EarTraining::choose(EarExercise& exercise) {
    for (EarExercise* other : exercises_.all) {
        if (other != &exercise)
            other->leave(exercise.takesKeyboard());
    }
    if (exercise.takesKeyboard())
        context_.clearRangeMarks();
    show(exercise);
    exercise.enter();
}

/// The others are hidden first: two panels visible at once would enlarge the window.
void EarTraining::show(EarExercise& exercise) {
    chosen_ = &exercise;
    for (EarExercise* other : exercises_.all) {
        if (other != &exercise)
            other->setChosen(false);
    }
    exercise.setChosen(true);
}

void EarTraining::stopSounds() {
    for (EarExercise* exercise : exercises_.all)
        exercise->stopSound();
}

void EarTraining::noteDown(pitch::NoteNumber note) {
    context_.noteOn(note);
    context_.showNote(note, true);
}

void EarTraining::noteUp(pitch::NoteNumber note) {
    context_.noteOff(note);
    context_.showNote(note, false);
}
