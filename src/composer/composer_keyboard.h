#pragma once

#include "composer/computer_keys.h"
#include "composer/melody/step_mode.h"

#include <QObject>

class HandPlaying;
class QDialog;
struct Composition;

namespace Ui {
class frmComposer;
}

/// The computer keyboard in the composer's window. The control that has the focus decides whether a
/// key plays or steps, or belongs to the control; shortcuts play nothing.
class ComposerKeyboard : public QObject, private ComputerKeysListener {
    Q_OBJECT

public:
    ComposerKeyboard(QDialog& window, Ui::frmComposer& ui, const Runtime& runtime,
                     const Composition& composition, HandPlaying& hand);

    /// To be called once a pass of whichever loop runs.
    void poll();

    /// Ends every note that a key holds, as before a box in which the key's release is lost.
    void releaseHeldKeys();

    void resetOctave() { keys_.piano().resetOctave(); }
    void cycleOctave() { keys_.piano().cycleOctave(); }

    bool eventFilter(QObject* target, QEvent* event) override;

Q_SIGNALS:
    void stepRequested(StepMode::Direction direction);
    void semitoneChosen();  ///< by an arrow, as the active note

private:
    ComputerKeys::Focus focus() const;

    void noteDown(pitch::NoteNumber note) override;
    void noteRepeated(pitch::NoteNumber note) override;
    void noteUp(pitch::NoteNumber note) override;
    void stepKeyDown(bool forward) override;
    void semitoneKeyDown(bool upwards) override;
    void semitoneKeyUp() override;

    QDialog& window_;
    Ui::frmComposer& ui_;
    const Composition& composition_;
    HandPlaying& hand_;
    ComputerKeys keys_;
    pitch::NoteNumber semitoneNote_ = pitch::kRest;  ///< the one that an arrow key holds
    bool typed_ = false;                             ///< a key of this pass was text or a shortcut
};
