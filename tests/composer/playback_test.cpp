#include "composer/playback/playback.h"

#include "composer/melody/composition.h"
#include "composer/playback/articulation.h"
#include "composer/playback/range_arrows.h"
#include "composer/player_model.h"
#include "support/test_world.h"

#include <gmock/gmock.h>

namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

/// The playback controls, and what they show with its instants.
class Player : public PlaybackView, public RangeView {
public:
    Player() { world.openOutput(); }

    void showPlaying(bool playing) override { say(playing ? "Stop" : "Play"); }
    void enableCanc(bool enabled) override { say(enabled ? "canc" : "no canc"); }
    void showEntryNumber(const QString& text) override {
        say("ne " + text.toStdString());
        if (text.toInt() > 0)
            world.runtime.advance(milliseconds(lateness()));
    }
    void showEntryName(const QString& text) override { say("pnn " + text.toStdString()); }
    void markKey(pitch::NoteIndex key, bool on) override {
        say((on ? "mark " : "unmark ") + std::to_string(key));
    }
    void focusPlay() override { say("focus"); }
    void openEditFrame() override { say("frame"); }
    void hideEditFrame() override { say("no frame"); }
    void showStepEntry(const StepEntry& entry) override {
        say("step " + entry.noteName.toStdString() + " " + entry.letter.toStdString() + " " +
            entry.valueName.toStdString() + (entry.canModify ? " +" : " -"));
    }
    void untickLoop() override { say("no loop"); }
    void showRange() override { say("range"); }

    void abandon() { playback.player().abandon(); }
    void clickPlay() { playback.clickPlay(); }
    void stop() { playback.stop(); }
    void setTempo(int tempo) { composition.tempo = tempo; }
    void setLoops(bool on) { playback.player().setLoops(on); }
    void toggleKeepLastNumber() { playback.player().toggleKeepLastNumber(); }
    void endProgram() { world.runtime.end(); }
    void runActs() { world.runtime.runActs(); }
    void load(Entries entries, int start = 0, int end = 99) {
        const int count = static_cast<int>(entries.size());
        MelodyDelta delta{0, 0, std::move(entries), true, {}};
        composition.melody.exchange(delta);
        composition.range.select(start, end, count);
    }
    Lines takeUntimed() {
        for (std::string& line : view)
            line.erase(0, line.find(' ') + 1);
        return std::exchange(view, {});
    }

    TestWorld world;
    Composition composition;
    Lines view;
    std::function<int()> lateness = [] { return 0; };
    Playback playback{world.runtime, world.funzioniMM, composition, *this};

private:
    void say(const std::string& what) { view.push_back(at(world.runtime.now() / 1ms, what)); }
};

