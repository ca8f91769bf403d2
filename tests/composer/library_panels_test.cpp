#include "composer/frmCopyFromA.h"
#include "composer/library/floppy.h"
#include "composer/panels/bookmark_panel.h"
#include "composer/panels/browser_panel.h"
#include "library/library_fixture.h"
#include "support/window_driver.h"

#include <QCoreApplication>
#include <QListWidget>
#include <QMouseEvent>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct LibraryPanelsTest : LibraryFixture {
    Lines told;

    void tell(const char* what, int row) { told.push_back(what + (" " + std::to_string(row))); }
    Lines takeTold() { return std::exchange(told, {}); }

    auto teller(const char* what) {
        return [this, what](int row) { tell(what, row); };
    }

    /// Opens a window and lets it become the active one.
    static void open(QWidget& panel) {
        panel.show();
        QCoreApplication::processEvents();
    }

    static Lines texts(const QListWidget& list) {
        Lines lines;
        for (int i = 0; i < list.count(); ++i)
            lines.push_back(list.item(i)->text().toStdString());
        return lines;
    }

    static void doubleClick(QListWidget& list, int row) {
        const QPointF place = list.visualItemRect(list.item(row)).center();
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
            const auto buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
            QMouseEvent event(type, place, list.viewport()->mapToGlobal(place), Qt::LeftButton,
                              buttons, Qt::NoModifier);
            QCoreApplication::sendEvent(list.viewport(), &event);
        }
    }
};

/// The browser by itself, over a root with a folder and two melodies.
struct BrowserPanelTest : LibraryPanelsTest {
    BrowserPanel panel;
    WindowDriver user{panel};
    QListWidget& list = user.find<QListWidget>("List1");

    BrowserPanelTest() {
        for (const char* file : {"Esempi\\a.mel", "alba.mel", "sera.mel"})
            folders.put(kRoot + file);
        const auto on = [this](auto signal, auto act) {
            QObject::connect(&panel, signal, &panel, std::move(act));
        };
        on(&BrowserPanel::playRequested, teller("play"));
        on(&BrowserPanel::createFolderRequested, [this] { tell("create", panel.row()); });
        on(&BrowserPanel::removeRequested, teller("remove"));
        on(&BrowserPanel::renameRequested, teller("rename"));
        on(&BrowserPanel::hideRequested, [this] { tell("hide", 0); });
        refill();
        panel.resize(panel.sizeHint());
        open(panel);
    }

    void refill() {
        library.fill();
        panel.showEntries(library);
    }
};

struct BookmarkPanelTest : LibraryPanelsTest {
    BookmarkPanel panel;
    WindowDriver user{panel};
    QListWidget& list = user.find<QListWidget>("lstBookMark");

    BookmarkPanelTest() {
        using Direction = BookmarkCommands::Direction;
        const auto on = [this](auto signal, auto act) {
            QObject::connect(&panel, signal, &panel, std::move(act));
        };
        on(&BookmarkPanel::addRequested, [this] { tell("add", panel.row()); });
        on(&BookmarkPanel::playRequested, teller("play"));
        on(&BookmarkPanel::renameRequested, teller("rename"));
        on(&BookmarkPanel::modifyRequested, teller("modify"));
        on(&BookmarkPanel::moveRequested, [this](int row, Direction direction) {
            tell(direction == Direction::Up ? "up" : "down", row);
        });
        on(&BookmarkPanel::removeRequested, teller("remove"));
        on(&BookmarkPanel::hideRequested, [this] { tell("hide", 0); });
        open(panel);
    }
};

}  // namespace

TEST_F(BrowserPanelTest, EveryWayToActReportsTheSelectedRow) {
    EXPECT_THAT(texts(list), ElementsAre("» Esempi", "alba", "sera"));
    EXPECT_EQ(user.text("lblPercorso"), QStringLiteral("..\\Melodie\\"));
    user.click("cmdDelete");
    EXPECT_THAT(takeTold(), ElementsAre("remove -1"));

    doubleClick(list, 2);
    EXPECT_THAT(takeTold(), ElementsAre("play 2"));
    panel.focusList();
    user.type(Qt::Key_Up);
    user.type(Qt::Key_Return);
    user.type(Qt::Key_Enter);
    EXPECT_THAT(takeTold(), ElementsAre("play 1", "play 1"));

    for (const char* button : {"cmdEseguiFile", "cmdRename", "cmdDelete", "cmdMkdir", "cmdHideFr2"})
        user.click(button);
    EXPECT_THAT(takeTold(), ElementsAre("play 1", "rename 1", "remove 1", "create 1", "hide 0"));
    user.find<QWidget>("cmdMkdir").setFocus();
    user.type(Qt::Key_Return);
    EXPECT_THAT(takeTold(), IsEmpty());
}

