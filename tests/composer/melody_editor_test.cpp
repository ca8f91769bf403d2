#include "composer/melody_speech.h"
#include "composer/plain_editor.h"
#include "composer/plain_speech.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <tuple>

namespace {

/// Whole, with odd tokens, without the last ";" or with it in some lines alone, damaged, empty.
const std::vector<MelodyFile> kFiles{
    {{"60;62;00;64;", "1;0,75;1;2;", "n;s;p;a;"},
     {"1 ÷ 4 ÷ Tutto", "2 ÷ 3 ÷ b ÷ c", "niente", "4÷30 ÷ d", "3 ÷ 3 ÷ e", "x ÷ 2", "2 ÷ x"},
     "Aria"},
    {{"060;x;120;00;", "1.50; 2 ;y;0;", "?;;nn;p;"}, {}, "Strana", 300, 500, {"b", "C:", "b.mel"}},
    {{"60;62", "1;1", "n;n"}, {}, "Aperta", 10, -3},
    {{"60;62;", "1;", "n;"}, {}, "Mezza"},
    {{"60;62;", "1;", "n;n;"}, {"1 ÷ 2 ÷ Tutto"}, "Rotta", 200, 7},
    {{"60;", "1;", "n;n;"}, {}, "Rotta", 200, 7},
    {{"", "", ""}, {}, "", 70, 3}};

struct EditedComposition {
    Composition c;
};

/// The editor with its composition and the other objects that change it.
struct RealEditor : EditedComposition, MelodyEditor {
    RealEditor() : MelodyEditor(c) {}

    void clickAttribute(int button) {
        c.settings.clickAttribute(static_cast<std::uint8_t>(button));
    }
    void chooseSymbol(int symbol) { c.settings.chooseSymbol(static_cast<std::uint8_t>(symbol)); }
    void setKeepsAttributes(bool on) { c.settings.setKeepsAttributes(on); }
    bool moveRange(int arrow) {
        return c.range.move(static_cast<PlayRange::Arrow>(arrow), c.melody.EntryCount());
    }
    void stepTo(int entry) { c.step.goTo(entry, c.range); }
    void step(bool forward) {
        c.step.step(forward ? StepMode::Direction::Forward : StepMode::Direction::Backward,
                    c.range);
    }
    QString names() const { return c.melody.lastNames(40); }

