#include "eartraining/ear_training.h"

#include "core/funzioni_mm.h"
#include "platform/runtime.h"

#include <algorithm>

EarTraining::EarTraining(Runtime& runtime, FunzioniMM& funzioniMM, Dialogs& dialogs,
                         EarTrainingState& state, EarTrainingView& view)
    : runtime_(runtime),
      state_(state),
      context_(runtime, funzioniMM, dialogs, view),
      guidance_(funzioniMM.output(), view),
      exercises_(context_, state),
      chosen_(exercises_.all.front()),
      pianoKeys_(runtime, *this, PianoKeys::Backspace::Regular) {
    context_.onChange([this] { showGuidance(); });
}

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
        if (closed_)
            break;
        pollKeys();
        showGuidance();
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

EarExercise* EarTraining::runningExercise() const {
    const auto found =
        std::find_if(exercises_.all.begin(), exercises_.all.end(),
                     [](const EarExercise* exercise) { return exercise->running(); });
    return found == exercises_.all.end() ? nullptr : *found;
}

/// The pitch exercise can run while the interval chart is chosen.
EarExercise& EarTraining::askingExercise() const {
    EarExercise* running = runningExercise();
    return running ? *running : *chosen_;
}

void EarTraining::hearAgain() {
    if (!pianoKeys_.sounds())
        askingExercise().hearAgain();
}

void EarTraining::showGuidance() {
    guidance_.refresh(askingExercise(), *chosen_);
}

bool EarTraining::unload() {
    if (runningExercise() || context_.prompt().keepsWindowOpen)
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

void EarTraining::keyPlayed(pitch::NoteIndex key) {
    played_.insert(key);
    if (!closed_)
        chosen_->keyPlayed(key, HeldKeys(played_));
}

void EarTraining::startOrStop() {
    if (chosen_->visible() && chosen_->startVisible())
        chosen_->startOrStop();
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
    context_.endVerdict();
    for (EarExercise* other : exercises_.all) {
        if (other != &exercise)
            other->setChosen(false);
    }
    exercise.setChosen(true);
}

void EarTraining::stopSounds() {
    for (EarExercise* exercise : exercises_.all)
        exercise->stopSound();
    showGuidance();
}

void EarTraining::noteDown(pitch::NoteNumber note) {
    context_.noteOn(note);
    context_.showNote(note, true);
}

void EarTraining::noteUp(pitch::NoteNumber note) {
    context_.noteOff(note);
    context_.showNote(note, false);
}
