#include "metronome/custom_sequence.h"

#include "metronome/metronome_state.h"
#include "support/test_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(CustomSequence, StoringTheResult) {
    struct Case {
        const char *pattern, *tempo, *timeSigBefore, *storedPattern, *storedTimeSig;
    };
    constexpr std::array<Case, 9> kCases{{
        {"", "", "6/8", "ab", "2/4"},
        {"", "5/8", "6/8", "ab", "2/4"},
        {"abcbb", "", "4/4", "abcbb", "P."},
        {"abcbb", "5/8", "4/4", "abcbb", "5/8"},
        {"ab", "7/8", "6/8", "ab", "6/8"},
        {"abb", "", "6/8", "abb", "6/8"},
        {"abbb", "3/4", "P.", "abbb", "P."},
        {"abbcbb", "3/4", "2/4", "abbcbb", "2/4"},
        {"ABB", "3/4", "2/4", "ABB", "3/4"},
    }};
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.pattern);
        MetronomeState state;
        state.MetroTimeSig = QString::fromLatin1(c.timeSigBefore);
        custom_sequence::store(
            state, {QString::fromLatin1(c.pattern), QString::fromLatin1(c.tempo), 10, 0, 7});
        EXPECT_EQ(state.MetroPattern, QString::fromLatin1(c.storedPattern));
        EXPECT_EQ(state.MetroTimeSig, QString::fromLatin1(c.storedTimeSig));
        EXPECT_EQ(state.MetroSoundIndexA, 10);
        EXPECT_EQ(state.MetroSoundIndexB, 0);
        EXPECT_EQ(state.MetroSoundIndexC, 7);
    }
}

TEST(CustomSequence, PlaysASequenceOnceAtFullVelocity) {
    TestWorld world;
    MetronomeState state;
    state.MetroVolume = 5;
    const QString pattern = "bxac";
    custom_sequence::playOnce(world.funzioniMM, state, pattern);
    custom_sequence::testSound(world.funzioniMM, 76);
    EXPECT_THAT(world.midi.take(), IsEmpty()) << "no output is open";
    EXPECT_EQ(world.runtime.now(), Instant{0});
    EXPECT_EQ(state.MetroPulseNote, 33);
    EXPECT_EQ(state.MetroPulseColour, lamp_colours::kBlue);

    world.openOutput();
    custom_sequence::playOnce(world.funzioniMM, state, pattern);
    EXPECT_THAT(
        world.midi.take(),
        ElementsAre("0.000 reset", "0.800 on 10 85 127", "0.800 reset", "1.600 on 10 85 127",
                    "1.600 reset", "2.400 on 10 76 127", "2.400 reset", "3.200 on 10 33 127"));
    custom_sequence::testSound(world.funzioniMM, 51);
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 60 0", "on 10 51 127"));
}
