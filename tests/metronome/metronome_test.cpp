#include "metronome/metronome.h"

#include "metronome/custom_sequence.h"
#include "metronome/percussion_names.h"
#include "support/same_lines.h"
#include "support/test_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

using Lines = std::vector<std::string>;

/// Writes down what the metronome shows, between the messages that it sends.
class Trace : public MetronomeView {
public:
    explicit Trace(MidiRecorder& midi) : midi_(midi) {}

    void metronomeStarted() override { midi_.note("started"); }
    void metronomeStopped() override { midi_.note("stopped"); }
    void showTimeSignature(const QString& timeSig) override { midi_.note(timeSig.toStdString()); }
    void showLamps(int count) override { midi_.note("lamps " + std::to_string(count)); }
    void darkenLamps() override { midi_.note("dark"); }
    void lightLamp(int lamp, pulse_pattern::Colour colour) override {
        midi_.note("lamp " + std::to_string(lamp) + ' ' + std::to_string(colour));
    }

private:
    MidiRecorder& midi_;
};

struct RealMetronome : Metronome {
    using Metronome::Metronome;
    static constexpr auto store = custom_sequence::store;
    static constexpr auto playOnce = custom_sequence::playOnce;
    static constexpr auto testSound = custom_sequence::testSound;
};

/// The rules of the metronome and of the custom sequences a second time, in their plainest form.
struct PlainMetronome {
    Runtime& runtime;
    FunzioniMM& sound;
    MetronomeState& state;
    MetronomeView& view;
    int tempo = 60;
    int run = 0;
    bool toBeClosed = false;
    QString shown = {};

    void load() {
        shown = state.MetroTimeSig;
        view.showTimeSignature(shown);
        view.showLamps(static_cast<int>(state.MetroPattern.size()));
    }
    void stepTimeSignature() {
        const QStringList timeSigs{"2/4", "3/4", "4/4", "6/8", "2/4"};
        if (state.MetroRunning)
            return;
        state.MetroTimeSig = timeSigs[timeSigs.indexOf(shown) + 1];
        state.MetroPattern =
            QStringList{"ab", "abb", "abbb", "abbcbb"}[timeSigs.indexOf(state.MetroTimeSig)];
        load();
    }
    void setTempo(int value) {
        tempo = value;
        state.MetroPeriod = 60.0 / tempo / state.MetroMultiplier;
    }
    void toggleDoubling() {
        state.MetroMultiplier = state.MetroMultiplier == 1 ? 2 : 1;
        setTempo(tempo);
    }
    void setVolume(int velocity) { state.MetroVolume = static_cast<std::int16_t>(velocity); }
    bool doubled() const { return state.MetroMultiplier == 2; }
    int shownTempo() const { return state.MetroMultiplier * tempo; }

