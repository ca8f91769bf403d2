#pragma once

#include "composer/composer_menu.h"
#include "composer/computer_keys.h"
#include "composer/export/melody_export.h"
#include "composer/library/bookmark_commands.h"
#include "composer/library/floppy.h"
#include "composer/library/melody_library.h"
#include "composer/library/unsaved_melody.h"
#include "composer/melody/composition.h"
#include "composer/melody/melody_editor.h"
#include "composer/playback/playback.h"
#include "composer/playback/range_arrows.h"
#include "composer/polling_runtime.h"
#include "core/services.h"

#include <QDialog>
#include <QString>

#include <memory>

class BookmarkPanel;
class BrowserPanel;

namespace Ui {
class frmComposer;
}

/// The composer: the user writes a melody note by note, plays it and changes it.
///
/// The window wires the panels to the composition, its editor and its player; it decides nothing of
/// theirs. While it is open, a loop in its activation lets events run and polls the keyboard; the
/// player's and the arrows' loops nest in it and poll the keyboard as well.
class frmComposer : public QDialog,
                    private PlaybackView,
                    private RangeView,
                    private ComputerKeysListener {
public:
    /// Opens with the melody of a file, if one is named.
    frmComposer(const Services& services, QWidget* parent, QString melodyFile = {});
    ~frmComposer() override;

    void cmdSimbNote_Click(std::uint8_t index);
    void cmdAttrNota_Click(std::uint8_t index);
    void ckConsAtt_Click();
    void lb_MouseDown(int index);
    void lb_MouseUp(int index);
    void lb_DblClick();
    void lblActNote_DblClick();
    void cmdInsNota_Click();
    void cmdInsPausa_Click();
    void cmdCanc_Click();
    void cmdReset_Click();

    void cmdPlay_Click();
    void chekLoop_Click();
    void lblStep_Click(StepMode::Direction direction);
    void Slider1_Change();
    void lblNt_DblClick();
    void mnuPlayRitardo_Click();

    void lblid_MouseDown(PlayRange::Arrow arrow);
    void lblid_MouseUp();
    void lblid_Step(PlayRange::Arrow arrow);
    void lblNini_Validate();
    void lblNfine_Validate();
    void lblIDs_Click(int semitones);
    void lblSemitoni_Click();

    void cmdModifica_Click();
    void cmdInsertNote_Click();
    void cmdCancNota_Click();
    void mnuAnnulla_Click();
    void mnuRipeti_Click();

    void chooseInstrument(int program);

    void mnuApri_Click();
    void mnuSalva_Click();
    void mnuSaveAs_Click();
    void mnuEsportaAudio_Click();
    void mnuEsportaMidi_Click();
    void mnuSalvaA_Click();
    void mnuCopyFromA_Click();
    void cmdEseguiFile_Click(int row);
    void cmdMkdir_Click();
    void cmdDelete_Click(int row);
    void cmdRename_Click(int row);

    void cmdAddBm_Click();
    void cmdPlayBm_Click(int row);
    void cmdRenameBm_Click(int row);
    void cmdModBm_Click(int row);
    void cmdMbUd_Click(int row, BookmarkCommands::Direction direction);
    void cmdDelBm_Click(int row);

    /// Stops what plays, asks about unsaved changes, and closes.
    void done(int result) override;

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void Form_Activate();
    void becomeActive();
    void takeActivation();
    ComposerMenu::Handlers menuHandlers();
    void placeOnScreen();
    void arrangeSide();
    void orderTabs();
    void connectPalette();
    void connectPlayback();
    void connectRange();
    void connectEditFrame();
    void connectStaff();
    void connectLibrary();
    bool refusesDamaged();

    void pollKeys();
    ComputerKeys::Focus keysFocus() const;
    void silenceHands();

    bool offerUnsaved();
    void openMelodyFile();
    bool showOpened(MelodyLibrary::Activated activated);
    void take(const EditOutcome& outcome);
    void takeAtStep(const EditOutcome& outcome);
    void takeRestored(const EditOutcome& outcome);
    void takeTempoAndInstrument();
    void showMelody();
    void showRange() override;
    void showActiveNote();
    void showCurrentEntry();
    void showStepIndex();
    void showEditFrame(bool on);
    void showPanel(QWidget& panel, bool on);
    void showLibrary();
    void showSaved();
    void showUndo();

    void noteDown(pitch::NoteNumber note) override;
    void noteUp(pitch::NoteNumber note) override;
    void stepKeyDown(bool forward) override;
    void semitoneKeyDown(bool upwards) override;
    void semitoneKeyUp() override;

    void showPlaying(bool playing) override;
    void enableCanc(bool enabled) override;
    void showEntryNumber(const QString& text) override;
    void showEntryName(const QString& text) override;
    void markKey(pitch::NoteIndex key, bool on) override;
    void focusPlay() override;
    void openEditFrame() override;
    void hideEditFrame() override;
    void showStepEntry(const StepEntry& entry) override;
    void untickLoop() override;

    Services services_;
    std::unique_ptr<Ui::frmComposer> ui_;
    Composition composition_;
    MelodyEditor editor_;
    ComputerKeys keys_;
    PollingRuntime runtime_;
    Playback playback_;
    RangeArrows arrows_;
    MelodyLibrary library_;
    BookmarkCommands bookmarks_;
    MelodyExport export_;
    Floppy floppy_;
    UnsavedMelody unsaved_;
    ComposerMenu menu_;
    BrowserPanel* browser_;
    BookmarkPanel* bookmarkPanel_;

    QString melodyFile_;                             ///< to be opened when the window comes up
    int shownNumber_ = 0;                            ///< of the entry in `lblNe`, 0 = none
    pitch::NoteNumber semitoneNote_ = pitch::kRest;  ///< the one that an arrow key holds
    bool typed_ = false;                             ///< a key of this pass was text or a shortcut
    bool polling_ = false;
    bool activated_ = true;  ///< what becoming active brings is done
    bool closed_ = false;
};
