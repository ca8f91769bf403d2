#include "composer/melody/melody_editor.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

class MelodyEditorTest : public ::testing::Test {
protected:
    using Act = std::function<void()>;

    void open(const MelodyTexts& texts) {
        editor.open({texts, {}, QStringLiteral("aria"), 60, 16});
    }

    void insertNote(pitch::NoteNumber note) {
        composition.activeNote = note;
        editor.insertNote();
    }

    void stepTo(int index) {
        composition.step.active = true;
        composition.step.index = static_cast<std::int16_t>(index);
    }

    std::string texts() const {
        const MelodyTexts t = composition.melody.texts();
        return (t.notes + u' ' + t.durations + u' ' + t.attributes).toStdString();
    }

    std::string textsAndBookmarks() const {
        return texts() + ' ' + composition.bookmarks.items().join(u'|').toStdString();
    }

    std::string state() const {
        return textsAndBookmarks() + ' ' + std::to_string(composition.range.start()) + '-' +
               std::to_string(composition.range.end());
    }

    /// Does something, and notes it down if it is to be taken back.
    void perform(const Act& act) {
        const std::string before = state();
        const std::string undoable = textsAndBookmarks();
        act();
        if (textsAndBookmarks() == undoable)
            return;
        done.emplace_back(before, state());
        undone.clear();
    }

    /// Takes the last change back, or does it again.
    void travel(bool back) {
        auto& from = back ? done : undone;
        EXPECT_EQ(back ? editor.canUndo() : editor.canRedo(), !from.empty());
        back ? editor.undo() : editor.redo();
        if (from.empty())
            return;
        EXPECT_EQ(state(), back ? from.back().first : from.back().second);
        (back ? undone : done).push_back(from.back());
        from.pop_back();
    }

    Composition composition;
    MelodyEditor editor{composition};
    std::vector<std::pair<std::string, std::string>> done;  ///< before and after each change
    std::vector<std::pair<std::string, std::string>> undone;
};

TEST_F(MelodyEditorTest, EveryOperationLeavesItsTextsItsRangeAndAWayBack) {
    EntrySettings& settings = composition.settings;
    using Attribute = EntrySettings::Attribute;
    const auto choose = [&settings](Attribute attribute) {
        if (settings.attribute() != attribute)
            settings.clickAttribute(attribute);
    };
    const auto with = [choose](Attribute attribute, const Act& act) -> Act {
        return [=] {
            choose(attribute);
            act();
        };
    };
    const auto edit = [this](EditOutcome (MelodyEditor::*operation)(const EditChoice&),
                             const EditChoice& choice) -> Act {
        return [=, this] { (editor.*operation)(choice); };
    };
    const auto modify = &MelodyEditor::modify;
    const auto insertAfter = &MelodyEditor::insertAfter;
    const Act note = [this] { insertNote(60); };
    const Act rest = [this] { editor.insertRest(); };
    const Act deleteLast = [this] { editor.deleteLast(); };
    const Act deleteAtStep = [this] { editor.deleteAtStep(); };
    const Act keepMinims = [&settings] {
        settings.setKeepsAttributes(true);
        settings.chooseSymbol(1);
    };
    const Act openTwo = [this] { open({"36;48;", "1;1;", "n;n;"}); };
    const Act transpose = [this] {
        editor.changeTransposition(7);
        editor.transpose();
    };
    const std::vector<std::pair<Act, const char*>> acts{
        {with(Attribute::Punto, note), "60; 1,5; n;  0-0"},
        {with(Attribute::Staccato, note), "60;60; 1,5;1; n;s;  0-1"},
        {with(Attribute::Tenuto, note), "60;60;60; 1,5;1;1; n;s;t;  0-2"},
        {[this] { editor.validateStart("3"); }, "60;60;60; 1,5;1;1; n;s;t;  2-2"},
        {deleteLast, "60;60; 1,5;1; n;s;  0-1"},
        {deleteLast, "60; 1,5; n;  0-0"},
        {[this] {
             editor.setBookmarks({"", "b"});
         },
         "60; 1,5; n; |b 0-0"},
        {with(Attribute::Accentato, note), "60;60; 1,5;1; n;a; 1 ÷ 2 ÷ Tutto|b 0-1"},
        {[this] { editor.reset(); }, "    0-0"},
        // A triplet ends by itself, though attributes are kept.
        {keepMinims, "    0-0"},
        {with(Attribute::Terzina, note), "60; 1,33333333333333; n;  0-0"},
        {with(Attribute::Terzina, rest), "60;00; 1,33333333333333;1,33333333333333; n;p;  0-1"},
        {deleteLast, "60; 1,33333333333333; n;  0-0"},
        {with(Attribute::Terzina, rest), "60;00; 1,33333333333333;1,33333333333333; n;p;  0-1"},
        {rest, "60;00;00; 1,33333333333333;1,33333333333333;2; n;p;p;  0-2"},
        {openTwo, "36;48; 1;1; n;n;  0-1"},
        {with(Attribute::Legato, rest), "36;48;00; 1;1;2; n;n;p;  0-2"},
        {with(Attribute::Punto, rest), "36;48;00;00; 1;1;2;3; n;n;p;p;  0-3"},
        {openTwo, "36;48; 1;1; n;n;  0-1"},
        {[this] { stepTo(0); }, "36;48; 1;1; n;n;  0-1"},
        {with(Attribute::Tenuto, edit(modify, {"(1/8).", "2", "a"})), "60;48; 1,5;1; a;n;  0-1"},
        {with(Attribute::Terzina, edit(modify, {"1/4", "3", "p"})), "00;48; 2;1; p;n;  0-1"},
        {with(Attribute::Tenuto, edit(insertAfter, {"1/64", "4", "t"})),
         "00;60;48; 2;0,25;1; p;t;n;  0-2"},
        {with(Attribute::Tenuto, edit(insertAfter, {"na", "3", "p"})),
         "00;60;00;48; 2;0,25;3;1; p;t;p;n;  0-3"},
        {with(Attribute::Terzina, edit(insertAfter, {"1/4", "1", ""})),
         "00;60;00;60;48; 2;0,25;3;1,33333333333333;1; p;t;p;n;n;  0-4"},
        {deleteAtStep, "00;60;00;48; 2;0,25;3;1; p;t;p;n;  0-3"},
        {[this] { editor.validateStart("4"); }, "00;60;00;48; 2;0,25;3;1; p;t;p;n;  3-3"},
        {deleteAtStep, "00;60;00; 2;0,25;3; p;t;p;  2-2"},
        {[this] { stepTo(2); }, "00;60;00; 2;0,25;3; p;t;p;  2-2"},
        {deleteAtStep, "00;60; 2;0,25; p;t;  1-1"},
        {transpose, "00;67; 2;0,25; p;t;  1-1"},
    };
    for (const auto& [act, after] : acts) {
        perform(act);
        EXPECT_EQ(state(), after);
    }
    EXPECT_EQ(settings.attribute(), EntrySettings::Terzina) << "an insertion does not give it up";
    while (!done.empty())
        travel(true);
    while (!undone.empty())
        travel(false);
}

