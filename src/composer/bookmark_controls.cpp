#include "composer/bookmark_controls.h"

#include "composer/composer_keyboard.h"
#include "composer/composer_menu.h"
#include "composer/composer_model.h"
#include "composer/composer_view.h"
#include "composer/melody_presenter.h"
#include "composer/panels/bookmark_panel.h"
#include "composer/side_panels.h"

BookmarkControls::BookmarkControls(ComposerModel& model, SidePanels& side, ComposerView& view,
                                   MelodyPresenter& presenter, ComposerKeyboard& keyboard,
                                   ComposerMenu& menu)
    : model_(model), side_(side), view_(view), presenter_(presenter), keyboard_(keyboard) {
    const BookmarkPanel* panel = &side_.bookmarks();
    connect(panel, &BookmarkPanel::addRequested, this, &BookmarkControls::cmdAddBm_Click);
    connect(panel, &BookmarkPanel::playRequested, this, &BookmarkControls::cmdPlayBm_Click);
    connect(panel, &BookmarkPanel::renameRequested, this, &BookmarkControls::cmdRenameBm_Click);
    connect(panel, &BookmarkPanel::modifyRequested, this, &BookmarkControls::cmdModBm_Click);
    connect(panel, &BookmarkPanel::moveRequested, this, &BookmarkControls::cmdMbUd_Click);
    connect(panel, &BookmarkPanel::removeRequested, this, &BookmarkControls::cmdDelBm_Click);
    connect(&menu, &ComposerMenu::addBookmarkChosen, this, &BookmarkControls::cmdAddBm_Click);
}

void BookmarkControls::cmdAddBm_Click() {
    if (!model_.bookmarks.canAdd())
        return;
    keyboard_.releaseHeldKeys();
    side_.showBookmarks(true);
    model_.bookmarks.add();
    presenter_.showMelody();
}

void BookmarkControls::cmdPlayBm_Click(int row) {
    Playback& playback = model_.playback;
    if (playback.player().playing() || !model_.bookmarks.activate(row) ||
        presenter_.reportIfDamaged())
        return;
    view_.showRange();
    playback.clickPlay();
}

void BookmarkControls::cmdRenameBm_Click(int row) {
    keyboard_.releaseHeldKeys();
    model_.bookmarks.rename(row);
    presenter_.showMelody();
}

void BookmarkControls::cmdModBm_Click(int row) {
    model_.bookmarks.modify(row);
    presenter_.showMelody();
}

void BookmarkControls::cmdMbUd_Click(int row, BookmarkCommands::Direction direction) {
    const int place = model_.bookmarks.move(row, direction);
    presenter_.showMelody();
    side_.bookmarks().select(place);
}

void BookmarkControls::cmdDelBm_Click(int row) {
    if (model_.playback.player().playing())
        return;
    model_.bookmarks.remove(row);
    presenter_.showMelody();
}