    static void take(QChar letter, MetronomeState& state) {
        const auto kind = QStringView(u"abc").indexOf(letter);
        if (kind < 0)
            return;
        state.MetroPulseColour = 0xFFU << 8 * kind;
        state.MetroPulseNote =
            std::array{state.MetroNoteA, state.MetroNoteB, state.MetroNoteC}[std::size_t(kind)];
    }
    void sendClosingNotes() {
        toBeClosed = false;
        for (const int note : {state.MetroNoteA, state.MetroNoteB, state.MetroNoteC})
            sound.NoteOn(10, note, 0);
        view.darkenLamps();
    }
    void startOrStop() {
        state.MetroRunning = !state.MetroRunning;
        if (!state.MetroRunning)
            return view.metronomeStopped();
        if (toBeClosed)
            sendClosingNotes();
        view.metronomeStarted();
        load();
        toBeClosed = true;
        const int mine = ++run;
        const QString pattern = state.MetroPattern;
        for (int i = 0;; i = i + 1 < pattern.size() ? i + 1 : 0) {
            runtime.pump(sound.output().ready()    ? runtime.now()
                         : sound.output().isLost() ? runtime.now() + 500ms
                                                   : kForever);
            if (!state.MetroRunning || mine != run)
                break;
            take(pattern[i], state);
            if (!sound.output().isOpen())
                continue;
            sound.WaitSeconds(state.MetroPeriod - 0.1);
            sound.ResetOutput();
            view.darkenLamps();
            sound.WaitSeconds(0.1);
            view.lightLamp(i, state.MetroPulseColour);
            sound.NoteOn(10, state.MetroPulseNote, state.MetroVolume);
            if (sound.output().isLost())
                view.darkenLamps();
        }
        if (mine == run && toBeClosed)
            sendClosingNotes();
    }
    static void store(MetronomeState& state, const custom_sequence::Result& result) {
        state.MetroSoundIndexA = static_cast<std::uint8_t>(result.soundIndexA);
        state.MetroSoundIndexB = static_cast<std::uint8_t>(result.soundIndexB);
        state.MetroSoundIndexC = static_cast<std::uint8_t>(result.soundIndexC);
        state.MetroPattern = result.pattern == "" ? "ab" : result.pattern;
        if (result.pattern == "")
            state.MetroTimeSig = "2/4";
        else if (!QStringList({"ab", "abb", "abbb", "abbcbb"}).contains(result.pattern))
            state.MetroTimeSig = result.tempo == "" ? "P." : result.tempo;
    }
    static void playOnce(FunzioniMM& sound, MetronomeState& state, const QString& pattern) {
        for (const QChar letter : pattern) {
            take(letter, state);
            if (!sound.output().ready())
                continue;
            sound.ResetOutput();
            sound.WaitSeconds(0.8);
            sound.NoteOn(10, state.MetroPulseNote, 127);
        }
    }
    static void testSound(FunzioniMM& sound, int note) {
        if (!sound.output().ready())
            return;
        sound.NoteOn(1, 60, 0);
        sound.NoteOn(10, note, 127);
    }
};

struct Act {
    Instant delay;  ///< from the act before
    std::size_t what;
    int number;
    QString text;
};

constexpr std::size_t kStop = 0;
constexpr std::size_t kConnect = 1;
constexpr std::size_t kActs = 14;

template <typename AnyMetronome>
struct Stage {
    TestWorld world;
    FunzioniMM& sound = world.funzioniMM;
    MetronomeState state;
    Trace view{world.midi};
    AnyMetronome metronome{world.runtime, sound, state, view};

    void perform(const Act& act) {
        const int n = act.number;
        const std::function<void()> acts[kActs] = {
            [&] { state.MetroRunning ? metronome.startOrStop() : void(); },
            [&] { sound.output().isOpen() ? sound.MidiClose() : void(sound.MidiOpen(-1)); },
            [&] { metronome.startOrStop(); },
            [&] { metronome.startOrStop(); },
            [&] {
                if (state.MetroRunning)
                    metronome.startOrStop();
                metronome.startOrStop();
            },
            [&] { metronome.setTempo(20 + n % 181); },
            [&] { metronome.toggleDoubling(); },
            [&] { metronome.setVolume(n % 128); },
            [&] { metronome.stepTimeSignature(); },
            [&] {
                metronome.store(state, {act.text, n % 2 ? "5/8" : "", n % 11, n % 10, n % 8});
            },
            [&] { (n % 2 ? state.MetroNoteA : state.MetroNoteC) = std::int16_t(n % 128); },
            [&] { metronome.playOnce(sound, state, act.text); },
            [&] { metronome.testSound(sound, n % 128); },
            [&] { world.midi.deviceGone = !world.midi.deviceGone; },
        };
        acts[act.what]();
    }