    MelodySpeech speech{c};
};

struct SpeakingPlainEditor : PlainEditor {
    PlainSpeech speech{c, ids};
};

/// A random operation with the operands that it draws; what it answered, and all that there is
/// then.
template <typename Editor>
auto operate(Editor& editor, std::mt19937 random) {
    const auto draw = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    const auto any = [&draw](const auto& items) {
        return items[static_cast<std::size_t>(draw(static_cast<int>(std::size(items))))];
    };
    Composition& c = editor.c;
    EditOutcome out;
    const bool yes = draw(2) == 0;
    const EditChoice choice{any(QStringList{"4/4", "(4/4).", "2/4", "1/4", "(1/8).", "na"}),
                            QString::number(1 + draw(4)),
                            any(QStringList{"n", "s", "t", "a", "p", ""})};
    const QString box = any(QStringList{"x", "", "0", "-2", "1", "2", "2,5", "3.5", "4", "5", " 6",
                                        "9", "12", "99999999999"});
    const QStringList bookmarks{QStringLiteral("1 ÷ %1 ÷ a").arg(1 + draw(2)), "2 ÷ 5 ÷ b"};
    const MelodyFile file = any(kFiles);
    const int number = draw(64);
    const auto step = [&] {
        if (c.melody.empty())
            return;
        number % 3 == 0 ? editor.stepTo(number % c.melody.EntryCount()) : editor.step(yes);
        c.step.frameOpen = true;
    };
    const std::function<void()> operations[] = {
        [&] { out = editor.insertNote(); },
        [&] { out = editor.insertNote(); },
        [&] { out = editor.insertNote(); },
        [&] { out = editor.insertRest(); },
        [&] { out = editor.deleteLast(); },
        [&] { out = editor.deleteAtStep(); },
        [&] { out = editor.modify(choice); },
        [&] { out = editor.insertAfter(choice); },
        [&] { out = c.melody.EntryCount() < 99 ? editor.repeatFromStep() : out; },
        [&] { out = editor.transpose(); },
        [&] { out = editor.undo(); },
        [&] { out = editor.undo(); },
        [&] { out = editor.redo(); },
        [&] { out.changed = editor.chooseActiveNote(std::int16_t(34 + number)); },
        [&] { editor.clickAttribute(number % 6); },
        [&] { editor.setKeepsAttributes(yes); },
        [&] { editor.chooseSymbol(number % 7); },
        [&] { editor.changeTransposition(yes ? number % 17 - 8 : number % 3 - 1); },
        [&] { out = yes ? editor.open(file) : editor.recover(file); },
        [&] { out = number % 3 == 0 ? editor.reset() : out; },
        [&] { yes ? editor.markSaved() : void(c.name = QString::number(number % 3)); },
        [&] { (yes ? c.tempo : c.instrument) = number % 2; },
        [&] { out = editor.setBookmarks(bookmarks); },
        [&] { out.message = yes ? editor.validateStart(box) : editor.validateEnd(box); },
        [&] { out.changed = editor.moveRange(number % 4); },
        step,
        step,
    };
    const int operation = draw(std::size(operations));
    operations[operation]();
    auto& speech = editor.speech;
    const bool opens = number % 5 == 0;
    const QStringList said{opens ? speech.opened() : speech.change(),
                           number % 4 == 0 ? speech.whole() : QString(), speech.activeNote(),
                           speech.settings(), speech.transposition()};
    return std::tuple(operation, said.join(u'|'), c.melody.texts(), editor.names().right(40),
                      out.message, out.changed, out.emptied, out.stepEntryGone, c.bookmarks.items(),
                      c.name, c.source.name, c.source.emptied, c.document, c.tempo, c.instrument,
                      c.range.start(), c.range.end(), c.step.active, c.step.frameOpen, c.step.index,
                      c.settings.attribute(), c.settings.mode().tripletCounter, c.activeNote,
                      c.transposition, editor.modified(), editor.canUndo(), editor.canRedo());
}

TEST(MelodyEditor, EveryOperationDoesWhatItsPlainestFormDoes) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        RealEditor editor;
        SpeakingPlainEditor plain;
        editor.c.decimalSeparator = plain.c.decimalSeparator = seed % 2 == 0 ? u'.' : u',';
        for (unsigned i = 0; i < 400; ++i) {
            const std::mt19937 random(seed * 1000 + i);
            ASSERT_EQ(operate(editor, random), operate(plain, random))
                << "seed " << seed << ", step " << i;
        }
    }
}

TEST(MelodyEditor, AFullMelodyRefusesAndLosesNothing) {
    Composition composition;
    MelodyEditor editor(composition);
    const auto many = [](const char* token) { return QString(token).repeated(32767); };
    editor.open({{many("60;"), many("1;"), many("n;")}, {}, "aria", 60, 16});
    composition.activeNote = 62;
    composition.settings.clickAttribute(EntrySettings::Terzina);
    composition.step.frameOpen = true;
    const QString tooMany = many("1;") + QStringLiteral("1;");
    for (const EditOutcome& outcome :
         {editor.insertNote(), editor.insertAfter({"1/4", "1", "n"}), editor.repeatFromStep(),
          editor.open({{tooMany, tooMany, tooMany}, {}, "lunga"})})
        EXPECT_EQ(outcome.message, "La melodia è completa: non può avere più di 32767 note !!!");
    EXPECT_EQ(composition.settings.mode().tripletCounter, 0);
    EXPECT_EQ(composition.melody.texts().notes, many("60;"));
    EXPECT_FALSE(editor.modified());
    composition.settings.clickAttribute(EntrySettings::Legato);
    EXPECT_TRUE(editor.insertNote().changed) << "a tie takes no place";
}

}  // namespace
