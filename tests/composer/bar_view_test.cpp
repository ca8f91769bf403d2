#include "composer/score/bar_view.h"

#include "composer/any_melody.h"
#include "composer/score/written_value.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

using namespace score;

namespace {

/// Reads a bar's notes as a musician does: signature, then accidentals up to the bar line.
struct Musician {
    Key key;
    std::map<int, int> changed = {};

    int soundOf(const WrittenNote& note) {
        constexpr int kFifths[] = {0, 2, 4, -1, 1, 3, 5};
        const int place = kFifths[note.spelling.degree];
        const int usual = key.fifths > place + 1 ? 1 : -key.fifths > 5 - place ? -1 : 0;
        if (note.accidental)
            changed[note.spelling.step()] = *note.accidental;
        const auto found = changed.find(note.spelling.step());
        Spelling natural = note.spelling;
        natural.alter = 0;
        return natural.note() + (found == changed.end() ? usual : found->second);
    }
};

}  // namespace

/// Random melodies in every metre and key: the written values add up to each entry and fill each
/// bar, ties and triplet groups hold together, and who reads the signs hears the notes.
TEST(BarView, WritesEveryEntryExactlyOrListsIt) {
    std::mt19937 random(20);
    int listed = 0;
    for (int round = 0; round < 6000; ++round) {
        Notation notation = anyNotation(random);
        if (random() % 5 == 0)
            notation.metre.reset();
        std::vector<int> wanted;
        const Melody melody = anyMelody(random, wanted);
        const BarView view = barsOf(melody, notation);
        for (std::size_t i = 0; i < wanted.size(); ++i)
            ASSERT_TRUE(wanted[i] > 3 ||
                        std::ranges::count(view.unwritable, int(i), &Unwritable::entry) == 1);
        for (const auto& [entry, reason] : view.unwritable)
            ASSERT_EQ(reason == Unwritable::Reason::BarLine, wanted[entry] > 1);
        if (!view.unwritable.empty()) {
            ASSERT_TRUE(view.bars.empty());
            ++listed;
            continue;
        }
        std::vector<int> written(wanted.size());
        const WrittenNote* before = nullptr;
        for (const Bar& bar : view.bars) {
            int position = 0;
            bool inGroup = false;
            Musician musician{notation.key};
            std::set<int> tiedIn;
            for (const WrittenNote& note : bar.notes) {
                const int entry = melody.entry(note.entry).noteNumber();
                ASSERT_EQ(note.note, entry);
                written[note.entry] += note.value.units();
                position += note.value.units();
                const bool goesOn = before && before->entry == note.entry;
                ASSERT_EQ(note.tiedBack, goesOn && entry);
                ASSERT_EQ(before && before->tiedOn, note.tiedBack);
                ASSERT_EQ(note.letter == nullptr, goesOn);
                ASSERT_FALSE(note.groupStarts && inGroup);
                inGroup = inGroup || note.groupStarts;
                ASSERT_EQ(inGroup, note.value.triplet);
                inGroup = inGroup && !note.groupEnds;
                if (!notation.metre)
                    musician.changed.clear();  // each sign is written again
                ASSERT_TRUE(!entry || note.tiedBack || musician.soundOf(note) == entry);
                if (note.tiedBack && musician.soundOf(note) != entry)
                    tiedIn.insert(note.spelling.step());
                ASSERT_TRUE(!entry || note.tiedBack || note.accidental ||
                            !tiedIn.contains(note.spelling.step()))
                    << "a reader may think that the sign of the bar before holds";
                if (note.accidental)
                    tiedIn.erase(note.spelling.step());
                const int against = notation.key.fifths < 0 ? 1 : -1;
                ASSERT_TRUE(notation.key.minor || !entry || note.spelling.alter != against);
                before = &note;
            }
            ASSERT_FALSE(inGroup);
            const bool isLast = &bar == &view.bars.back();
            ASSERT_TRUE(isLast ? !before->tiedOn : position == notation.metre->units());
        }
        ASSERT_EQ(written, wanted);
    }
    for (const double quarters : {0.0, -1.0, 0.3, 1e9})
        EXPECT_FALSE(unitsOf(quarters)) << quarters;
    EXPECT_GT(listed, 20);
    EXPECT_LT(listed, 600);
}

TEST(BarView, AValueAndItsHalfAreATripletFromAQuarterNoteOn) {
    using Numbers = std::vector<int>;
    const std::pair<Numbers, Numbers> groups[] = {{{32, 32, 32, 8, 8, 8}, {3, 3}},
                                                  {{64, 32, 32, 64, 128, 64, 48}, {2, 2, 2}},
                                                  {{32, 16, 16, 32, 16, 8, 8, 16}, {4, 4}},
                                                  {{32, 64, 16, 32, 32}, {2, 2, 1}},
                                                  {{32, 160}, {2}}};
    for (const auto& [units, wanted] : groups) {
        Numbers sizes;
        bool inside = false;
        std::vector<MelodyEntry> entries;
        std::ranges::transform(units, std::back_inserter(entries),
                               [](int n) { return lasting(n); });
        const BarView view = barsOf(melodyOf(entries), kWithoutBars);
        for (const WrittenNote& note : view.bars.front().notes) {
            if (note.groupStarts)
                sizes.push_back(0);
            inside = inside || note.groupStarts;
            if (inside)
                ++sizes.back();
            inside = inside && !note.groupEnds;
        }
        EXPECT_EQ(sizes, wanted);
    }
    EXPECT_EQ(spell(60, {6, true}).degree, 6) << "the raised sixth degree of Re diesis minore";
    EXPECT_EQ(spell(62, {6, true}).degree, 0) << "its raised seventh";
}
