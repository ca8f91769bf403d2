#include "eartraining/ear_world.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>

using namespace std::chrono_literals;

namespace {

/// A user who clicks on whatever is on show, sometimes while an earlier click is being served.
class Walker {
public:
    explicit Walker(unsigned seed) : engine_(seed) {}

    EarWorld world;
    bool closed = false;

    void step() {
        for (int i = 0; i < 40; ++i)
            world.random.numbers.push_back(uniform());
        if (below(4) == 0)
            world.runtime.at(world.runtime.now(), [this] { act(); });
        act();
        listen();
    }

    /// Acts that no loop has served yet are served as the window's own loop would.
    void serveTheRest() {
        world.runtime.runActs();
        listen();
    }

    bool running() {
        for (const auto& [exercise, on] : world.screen.running) {
            if (on)
                return true;
        }
        return false;
    }

    bool sounds() {
        listen();
        return !sounding_.empty();
    }

private:
    float uniform() { return static_cast<float>(engine_() >> 8) * 0x1p-24F; }
    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }
    bool shown(EarControl control) { return world.screen.shown(control); }

    void act() {
        if (closed)
            return;
        EarTraining& ear = world.ear;
        const bool intervals = shown(EarControl::FrmIntervalli);
        const bool chords = shown(EarControl::frmRacc);
        switch (below(12)) {
            case 0:
                return chooseExercise();
            case 1:
                if (below(8) == 0)
                    close();
                return;
            case 2:
                if (shown(EarControl::IntoStart))
                    ear.pitch().startOrStop();
                return;
            case 3:
                if (shown(EarControl::cmdReimposta))
                    ear.pitch().reset();
                return;
            case 4:
                ear.pitch().toggleMode();
                return ear.chord().toggleKeys();
            case 5:
                if (intervals)
                    ear.interval().startOrStop();
                return;
            case 6:
                if (intervals)
                    ear.interval().semitonesClicked(below(14));
                return;
            case 7:
                ear.interval().stepMode();
                return ear.interval().toggleAvailable(below(14));
            case 8:
                if (chords && shown(EarControl::ComdRacStart))
                    ear.chord().startOrStop();
                return;
            case 9:
                if (chords && shown(EarControl::cmdRes))
                    ear.chord().resetRange();
                return;
            case 10:
                if (chords)
                    ear.chord().typeClicked(below(4));
                return;
            default:
                return ear.keyClicked(static_cast<pitch::NoteIndex>(below(60)));
        }
    }

    void chooseExercise() {
        if (!world.screen.exerciseMenu)
            return;
        ASSERT_FALSE(running());
        switch (below(3)) {
            case 0:
                world.ear.choosePitch();
                break;
            case 1:
                world.ear.chooseInterval();
                break;
            default:
                world.ear.chooseChord();
                break;
        }
        ASSERT_FALSE(sounds()) << "after a change of exercise";
    }

    void close() {
        listen();
        const bool refused = running() || world.screen.prompt == EarPrompt::Reference;
        closed = world.ear.unload();
        ASSERT_NE(closed, refused);
        if (closed)
            ASSERT_FALSE(sounds()) << "after closing";
        else
            ASSERT_TRUE(world.midi.take().empty()) << "a refused closing changes nothing";
    }

    void listen() {
        for (const std::string& line : world.midi.takeUntimed()) {
            int note = 0;
            int velocity = 0;
            ASSERT_EQ(std::sscanf(line.c_str(), "on 1 %d %d", &note, &velocity), 2) << line;
            if (velocity == 0) {
                sounding_.erase(note);
                continue;
            }
            ASSERT_TRUE(pitch::isPlayable(note)) << line;
            ASSERT_FALSE(closed) << line << " after closing";
            sounding_.insert(note);
        }
    }

    std::mt19937 engine_;
    std::set<int> sounding_;
};

}  // namespace

TEST(EarTrainingWalks, NoNoteOutlivesAnExerciseOrTheWindow) {
    int closings = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        Walker walker(seed);
        for (int i = 0; i < 400 && !walker.closed && !testing::Test::HasFailure(); ++i)
            walker.step();
        walker.serveTheRest();
        closings += walker.closed ? 1 : 0;
        if (testing::Test::HasFailure())
            return;
    }
    EXPECT_GT(closings, 200) << "the walks seldom get to the end";
}
