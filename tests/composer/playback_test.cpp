#include "composer/playback/playback.h"

#include "composer/melody/composition.h"
#include "support/test_world.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Writes down what the playback shows, in the order in which it comes.
class ViewRecorder : public PlaybackView {
public:
    std::vector<std::string> lines;
    std::function<void(const QString&)> onEntryNumber;

    void showPlaying(bool playing) override { lines.push_back(playing ? "Stop" : "Play"); }
    void enableCanc(bool enabled) override { lines.push_back(enabled ? "canc" : "no canc"); }
    void showEntryNumber(const QString& text) override {
        lines.push_back("ne " + text.toStdString());
        if (onEntryNumber)
            onEntryNumber(text);
    }
    void showEntryName(const QString& text) override {
        lines.push_back("pnn " + text.toStdString());
    }
    void markKey(pitch::NoteIndex key, bool on) override {
        lines.push_back((on ? "mark " : "unmark ") + std::to_string(key));
    }
    void focusPlay() override { lines.emplace_back("focus"); }
    void openEditFrame() override { lines.emplace_back("frame"); }
    void hideEditFrame() override { lines.emplace_back("no frame"); }
    void showStepEntry(const StepEntry& entry) override {
        lines.push_back("step " + entry.noteName.toStdString() + " " + entry.letter.toStdString() +
                        " " + entry.valueName.toStdString() + (entry.canModify ? " +" : " -"));
    }
    void untickLoop() override { lines.emplace_back("no loop"); }

    std::vector<std::string> take() { return std::exchange(lines, {}); }
};

class PlaybackTest : public ::testing::Test {
protected:
    PlaybackTest() { world.openOutput(); }

    void load(const MelodyTexts& texts, int tempo = 60) {
        Melody::Reading reading = Melody::read(texts);
        MelodyDelta delta{0, 0, std::move(reading.entries), true, std::move(reading.damaged)};
        composition.melody.exchange(delta);
        composition.range.coverAll(composition.melody.EntryCount());
        composition.tempo = tempo;
    }

    int viewCount(const std::string& line) const {
        return static_cast<int>(std::count(view.lines.begin(), view.lines.end(), line));
    }

    TestWorld world;
    Composition composition;
    ViewRecorder view;
    Playback playback{world.runtime, world.funzioniMM, composition, view};
};

TEST_F(PlaybackTest, EveryLetterAtItsInstants) {
    load({"60;62;64;65;00;67;", "1;1;1;0,5;0,5;1;", "n;s;t;a;p;n;"});
    playback.clickPlay();
    EXPECT_THAT(
        world.midi.take(),
        ElementsAre("0.000 on 1 60 100", "0.970 on 1 60 0", "1.000 on 1 62 120", "1.250 on 1 62 0",
                    "2.000 on 1 64 100", "2.500 on 1 64 0", "3.000 on 1 65 127", "3.470 on 1 65 0",
                    "4.000 on 1 67 100", "4.970 on 1 67 0"));
    EXPECT_EQ(world.runtime.now(), 4970ms);
}

TEST_F(PlaybackTest, ShowsEverythingInItsOrder) {
    load({"60;00;", "1;1;", "n;p;"});
    playback.clickPlay();
    EXPECT_THAT(view.take(), ElementsAre("no frame", "canc", "Stop", "no canc", "ne 0", "ne 1",
                                         "pnn Do", "mark 24", "unmark 24", "ne 2", "pnn P", "ne 0",
                                         "Play", "no canc", "focus", "ne ", "pnn ", "canc"));
}