TEST(Playback, SendsAndShowsWhatItsPlainestFormDoesAtItsMilliseconds) {
    for (unsigned seed = 1; seed <= 600 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto draw = [&random](int limit) {
            return static_cast<int>(random() % static_cast<unsigned>(limit));
        };
        Player real;
        PlayerModel model;
        const auto both = [&](auto what) {
            what(real);
            what(model);
        };
        // Something that happens while the melody plays.
        const auto plan = [&](int ms, auto what) {
            real.world.runtime.at(milliseconds(ms), [&real, what] { what(real); });
            model.acts.emplace(ms, [&model, what] { what(model); });
        };
        std::vector<int> late(16);
        for (int& ms : late)
            ms = draw(4) != 0 ? 0 : 5 * draw(20);
        const Entries first = anyEntries(random);
        const int tempo = 20 + draw(231);
        const int start = draw(3);
        const int end = draw(8);
        const bool loops = draw(3) == 0;
        both([&](auto& player) {
            player.lateness = [late, shown = std::size_t{0}]() mutable {
                return late[shown++ % late.size()];
            };
            player.load(first, start, end);
            player.setTempo(tempo);
            player.setLoops(loops);
        });
        for (int count = draw(5); count > 0; --count) {
            const int ms = draw(2) == 0 ? draw(60'000) : draw(5'000);
            const Entries other = anyEntries(random);
            switch (draw(8)) {
                case 0:
                    plan(ms, [](auto& player) { player.abandon(); });
                    break;
                case 1:
                    plan(ms, [ms](auto& player) { player.setTempo(20 + ms % 231); });
                    break;
                case 2:
                    plan(ms, [other](auto& player) {
                        player.stop();
                        player.load(other, 0, 99);
                        player.clickPlay();
                    });
                    break;
                case 3:
                    plan(ms, [](auto& player) { player.load({}, 0, 0); });
                    break;
                case 4:
                    plan(ms, [](auto& player) { player.endProgram(); });
                    break;
                case 5:
                    plan(ms, [](auto& player) { player.toggleKeepLastNumber(); });
                    break;
                default:
                    plan(ms, [](auto& player) { player.clickPlay(); });
            }
        }
        plan(30'000, [](auto& player) { player.setLoops(false); });
        both([](auto& player) {
            player.clickPlay();
            player.runActs();
        });
        EXPECT_THAT(real.world.midi.take(), ElementsAreArray(model.midi));
        EXPECT_THAT(real.view, ElementsAreArray(model.view));
        EXPECT_EQ(real.playback.player().playing(), model.playing);
        EXPECT_EQ(real.world.runtime.now(), milliseconds(model.now));
    }
    EXPECT_EQ(totalMs(1e300, 60), 864'000'000) << "no entry takes more than ten days";
}

TEST(Playback, NamesTheEntryThatItStepsTo) {
    Player player;
    Playback& playback = player.playback;
    player.load({{"60", "1", "n"}, {"62", "0,75", "s"}, {"x", "30", "n"}}, 1, 2);
    playback.player().setLoops(true);
    using Direction = StepMode::Direction;
    playback.step(Direction::Forward);
    EXPECT_EQ(player.takeUntimed(),
              (Lines{"frame", "step Re s (1/8). +", "no canc", "no loop", "Stop", "no canc", "ne 0",
                     "ne 2", "pnn Re", "mark 26", "unmark 26", "ne 0", "Play", "no canc", "focus",
                     "ne 2"}));
    EXPECT_EQ(player.composition.activeNote, 62);
    // No step while one plays; a stop meanwhile ends step mode, and nothing is named any more.
    player.world.runtime.at(player.world.runtime.now() + 5s, [&] {
        EXPECT_EQ(playback.step(Direction::Forward), QString());
        playback.clickPlay();
    });
    playback.step(Direction::Backward);
    EXPECT_EQ(player.composition.activeNote, 0);
    const Lines lines = player.takeUntimed();
    EXPECT_EQ(lines.at(1), "step  n na -");
    EXPECT_EQ(lines.back(), "canc");
    player.load({{"60", "1", "n"}});
    player.composition.range.select(0, 5, 6);
    EXPECT_EQ(playback.step(Direction::Backward),
              "Nini= 0\nNfine= 5\nIndiceNotaPP= 5\nCondizione anomala !!!");
    player.load({});
    player.view.clear();
    playback.step(Direction::Forward);
    EXPECT_EQ(player.view, Lines());
}

TEST(Playback, NamesTheEntryThatEditsLeaveAtTheStep) {
    Player player;
    StepMode& step = player.composition.step;
    player.load({{"60", "1", "n"}, {"62", "1", "s"}});
    const auto follow = [&player](bool gone) {
        player.playback.followStep(gone);
        return player.takeUntimed();
    };
    EXPECT_EQ(follow(true), (Lines{"ne ", "pnn "}));
    step = {true, true, 1};
    EXPECT_EQ(follow(false), (Lines{"frame", "step Re s 1/4 +", "ne 2", "pnn Re"}));
    EXPECT_EQ(follow(true), (Lines{"frame", "step Re s 1/4 +", "canc", "ne 2", "pnn Re"}));
    EXPECT_EQ(player.composition.activeNote, 62);
    player.playback.playStepEntry();
    EXPECT_EQ(player.world.midi.takeUntimed(), (Lines{"on 1 62 120", "on 1 62 0"}));
    player.view.clear();
    step.index = -1;
    player.playback.showStepPlace();
    EXPECT_EQ(player.takeUntimed(), (Lines{"ne 0", "pnn "}));
    player.load({});
    step.leave();
    EXPECT_EQ(follow(true), (Lines{"no frame", "canc", "ne ", "pnn "}));
}

TEST(Playback, DelaysThreeSecondsAndEndsEveryNote) {
    Player player;
    player.load({{"60", "1", "n"}});
    player.composition.step = {true, true, 0};
    player.playback.clickDelayedPlay();
    EXPECT_FALSE(player.composition.step.active || player.composition.step.frameOpen);
    EXPECT_THAT(player.world.midi.take(), ElementsAre("3.000 on 1 60 100", "3.970 on 1 60 0"));
    player.view.clear();
    player.playback.player().silenceAll();
    Lines ended;
    Lines unmarked;
    for (int note = 36; note <= 95; ++note) {
        ended.push_back("on 1 " + std::to_string(note) + " 0");
        unmarked.push_back("unmark " + std::to_string(note - 36));
    }
    EXPECT_EQ(player.world.midi.takeUntimed(), ended);
    EXPECT_EQ(player.takeUntimed(), unmarked);
}

TEST(RangeArrows, StepEveryTenthOfASecondForAsLongAsTheyAreHeld) {
    Player player;
    VirtualRuntime& runtime = player.world.runtime;
    RangeArrows arrows(runtime, player.world.funzioniMM, player.composition, player);
    const auto hold = [&](Instant length) {
        runtime.at(runtime.now() + length, [&] { arrows.release(); });
        arrows.hold(PlayRange::Arrow::StartUp);
        return player.takeUntimed().size();
    };
    EXPECT_EQ(hold(50ms), 0U) << "an empty melody has nothing to move";
    player.load(Entries(9, {"60", "1", "n"}));
    EXPECT_EQ(hold(350ms), 4U);
    EXPECT_EQ(player.composition.range.start(), 4);
    EXPECT_EQ(hold(10s), 3U) << "they stop at their limit";
    runtime.at(runtime.now(), [&] { runtime.end(); });
    arrows.hold(PlayRange::Arrow::StartDown);
    EXPECT_EQ(player.composition.range.start(), 7) << "the program ended";
}

}  // namespace
