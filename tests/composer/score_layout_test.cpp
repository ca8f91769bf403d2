#include "composer/notation/score_layout.h"

#include "composer/any_melody.h"
#include "composer/clear_signs.h"
#include "composer/notation/sheet_layout.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <map>
#include <random>
#include <ranges>
#include <set>

namespace {

using namespace notation;
using staff_entry::Entry;

/// A melody that changes at random, and its layout.
struct Melodies {
    explicit Melodies(unsigned seed) : random(seed) { layout.setSource(source()); }

    Source source() {
        return {[this] { return static_cast<int>(entries.size()); },
                [this](int i) {
                    ++asked;
                    return entries.at(static_cast<std::size_t>(i));
                },
                notation};
    }

    /// Any metre and key.
    void changeNotation() {
        notation = {std::nullopt, {draw(15) - 7, draw(2) == 0}};
        if (draw(4) > 0)
            notation.metre = score::kMetres[static_cast<std::size_t>(draw(4))];
        layout.setSource(source());
    }

    int draw(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }

    Entry entry() {
        constexpr std::array kDurations{1.,   1.,     .5,       .5,        .5,    .25, .25,
                                        .75,  1. / 3, 2. / 3,   1. / 6,    .0625, 2.,  1.25,
                                        .375, 4.,     .1 + .07, .5 + .125, 5. / 3};
        const int around = draw(9) == 0 ? 36 + draw(60) : 55 + draw(20);
        double duration = kDurations[static_cast<std::size_t>(draw(kDurations.size()))];
        // Few melodies have an entry that no values give; now and then one takes many bars.
        if (notation.metre && (writable || draw(8) > 0))
            duration = draw(60) == 0 ? 90.25 : std::round(duration * 96) / 96;
        return draw(8) == 0 ? Entry{0, duration, 'p'} : Entry{around, duration, "nsta"[draw(4)]};
    }

    /// Replaces some entries by others; the first that changed.
    int change() {
        const int count = static_cast<int>(entries.size());
        const int at = draw(2) == 0 ? count : draw(count + 1);
        const int removed = std::min(draw(3), count - at);
        entries.erase(entries.begin() + at, entries.begin() + at + removed);
        for (int inserted = draw(4); inserted > 0; --inserted)
            entries.insert(entries.begin() + at, entry());
        return at;
    }

    std::mt19937 random;
    std::vector<Entry> entries;
    score::Notation notation = score::kWithoutBars;
    bool writable = false;  ///< in bars
    ScoreLayout layout;
    int asked = 0;
};

/// The rules of a system in their plainest form.
void expectEngraved(const System& system, const Page& page, const score::Notation& notation) {
    const double beats = notation.metre == score::Metre{6, 8} ? 1.5 : 1;
    const auto& symbols = system.symbols;
    const auto sharesBeam = [&](std::size_t a, std::size_t b) {
        return std::any_of(system.beams.begin(), system.beams.end(), [&](const Beam& beam) {
            return beam.notes.first <= a && b <= beam.notes.last;
        });
    };
    const auto sharesTriplet = [&](std::size_t a, std::size_t b) {
        return std::any_of(system.triplets.begin(), system.triplets.end(), [&](const auto& t) {
            return t.symbols.first <= a && b <= t.symbols.last;
        });
    };
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const Symbol& symbol = symbols[i];
        ASSERT_EQ(symbol.triplet, sharesTriplet(i, i));
        ASSERT_EQ(symbol.note.beamed, sharesBeam(i, i));
        ASSERT_LE(symbol.x, page.width);
        if (!symbol.rest) {
            const int position = symbol.note.position;
            ASSERT_TRUE(symbol.staff == Staff::Treble ? position >= -6 : position <= 14)
                << "no more than two ledger lines between the staves, or as many for a Si sharp";
        }
        if (i + 1 == symbols.size())
            continue;
        const Symbol& next = symbols[i + 1];
        const auto beatOf = [beats](const Symbol& s) {
            return std::floor((s.onset + 1e-6) / beats);
        };
        const bool together = symbol.triplet || next.triplet ? sharesTriplet(i, i + 1)
                                                             : beatOf(symbol) == beatOf(next);
        const bool flagged = symbol.flagged() && next.flagged();
        ASSERT_EQ(sharesBeam(i, i + 1), flagged && together && symbol.staff == next.staff) << i;
    }
    // Without bars a triplet ends with the entry that completes a plain time, or with the twelfth.
    for (const TripletBracket& triplet : system.triplets) {
        const auto [first, last] = triplet.symbols;
        for (std::size_t i = first; i <= last && !notation.metre; ++i) {
            const double units = 32 * (symbols[i].onset + symbols[i].length - symbols[first].onset);
            const bool whole = i >= first + 11 || std::abs(units - std::round(units)) < 1e-4;
            const bool goesOn = i + 1 < symbols.size() && symbols[i + 1].triplet;
            ASSERT_TRUE(!goesOn || (whole && symbols[i].closesEntry) == (i == last)) << i;
        }
    }
    for (const Beam& beam : system.beams) {
        const Symbol& first = symbols[beam.notes.first];
        const Symbol& last = symbols[beam.notes.last];
        const double slope = (last.stemEnd - first.stemEnd) / (last.x - first.x);
        for (std::size_t i = beam.notes.first; i <= beam.notes.last; ++i) {
            const Symbol& symbol = symbols[i];
            ASSERT_NEAR(symbol.stemEnd, first.stemEnd + slope * (symbol.x - first.x), 1e-9);
            const double length = (beam.stemsUp ? 1 : -1) * (symbol.stemEnd - symbol.note.position);
            const int lines = static_cast<int>(symbol.value.duration) - 2;
            ASSERT_GE(length, 4 + 1.5 * (lines - 1)) << "the lines are clear of the head";
            int covered = 0;
            for (const Beam::Line& line : beam.lines) {
                ASSERT_EQ(line.stub != 0, line.first == line.last);
                covered += line.first <= i && i <= line.last ? 1 : 0;
            }
            ASSERT_EQ(covered, lines);
        }
    }
}