TEST_F(MelodyEditorTest, ARandomWayThroughTheHistoryMeetsEveryState) {
    std::mt19937 random(7);
    const auto draw = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    const EditChoice choice{"1/8", "3", "s"};
    const std::vector<Act> acts{
        [&] { composition.settings.clickAttribute(static_cast<std::uint8_t>(draw(6))); },
        [&] { insertNote(static_cast<pitch::NoteNumber>(40 + draw(50))); },
        [&] { insertNote(static_cast<pitch::NoteNumber>(40 + draw(50))); },
        [&] { editor.insertRest(); },
        [&] { editor.deleteLast(); },
        [&] { stepTo(draw(composition.melody.EntryCount() + 1)); },
        [&] { editor.modify(choice); },
        [&] { editor.insertAfter(choice); },
        [&] { editor.insertAfter(choice); },
        [&] { editor.deleteAtStep(); },
        [&] { editor.validateEnd(QString::number(draw(20))); },
        [&] { editor.validateStart(QString::number(draw(20))); },
        [&] {
            editor.setBookmarks({"", QStringLiteral("1 ÷ 1 ÷ %1").arg(draw(9))});
        },
        [&] { composition.transposition = draw(3) - 1; },
        [&] { editor.transpose(); },
        [&] { draw(20) == 0 ? void(editor.reset()) : void(); },
    };
    for (int i = 0; i < 4000 && !HasFailure(); ++i) {
        const int way = draw(20);
        if (way < 16)
            perform(acts[static_cast<std::size_t>(way)]);
        else
            travel(way < 19);
        const int count = composition.melody.EntryCount();
        EXPECT_LE(composition.range.start(), composition.range.end());
        EXPECT_LE(composition.range.end(), std::max(count - 1, 0));
        EXPECT_TRUE(Melody::read(composition.melody.texts()).entries ==
                    composition.melody.entries());
    }
}