TEST_F(PlaybackTest, StopsAtTheNextEntryLoopsAndNeverRunsOverTheEnd) {
    load({"60;62;", "1;1;", "n;n;"});
    playback.player().setLoops(true);
    int shown = 0;
    view.onEntryNumber = [&](const QString& text) { shown += text == QStringLiteral("2") ? 1 : 0; };
    // The click comes while the third pass sounds its first note.
    world.runtime.at(4200ms, [&] { playback.clickPlay(); });
    playback.clickPlay();
    EXPECT_EQ(shown, 2);
    EXPECT_FALSE(playback.player().playing());
    // No gap between two passes: each takes its total less 30 ms.
    EXPECT_THAT(
        world.midi.take(),
        ElementsAre("0.000 on 1 60 100", "0.970 on 1 60 0", "1.000 on 1 62 100", "1.970 on 1 62 0",
                    "1.970 on 1 60 100", "2.940 on 1 60 0", "2.970 on 1 62 100", "3.940 on 1 62 0",
                    "3.940 on 1 60 100", "4.910 on 1 60 0"));

    // A range without any length lets the click come too.
    load({"00;", "0;", "p;"});
    world.runtime.at(world.runtime.now() + 100ms, [&] { playback.clickPlay(); });
    playback.clickPlay();
    load({"60;62;", "1;1;", "n;n;"});

    // The melody shrinks under the player, and the program ends under it.
    world.runtime.at(world.runtime.now() + 500ms, [&] { load({"60;", "1;", "n;"}); });
    playback.player().setLoops(false);
    playback.clickPlay();
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 60 100", "on 1 60 0"));
    playback.player().setLoops(true);
    world.runtime.at(world.runtime.now() + 500ms, [&] { world.runtime.end(); });
    playback.clickPlay();
    EXPECT_FALSE(playback.player().playing());
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 60 100", "on 1 60 0"));
}

TEST_F(PlaybackTest, AnEntryTooShortLeavesStopOnTheButton) {
    load({"60;62;64;", "1;0,0625;1;", "n;n;n;"}, 121);
    playback.clickPlay();
    EXPECT_TRUE(playback.player().playing());
    EXPECT_EQ(view.take().back(), "pnn Re");
    EXPECT_EQ(world.midi.takeUntimed().size(), 2U);
    EXPECT_EQ(playback.step(StepMode::Direction::Forward), QString());
    EXPECT_THAT(view.take(), IsEmpty());
    playback.clickPlay();
    EXPECT_FALSE(playback.player().playing());
    EXPECT_EQ(viewCount("Play"), 2);
    EXPECT_THAT(world.midi.take(), IsEmpty());

    load({"60;62;", "1;1;", "?;n;"});
    playback.clickPlay();
    EXPECT_TRUE(playback.player().playing());
    EXPECT_THAT(world.midi.take(), IsEmpty());
}

TEST_F(PlaybackTest, APlayThatHangsStopsTheOneUnderIt) {
    load({"60;62;64;", "1;1;1;", "n;n;n;"});
    // As a melody that is activated while another one plays.
    world.runtime.at(500ms, [&] {
        playback.stop();
        load({"72;74;76;", "0,01;1;1;", "n;n;n;"});
        playback.clickPlay();
    });
    playback.clickPlay();
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 60 100", "on 1 60 0"));
    EXPECT_TRUE(playback.player().playing());
    EXPECT_EQ(view.take().back(), "pnn Do");
    playback.player().abandon();
    EXPECT_THAT(view.take(), ElementsAre("Play", "canc", "ne ", "pnn "));
}

TEST_F(PlaybackTest, ALongEntryLetsEventsRunOnceASecond) {
    const auto at = [this](Instant instant, std::function<void()> act) {
        world.runtime.at(world.runtime.now() + instant, std::move(act));
    };
    // Up to 20 s an event waits for the end; beyond it instants are kept all the same.
    load({"60;62;64;00;65;", "20;20,5;41;21;1;", "n;n;s;p;n;"});
    std::vector<Instant> ran;
    for (const Instant instant : {5500ms, 25500ms, 42200ms, 90500ms})
        at(instant, [&] { ran.push_back(world.runtime.now()); });
    playback.clickPlay();
    EXPECT_THAT(ran, ElementsAre(20s, 26s, 42500ms, 90500ms));
    EXPECT_THAT(world.midi.take(),
                ElementsAre("0.000 on 1 60 100", "19.970 on 1 60 0", "20.000 on 1 62 100",
                            "40.470 on 1 62 0", "40.500 on 1 64 120", "50.750 on 1 64 0",
                            "102.500 on 1 65 100", "103.470 on 1 65 0"));

    // Whatever stops it ends the note there, once, and unmarks its key.
    const std::vector<std::function<void()>> stops{
        [&] { playback.clickPlay(); },
        [&] { playback.player().abandon(); },
        [&] {
            playback.stop();
            load({"72;", "0,01;", "n;"});
            playback.clickPlay();
        },
        [&] { world.runtime.end(); },
    };
    for (const auto& stop : stops) {
        load({"60;62;", "1000;1;", "n;n;"});
        playback.player().abandon();
        view.take();
        at(2500ms, stop);
        const Instant start = world.runtime.now();
        playback.clickPlay();
        EXPECT_EQ(world.runtime.now() - start, 3s);
        EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 60 100", "on 1 60 0"));
        EXPECT_EQ(viewCount("unmark 24"), 1);
    }
}

