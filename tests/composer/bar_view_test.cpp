#include "composer/score/bar_view.h"

#include "composer/melody/melody.h"
#include "composer/melody/rhythm.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

using namespace score;

namespace {

/// What an entry of a random melody lasts, in 96ths of a quarter note: what the palette and the tie
/// make and, now and then, something that no values give.
int anyUnits(std::mt19937& random) {
    constexpr int kTriplets[] = {256, 128, 64, 32, 16, 8, 4};
    const int plain = 6 << random() % 7;
    switch (random() % 8) {
        case 0:
            return plain + plain / 2;
        case 1:
            return plain + (6 << random() % 7);
        case 2:
            return plain * 5 + kTriplets[random() % 7];
        case 3:
            return random() % 40 == 0 ? 3 : 288;
        case 4:
        case 5:
            return kTriplets[random() % 7];
        default:
            return plain;
    }
}

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
        Notation notation{kMetres[random() % 4], {static_cast<int>(random() % 15) - 7}};
        notation.key.minor = random() % 2;
        if (random() % 5 == 0)
            notation.metre.reset();
        std::vector<int> wanted(1 + random() % 12);
        MelodyDelta delta;
        for (int& units : wanted) {
            units = anyUnits(random);
            const bool rest = random() % 4 == 0;
            const auto note = static_cast<pitch::NoteNumber>(rest ? 0 : 36 + random() % 60);
            delta.others.push_back(MelodyEntry::make(
                note, units / 96.0, rest ? "p" : QString("nsta"[random() % 4]), ','));
        }
        Melody melody;
        melody.exchange(delta);
        const BarView view = barsOf(melody, notation);
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
                ASSERT_TRUE(!entry || note.tiedBack || musician.soundOf(note) == entry);
                before = &note;
            }
            ASSERT_FALSE(inGroup);
            const bool isLast = &bar == &view.bars.back();
            ASSERT_TRUE(isLast ? !before->tiedOn : position == notation.metre->units());
        }
        ASSERT_EQ(written, wanted);
    }
    EXPECT_GT(listed, 20);
    EXPECT_LT(listed, 600);
}
