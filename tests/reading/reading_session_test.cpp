#include "reading/reading_session.h"

#include "support/test_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

/// An automatic session on the first difficulty item; everything else is tried in its window.
struct AutomaticSession : testing::Test, ReadingDisplay {
    TestWorld world;
    ReadingSession session{world.runtime, world.funzioniMM, "C:\\note\\", *this};
    std::vector<int> shown;
    ReadingStatistics statistics;
    std::string judged;

    void showNote(int step) override {
        shown.push_back(step);
        if (shown.size() == 5) {
            session.stop();
            world.runtime.advance(1500ms);
        }
    }
    void Nascondinote() override {}
    void showCounts(int, int) override {}
    void answerJudged(std::optional<int>, Verdict verdict) override {
        judged += verdict == Verdict::Right ? '+' : '-';
    }
    void sessionStarted() override {}
    void sessionStopped(const ReadingStatistics& numbers) override { statistics = numbers; }
};

}  // namespace

TEST_F(AutomaticSession, TakesHeldKeysOnceAndAStopThatNoPassHasSeenTakesAWrongAnswerBack) {
    world.random.numbers = {1.5F / 11, 3.5F / 11, 5.5F / 11, 9.5F / 11, 7.5F / 11};
    // Do: a wrong key once, however long it is held, then the right one, then another wrong one.
    world.runtime.press(letterKey('F'), 100ms, 2400ms);
    world.runtime.press(letterKey('D'), 200ms, 300ms);
    world.runtime.press(letterKey('G'), 400ms, 450ms);
    world.runtime.at(500ms, [this] { session.start(); });
    // Mi, a second long: the key that is still held answers. Sol: a key pressed twice is wrong
    // twice.
    world.runtime.at(600ms, [this] { session.setSpeed(60); });
    world.runtime.at(1300ms, [] {});
    world.runtime.press(letterKey('H'), 2450ms, 2500ms);
    world.runtime.press(letterKey('H'), 2550ms, 2600ms);
    // A key of a MIDI keyboard is wrong once and answers Re, which comes after Sol.
    world.runtime.at(2650ms, [this] { session.keyDown(62); });
    session.setMode(ReadingMode::Automatico);
    session.start();
    EXPECT_THAT(shown, ElementsAre(44, 46, 48, 52, 50));
    EXPECT_EQ(world.runtime.now(), Instant(5500ms));
    EXPECT_THAT(world.media.lines,
                ElementsAre("sound rko.wav 20001", "sound rok.wav 20001", "sound rok.wav 20001",
                            "sound rko.wav 20001", "sound rko.wav 20001", "sound rko.wav 20001",
                            "sound rok.wav 20001"));
    EXPECT_EQ(judged, "-++---+");
    EXPECT_EQ(statistics.correct, 3);
    EXPECT_EQ(statistics.wrong, 3);
    EXPECT_LT(world.runtime.passes(), 40) << "a pass is taken when something happened";
}