TEST_F(BrowserPanelTest, TheSelectedEntryOutlivesARefillOfItsFolderOnly) {
    panel.select(2);
    folders.put(kRoot + "mezzanotte.mel");
    refill();
    EXPECT_EQ(panel.row(), 3);

    folders.removeFile(kRoot + "sera.mel");
    refill();
    EXPECT_EQ(panel.row(), -1);
    panel.focusList();
    user.type(Qt::Key_Up);
    EXPECT_EQ(panel.row(), 1);

    folders.put(kRoot + "Esempi\\alba.mel");
    library.activate(0);
    panel.showEntries(library);
    EXPECT_EQ(panel.row(), -1);
    EXPECT_EQ(user.find<QWidget>("lblPercorso").toolTip(), QStringLiteral("..\\Melodie\\Esempi\\"));
}

TEST_F(BrowserPanelTest, ALongFirstNameMakesNoRowWiderThanTheList) {
    folders.put(kRoot + QString(200, u'A') + ".mel");
    refill();
    list.doItemsLayout();
    EXPECT_LE(list.visualItemRect(list.item(1)).width(), list.viewport()->width());
    EXPECT_LT(list.visualItemRect(list.item(1)).bottom(),
              list.visualItemRect(list.item(2)).top() + 1);
}

TEST_F(BookmarkPanelTest, EveryWayToActReportsTheSelectedRow) {
    panel.showBookmarks({"1 ÷ 9 ÷ Tutto", "2 ÷ 3 ÷ a", "4 ÷ 5 ÷ b"});
    doubleClick(list, 1);
    list.setFocus();
    user.type(Qt::Key_Return);
    EXPECT_THAT(takeTold(), ElementsAre("play 1", "play 1"));
    for (const char* button : {"cmdPlayBm", "cmdRenameBm", "cmdModBm", "cmdMbUd_0", "cmdMbUd_1",
                               "cmdDelBm", "cmdAddBm", "cmdHideBm"})
        user.click(button);
    EXPECT_THAT(takeTold(), ElementsAre("play 1", "rename 1", "modify 1", "up 1", "down 1",
                                        "remove 1", "add 1", "hide 0"));
}

TEST_F(BookmarkPanelTest, TheSelectionFollowsChangesAndADeletedBookmarkLeavesNone) {
    panel.showBookmarks({"1 ÷ 9 ÷ Tutto", "2 ÷ 3 ÷ a", "4 ÷ 5 ÷ b"});
    panel.select(2);
    panel.showBookmarks({"1 ÷ 8 ÷ Tutto", "2 ÷ 3 ÷ a", "4 ÷ 5 ÷ nuovo"});
    EXPECT_EQ(panel.row(), 2);
    panel.showBookmarks({"1 ÷ 8 ÷ Tutto", "4 ÷ 5 ÷ nuovo"});
    EXPECT_EQ(panel.row(), 1);
    panel.showBookmarks({});
    EXPECT_EQ(panel.row(), -1);
    user.click("cmdDelBm");
    EXPECT_THAT(takeTold(), ElementsAre("remove -1"));
}

struct CopyWindowTest : LibraryPanelsTest {
    Floppy floppy{world.services(), composition, library, [](bool) {}};
    frmCopyFromA window{floppy, library.pathLabel(), nullptr};
    WindowDriver user{window};
    QListWidget& list = user.find<QListWidget>("List1");

    /// Opens the window for something that is done in it; Esc closes it.
    void open(std::function<void()> act) {
        world.runtime.at(world.runtime.now() + 1ms, std::move(act));
        world.runtime.at(world.runtime.now() + 2ms, [this] { user.type(Qt::Key_Escape); });
        window.exec();
        EXPECT_FALSE(window.isVisible());
    }
};

TEST_F(CopyWindowTest, TheSelectedMelodiesAreCopiedAndHowFarItCameIsSaid) {
    for (const char* name : {"a", "b", "c", "d"})
        folders.put(QStringLiteral("A:\\%1.mel").arg(name), name);
    folders.hasDriveA = false;
    open([this] { EXPECT_EQ(list.count(), 0); });
    folders.hasDriveA = true;
    open([this] {
        EXPECT_TRUE(window.isModal());
        EXPECT_EQ(window.focusWidget(), &user.find<QWidget>("cmdChiudi"));
        EXPECT_EQ(user.text("lblCurrPath"), QStringLiteral("..\\Melodie\\"));
        EXPECT_THAT(texts(list), ElementsAre("a", "b", "c", "d"));
        EXPECT_FALSE(user.enabled("cmdCopia"));

        list.item(2)->setSelected(true);
        list.item(0)->setSelected(true);
        user.click("cmdCopia");
        EXPECT_EQ(user.text("lblEsito"), QStringLiteral("Melodie copiate: 2 di 2"));
        EXPECT_THAT(folders.files(kRoot, "*"), ElementsAre("a.mel", "c.mel"));

        doubleClick(list, 3);
        EXPECT_EQ(folders.at(kRoot + "d.mel"), "d");
        folders.writeFailure.number = file_error::kDiskFull;
        list.selectAll();
        user.click("cmdCopia");
        EXPECT_EQ(user.text("lblEsito"), QStringLiteral("Melodie copiate: 0 di 4"));
    });
}
