#include "composer/library/bookmark_commands.h"

#include "composer/melody/melody_editor.h"
#include "support/test_world.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

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

    /// What is said to the name of a new bookmark, or of the second one.
    std::string reply(const QString& name, bool renames) {
        dialogs.inputs.push_back(name);
        const Bookmarks before = composition.bookmarks;
        const bool changes = renames ? commands.rename(1) : commands.add();
        EXPECT_EQ(changes, composition.bookmarks != before);
        const auto lines = std::exchange(dialogs.lines, {});
        return lines.size() > 1 ? lines[1] : std::string();
    }
};

TEST_F(BookmarkTest, NamesKeepToTheLine) {
    const char* const unknown = "message: Nome con carattere non consentito !!!";
    const char* const invalid = "message: Nome non valido !!!";
    composition.range.select(2, 7, 20);
    for (const char* refused : {"a;b", "a÷b", "曲"}) {
        EXPECT_EQ(reply(refused, false), unknown);
        EXPECT_TRUE(composition.bookmarks.empty());
    }
    for (const char* name : {"  ", "  quindici lettere ", "b"})
        EXPECT_EQ(reply(name, false), "");
    EXPECT_EQ(composition.bookmarks.items(),
              (QStringList{"1 ÷ 20 ÷ Tutto", "3 ÷ 8 ÷ quindici let", "3 ÷ 8 ÷ b"}));
    for (const QChar c : QStringLiteral(",.;:|\\/!%&()='^+*°§<>÷曲"))
        EXPECT_EQ(reply("dodicilettere" + QString(c), true), invalid) << int{c.unicode()};
    for (const char* name : {" dodici-lettere ", ""})
        EXPECT_EQ(reply(name, true), "");
    EXPECT_EQ(composition.bookmarks.items()[1], "3 ÷ 8 ÷ dodici-lette");
    editor.reset();
    EXPECT_FALSE(commands.add()) << "an empty melody has no range";
}

TEST_F(BookmarkTest, KeepToTheMelodyAndToTheirPlaces) {
    using Direction = BookmarkCommands::Direction;
    editor.setBookmarks({"1 ÷ 20 ÷ Tutto", "19 ÷ 2147483647 ÷ b"});
    EXPECT_EQ(commands.move(1, Direction::Up), 1) << "two are too few";
    editor.setBookmarks({"1 ÷ 20 ÷ Tutto", "19 ÷ 2147483647 ÷ b", "-2147483648 ÷ 5 ÷ c", "niente"});
    for (const auto& [row, start, end] : {std::tuple(1, 18, 19), {2, 0, 4}}) {
        EXPECT_TRUE(commands.activate(row));
        EXPECT_EQ(std::pair(int{composition.range.start()}, int{composition.range.end()}),
                  std::pair(start, end));
    }
    EXPECT_FALSE(commands.activate(3) || commands.modify(3) || commands.rename(3));
    EXPECT_EQ(commands.move(3, Direction::Down), 3);
    EXPECT_EQ(commands.move(0, Direction::Up), 0);
    EXPECT_EQ(commands.move(0, Direction::Down) + commands.move(1, Direction::Up), 1);
    EXPECT_EQ(commands.move(2, Direction::Down), 3);
    EXPECT_TRUE(commands.modify(1));
    EXPECT_EQ(composition.bookmarks.items(),
              (QStringList{"1 ÷ 20 ÷ Tutto", "1 ÷ 5 ÷ b", "niente", "-2147483648 ÷ 5 ÷ c"}));
    EXPECT_FALSE(commands.remove(-1) || commands.remove(0) || commands.remove(4));
    EXPECT_TRUE(commands.remove(3));
    EXPECT_EQ(commands.move(1, Direction::Up), 0) << "three are enough";
    EXPECT_TRUE(commands.remove(1) && commands.remove(1));
    EXPECT_TRUE(composition.bookmarks.empty());
}

}  // namespace
