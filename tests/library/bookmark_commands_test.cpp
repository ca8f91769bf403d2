#include "composer/library/bookmark_commands.h"

#include "composer/melody/melody_editor.h"
#include "support/test_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace {

struct BookmarkTest : testing::Test {
    ScriptedDialogs dialogs;
    Composition composition;
    MelodyEditor editor{composition};
    BookmarkCommands commands{dialogs, composition, editor};

    void SetUp() override {
        for (int i = 0; i < 20; ++i)
            editor.insertRest();
    }

    void add(int start, int end, const QString& name) {
        composition.range.select(start - 1, end - 1, 20);
        dialogs.inputs.push_back(name);
        commands.add();
    }
};

TEST_F(BookmarkTest, AreAddedUnderAName) {
    add(3, 8, "  intro ");
    add(4, 4, "quindici lettere");
    add(1, 2, "a;b");
    add(1, 2, "a÷b");
    add(1, 2, "曲");
    add(1, 2, "  ");
    EXPECT_EQ(composition.bookmarks.items(),
              (QStringList{"1 ÷ 20 ÷ Tutto", "3 ÷ 8 ÷ intro", "4 ÷ 4 ÷ quindici let"}));
    const std::string ask = "input: Nome riferimento (Max 12c.) |  | ";
    const std::string refused = "message: Nome con carattere non consentito !!!";
    EXPECT_THAT(dialogs.lines,
                ElementsAre(ask, ask, ask, refused, ask, refused, ask, refused, ask));
    editor.undo();
    EXPECT_EQ(composition.bookmarks.items().size(), 2);
    editor.reset();
    EXPECT_FALSE(commands.add()) << "an empty melody has no range";
}

TEST_F(BookmarkTest, AreActivatedModifiedAndRenamed) {
    editor.setBookmarks({"1 ÷ 20 ÷ Tutto", "3 ÷ 8 ÷ intro", "19 ÷ 2147483647 ÷ b",
                         "-2147483648 ÷ 5 ÷ c", "niente"});
    const std::pair<int, int> ranges[] = {{0, 19}, {2, 7}, {18, 19}, {0, 4}};
    for (int row = 0; row < 4; ++row) {
        EXPECT_TRUE(commands.activate(row));
        EXPECT_EQ(composition.range.start(), ranges[row].first) << row;
        EXPECT_EQ(composition.range.end(), ranges[row].second) << row;
    }
    EXPECT_FALSE(commands.activate(4));
    EXPECT_FALSE(commands.activate(-1));
    EXPECT_FALSE(commands.modify(4));
    EXPECT_TRUE(commands.modify(1));
    EXPECT_EQ(composition.bookmarks.items()[1], "1 ÷ 5 ÷ intro");

    dialogs.inputs = {"a-b", {}, "曲"};
    EXPECT_TRUE(commands.rename(1));
    EXPECT_FALSE(commands.rename(1) || commands.rename(1));
    EXPECT_EQ(composition.bookmarks.items()[1], "1 ÷ 5 ÷ a-b");
    const std::string ask = "input: Rinominare | Rinomina riferimento | ";
    const std::string refused = "message: Nome non valido !!!";
    EXPECT_THAT(std::exchange(dialogs.lines, {}),
                ElementsAre(ask + "intro", ask + "a-b", ask + "a-b", refused));
    for (const QChar c : QStringLiteral(",.;:|\\/!%&()='^+*°§<>÷")) {
        dialogs.inputs = {"dodicilettere" + QString(c)};
        EXPECT_FALSE(commands.rename(1));
        EXPECT_EQ(dialogs.lines.back(), refused) << int{c.unicode()};
    }
    dialogs.inputs = {"dodicilettere e altre"};
    EXPECT_TRUE(commands.rename(1));
    EXPECT_EQ(composition.bookmarks.items()[1], "1 ÷ 5 ÷ dodiciletter");
}

TEST_F(BookmarkTest, AreMovedAndDeletedButNotTheFirst) {
    using Direction = BookmarkCommands::Direction;
    add(1, 2, "a");
    EXPECT_EQ(commands.move(1, Direction::Up), 1) << "two are too few";
    add(3, 4, "b");
    EXPECT_EQ(commands.move(2, Direction::Down), 2);
    EXPECT_EQ(commands.move(0, Direction::Up), 0);
    EXPECT_EQ(commands.move(-1, Direction::Down), -1);
    EXPECT_EQ(commands.move(2, Direction::Up), 1);
    EXPECT_EQ(commands.move(1, Direction::Up), 0);
    EXPECT_EQ(composition.bookmarks.items(),
              (QStringList{"3 ÷ 4 ÷ b", "1 ÷ 20 ÷ Tutto", "1 ÷ 2 ÷ a"}));
    editor.insertRest();
    EXPECT_EQ(composition.bookmarks.items().front(), "1 ÷ 21 ÷ Tutto") << "b is gone";

    EXPECT_FALSE(commands.remove(0));
    EXPECT_FALSE(commands.remove(-1));
    EXPECT_TRUE(commands.remove(1));
    EXPECT_EQ(composition.bookmarks.items().size(), 2);
    EXPECT_TRUE(commands.remove(1));
    EXPECT_TRUE(composition.bookmarks.empty());
}

}  // namespace
