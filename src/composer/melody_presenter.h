#pragma once

#include <QObject>

class ComposerKeyboard;
class ComposerMenu;
class ComposerView;
class SidePanels;
struct ComposerModel;
struct EditOutcome;
struct Services;

namespace Ui {
class frmComposer;
}

/// Brings what an operation left to the user: its message, the sound module's instrument, and
/// everything in the window that the operation may have changed.
class MelodyPresenter : public QObject {
    Q_OBJECT

public:
    MelodyPresenter(const Services& services, Ui::frmComposer& ui, SidePanels& side,
                    ComposerView& view, ComposerModel& model, ComposerMenu& menu,
                    ComposerKeyboard& keyboard);

    /// Shows an operation's message and then everything that it may have changed, and announces it.
    void present(const EditOutcome& outcome);
    /// The same without a word.
    void show(const EditOutcome& outcome);

    /// Shows both and, where it changed, sets the instrument of the sound module.
    void presentTempoAndInstrument();

    /// Shows the composition; its cost does not depend on the melody's length.
    void showMelody();

    /// Shows the message about a damaged melody, which cannot be played; whether it is damaged.
    bool reportIfDamaged();

public Q_SLOTS:
    void chooseInstrument(int program);  ///< 0..127 of General MIDI

Q_SIGNALS:
    void messageClosed();  ///< of an operation; the box was in front of the window

private:
    void showUndo();

    const Services& services_;
    Ui::frmComposer& ui_;
    SidePanels& side_;
    ComposerView& view_;
    ComposerModel& model_;
    ComposerMenu& menu_;
    ComposerKeyboard& keyboard_;
};
