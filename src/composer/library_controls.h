#pragma once

#include "composer/library/melody_library.h"
#include "platform/dialogs.h"

#include <QObject>
#include <QString>

class ComposerKeyboard;
class ComposerMenu;
class ComposerView;
class MelodyPresenter;
class SidePanels;
struct ComposerModel;

/// The browser and the menu items that open and save melodies.
class LibraryControls : public QObject {
    Q_OBJECT

public:
    LibraryControls(Dialogs& dialogs, ComposerModel& model, SidePanels& side, ComposerView& view,
                    MelodyPresenter& presenter, ComposerKeyboard& keyboard, ComposerMenu& menu);

    /// As the window comes up: offers what an earlier run had no time to save; unless it is here
    /// again, opens a file, if one is named.
    void openAtStart(const QString& melodyFile);

    /// Whether the window may close: asks as long as that would lose something, and saves if the
    /// user wants it. What is not saved then is given up.
    bool mayClose();

private Q_SLOTS:
    void mnuApri_Click();
    void mnuSalva_Click();
    void mnuSaveAs_Click();
    void mnuImporta_Click();
    void cmdEseguiFile_Click(int row);
    void cmdMkdir_Click();
    void cmdDelete_Click(int row);
    void cmdRename_Click(int row);

private:
    bool offerUnsaved();
    bool save();
    Closing confirmClosing();
    bool showOpened(MelodyLibrary::Activated activated);
    void showNewMelody();
    void importFile(const QString& path);
    void showSaved();

    Dialogs& dialogs_;
    ComposerModel& model_;
    SidePanels& side_;
    ComposerView& view_;
    MelodyPresenter& presenter_;
    ComposerKeyboard& keyboard_;
};