TEST_F(MelodyEditorTest, ATieMergesWithWhateverCameBefore) {
    const std::vector<std::pair<MelodyTexts, const char*>> cases{
        {{{}, {}, {}}, "67; 0,5; n;"},
        {{"60;", "0,75;", "s;"}, "67; 1,25; n;"},
        {{"60;00;", "1;1.5;", "a;p;"}, "60;67; 1;2; a;n;"},
        {{"60;62;64;", "1;1;0,333333333333333;", "n;n;t;"},
         "60;62;67; 1;1;0,833333333333333; n;n;n;"},
    };
    for (const auto& [before, after] : cases) {
        open(before);
        const std::string opened = texts();
        composition.settings = {};
        composition.settings.chooseSymbol(3);
        EXPECT_TRUE(editor.chooseActiveNote(67));
        composition.settings.clickAttribute(EntrySettings::Legato);
        EXPECT_FALSE(editor.chooseActiveNote(70));
        EXPECT_TRUE(editor.insertNote().changed);
        EXPECT_EQ(texts(), after);
        editor.undo();
        EXPECT_EQ(texts(), opened);
        EXPECT_EQ(composition.settings.attribute(), EntrySettings::Legato);
    }
    composition.settings.setKeepsAttributes(true);
    for (int i = 0; i < 3; ++i)
        editor.insertNote();
    EXPECT_EQ(composition.melody.EntryCount(), 3);
}

TEST_F(MelodyEditorTest, AFullMelodyRefusesAndLosesNothing) {
    const auto many = [](const char* token) { return QString(token).repeated(32767); };
    open({many("60;"), many("1;"), many("n;")});
    stepTo(0);
    composition.activeNote = 62;
    composition.settings.clickAttribute(EntrySettings::Terzina);
    const EditOutcome outcomes[] = {editor.insertNote(), editor.insertRest(),
                                    editor.insertAfter({"1/4", "1", "n"})};
    for (const EditOutcome& outcome : outcomes) {
        EXPECT_FALSE(outcome.changed);
        EXPECT_TRUE(outcome.message.endsWith(QStringLiteral(" !!!")));
    }
    EXPECT_EQ(composition.settings.mode().tripletCounter, 0);
    EXPECT_EQ(composition.melody.EntryCount(), 32767);
    EXPECT_FALSE(editor.modified());
    composition.settings.clickAttribute(EntrySettings::Legato);
    EXPECT_TRUE(editor.insertNote().changed);
    const QString tooMany = many("1;") + QStringLiteral("1;");
    EXPECT_FALSE(editor.open({{tooMany, tooMany, tooMany}, {}, "lunga", 60, 16}).changed);
    EXPECT_EQ(composition.melody.EntryCount(), 32767);
    EXPECT_EQ(composition.name, QStringLiteral("aria"));
}

TEST_F(MelodyEditorTest, WhatIsNotModifiedStaysAsItWasWritten) {
    const std::vector<std::tuple<EditChoice, bool, const char*>> cases{
        {{"1/4", "1", "s"}, false, "060; 1,0; s;"}, {{"1/4", "1", "t"}, true, "060; 1,0; t;"},
        {{"1/8", "1", "p"}, true, "00; 0,5; p;"},   {{"na", "2", "p"}, false, "060; 1,0; s;"},
        {{"1/2", "2", ""}, true, "060; 2; s;"},
    };
    for (const auto& [choice, changed, after] : cases) {
        open({"060;", "1,0;", "s;"});
        stepTo(0);
        composition.activeNote = 60;
        EXPECT_EQ(editor.modify(choice).changed, changed) << after;
        EXPECT_EQ(texts(), after);
        EXPECT_EQ(editor.modified(), changed);
    }
    stepTo(1);
    EXPECT_FALSE(editor.modify({"1/4", "1", "n"}).changed);
    EXPECT_FALSE(editor.insertAfter({"1/4", "1", "n"}).changed);
    EXPECT_FALSE(editor.deleteAtStep().changed);
}

TEST_F(MelodyEditorTest, TransposesWithinTheFiveOctaves) {
    const std::vector<std::tuple<const char*, int, const char*, bool>> cases{
        {"90;00;", 6, "90;00;", true},  {"90;00;", 5, "95;00;", false},
        {"36;60;", -1, "36;60;", true}, {"36;60;", 12, "48;72;", false},
        {"00;0;", 7, "00;0;", false},   {"48;120;", -12, "48;120;", true},
        {"60;0;", -20, "48;0;", false},
    };
    for (const auto& [before, semitones, after, refused] : cases) {
        open({before, "1;1;", "n;n;"});
        for (int i = 0; i < std::abs(semitones); ++i)
            editor.changeTransposition(semitones < 0 ? -1 : 1);
        const EditOutcome outcome = editor.transpose();
        EXPECT_EQ(composition.melody.texts().notes, QLatin1String(after));
        EXPECT_EQ(outcome.message, refused ? QStringLiteral("Trasposizione non riuscita !!!\nUna o "
                                                            "piu note andrebbero oltre le 5 ottave")
                                           : QString());
        EXPECT_EQ(composition.transposition, 0);
    }
    editor.reset();
    editor.changeTransposition(1);
    EXPECT_EQ(composition.transposition, 0);
}