/// Every system is on one page, below the one before it and, with it, within the page; each page
/// but the last is full.
void expectPages(const ScoreLayout& score, double height) {
    const bool bass = usesBass(score);
    std::size_t next = 0;
    for (const SheetPage& page : pagesOf(score, height, 9)) {
        ASSERT_EQ(page.first, next);
        double free = next == 0 ? 9 : 0;
        for (const double top : page.tops) {
            ASSERT_GE(top, free);
            free = top + printedHeight(score.systems()[next++], bass);
            ASSERT_TRUE(free <= height + 1e-6 || page.tops.size() == 1);
        }
        const bool isLast = next == score.systems().size();
        ASSERT_TRUE(isLast || free > height - 1e-6 || page.tops.size() == 1);
    }
    ASSERT_EQ(next, score.systems().size());
}

/// The notes of the bar view, up to an entry that has none, and no bars behind it.
void expectBars(const ScoreLayout& score, const std::vector<Entry>& entries,
                const score::Notation& notation) {
    std::vector<MelodyEntry> written;
    for (const Entry& entry : entries)
        written.push_back(MelodyEntry::make(static_cast<pitch::NoteNumber>(entry.noteNumber),
                                            entry.duration, QString(QChar(entry.attribute)), u','));
    score::BarView view = score::barsOf(melodyOf(written), notation);
    if (!view.unwritable.empty()) {
        written.resize(static_cast<std::size_t>(view.unwritable.front().entry));
        view = score::barsOf(melodyOf(written), notation);
        ASSERT_TRUE(view.unwritable.empty());
    }
    std::vector<const Symbol*> symbols;
    std::set<const Symbol*> groupEnds;
    std::set<const Symbol*> systemStarts;
    for (const System& system : score.systems()) {
        systemStarts.insert(system.symbols.data());
        for (const Symbol& symbol : system.symbols)
            symbols.push_back(&symbol);
        for (const TripletBracket& bracket : system.triplets)
            groupEnds.insert(&system.symbols[bracket.symbols.last]);
        std::size_t lines = 0;
        for (const Symbol& symbol : system.symbols)
            lines += symbol.endsBar;
        ASSERT_EQ(system.barLines.size(), lines);
    }
    std::size_t next = 0;
    for (const score::Bar& bar : view.bars) {
        int units = 0;
        for (const score::WrittenNote& note : bar.notes) {
            ASSERT_LT(next, symbols.size());
            const Symbol& symbol = *symbols[next++];
            units += note.value.units();
            ASSERT_EQ(symbol.entry, note.entry);
            ASSERT_EQ(symbol.fillsBar, bar.notes.size() == 1 && note.isRest() &&
                                           note.value.units() == notation.metre->units());
            if (!symbol.fillsBar) {
                ASSERT_EQ(symbol.value.duration, note.value.value);
                ASSERT_EQ(symbol.value.dots, note.value.dotted ? 1 : 0);
            }
            ASSERT_EQ(symbol.triplet, note.value.triplet);
            ASSERT_EQ(symbol.tiedToNext(), note.tiedOn);
            ASSERT_EQ(symbol.opensEntry, note.letter != nullptr);
            const bool altered =
                note.spelling.alter != score::signatureAlter(notation.key, note.spelling.degree);
            const bool reminds = note.tiedBack && altered && systemStarts.contains(&symbol);
            ASSERT_EQ(symbol.accidental,
                      reminds ? std::optional(note.spelling.alter) : note.accidental);
            ASSERT_TRUE(symbol.rest || symbol.spelling == note.spelling);
            ASSERT_EQ(symbol.endsBar, units == notation.metre->units());
            ASSERT_TRUE(!note.groupEnds || groupEnds.contains(&symbol));
        }
    }
    for (; next < symbols.size(); ++next)
        ASSERT_FALSE(symbols[next]->endsBar);
}

