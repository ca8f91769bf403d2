#pragma once

#include "core/pitch.h"

#include <QObject>

class ComposerView;
class FunzioniMM;
class MelodyEditor;
class QAbstractButton;
struct ComposerState;

namespace Ui {
class frmComposer;
}

/// The notes that the user plays by hand: with the mouse on the piano keyboard and the staff, and,
/// through ComposerKeyboard, with the computer keyboard.
class HandPlaying : public QObject {
    Q_OBJECT

public:
    HandPlaying(Ui::frmComposer& ui, ComposerView& view, FunzioniMM& funzioniMM,
                MelodyEditor& editor, ComposerState& state);

    /// The user has each key of a piano insert its note: on the window, of the computer keyboard
    /// or of a MIDI keyboard; so does each click on the staff.
    bool insertsDirectly() const;
    void setInsertsDirectly(bool on);

    /// The press of such a key, or such a click.
    void pressKey(pitch::NoteNumber note);

    /// Sounds a note, and makes it the active one.
    void beginNote(pitch::NoteNumber note);
    void endNote(pitch::NoteNumber note);

private Q_SLOTS:
    void lb_MouseDown(int index);
    void lb_MouseUp(int index);
    void lb_Enter();
    void Regolo_MouseDown(int note);
    void Regolo_MouseUp(int note);
    void Regolo_DblClick();

private:
    ComposerView& view_;
    FunzioniMM& funzioniMM_;
    MelodyEditor& editor_;
    QAbstractButton& insertButton_;
    ComposerState& state_;
};
