#pragma once

#include "core/pitch.h"

#include <QObject>

class ComposerView;
class FunzioniMM;
class MelodyEditor;

namespace Ui {
class frmComposer;
}

/// The notes that the user plays by hand: with the mouse on the piano keyboard and the staff, and,
/// through ComposerKeyboard, with the computer keyboard.
class HandPlaying : public QObject {
    Q_OBJECT

public:
    HandPlaying(Ui::frmComposer& ui, ComposerView& view, FunzioniMM& funzioniMM,
                MelodyEditor& editor);

    /// Sounds a note, and makes it the active one.
    void beginNote(pitch::NoteNumber note);
    void endNote(pitch::NoteNumber note);

private Q_SLOTS:
    void lb_MouseDown(int index);
    void lb_MouseUp(int index);
    void Regolo_MouseDown(int note);
    void Regolo_MouseUp(int note);

private:
    ComposerView& view_;
    FunzioniMM& funzioniMM_;
    MelodyEditor& editor_;
};
