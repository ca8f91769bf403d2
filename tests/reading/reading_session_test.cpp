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
    std::vector<ReadingStatistics> stopped;
    std::function<void()> whenShown = [] {};

    void SetUp() override { session.setMode(ReadingMode::Automatico); }
    void showNote(int step) override {
        shown.push_back(step);
        whenShown();
    }
    void Nascondinote() override {}
    void showCounts(int, int) override {}
    void sessionStarted() override {}
    void sessionStopped(const ReadingStatistics& numbers) override { stopped.push_back(numbers); }
};

}  // namespace

TEST_F(AutomaticSession, TakesHeldKeysOnceAndAStopThatNoPassHasSeenTakesAWrongAnswerBack) {
    for (const int step : {44, 46, 48, 50})
        world.random.numbers.push_back((static_cast<float>(step - 43) + 0.5F) / 11);
    world.random.numbers.pop_front();
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
    whenShown = [this] {
        if (shown.size() == 4) {
            session.stop();
            world.runtime.advance(1500ms);
        }
    };
    session.start();
    EXPECT_THAT(shown, ElementsAre(44, 46, 48, 50));
    EXPECT_EQ(world.runtime.now(), Instant(4500ms));
    EXPECT_THAT(world.media.lines,
                ElementsAre("sound rko.wav 20001", "sound rok.wav 20001", "sound rok.wav 20001",
                            "sound rko.wav 20001", "sound rko.wav 20001"));
    EXPECT_EQ(std::tuple(stopped.at(0).correct, stopped.at(0).wrong, stopped.at(0).shown),
              std::tuple(2, 2, 4));
    EXPECT_FALSE(session.active());
    EXPECT_LT(world.runtime.passes(), 40) << "a pass is taken when something happened";
}

TEST_F(AutomaticSession, EndsWithTheProgram) {
    world.runtime.at(500ms, [this] { world.runtime.end(); });
    session.start();
    EXPECT_EQ(world.runtime.now(), Instant(500ms));
    EXPECT_TRUE(stopped.at(0).empty());
}