    /// What is sent, shown and kept while the acts happen, each at its time or in the next pass.
    Lines play(const std::vector<Act>& acts) {
        metronome.load();
        std::size_t next = 0;
        const std::function<void()> schedule = [&] {
            if (next == acts.size())
                return;
            world.runtime.at(world.runtime.now() + acts[next].delay, [&] {
                const Act& act = acts[next++];
                schedule();
                world.midi.note("act " + std::to_string(act.what));
                perform(act);
                world.midi.note(testing::PrintToString(std::tuple(
                    state.MetroRunning, state.MetroPattern, state.MetroTimeSig,
                    state.MetroSoundIndexA, state.MetroSoundIndexB, state.MetroSoundIndexC,
                    state.MetroPeriod, metronome.shownTempo(), metronome.doubled(),
                    world.dialogs.lines.size(), world.runtime.passes())));
            });
        };
        schedule();
        world.runtime.runActs();
        return world.midi.take();
    }
};

struct MetronomeTest : testing::Test, Stage<RealMetronome> {
    MetronomeTest() { world.openOutput(); }
};

}  // namespace

TEST(Metronome, FollowsThePlainRulesUnderRandomActs) {
    std::mt19937 random(1);
    const char* patterns[] = {"", "ab", "abb", "abbb", "abbcbb", "abcbb", "c", "ABB", "ba?", "?ca"};
    for (int round = 0; round < 400 && !testing::Test::HasFailure(); ++round) {
        std::vector<Act> acts{{0ns, kConnect, 0, {}}};
        for (int i = 0; i < 25; ++i) {
            acts.push_back({1ns + random() % (random() % 2 ? 4000 : 300) * 1ms,
                            2 + random() % (kActs - (round % 3 ? 3 : 2)),
                            static_cast<int>(random() % 1000), patterns[random() % 10]});
            if (random() % 30 == 0)
                acts.back().what = kConnect;
        }
        acts.push_back({1s, kStop, 0, {}});
        EXPECT_TRUE(
            sameLines(Stage<RealMetronome>().play(acts), Stage<PlainMetronome>().play(acts)))
            << "round " << round;
    }
}

TEST_F(MetronomeTest, TheEndOfTheProgramStopsIt) {
    sound.MidiClose();
    world.runtime.at(70s, [this] { world.runtime.end(); });
    metronome.startOrStop();
    EXPECT_FALSE(state.MetroRunning);
    EXPECT_THAT(world.midi.take(), testing::Contains("70.000 stopped"));
}

/// A screen reader's press comes through a wait.
TEST_F(MetronomeTest, AStopWithinAWaitKeepsThePulseFromSounding) {
    const auto press = world.runtime.makeAlarm([this] { metronome.startOrStop(); });
    press->set(1950ms);
    metronome.startOrStop();
    EXPECT_THAT(
        world.midi.takeUntimed(),
        ElementsAre("started", "2/4", "lamps 2", "reset", "dark", "lamp 0 255", "on 10 76 127",
                    "reset", "dark", "stopped", "on 10 76 0", "on 10 85 0", "on 10 33 0", "dark"));
}

/// The families of the General MIDI percussion map, as far as the metronome offers them.
TEST(PercussionNames, TellEveryOfferedSoundByItsFamily) {
    QStringList names;
    for (int note = 0; note < 128; ++note) {
        const QString name = percussion_names::nameOf(note);
        const auto in = [note](const auto& list) { return std::ranges::count(list, note) == 1; };
        EXPECT_NE(name.isEmpty(), in(custom_sequence::kSoundsA) || in(custom_sequence::kSoundsB) ||
                                      in(custom_sequence::kSoundsC))
            << note;
        EXPECT_TRUE(name.isEmpty() || !names.contains(name)) << note;
        names << name;
    }
    const std::pair<const char*, std::vector<int>> families[] = {
        {"assa", {35, 36}}, {"ullante", {37, 38, 40}}, {"Charleston", {42, 44, 46}},
        {"Tom", {45, 48}},  {"iatto", {49, 51, 53}},   {"Timbale", {65, 66}},
        {"Clic", {33}},     {"Blocco", {76, 77}},      {"Campanella", {34}}};
    for (const auto& [family, notes] : families) {
        for (int note = 0; note < 128; ++note)
            EXPECT_EQ(names[note].contains(family), std::ranges::count(notes, note) == 1) << note;
    }
}
