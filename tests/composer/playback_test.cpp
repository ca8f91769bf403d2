#include "composer/playback/playback.h"

#include "composer/any_melody.h"
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
    void openEditFrame() override {}
    void hideEditFrame() override { say("no frame"); }
    void showStepEntry(const StepEntry&) override {}
    void untickLoop() override {}
    void announceStep() override {}
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
        composition.melody = melodyOf(std::move(entries));
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
            plan(ms, [ms, other, which = std::min(draw(8), 6)](auto& player) {
                const std::function<void()> acts[] = {[&] { player.abandon(); },
                                                      [&] { player.setTempo(20 + ms % 231); },
                                                      [&] {
                                                          player.stop();
                                                          player.load(other, 0, 99);
                                                          player.clickPlay();
                                                      },
                                                      [&] { player.load({}, 0, 0); },
                                                      [&] { player.endProgram(); },
                                                      [&] { player.toggleKeepLastNumber(); },
                                                      [&] { player.clickPlay(); }};
                acts[which]();
            });
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

/// What is sent and shown, and the boxes, while something happens in a pass or, as a screen
/// reader's press or a signal does, in a wait.
Lines playWithHappenings(unsigned seed, bool planning) {
    Player player;
    auto& midi = player.world.midi;
    auto& runtime = player.world.runtime;
    midi.takesPlans = planning;
    std::mt19937 random(seed);
    player.load(anyEntries(random));
    player.setTempo(60);
    player.setLoops(seed % 2 == 0);
    const std::function<void()> happenings[] = {
        [&] { player.setTempo(150); },    [&] { midi.deviceGone = true; },
        [&] { midi.deviceGone = false; }, [&] { midi.replug(); },
        [&] { player.abandon(); },        [&] { player.stop(); },
        [&] { player.endProgram(); }};
    std::vector<std::unique_ptr<Alarm>> alarms;
    for (int i = 0; i < 4; ++i) {
        const auto& happening = i == 0 ? happenings[6] : happenings[random() % 7];
        const Instant when = milliseconds(random() % 32'000);
        if (random() % 2 == 0) {
            runtime.at(when, happening);
            continue;
        }
        alarms.push_back(runtime.makeAlarm(happening));
        alarms.back()->set(when);
    }
    player.clickPlay();
    runtime.forgetActs();
    Lines lines = midi.take();
    for (const Lines& other : {player.world.dialogs.lines, player.view})
        lines.insert(lines.end(), other.begin(), other.end());
    return lines;
}

TEST(Playback, PlansNotesAndSendsTheSameAsWithoutPlanningWhateverHappens) {
    for (unsigned seed = 0; seed < 2000; ++seed)
        ASSERT_EQ(playWithHappenings(seed, true), playWithHappenings(seed, false)) << seed;
    const auto sent = [](Instant latest) {
        Player player;
        std::mt19937 random(1);
        player.world.runtime.wakeLate([&] { return latest * (random() % 100) / 100; });
        player.load(Entries(9, {"62", "0,5", "s"}));
        player.setTempo(60);
        player.clickPlay();
        return player.world.midi.take();
    };
    const Lines punctual = sent(0ms);
    EXPECT_EQ(punctual.size(), 18U);
    for (const Instant latest : {5ms, 25ms, 50ms})
        EXPECT_EQ(sent(latest), punctual) << latest / 1ms;
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
    const Lines ended = player.world.midi.takeUntimed();
    const Lines unmarked = player.takeUntimed();
    ASSERT_EQ(ended.size() + unmarked.size(), 2 * 60U);
    for (std::size_t i = 0; i < 60; ++i) {
        EXPECT_EQ(ended[i], "on 1 " + std::to_string(i + 36) + " 0");
        EXPECT_EQ(unmarked[i], "unmark " + std::to_string(i));
    }
    player.composition.range.select(0, 5, 6);
    EXPECT_EQ(player.playback.step(StepMode::Direction::Backward),
              "Nini= 0\nNfine= 5\nIndiceNotaPP= 5\nCondizione anomala !!!");
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
    EXPECT_EQ(hold(10s), 3U) << "they stop at their limit";
    runtime.at(runtime.now(), [&] { runtime.end(); });
    arrows.hold(PlayRange::Arrow::StartDown);
    EXPECT_EQ(player.composition.range.start(), 7) << "the program ended";
}

}  // namespace
