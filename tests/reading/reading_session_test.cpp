#include "reading/reading_session.h"

#include "support/test_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

/// Writes down what the session shows.
class DisplayRecorder : public ReadingDisplay {
public:
    int step = 0;
    std::pair<int, int> counts;  ///< `conta` and `er`
    int started = 0;
    std::vector<int> shown;
    std::vector<ReadingStatistics> stopped;
    std::function<void()> whenShown;

    void showNote(int shownStep) override {
        step = shownStep;
        shown.push_back(shownStep);
        if (whenShown)
            whenShown();
    }
    void Nascondinote() override { step = 0; }
    void showCounts(int conta, int er) override { counts = {conta, er}; }
    void sessionStarted() override { ++started; }
    void sessionStopped(const ReadingStatistics& statistics) override {
        stopped.push_back(statistics);
    }
};

struct ReadingSessionTest : testing::Test {
    TestWorld world;
    DisplayRecorder display;
    ReadingSession session{world.runtime, world.funzioniMM, "C:\\note\\", display};

    void SetUp() override { world.openOutput(); }

    /// Numbers that make the draws of the first difficulty item (steps 43..53) give these steps.
    void willShow(std::initializer_list<int> steps) {
        world.random.numbers.clear();
        for (const int step : steps)
            world.random.numbers.push_back((static_cast<float>(step - 43) + 0.5F) / 11.0F);
    }
};

}  // namespace

TEST_F(ReadingSessionTest, InNormalModeARightAnswerIsConfirmedAndTheNextNoteShown) {
    willShow({44, 48, 53, 43});
    session.start();
    session.answer(1);
    EXPECT_EQ(display.step, 48) << "Do was right";
    session.answer(1);
    EXPECT_EQ(display.step, 48) << "Sol is asked";
    session.setAnswerWithNote(true);
    session.answer(5);
    EXPECT_EQ(display.counts, std::pair(2, 1));
    world.runtime.advance(3661s);
    session.stop();
    session.answer(3);

    EXPECT_THAT(world.media.lines, ElementsAre("sound rok.wav 20003", "sound rko.wav 20001"));
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 36 0", "on 1 67 100", "on 1 67 0"));
    const ReadingStatistics& statistics = display.stopped.at(0);
    EXPECT_EQ(statistics.rightAnswers(), " Risposte esatte: 2");
    EXPECT_EQ(statistics.wrongAnswers(), " Risposte errate: 1");
    EXPECT_EQ(statistics.answersGiven(), " Risposte date: 3");
    EXPECT_EQ(statistics.percentage(), " R. Esatte: 66.67%");
    EXPECT_EQ(statistics.timeTaken(), "Tempo Impiegato: 1:1 mm:ss");
    EXPECT_EQ(display.step, 0) << "while stopped the staff is empty";
}

TEST_F(ReadingSessionTest, TheAutomaticModeShowsANoteAPeriodAndTakesKeysUntilStopped) {
    session.setMode(ReadingMode::Automatico);
    session.setSpeed(60);
    willShow({44, 46, 48, 50});
    // Do: a wrong key once, however long it is held, then the right one, then another wrong one.
    world.runtime.press(letterKey('F'), 100ms, 600ms);
    world.runtime.press(letterKey('D'), 200ms, 300ms);
    world.runtime.press(letterKey('G'), 400ms, 450ms);
    // Mi with the keypad; the digit row is not polled.
    world.runtime.press('1', 1100ms, 1150ms);
    world.runtime.press(kKeyNumpad0 + 6, 1200ms, 1300ms);
    // Sol: the key of Si is wrong twice, as it is pressed twice.
    world.runtime.press(letterKey('H'), 2100ms, 2200ms);
    world.runtime.press(letterKey('H'), 2300ms, 2400ms);
    // Si: stopped in the middle of the note.
    world.runtime.at(3500ms, [this] {
        EXPECT_EQ(display.step, 50);
        EXPECT_EQ(display.counts, std::pair(4, 3));
        session.stop();
    });
    session.start();

    EXPECT_THAT(display.shown, ElementsAre(44, 46, 48, 50));
    EXPECT_EQ(world.runtime.now(), Instant(3500ms));
    EXPECT_THAT(world.media.lines,
                ElementsAre("sound rko.wav 20001", "sound rok.wav 20001", "sound rok.wav 20001",
                            "sound rko.wav 20001", "sound rko.wav 20001"));
    const ReadingStatistics& statistics = display.stopped.at(0);
    EXPECT_EQ(std::pair(statistics.correct, statistics.wrong), std::pair(2, 3));
    EXPECT_EQ(statistics.notesShown(), " Note mostrate: 4");
    EXPECT_EQ(statistics.percentage(), "  R. Esatte: 50.00%");
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 36 0"));
    EXPECT_LT(world.runtime.passes(), 40) << "a pass is taken when something happened";
}

TEST_F(ReadingSessionTest, EscAndTheEndOfTheProgramStopTheAutomaticMode) {
    session.setMode(ReadingMode::Automatico);
    world.runtime.at(500ms, [this] { session.setSpeed(60); });
    world.runtime.press(kKeyEscape, 2500ms, 2600ms);
    session.start();
    EXPECT_EQ(world.runtime.now(), Instant(2500ms));
    EXPECT_EQ(display.shown.size(), 3U) << "the first note's 2 s became 1 s while it was on show";
    EXPECT_TRUE(display.stopped.at(0).empty()) << "nothing was answered";
    world.runtime.runActs();

    world.runtime.at(3000ms, [this] { session.start(); });
    world.runtime.at(4000ms, [this] {
        session.start();
        EXPECT_EQ(display.started, 2) << "an active session is not started again";
        world.runtime.end();
    });
    world.runtime.runActs();
    EXPECT_FALSE(session.active());
    EXPECT_EQ(display.stopped.size(), 2U);
}

TEST_F(ReadingSessionTest, AStopThatNoPassHasSeenTakesOneWrongAnswerBack) {
    session.setMode(ReadingMode::Automatico);
    session.setSpeed(60);
    willShow({44});
    world.runtime.press(letterKey('F'), 100ms, 200ms);
    display.whenShown = [this] {
        if (display.shown.size() == 2) {
            session.stop();
            world.runtime.advance(1500ms);
        }
    };
    session.start();
    EXPECT_EQ(display.stopped.at(0).wrong, 0);
}

TEST_F(ReadingSessionTest, DrawsAgainWhileAStepCarriesNoNote) {
    session.chooseDifficulty(10);
    // 14..64: the first two numbers fall on the steps 32 and 39, the third on 40.
    world.random.numbers = {18.5F / 51, 25.5F / 51, 26.5F / 51};
    session.start();
    EXPECT_EQ(display.step, 40);
    session.chooseDifficulty(0);
    EXPECT_EQ(display.shown.size(), 2U) << "a new range shows a note of its own";
    session.stop();
}
