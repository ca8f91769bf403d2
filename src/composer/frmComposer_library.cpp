// What the window does with the library of melodies, the bookmarks and the floppy disk.

#include "composer/export_progress.h"
#include "composer/frmComposer.h"
#include "composer/frmCopyFromA.h"
#include "composer/panels/bookmark_panel.h"
#include "composer/panels/browser_panel.h"

#include <utility>

void frmComposer::connectLibrary() {
    BrowserPanel::Handlers browser;
    browser.play = [this](int row) { cmdEseguiFile_Click(row); };
    browser.createFolder = [this] { cmdMkdir_Click(); };
    browser.remove = [this](int row) { cmdDelete_Click(row); };
    browser.rename = [this](int row) { cmdRename_Click(row); };
    browser.hide = [this] { showPanel(*browser_, false); };
    browser_->setHandlers(std::move(browser));

    BookmarkPanel::Handlers bookmarks;
    bookmarks.add = [this] { cmdAddBm_Click(); };
    bookmarks.play = [this](int row) { cmdPlayBm_Click(row); };
    bookmarks.rename = [this](int row) { cmdRenameBm_Click(row); };
    bookmarks.modify = [this](int row) { cmdModBm_Click(row); };
    bookmarks.move = [this](int row, BookmarkCommands::Direction direction) {
        cmdMbUd_Click(row, direction);
    };
    bookmarks.remove = [this](int row) { cmdDelBm_Click(row); };
    bookmarks.hide = [this] { showPanel(*bookmarkPanel_, false); };
    bookmarkPanel_->setHandlers(std::move(bookmarks));
}

/// An open browser stays as it is.
void frmComposer::mnuApri_Click() {
    if (browser_->isHidden() || library_.entries().empty())
        library_.fill();
    showLibrary();
    browser_->focusList();
}

void frmComposer::mnuSalva_Click() {
    silenceHands();
    if (library_.save(browser_->row()))
        showSaved();
}

void frmComposer::mnuSaveAs_Click() {
    silenceHands();
    if (library_.saveAs(browser_->row()))
        showSaved();
}

/// What an earlier run had no time to save; whether it is here again.
bool frmComposer::offerUnsaved() {
    const EditOutcome outcome = unsaved_.offer();
    if (outcome.changed) {
        takeTempoAndInstrument();
        take(outcome);
    }
    return outcome.changed;
}

/// The melody that the window was opened for.
void frmComposer::openMelodyFile() {
    const QString path = std::exchange(melodyFile_, {});
    if (path.isEmpty())
        return;
    unsaved_.keep();
    showOpened(library_.openFile(path));
}

void frmComposer::showSaved() {
    unsaved_.forget();
    browser_->showEntries(library_);
    if (!composition_.source.outside)
        browser_->select(library_.rowOf(library_.CurrentMelodyName()));
    showMelody();
}

void frmComposer::mnuEsportaAudio_Click() {
    silenceHands();
    playback_.stop();
    ExportProgress progress(services_.runtime, *this);
    export_.exportAudio([&progress](double share) { return progress.show(share); });
}

void frmComposer::mnuEsportaMidi_Click() {
    silenceHands();
    playback_.stop();
    export_.exportMidi();
}

void frmComposer::mnuSalvaA_Click() {
    silenceHands();
    floppy_.save();
}

void frmComposer::mnuCopyFromA_Click() {
    silenceHands();
    frmCopyFromA(floppy_, library_.pathLabel(), this).exec();
    browser_->showEntries(library_);
}

/// A melody takes the place of the one that plays.
void frmComposer::cmdEseguiFile_Click(int row) {
    silenceHands();
    if (library_.isMelody(row))
        playback_.stop();
    unsaved_.keep();
    const MelodyLibrary::Activated activated = library_.activate(row);
    browser_->showEntries(library_);
    if (!showOpened(activated))
        return;
    if (activated == MelodyLibrary::Activated::Melody && !playback_.player().playing())
        playback_.clickPlay();
}

/// Shows the melody that was opened; false if none was.
bool frmComposer::showOpened(MelodyLibrary::Activated activated) {
    if (activated == MelodyLibrary::Activated::Nothing ||
        activated == MelodyLibrary::Activated::Folder)
        return false;
    showEntryNumber({});
    showEntryName({});
    takeTempoAndInstrument();
    showEditFrame(false);
    showMelody();
    if (!composition_.bookmarks.empty())
        showPanel(*bookmarkPanel_, true);
    return true;
}

void frmComposer::cmdMkdir_Click() {
    silenceHands();
    if (library_.createFolder())
        browser_->showEntries(library_);
}

void frmComposer::cmdDelete_Click(int row) {
    silenceHands();
    if (library_.remove(row))
        browser_->showEntries(library_);
}

void frmComposer::cmdRename_Click(int row) {
    silenceHands();
    if (library_.rename(row))
        browser_->showEntries(library_);
    showMelody();
}

void frmComposer::cmdAddBm_Click() {
    if (!bookmarks_.canAdd())
        return;
    silenceHands();
    showPanel(*bookmarkPanel_, true);
    bookmarks_.add();
    showMelody();
}

void frmComposer::cmdPlayBm_Click(int row) {
    if (playback_.player().playing() || !bookmarks_.activate(row) || refusesDamaged())
        return;
    showRange();
    playback_.clickPlay();
}

void frmComposer::cmdRenameBm_Click(int row) {
    silenceHands();
    bookmarks_.rename(row);
    showMelody();
}

void frmComposer::cmdModBm_Click(int row) {
    bookmarks_.modify(row);
    showMelody();
}

void frmComposer::cmdMbUd_Click(int row, BookmarkCommands::Direction direction) {
    const int place = bookmarks_.move(row, direction);
    showMelody();
    bookmarkPanel_->select(place);
}

void frmComposer::cmdDelBm_Click(int row) {
    if (playback_.player().playing())
        return;
    bookmarks_.remove(row);
    showMelody();
}
