#include "composer/melody_editor.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace {

class MelodyEditorTest : public ::testing::Test {
protected:
    void open(const MelodyTexts& texts) {
        editor.open({texts, {}, QStringLiteral("aria"), 60, 16});
    }

    void insertNote(pitch::NoteNumber note) {
        composition.activeNote = note;
        editor.insertNote();
    }

    void stepTo(std::int16_t index) {
        composition.step.active = true;
        composition.step.index = index;
    }

    std::string texts() const {
        const MelodyTexts t = composition.melody.texts();
        return (t.notes + u' ' + t.durations + u' ' + t.attributes).toStdString();
    }

    Composition composition;
    MelodyEditor editor{composition};
};

TEST_F(MelodyEditorTest, aTieMergesWithWhateverCameBefore) {
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

TEST_F(MelodyEditorTest, aFullMelodyRefusesAndLosesNothing) {
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
    EXPECT_EQ(composition.settings.tripletCounter(), 0);
    EXPECT_EQ(composition.melody.EntryCount(), 32767);
    EXPECT_FALSE(editor.modified());
    composition.settings.clickAttribute(EntrySettings::Legato);
    EXPECT_TRUE(editor.insertNote().changed);
    const QString tooMany = many("1;") + QStringLiteral("1;");
    EXPECT_FALSE(editor.open({{tooMany, tooMany, tooMany}, {}, "lunga", 60, 16}).changed);
    EXPECT_EQ(composition.melody.EntryCount(), 32767);
    EXPECT_EQ(composition.name, QStringLiteral("aria"));
}

TEST_F(MelodyEditorTest, whatIsNotModifiedStaysAsItWasWritten) {
    const std::vector<std::tuple<EditChoice, bool, const char*>> cases{
        {{"1/4", "1", "s"}, false, "060; 1,0; s;"},
        {{"1/4", "1", "t"}, true, "060; 1,0; t;"},
        {{"1/8", "1", "p"}, true, "00; 0,5; p;"},
        {{"na", "2", "p"}, false, "060; 1,0; s;"},
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

TEST_F(MelodyEditorTest, transposesWithinTheFiveOctaves) {
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

TEST_F(MelodyEditorTest, deletingTheFirstStepsEntryKeepsTheRangeInTheMelody) {
    open({"60;62;64;", "1;1;1;", "n;n;n;"});
    stepTo(0);
    EXPECT_TRUE(editor.deleteAtStep().changed);
    EXPECT_EQ(composition.step.index, -1);
    EXPECT_EQ(composition.range.start(), 0);
    EXPECT_EQ(composition.range.end(), 1);
    EXPECT_FALSE(editor.deleteAtStep().changed);
    editor.deleteLast();
    const EditOutcome last = editor.deleteLast();
    EXPECT_TRUE(last.changed && last.emptied);
    EXPECT_FALSE(composition.step.active);
    EXPECT_FALSE(editor.deleteLast().changed);
    for (int i = 0; i < 3; ++i)
        editor.undo();
    EXPECT_EQ(texts(), "60;62;64; 1;1;1; n;n;n;");
    EXPECT_EQ(composition.name, QStringLiteral("aria"));
    EXPECT_FALSE(editor.modified());
}

TEST_F(MelodyEditorTest, aDamagedFileKeepsItsTextsAndCanBeTakenBack) {
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

TEST_F(MelodyEditorTest, undoLeavesWhatTheUserSetMeanwhile) {
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

TEST(Bookmarks, followTheEntriesTheyName) {
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