TEST(ScoreLayout, AfterEveryChangeItIsWhatANewOneWouldBe) {
    Melodies melody(7);
    for (int turn = 0; turn < 600; ++turn) {
        if (turn % 100 == 0)
            melody.entries.clear();
        if (turn % 20 == 0)
            melody.changeNotation();
        if (turn % 50 == 0) {
            const double width = 24 + melody.draw(96);
            melody.layout.setPage(
                {width, 6.0 * melody.draw(2), melody.draw(2) == 0, 1. * melody.draw(200)});
        }
        const int first = melody.change();
        melody.layout.changedFrom(first);
        melody.layout.layOutAll();
        ScoreLayout fresh;
        fresh.setSource(melody.source());
        fresh.setPage(melody.layout.page());
        fresh.layOutAll();

        const auto& systems = melody.layout.systems();
        const Page& page = melody.layout.page();
        ASSERT_EQ(systems.size(), fresh.systems().size()) << turn;
        int next = 0;
        double onset = 0;
        for (std::size_t i = 0; i < systems.size(); ++i) {
            const System& system = systems[i];
            const System& other = fresh.systems()[i];
            SCOPED_TRACE(turn);
            ASSERT_EQ(system.start, other.start);
            ASSERT_EQ(system.height(), other.height());
            ASSERT_EQ(system.symbols.size(), other.symbols.size());
            for (std::size_t s = 0; s < system.symbols.size(); ++s) {
                ASSERT_EQ(system.symbols[s].x, other.symbols[s].x);
                ASSERT_EQ(system.symbols[s].stemEnd, other.symbols[s].stemEnd);
                ASSERT_EQ(system.symbols[s].staff, other.symbols[s].staff);
            }
            ASSERT_EQ(system.start.entry, next) << "every entry once";
            next = system.next.entry;
            ASSERT_EQ(system.opening.metre, i == 0 ? melody.notation.metre : std::nullopt);
            ASSERT_GE(system.opening.metreLeft, std::abs(melody.notation.key.fifths));
            ASSERT_EQ(system.barNumberText().isEmpty(), i == 0 || !system.barNumber);
            std::size_t inexact = 0;
            for (const Symbol& symbol : system.symbols) {
                ASSERT_NEAR(symbol.onset, onset, 1e-6);
                onset = symbol.onset + symbol.length;
                const Entry& entry = melody.entries[static_cast<std::size_t>(symbol.entry)];
                inexact += symbol.opensEntry && !staff_entry::figureOf(entry.duration).exact;
            }
            ASSERT_TRUE(melody.notation.metre || system.durationSigns.size() == inexact);
            ASSERT_EQ(system.last, i + 1 == systems.size());
            if (system.last)
                ASSERT_LE(system.end, std::max(system.opening.end + 1, page.width - page.endRoom));
            else
                ASSERT_NEAR(system.end, page.width, 1e-6) << "full lines";
            ASSERT_NO_FATAL_FAILURE(expectEngraved(system, page, melody.notation));
            ASSERT_NO_FATAL_FAILURE(expectClear(system));
            ASSERT_TRUE(system.symbols.empty() || system.symbols.front().opensEntry ||
                        system.symbols.front().staff == system.start.staff);
        }
        if (melody.notation.metre) {
            SCOPED_TRACE(turn);
            ASSERT_NO_FATAL_FAILURE(expectBars(melody.layout, melody.entries, melody.notation));
        }
        if (page.roomForEveryNote && systems.size() > 1) {
            const System& last = systems.back();
            const double bottom = melody.layout.height();
            const System roomy = layOutSystem(melody.source(), last.start, page);
            const double spare = roomy.height() - last.height();
            ASSERT_TRUE(spare == 0 || (bottom <= page.view && bottom + spare > page.view))
                << "room for every note, but where the melody is seen whole without it";
        }
        ASSERT_EQ(next, static_cast<int>(melody.entries.size()));
        ASSERT_NO_FATAL_FAILURE(expectPages(melody.layout, 25 + melody.draw(120)));
    }
}

