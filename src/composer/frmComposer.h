#pragma once

#include "composer/bar_controls.h"
#include "composer/bookmark_controls.h"
#include "composer/composer_keyboard.h"
#include "composer/composer_menu.h"
#include "composer/composer_model.h"
#include "composer/composer_state.h"
#include "composer/composer_view.h"
#include "composer/entry_controls.h"
#include "composer/export_controls.h"
#include "composer/hand_playing.h"
#include "composer/library_controls.h"
#include "composer/melody_presenter.h"
#include "composer/midi_playing.h"
#include "composer/playback_controls.h"
#include "composer/polling_runtime.h"
#include "composer/range_controls.h"
#include "composer/side_panels.h"

#include <QDialog>
#include <QString>

#include <memory>

namespace Ui {
class frmComposer;
}

/// The composer: the user writes a melody note by note, plays it and changes it.
///
/// The window puts the form together with the classes that work on it, and decides nothing of
/// theirs. While it is open, a loop in its activation lets events run and polls the keyboard; the
/// player's and the arrows' loops nest in it and poll the keyboard as well. F2 announces the entry
/// that is worked on, F3 the whole melody.
class frmComposer : public QDialog {
    Q_OBJECT

public:
    /// Opens with the melody of a file, if one is named.
    frmComposer(const Services& services, ComposerState& state, QWidget* parent,
                QString melodyFile = {});
    ~frmComposer() override;

    /// Stops what plays, asks about unsaved changes, and closes.
    void done(int result) override;

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private Q_SLOTS:
    void Form_Activate();
    void takeActivation();

private:
    void becomeActive();
    void placeOnScreen(QSize wanted);
    void orderTabs();
    void addSpeech(ComposerState& state);
    void pollKeys();

    Services services_;
    ComposerMenu menu_;
    std::unique_ptr<Ui::frmComposer> ui_;
    Composition composition_;
    SidePanels side_;
    ComposerView view_;
    PollingRuntime runtime_;
    ComposerModel model_;
    HandPlaying hand_;
    ComposerKeyboard keyboard_;
    MelodyPresenter presenter_;
    EntryControls entry_;
    MidiPlaying midi_;
    PlaybackControls playbackControls_;
    RangeControls range_;
    LibraryControls library_;
    ExportControls export_;
    BookmarkControls bookmarks_;
    BarControls bars_;

    QString melodyFile_;  ///< to be opened when the window comes up
    bool polling_ = false;
    bool activated_ = true;  ///< `becomeActive` was called for the last activation
    bool closed_ = false;
};
