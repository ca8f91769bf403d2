#include "composer/library_controls.h"

#include "composer/composer_keyboard.h"
#include "composer/composer_menu.h"
#include "composer/composer_model.h"
#include "composer/composer_view.h"
#include "composer/melody_presenter.h"
#include "composer/panels/browser_panel.h"
#include "composer/side_panels.h"

LibraryControls::LibraryControls(Dialogs& dialogs, ComposerModel& model, SidePanels& side,
                                 ComposerView& view, MelodyPresenter& presenter,
                                 ComposerKeyboard& keyboard, ComposerMenu& menu)
    : dialogs_(dialogs),
      model_(model),
      side_(side),
      view_(view),
      presenter_(presenter),
      keyboard_(keyboard) {
    const BrowserPanel* browser = &side_.browser();
    connect(browser, &BrowserPanel::playRequested, this, &LibraryControls::cmdEseguiFile_Click);
    connect(browser, &BrowserPanel::createFolderRequested, this, &LibraryControls::cmdMkdir_Click);
    connect(browser, &BrowserPanel::removeRequested, this, &LibraryControls::cmdDelete_Click);
    connect(browser, &BrowserPanel::renameRequested, this, &LibraryControls::cmdRename_Click);
    connect(&menu, &ComposerMenu::openChosen, this, &LibraryControls::mnuApri_Click);
    connect(&menu, &ComposerMenu::saveChosen, this, &LibraryControls::mnuSalva_Click);
    connect(&menu, &ComposerMenu::saveAsChosen, this, &LibraryControls::mnuSaveAs_Click);
    connect(&menu, &ComposerMenu::importChosen, this, &LibraryControls::mnuImporta_Click);
}

void LibraryControls::openAtStart(const QString& melodyFile) {
    if (offerUnsaved() || melodyFile.isEmpty())
        return;
    if (melody_import::isForeign(melodyFile)) {
        importFile(melodyFile);
        return;
    }
    model_.unsaved.keep();
    showOpened(model_.library.openFile(melodyFile));
}

/// Whether the user took one up again.
bool LibraryControls::offerUnsaved() {
    const EditOutcome outcome = model_.unsaved.offer();
    if (outcome.changed) {
        presenter_.presentTempoAndInstrument();
        presenter_.present(outcome);
    }
    return outcome.changed;
}

/// An open browser stays as it is.
void LibraryControls::mnuApri_Click() {
    BrowserPanel& browser = side_.browser();
    if (browser.isHidden() || model_.library.entries().empty())
        model_.library.fill();
    side_.showBrowser(true);
    browser.showEntries(model_.library);
    browser.focusList();
}

void LibraryControls::mnuSalva_Click() {
    save();
}

bool LibraryControls::save() {
    keyboard_.releaseHeldKeys();
    const bool saved = model_.library.save(side_.browser().row());
    if (saved)
        showSaved();
    return saved;
}

bool LibraryControls::mayClose() {
    while (model_.editor.modified() || !model_.unsaved.othersKept()) {
        switch (confirmClosing()) {
            case Closing::Stay:
                return false;
            case Closing::Discard:
                return true;
            case Closing::Save:
                if (!save())
                    return false;
        }
    }
    return true;
}

/// Saving is offered for the melody that is here, not for one that made way for it and could not be
/// kept.
Closing LibraryControls::confirmClosing() {
    const QString question = tr("La melodia non è stata salvata. Chiudere comunque ?");
    if (model_.editor.modified() && model_.library.canSave())
        return dialogs_.confirmClosing(question);
    return dialogs_.confirm(question) ? Closing::Discard : Closing::Stay;
}

void LibraryControls::mnuSaveAs_Click() {
    keyboard_.releaseHeldKeys();
    if (model_.library.saveAs(side_.browser().row()))
        showSaved();
}

void LibraryControls::showSaved() {
    model_.unsaved.forget();
    BrowserPanel& browser = side_.browser();
    browser.showEntries(model_.library);
    if (!model_.composition.source.outside)
        browser.select(model_.library.rowOf(model_.library.CurrentMelodyName()));
    presenter_.showMelody();
    view_.speech().saved();
}

/// A melody takes the place of the one that plays.
void LibraryControls::cmdEseguiFile_Click(int row) {
    Playback& playback = model_.playback;
    keyboard_.releaseHeldKeys();
    if (model_.library.isMelody(row))
        playback.stop();
    model_.unsaved.keep();
    const MelodyLibrary::Activated activated = model_.library.activate(row);
    side_.browser().showEntries(model_.library);
    if (!showOpened(activated))
        return;
    if (activated == MelodyLibrary::Activated::Melody && !playback.player().playing())
        playback.clickPlay();
}

/// Shows the melody that was opened; false if none was.
bool LibraryControls::showOpened(MelodyLibrary::Activated activated) {
    if (activated == MelodyLibrary::Activated::Nothing ||
        activated == MelodyLibrary::Activated::Folder)
        return false;
    showNewMelody();
    if (!model_.composition.bookmarks.empty())
        side_.showBookmarks(true);
    return true;
}

/// Another melody than before.
void LibraryControls::showNewMelody() {
    view_.showEntryNumber({});
    view_.showEntryName({});
    presenter_.presentTempoAndInstrument();
    side_.showEditFrame(false);
    presenter_.showMelody();
    view_.speech().opened();
}

void LibraryControls::mnuImporta_Click() {
    keyboard_.releaseHeldKeys();
    const QString path = model_.importer.askFile();
    if (!path.isEmpty())
        importFile(path);
}

/// A melody takes the place of the one that plays.
void LibraryControls::importFile(const QString& path) {
    model_.playback.stop();
    model_.unsaved.keep();
    if (model_.importer.open(path))
        showNewMelody();
}

void LibraryControls::cmdMkdir_Click() {
    keyboard_.releaseHeldKeys();
    if (model_.library.createFolder())
        side_.browser().showEntries(model_.library);
}

void LibraryControls::cmdDelete_Click(int row) {
    keyboard_.releaseHeldKeys();
    if (model_.library.remove(row))
        side_.browser().showEntries(model_.library);
}

void LibraryControls::cmdRename_Click(int row) {
    keyboard_.releaseHeldKeys();
    if (model_.library.rename(row))
        side_.browser().showEntries(model_.library);
    presenter_.showMelody();
}