TEST_F(MelodyEditorTest, TheLastEntryIsDeletedByAResetThatCanBeTakenBack) {
    open({"60;62;", "1;1;", "n;n;"});
    stepTo(0);
    EXPECT_TRUE(editor.deleteAtStep().changed);
    EXPECT_EQ(composition.step.index, -1);
    EXPECT_FALSE(editor.deleteAtStep().changed);
    const EditOutcome last = editor.deleteLast();
    EXPECT_TRUE(last.changed && last.emptied);
    EXPECT_FALSE(composition.step.active);
    EXPECT_FALSE(editor.deleteLast().changed);
    editor.undo();
    editor.undo();
    EXPECT_EQ(state(), "60;62; 1;1; n;n;  0-1");
    EXPECT_EQ(composition.name, QStringLiteral("aria"));
    EXPECT_FALSE(editor.modified());
}

TEST_F(MelodyEditorTest, ADamagedFileKeepsItsTextsAndCanBeTakenBack) {
    insertNote(60);
    composition.tempo = 90;
    const std::string own = texts();
    const MelodyTexts damaged{"60;62;", "1;", "n;n;"};
    const EditOutcome outcome = editor.open({damaged, {"1 ÷ 2 ÷ Tutto"}, "rotta", 200, 500});
    EXPECT_EQ(outcome.message, QStringLiteral("File corrotto !!!"));
    EXPECT_EQ(composition.tempo, 90);
    EXPECT_EQ(composition.instrument, 127);
    editor.setBookmarks({});
    EXPECT_FALSE(editor.insertNote().changed);
    EXPECT_FALSE(editor.insertRest().message.isEmpty());
    EXPECT_FALSE(editor.deleteLast().changed);
    EXPECT_TRUE(editor.transpose().message.isEmpty());
    EXPECT_EQ(composition.melody.texts(), damaged);
    editor.reset();
    EXPECT_TRUE(composition.melody.consistent());
    editor.undo();
    editor.undo();
    EXPECT_EQ(composition.melody.texts(), damaged);
    EXPECT_FALSE(composition.bookmarks.empty());
    editor.undo();
    EXPECT_EQ(texts(), own);
    EXPECT_EQ(composition.instrument, Composition::kDefaultInstrument);
    EXPECT_EQ(composition.name, QString());
}

TEST_F(MelodyEditorTest, UndoLeavesWhatTheUserSetMeanwhile) {
    open({"60;", "1;", "n;"});
    EXPECT_FALSE(editor.modified());
    insertNote(62);
    composition.tempo = 200;
    composition.name = QStringLiteral("Salvato: aria");
    editor.markSaved();
    editor.undo();
    EXPECT_TRUE(editor.modified());
    EXPECT_EQ(composition.tempo, 200);
    EXPECT_EQ(composition.name, QStringLiteral("Salvato: aria"));
    editor.redo();
    EXPECT_FALSE(editor.modified());
    editor.undo();
    insertNote(64);
    EXPECT_FALSE(editor.canRedo());
    EXPECT_TRUE(editor.modified());
}

TEST(Bookmarks, FollowTheEntriesTheyName) {
    const QString odd = QStringLiteral("no bookmark");
    Bookmarks bookmarks({Bookmarks::wholeMelody(9), "1 ÷ 3 ÷ a", "3 ÷ 3 ÷ b", "2 ÷ 6 ÷ c",
                         "5 ÷ 9 ÷ d ÷ e", odd, "7 ÷ 30 ÷ f"});
    bookmarks.afterDeletion(2, 8);
    EXPECT_EQ(bookmarks.items(), QStringList({"1 ÷ 8 ÷ Tutto", "1 ÷ 2 ÷ a", "3 ÷ 3 ÷ b",
                                              "2 ÷ 5 ÷ c", "4 ÷ 8 ÷ d ÷ e", odd, "6 ÷ 8 ÷ f"}));
    Bookmarks none;
    none.refresh(4);
    EXPECT_TRUE(none.empty());
}

}  // namespace
