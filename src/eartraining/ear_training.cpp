#include "eartraining/ear_training.h"

#include "core/funzioni_mm.h"
#include "eartraining/ear_training_state.h"
#include "platform/runtime.h"

EarTraining::EarTraining(Runtime& runtime, FunzioniMM& funzioniMM, Dialogs& dialogs,
                         EarTrainingState& state)
    : runtime_(runtime),
      state_(state),
      desk_(runtime, funzioniMM, dialogs),
      pitch_(desk_),
      interval_(desk_),
      chord_(desk_, state.chord),
      pianoKeys_(runtime, *this, PianoKeys::Backspace::Regular) {}

EarTraining::~EarTraining() = default;

void EarTraining::load(EarTrainingView& view) {
    desk_.attach(view);
    view.showControl(EarControl::IntoStart, false);
    view.showControl(EarControl::cmdReimposta, false);
    view.showControl(EarControl::cmdRes, false);
    view.showControl(EarControl::ComdRacStart, false);
    setIntervalOnShow(false);
    setChordOnShow(false);
    desk_.resetScore();
    desk_.setPrompt(EarPrompt::LowerKey);
}

void EarTraining::activate() {
    if (state_.intervalRequested)
        setIntervalOnShow(true);
    if (state_.chordRequested)
        chooseChord();
    pitch_.liftStop();
    pianoKeys_.resetOctave();
    // A key that is still down from the menu's shortcut is no music.
    runtime_.yield();
    pianoKeys_.poll(true);
    while (!closed_ && !runtime_.ending()) {
        runtime_.pump(kForever);
        if (!closed_)
            pollKeys();
    }
    quiet();
    pianoKeys_.releaseAll();
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

bool EarTraining::unload() {
    if (desk_.anyRunning() || desk_.prompt() == EarPrompt::Reference)
        return false;
    closed_ = true;
    state_.intervalRequested = false;
    quiet();
    pianoKeys_.releaseAll();
    return true;
}

void EarTraining::keyClicked(pitch::NoteIndex key) {
    if (chordOnShow_)
        chord_.keyClicked(key);
    else if (!desk_.running(EarExercise::Interval))
        pitch_.keyClicked(key);
}

void EarTraining::choosePitch() {
    setIntervalOnShow(false);
    setChordOnShow(false);
    desk_.view().showControl(EarControl::IntoStart, false);
    pitch_.leave();
    interval_.silence();
    chord_.forgetRange();
    desk_.view().clearRangeMarks();
    desk_.setPrompt(EarPrompt::LowerKey);
    quiet();
}

void EarTraining::chooseInterval() {
    setChordOnShow(false);
    setIntervalOnShow(true);
    desk_.view().showControl(EarControl::cmdReimposta, false);
    desk_.view().showControl(EarControl::IntoStart, false);
    if (desk_.funzioniMM().lastNoteIndex() >= 0)
        pitch_.silence();
    quiet();
}

void EarTraining::chooseChord() {
    chord_.forgetRange();
    setIntervalOnShow(false);
    setChordOnShow(true);
    for (const EarControl control :
         {EarControl::ComdRacStart, EarControl::cmdRes, EarControl::cmdReimposta,
          EarControl::IntoStart, EarControl::cmdEsci})
        desk_.view().showControl(control, false);
    pitch_.silence();
    pitch_.forgetRange();
    desk_.view().clearRangeMarks();
    interval_.silence();
    desk_.setPrompt(EarPrompt::LowerKey);
    quiet();
}

void EarTraining::setChordOnShow(bool on) {
    chordOnShow_ = on;
    desk_.view().showControl(EarControl::frmRacc, on);
}

void EarTraining::setIntervalOnShow(bool on) {
    desk_.view().showControl(EarControl::FrmIntervalli, on);
}

/// Ends what an exercise was left sounding.
void EarTraining::quiet() {
    pitch_.quiet();
    interval_.quiet();
    chord_.quiet();
}

void EarTraining::noteDown(pitch::NoteNumber note) {
    desk_.noteOn(note);
    desk_.showNote(note, true);
}

void EarTraining::noteUp(pitch::NoteNumber note) {
    desk_.noteOff(note);
    desk_.showNote(note, false);
}
