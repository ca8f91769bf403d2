#pragma once

#include "composer/library/bookmark_commands.h"

#include <QObject>

class ComposerKeyboard;
class ComposerMenu;
class ComposerView;
class MelodyPresenter;
class SidePanels;
struct ComposerModel;

/// The bookmarks' frame and the menu item that adds one.
class BookmarkControls : public QObject {
    Q_OBJECT

public:
    BookmarkControls(ComposerModel& model, SidePanels& side, ComposerView& view,
                     MelodyPresenter& presenter, ComposerKeyboard& keyboard, ComposerMenu& menu);

private Q_SLOTS:
    void cmdAddBm_Click();
    void cmdPlayBm_Click(int row);
    void cmdRenameBm_Click(int row);
    void cmdModBm_Click(int row);
    void cmdMbUd_Click(int row, BookmarkCommands::Direction direction);
    void cmdDelBm_Click(int row);

private:
    ComposerModel& model_;
    SidePanels& side_;
    ComposerView& view_;
    MelodyPresenter& presenter_;
    ComposerKeyboard& keyboard_;
};