TEST_F(PlaybackTest, OddNotesAndDamagedMelodiesMakeNoSound) {
    load({"00;120;x;60;", "1;1;1;1;", "n;n;n;n;"});
    playback.clickPlay();
    EXPECT_THAT(world.midi.take(), ElementsAre("3.000 on 1 60 100", "3.970 on 1 60 0"));
    load({"60;62;", "1;", "n;n;"});
    view.take();
    playback.clickPlay();
    EXPECT_THAT(view.take(), ElementsAre("no frame", "canc"));
}

TEST_F(PlaybackTest, LatenessDoesNotAddUpAndIsNotHurriedAfter) {
    const int count = 8;
    load({QStringLiteral("60;").repeated(count), QStringLiteral("0,5;").repeated(count),
          QStringLiteral("n;").repeated(count)});
    // Every handler takes 7 ms; the one before the sixth entry takes 300 ms.
    view.onEntryNumber = [&](const QString& text) {
        if (text != QStringLiteral("0") && !text.isEmpty())
            world.runtime.advance(7ms);
    };
    world.runtime.at(2100ms, [&] { world.runtime.advance(300ms); });
    playback.clickPlay();
    // Onsets keep to the half second, whatever came late, and every note sounds its 470 ms.
    std::vector<std::string> instants;
    for (const std::string& line : world.midi.take())
        instants.push_back(line.substr(0, 5));
    EXPECT_THAT(instants, ElementsAre("0.007", "0.477", "0.507", "0.977", "1.007", "1.477", "1.507",
                                      "1.977", "2.007", "2.477", "2.807", "3.277", "3.307", "3.777",
                                      "3.807", "4.277"));
}

TEST_F(PlaybackTest, StepsThroughTheRangeAndWraps) {
    load({"60;62;00;64;", "1;0,75;1;5;", "n;s;p;a;"});
    composition.range.select(1, 3, 4);
    playback.player().setLoops(true);
    using Direction = StepMode::Direction;
    playback.step(Direction::Forward);
    EXPECT_THAT(view.take(), ElementsAre("frame", "step Re s (1/8). +", "no canc", "no loop",
                                         "Stop", "no canc", "ne 0", "ne 2", "pnn Re", "mark 26",
                                         "unmark 26", "ne 0", "Play", "no canc", "focus", "ne 2"));
    EXPECT_EQ(composition.activeNote, 62);
    const std::vector<std::pair<Direction, const char*>> steps{
        {Direction::Backward, "step Mi a na -"}, {Direction::Backward, "step P p 1/4 +"},
        {Direction::Forward, "step Mi a na -"},  {Direction::Forward, "step Re s (1/8). +"},
        {Direction::Backward, "step Mi a na -"},
    };
    for (const auto& [direction, shown] : steps) {
        playback.step(direction);
        EXPECT_EQ(view.take().at(1), shown);
    }
    load({"60;", "1;", "n;"});
    composition.range.select(0, 5, 6);
    EXPECT_EQ(playback.step(Direction::Forward),
              QStringLiteral("Nini= 0\nNfine= 5\nIndiceNotaPP= 4\nCondizione anomala !!!"));
    composition.step.active = false;
    playback.step(Direction::Backward);
    EXPECT_EQ(composition.step.index, 5);
    playback.clickPlay();
    EXPECT_FALSE(composition.step.active);
}

TEST_F(PlaybackTest, DelayedPlayAndKeptNumber) {
    load({"60;", "1;", "n;"});
    playback.player().toggleKeepLastNumber();
    playback.clickDelayedPlay();
    EXPECT_THAT(world.midi.take(), ElementsAre("3.000 on 1 60 100", "3.970 on 1 60 0"));
    EXPECT_EQ(viewCount("ne 0"), 1);
    playback.player().silenceAll();
    EXPECT_EQ(world.midi.take().size(), 60U);
}

}  // namespace
