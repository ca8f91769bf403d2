#include "composer/melody/melody_editor.h"

#include "composer/melody/rhythm.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <random>
#include <tuple>

namespace {

using Entries = std::vector<MelodyEntry>;

/// Whole, with odd tokens, without the last ";" or with it in some lines alone, damaged, empty.
const std::vector<MelodyFile> kFiles{
    {{"60;62;00;64;", "1;0,75;1;2;", "n;s;p;a;"},
     {"1 ÷ 4 ÷ Tutto", "2 ÷ 3 ÷ b ÷ c", "niente", "4÷30 ÷ d", "3 ÷ 3 ÷ e", "x ÷ 2", "2 ÷ x"},
     "Aria"},
    {{"060;x;120;00;", "1.50; 2 ;y;0;", "?;;nn;p;"}, {}, "Strana", 300, 500, {"b", "C:", "b.mel"}},
    {{"60;62", "1;1", "n;n"}, {}, "Aperta", 10, -3},
    {{"60;62", "1;", "n;"}, {}, "Mezza"},
    {{"60;62;", "1;", "n;n;"}, {"1 ÷ 2 ÷ Tutto"}, "Rotta", 200, 7},
    {{"60;", "1;", "n;n;"}, {}, "Rotta", 200, 7},
    {{"", "", ""}, {}, "", 70, 3}};

/// The editor, and beside it every operation in its plainest form: lists of tokens, and for undo
/// whole copies.
struct Editing {
    struct State {
        Composition all;
        std::vector<int> ids;  ///< of the entries
    };
    struct Change {
        int number;
        bool whole;
        State before;
        State after;
    };

    std::mt19937 random;
    Composition have;
    Composition want;
    MelodyEditor editor{have};
    EditOutcome got;
    EditOutcome wanted;
    std::vector<int> ids;
    bool edits = false;  ///< the operation is one that undo takes back
    bool whole = false;  ///< it puts another melody there
    bool saves = false;
    bool keeps = false;
    std::vector<Change> done;
    std::vector<Change> undone;
    std::map<int, std::array<int, 3>> saved{{0, {}}};  ///< by document: change, tempo, instrument
    int lastId = 0;
    int lastDocument = 0;
    int changes = 0;