TEST(ScoreLayout, AChangeCostsTheSameAtAnyLength) {
    for (const auto& metre : {std::optional<score::Metre>(), std::optional(score::Metre{6, 8})}) {
        Melodies melody(3);
        melody.notation.metre = metre;
        melody.writable = true;
        for (int i = 0; i < 9999; ++i)
            melody.entries.push_back(melody.entry());
        melody.layout.setSource(melody.source());
        melody.asked = 0;
        melody.layout.setPage({80, 6, true});
        EXPECT_LT(melody.asked, 6000) << "what is far away waits until it is asked for";
        for (const int at : {0, 9, 5000, 9900, 9998}) {
            melody.layout.layOutAll();
            melody.entries[static_cast<std::size_t>(at)] = {64, 0.5, 'n'};
            melody.asked = 0;
            melody.layout.changedFrom(at);
            EXPECT_LT(melody.asked, 6000) << at;
            EXPECT_TRUE(melody.layout.systems()[melody.layout.systemOf(at)].has(at));
        }
    }
}

/// What a musician expects of the distances, of notes that nothing stands beside.
TEST(ScoreLayout, EqualValuesStandEquallyFarApartAndLongerOnesFarther) {
    Melodies melody(5);
    for (int i = 0; i < 300; ++i)
        melody.entries.push_back({60 + 12 * melody.draw(3), std::ldexp(4, -melody.draw(4)), 'n'});
    melody.layout.setPage({90, 0, false});
    melody.layout.layOutAll();
    for (const System& system : melody.layout.systems()) {
        std::map<double, int> distances;
        for (std::size_t i = 0; i + 1 < system.symbols.size(); ++i) {
            const double distance = system.symbols[i + 1].x - system.symbols[i].x;
            const auto rounded = static_cast<int>(std::lround(distance * 1e4));
            const double length = system.symbols[i].length;
            EXPECT_EQ(distances.emplace(length, rounded).first->second, rounded) << length;
        }
        EXPECT_TRUE(std::ranges::is_sorted(distances | std::views::values, std::less_equal{}));
    }
}

/// Of bars that are alike, each printed system has as many as another, or one more or less.
TEST(ScoreLayout, TheSystemsOfASheetAreEquallyFull) {
    Melodies melody(9);
    melody.notation.metre = score::kMetres[2];
    for (int bars = 1; bars < 40; ++bars) {
        melody.entries.insert(melody.entries.end(), 4, {67, 1, 'n'});
        melody.layout.setSource(melody.source());
        melody.layout.setPage({50.0 + melody.draw(60)});
        melody.layout.layOutAll();
        const std::size_t systems = melody.layout.systems().size();
        melody.layout.layOutEvenly();
        ASSERT_EQ(melody.layout.systems().size(), systems);
        std::set<std::size_t> barsOfSystems;
        for (const System& system : melody.layout.systems())
            barsOfSystems.insert(system.barLines.size());
        EXPECT_LE(*barsOfSystems.rbegin() - *barsOfSystems.begin(), 1) << bars;
        const double free = melody.layout.page().width - melody.layout.systems().back().end;
        const bool fillsLast = free < 1e-6;
        EXPECT_EQ(fillsLast, systems > 1);
    }
}

TEST(ScoreLayout, APhraseThatDipsBelowMiddleCStaysOnItsStaff) {
    const std::pair<std::vector<int>, const char*> phrases[] = {
        {{60, 62, 60, 55, 60, 60, 55, 60}, "tttttttt"},
        {{48, 52, 60, 62, 60, 57, 55}, "bbbbbbb"},
        {{67, 64, 60, 0, 52, 50, 48, 0, 67}, "ttttbbbbt"},
        {{72, 48, 72}, "tbt"}};
    for (const auto& [notes, wanted] : phrases) {
        Melodies melody(1);
        for (const int note : notes)
            melody.entries.push_back({note, 1});
        std::string staves;
        for (const Symbol& symbol : layOutSystem(melody.source(), {}, {200}).symbols)
            staves += symbol.staff == Staff::Treble ? 't' : 'b';
        EXPECT_EQ(staves, wanted);
    }
}

}  // namespace