    int draw(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
    template <typename T>
    T any(const std::vector<T>& items) {
        return items[random() % items.size()];
    }
    int count() const { return want.melody.EntryCount(); }
    int lastChange() const { return done.empty() ? 0 : done.back().number; }
    static bool isNothing(const Composition& c) {
        return c.melody.empty() && c.melody.consistent();
    }
    static auto seen(const Composition& c, const EditOutcome& outcome) {
        return std::tuple(c.melody.texts(), outcome.message, outcome.changed, outcome.emptied,
                          outcome.stepEntryGone, c.bookmarks.items(), c.name, c.source.name,
                          c.source.emptied, c.document, c.tempo, c.instrument, c.range.start(),
                          c.range.end(), c.step.active, c.step.frameOpen, c.step.index,
                          c.settings.attribute(), c.settings.mode().tripletCounter, c.activeNote,
                          c.transposition);
    }
    void compare() const {
        QString names;
        for (const MelodyEntry& entry : want.melody.entries())
            names += pitch::NoteName(entry.noteNumber()) + u';';
        const auto at = saved.find(want.document);
        const bool same =
            at != saved.end() && at->second[0] == lastChange() &&
            (isNothing(want) || (at->second[1] == want.tempo && at->second[2] == want.instrument));
        ASSERT_EQ(seen(have, got), seen(want, wanted));
        ASSERT_EQ(have.melody.lastNames(40), names.right(40));
        ASSERT_EQ(std::tuple(editor.modified(), editor.canUndo(), editor.canRedo()),
                  std::tuple(!same, !done.empty(), !undone.empty()));
    }

    void step() {
        want = have;
        const State before{want, ids};
        wanted = got = EditOutcome{};
        edits = whole = saves = false;
        const int operation = draw(24);
        operation < 12 ? edit(operation) : set(operation);
        const bool changed = ids != before.ids || !want.melody.consistent() ||
                             want.melody.texts() != before.all.melody.texts() ||
                             want.bookmarks != before.all.bookmarks || want.name != before.all.name;
        const bool nothing = isNothing(before.all) && isNothing(want);
        if (edits && changed) {
            done.push_back({++changes, whole && !nothing, before, {want, ids}});
            undone.clear();
        }
        if (saves)
            saved[want.document] = {lastChange(), want.tempo, want.instrument};
    }

    void setStep(int index) { want.step.index = static_cast<std::int16_t>(index); }
    void setMode(int attribute, int counter) {
        want.settings.setMode(
            {static_cast<std::uint8_t>(attribute), static_cast<std::uint8_t>(counter)});
    }
    void put(Entries entries, std::shared_ptr<const MelodyTexts> damaged = {}) {
        MelodyDelta delta{0, 0, std::move(entries), true, std::move(damaged)};
        want.melody.exchange(delta);
        edits = wanted.changed = true;
    }
    /// Other entries in the place of some; one for one it stays the same entry.
    void splice(int position, int removed, const Entries& added) {
        Entries entries = want.melody.entries();
        const auto first = entries.begin() + position;
        entries.insert(entries.erase(first, first + removed), added.begin(), added.end());
        put(entries);
        if (removed < static_cast<int>(added.size()))
            ids.insert(ids.begin() + position, ++lastId);
        if (removed > static_cast<int>(added.size()))
            ids.erase(ids.begin() + position);
    }
    void countAgain(int start, int end) {
        want.range.select(start, end, count());
        QStringList items = want.bookmarks.items();
        if (!items.isEmpty())
            items.front() = QStringLiteral("1 ÷ %1 ÷ Tutto").arg(count());
        want.bookmarks = Bookmarks(items);
    }
    QString durationText(double value) const {
        return rhythm::durationText(want.settings.attribute() == 3 ? 2 * value / 3 : value,
                                    want.decimalSeparator);
    }

    void append(bool isRest) {
        const int attribute = want.settings.attribute();
        const int counter = want.settings.mode().tripletCounter + (attribute == 3 ? 1 : 0);
        const double base = std::ldexp(4, -want.settings.symbol());
        const bool tie = attribute == 2 && !isRest && count() > 0;
        if (!isRest && want.activeNote == 0)
            return;
        if (!want.melody.consistent()) {
            wanted.message = QStringLiteral("File corrotto !!!");
            return;
        }
        const double duration = tie              ? want.melody.entries().back().quarters() + base
                                : attribute == 0 ? base + base / 2
                                                 : base;
        splice(count() - (tie ? 1 : 0), tie ? 1 : 0,
               {{isRest ? "00" : QString::number(want.activeNote), durationText(duration),
                 isRest ? "p" : QString(QStringLiteral("nsnntan")[attribute])}});
        const bool third = counter == 3;
        const bool unfinished = attribute == 3 && !third;
        setMode(unfinished || (keeps && !third) ? attribute : 6, third ? 0 : counter);
        countAgain(want.range.start(), count() - 1);
    }

    void reset() {
        put({});
        ids.clear();
        want.range = {};
        want.bookmarks = {};
        want.name.clear();
        want.source.emptied = true;
        want.step.active = want.step.frameOpen = false;
        whole = wanted.emptied = true;
    }

    /// A bookmark names a list of entries, of which one goes.
    static QString without(const QString& item, int deleted, int left) {
        auto bookmark = Bookmark::fromText(item);
        if (!bookmark)
            return item;
        QList<int> entries;
        for (int i = bookmark->start; i <= bookmark->end; ++i) {
            if (i != deleted)
                entries << std::min(i > deleted ? i - 1 : i, left);
        }
        bookmark->start = entries.value(0, std::min(deleted, left));
        bookmark->end = entries.isEmpty() ? bookmark->start : entries.back();
        return bookmark->text();
    }

    void transpose() {
        const int semitones = std::exchange(want.transposition, 0);
        Entries entries = want.melody.entries();
        for (MelodyEntry& entry : entries) {
            const int note = entry.noteNumber() + semitones;
            if (entry.noteNumber() == 0)
                continue;
            entry.note = QString::number(note);
            if (note < 36 || note > 95)
                wanted.message = QStringLiteral(
                    "Trasposizione non riuscita !!!\nUna o piu note andrebbero oltre le 5 ottave");
        }
        if (!wanted.message.isEmpty())
            return;
        if (semitones != 0 && entries != want.melody.entries())
            put(entries);
    }

    void open(const MelodyFile& file) {
        const std::vector<QStringList> lines{file.texts.notes.split(u';'),
                                             file.texts.durations.split(u';'),
                                             file.texts.attributes.split(u';')};
        const bool damaged =
            lines[0].size() != lines[1].size() || lines[0].size() != lines[2].size();
        const bool unended = std::none_of(lines.begin(), lines.end(),
                                          [](const auto& line) { return line.back().isEmpty(); });
        Entries entries;
        ids.clear();
        for (int i = 0; !damaged && i < lines[0].size() - (unended ? 0 : 1); ++i) {
            entries.push_back({lines[0][i], lines[1][i], lines[2][i]});
            ids.push_back(++lastId);
        }
        put(entries, damaged ? std::make_shared<const MelodyTexts>(file.texts) : nullptr);
        want.range.select(0, count() - 1, count());
        want.bookmarks = Bookmarks(file.bookmarks);
        want.name = file.name;
        want.source = file.source;
        want.document = ++lastDocument;
        want.instrument = std::clamp(file.instrument, 0, 127);
        want.tempo = damaged ? want.tempo : std::clamp(file.tempo, 20, 250);
        want.step.active = want.step.frameOpen = false;
        whole = true;
        wanted.message = damaged ? QStringLiteral("File corrotto !!!") : QString();
    }

    /// The step index stays with its entry; if that went, the one before it is next.
    bool follow(const std::vector<int>& from) {
        const int index = want.step.index;
        const int more = static_cast<int>(ids.size()) - static_cast<int>(from.size());
        const bool isEntry = index >= 0 && index < static_cast<int>(from.size());
        const auto found =
            isEntry ? std::find(ids.begin(), ids.end(), from[static_cast<std::size_t>(index)])
                    : ids.end();
        if (found != ids.end())
            setStep(static_cast<int>(found - ids.begin()));
        else if (index >= 0)
            setStep(isEntry ? index - 1 : index + more);
        return !isEntry || found != ids.end();
    }

    /// Entries, range and bookmarks go back; the rest only where the change had altered it.
    void travel(bool back) {
        auto& from = back ? done : undone;
        wanted.changed = true;
        if (from.empty())
            return;
        const Change change = from.back();
        from.pop_back();
        (back ? undone : done).push_back(change);
        const Composition& left = back ? change.after.all : change.before.all;
        const Composition& to = back ? change.before.all : change.after.all;
        const auto oldIds = std::exchange(ids, back ? change.before.ids : change.after.ids);
        const auto restore = [&](auto Composition::*field) {
            if (left.*field != to.*field)
                want.*field = to.*field;
        };
        want.melody = to.melody;
        want.range = to.range;
        want.bookmarks = to.bookmarks;
        restore(&Composition::name);
        restore(&Composition::source);
        restore(&Composition::document);
        restore(&Composition::tempo);
        restore(&Composition::instrument);
        if (left.settings.mode() != to.settings.mode())
            want.settings.setMode(to.settings.mode());
        const bool moved = want.step.index == left.step.index && left.step.index != to.step.index;
        wanted.stepEntryGone = change.whole || !follow(oldIds);
        setStep(
            std::clamp<int>(moved ? to.step.index : want.step.index, 0, std::max(count() - 1, 0)));
        if (count() == 0)
            want.step.active = want.step.frameOpen = false;
    }

    void edit(int operation) {
        const EditChoice choice{any<QString>({"4/4", "(4/4).", "2/4", "1/4", "(1/8).", "na"}),
                                QString::number(1 + draw(4)),
                                any<QString>({"n", "s", "t", "a", "p", ""})};
        const double value = rhythm::ValueNameToDuration(choice.valueName, choice.multiplier);
        const int note = choice.letter == QStringLiteral("p") ? 0 : want.activeNote;
        const QString token = note == 0 ? "00" : QString::number(note);
        const int index = want.step.index;
        const bool has = want.melody.has(index);
        switch (operation) {
            case 0:
            case 1:
            case 2:
                got = editor.insertNote();
                return append(false);
            case 3:
                got = editor.insertRest();
                return append(true);
            case 4: {
                got = editor.deleteLast();
                const auto oldIds = ids;
                if (count() < 2)
                    return count() == 0 ? void() : reset();
                splice(count() - 1, 1, {});
                wanted.stepEntryGone = want.step.frameOpen && !follow(oldIds);
                return countAgain(0, count() - 1);
            }
            case 5: {
                got = editor.deleteAtStep();
                if (!has || count() == 1)
                    return has ? reset() : void();
                splice(index, 1, {});
                QStringList items = want.bookmarks.items();
                for (QString& item : items)
                    item = without(item, index + 1, count());
                want.bookmarks = Bookmarks(items);
                setStep(index - 1);
                return countAgain(std::min<int>(want.range.start(), std::max(index - 1, 0)),
                                  want.range.end());
            }
            case 6: {
                got = editor.modify(choice);
                if (!has || choice.valueName == QStringLiteral("na"))
                    return;
                MelodyEntry entry = want.melody.entry(index);
                entry.note = entry.noteNumber() == note ? entry.note : token;
                if (entry.quarters() != value) {
                    entry.duration = durationText(value);
                    if (want.settings.attribute() == 3)
                        setMode(6, want.settings.mode().tripletCounter);
                }
                entry.attribute = choice.letter.isEmpty() ? entry.attribute : choice.letter;
                return entry == want.melody.entry(index) ? void() : splice(index, 1, {entry});
            }
            case 7: {
                got = editor.insertAfter(choice);
                if (count() == 0 || (!has && index != -1))
                    return;
                const bool triplet = want.settings.attribute() == 3;
                const double duration = triplet ? std::ldexp(4, -want.settings.symbol()) : value;
                splice(index + 1, 0,
                       {{token, durationText(duration),
                         choice.letter.isEmpty() ? "n" : choice.letter}});
                setStep(index + 1);
                return countAgain(want.range.start(), want.range.end() + 1);
            }
            case 8:
                got = editor.transpose();
                return transpose();
            case 9:
            case 10:
                got = editor.undo();
                return travel(true);
            default:
                got = editor.redo();
                return travel(false);
        }
    }

    void set(int operation) {
        const int start = want.range.start();
        const int end = want.range.end();
        const bool yes = draw(2) == 0;
        switch (operation) {
            case 12: {
                const int note = 34 + draw(64);
                got.changed = editor.chooseActiveNote(static_cast<pitch::NoteNumber>(note));
                wanted.changed = want.settings.attribute() != 2 && note >= 36 && note <= 95;
                if (wanted.changed)
                    want.activeNote = static_cast<pitch::NoteNumber>(note);
                return;
            }
            case 13: {
                const int button = draw(6);
                const int old = want.settings.attribute();
                have.settings.clickAttribute(static_cast<std::uint8_t>(button));
                return setMode(old == button ? 6 : button,
                               old == 3 && button == 3 ? 0 : want.settings.mode().tripletCounter);
            }
            case 14:
                keeps = yes;
                have.settings.setKeepsAttributes(keeps);
                return have.settings.chooseSymbol(static_cast<std::uint8_t>(draw(7)));
            case 15: {
                const int semitones = yes ? draw(17) - 8 : draw(3) - 1;
                editor.changeTransposition(semitones);
                if (count() > 0)
                    want.transposition = std::clamp(want.transposition + semitones, -12, 12);
                return;
            }
            case 16: {
                const MelodyFile file = any(kFiles);
                saves = yes;
                got = yes ? editor.open(file) : editor.recover(file);
                return open(file);
            }
            case 17:
                if (draw(3) != 0)
                    return;
                got = editor.reset();
                return reset();
            case 18:
                have.tempo = want.tempo = 60 + draw(2);
                have.instrument = want.instrument = draw(2);
                have.name = want.name = QString::number(draw(3));
                have.source = want.source = {have.name, {}, {}};
                saves = yes;
                return yes ? editor.markSaved() : void();
            case 19: {
                const QStringList items{QStringLiteral("1 ÷ %1 ÷ a").arg(1 + draw(2)), "2 ÷ 5 ÷ b"};
                got = editor.setBookmarks(items);
                wanted.changed = edits = want.bookmarks.items() != items;
                want.bookmarks = Bookmarks(items);
                return;
            }
            case 20:
            case 21:
                if (count() == 0)
                    return;
                have.step.step(yes ? StepMode::Direction::Forward : StepMode::Direction::Backward,
                               have.range);
                have.step.frameOpen = true;
                want.step = have.step;
                return;
            case 22: {
                const QString box = any<QString>({"x", "", "0", "-2", "1", "2", "2,5", "3.5", "4",
                                                  "5", " 6", "9", "12", "99999999999"});
                const double number = rhythm::numberFromText(box).value_or(yes ? start : end + 1);
                // A half goes to the even number.
                const int index = static_cast<int>(number - 1 - std::remainder(number - 1, 1));
                got.message = yes ? editor.validateStart(box) : editor.validateEnd(box);
                if (yes && number >= 1 && number <= end + 1)
                    want.range.select(index, end, count());
                if (!yes && number <= count() && number > start)
                    want.range.select(start, index, count());
                wanted.message = yes ? want.range.startBox() : want.range.endBox();
                if (std::exchange(want.step.active, false) && yes)
                    setStep(want.range.start());
                return;
            }
            default: {
                const int arrow = draw(4);
                const int nextStart = start + (arrow == 1 ? 1 : 0) - (arrow == 0 ? 1 : 0);
                const int nextEnd = end + (arrow == 3 ? 1 : 0) - (arrow == 2 ? 1 : 0);
                got.changed = have.range.move(static_cast<PlayRange::Arrow>(arrow), count());
                wanted.changed = nextStart >= 0 && nextStart < nextEnd && nextEnd < count();
                if (wanted.changed)
                    want.range.select(nextStart, nextEnd, count());
            }
        }
    }
};

TEST(MelodyEditor, EveryOperationDoesWhatItsPlainestFormDoes) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        Editing editing;
        editing.random.seed(seed);
        editing.have.decimalSeparator = seed % 2 == 0 ? u'.' : u',';
        for (int i = 0; i < 400; ++i) {
            editing.step();
            editing.compare();
            ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed << ", step " << i;
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
    const QString tooMany = many("1;") + QStringLiteral("1;");
    for (const EditOutcome& outcome : {editor.insertNote(), editor.insertAfter({"1/4", "1", "n"}),
                                       editor.open({{tooMany, tooMany, tooMany}, {}, "lunga"})})
        EXPECT_EQ(outcome.message, "La melodia è completa: non può avere più di 32767 note !!!");
    EXPECT_EQ(composition.settings.mode().tripletCounter, 0);
    EXPECT_EQ(composition.melody.texts().notes, many("60;"));
    EXPECT_FALSE(editor.modified());
    composition.settings.clickAttribute(EntrySettings::Legato);
    EXPECT_TRUE(editor.insertNote().changed) << "a tie takes no place";
}

}  // namespace
