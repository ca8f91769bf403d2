#include "metronome/metronome.h"

#include "metronome/sequence_test.h"
#include "support/same_lines.h"
#include "support/test_world.h"

#include <QEvent>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

using namespace std::chrono_literals;

namespace {

using Lines = std::vector<std::string>;

/// Writes down what the metronome shows.
struct Trace : MidiRecorder, MetronomeView {
    using MidiRecorder::MidiRecorder;
    void metronomeStarted() override { note("started"); }
    void metronomeStopped() override { note("stopped"); }
    void showTimeSignature(const QString& timeSig) override { note(timeSig.toStdString()); }
    void showLamps(int count) override { note("lamps " + std::to_string(count)); }
    void darkenLamps() override { note("dark"); }
    void lightLamp(int lamp, pulse_pattern::Colour colour) override {
        note("lamp " + std::to_string(lamp) + ' ' + std::to_string(colour));
    }
};

/// The rules of the metronome a second time, in their plainest form.
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
    bool stepTimeSignature() {
        const QStringList timeSigs{"2/4", "3/4", "4/4", "6/8", "2/4"};
        if (state.MetroRunning)
            return false;
        state.MetroTimeSig = timeSigs[timeSigs.indexOf(shown) + 1];
        state.MetroPattern =
            QStringList{"ab", "abb", "abbb", "abbcbb"}[timeSigs.indexOf(state.MetroTimeSig)];
        load();
        return true;
    }
    void setTempo(int value) {
        tempo = value;
        state.MetroPeriod = 60.0 / tempo / state.MetroMultiplier;
    }
    void setShownTempo(double pulses) {
        const double wanted = pulses / state.MetroMultiplier;
        int nearest = 20;
        for (int value = 20; value <= 200; ++value)
            nearest = std::abs(value - wanted) <= std::abs(nearest - wanted) ? value : nearest;
        setTempo(nearest);
    }
    void toggleDoubling() {
        state.MetroMultiplier = state.MetroMultiplier == 1 ? 2 : 1;
        setTempo(tempo);
    }
    void setVolume(int velocity) { state.MetroVolume = static_cast<std::int16_t>(velocity); }

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
            if (state.MetroRunning && runtime.ending())
                startOrStop();
            if (!state.MetroRunning || mine != run)
                break;
            if (const auto kind = QStringView(u"abc").indexOf(pattern[i]); kind >= 0) {
                const std::int16_t notes[] = {state.MetroNoteA, state.MetroNoteB, state.MetroNoteC};
                state.MetroPulseColour = 0xFFU << 8 * kind;
                state.MetroPulseNote = notes[kind];
            }
            if (!sound.output().isOpen())
                continue;
            sound.WaitSeconds(state.MetroPeriod - 0.1);
            sound.ResetOutput();
            view.darkenLamps();
            sound.WaitSeconds(0.1);
            if (!state.MetroRunning || mine != run || runtime.ending())
                continue;
            view.lightLamp(i, state.MetroPulseColour);
            sound.NoteOn(10, state.MetroPulseNote, state.MetroVolume);
            if (!sound.output().isOpen())
                view.darkenLamps();
        }
        if (mine == run && toBeClosed)
            sendClosingNotes();
    }
};

/// What happens, some time after what happened before, in a pass or, as a screen reader's press or
/// a signal does, in a wait.
struct Act {
    Instant delay;
    bool inWait;
    std::size_t what;
    int number;
};

template <typename AnyMetronome>
struct Stage : TestWorld {
    FunzioniMM& sound = funzioniMM;
    MetronomeState state;
    Trace view{runtime};
    AnyMetronome metronome{runtime, sound, state, view};
    std::vector<Act> acts;
    std::size_t next = 0;
    std::unique_ptr<Alarm> press = runtime.makeAlarm([this] { perform(); });

    void perform() {
        const Act act = acts[next++];
        schedule();
        const int n = act.number;
        const std::function<void()> kinds[] = {
            [&] { sound.output().isOpen() ? sound.MidiClose() : void(sound.MidiOpen(-1)); },
            [&] { midi.deviceGone = !midi.deviceGone; },
            [&] { metronome.startOrStop(); },
            [&] {
                metronome.startOrStop();
                metronome.startOrStop();
            },
            [&] { metronome.setTempo(20 + n % 181); },
            [&] { metronome.toggleDoubling(); },
            [&] { metronome.setVolume(n % 128); },
            [&] { view.note(metronome.stepTimeSignature() ? "next" : "stays"); },
            [&] { state.MetroPattern = QString("abcbb?A").mid(n % 5, 1 + n % 7); },
            [&] { (n % 2 ? state.MetroNoteA : state.MetroNoteC) = std::int16_t(n % 128); },
            [&] { state.MetroRunning ? metronome.startOrStop() : void(); },
            [&] { runtime.end(); },
            [&] { midi.replug(); },
            [&] { metronome.setShownTempo(n % 500 + n % 4 / 4.0); },
        };
        kinds[act.what]();
        view.note(testing::PrintToString(
            std::tuple(act.what, state.MetroRunning, state.MetroPattern, state.MetroTimeSig,
                       state.MetroPeriod, dialogs.lines.size(), runtime.passes())));
    }
    void schedule() {
        if (next == acts.size())
            return;
        const Instant due = runtime.now() + acts[next].delay;
        if (acts[next].inWait)
            press->set(due);
        runtime.at(due, [this, act = next] {
            if (act == next)
                perform();
        });
    }

    /// What is shown and kept while the acts happen, then what is sent, each with its time.
    Lines play(const std::vector<Act>& all) {
        acts = all;
        metronome.load();
        schedule();
        runtime.runActs();
        Lines lines = view.take();
        std::ranges::copy(midi.take(), std::back_inserter(lines));
        return lines;
    }
};

/// A run of 8 s alone, at a time of day at which waits have their coarsest grain.
struct Beat : Stage<Metronome> {
    explicit Beat(int tempo = 60) {
        runtime.setWallClock(QDateTime(QDate(2004, 10, 1), QTime(23, 10)));
        openOutput();
        metronome.load();
        metronome.setTempo(tempo);
    }

    /// What was sent, and of that the pulses.
    Lines run(Instant end = 8s) {
        runtime.at(end, [this] { metronome.startOrStop(); });
        metronome.startOrStop();
        return midi.take();
    }
    Lines pulses() {
        Lines lines = run();
        std::erase_if(lines, [](const auto& line) { return line.ends_with(" 0"); });
        return lines;
    }
};

}  // namespace

TEST(Metronome, FollowsThePlainRulesUnderRandomActs) {
    std::mt19937 random(1);
    for (int round = 0; round < 400 && !testing::Test::HasFailure(); ++round) {
        std::vector<Act> acts{{0ns, false, 0, 0}};
        for (int i = 0; i < 25; ++i) {
            const bool inWait = random() % 5 == 0;
            const std::size_t kInWaits[] = {1, 4, 5, 6, 10, 12};
            const std::size_t what = inWait          ? kInWaits[random() % std::size(kInWaits)]
                                     : random() % 15 ? 2 + random() % 8
                                                     : random() % 14;
            acts.push_back({1ns + random() % (random() % 2 ? 4000 : 300) * 1ms, inWait, what,
                            static_cast<int>(random() % 1000)});
        }
        acts.push_back({1s, round % 2 == 0, 11, 0});
        EXPECT_TRUE(sameLines(Stage<Metronome>().play(acts), Stage<PlainMetronome>().play(acts)))
            << "round " << round;
    }
}

TEST(SequenceTest, SoundsAPulseEvery800MillisecondsUntilTheUserEndsIt) {
    struct Shown : SequenceTestView {
        std::vector<std::string> lines;
        bool heeds = false;  ///< the input is one that ends the test
        std::function<void()> during;
        void showPulse(int pulse, int pulses) override {
            during();
            lines.push_back(std::to_string(pulse) + '/' + std::to_string(pulses));
        }
        void showEnd() override { lines.push_back("end"); }
        bool endsTest(const QEvent&) override { return heeds; }
    };
    std::mt19937 random{1};
    for (int i = 0; i < 400; ++i) {
        TestWorld world;
        world.openOutput();
        MetronomeState state;
        Shown shown;
        SequenceTest test(world.funzioniMM, state, shown);
        shown.during = [&test] { test.play("abc"); };  // which waits for its end
        const std::map<char, int> notes{{'a', 76}, {'b', 85}, {'c', 33}};
        const QEvent input(QEvent::KeyPress);
        const Instant stop = std::chrono::milliseconds(random() % 9000);
        shown.heeds = random() % 3 > 0;
        world.runtime.doInWait(stop, input);
        QString pattern;
        std::vector<std::string> heard, seen;
        const int pulses = static_cast<int>(random() % 21);
        int note = state.MetroPulseNote;
        bool ended = false;
        for (int pulse = 0; pulse < pulses; ++pulse) {
            const char letter = "abcx"[random() % 4];
            pattern += QLatin1Char(letter);
            if (ended)
                continue;
            note = letter == 'x' ? note : notes.at(letter);
            seen.push_back(std::to_string(pulse + 1) + '/' + std::to_string(pulses));
            heard.push_back(at(800 * pulse, "reset"));
            ended = shown.heeds && stop < (pulse + 1) * 800ms;
            heard.push_back(ended
                                ? at(stop / 1ms, "reset")
                                : at(800 * pulse + 800, "on 10 " + std::to_string(note) + " 127"));
        }
        seen.insert(seen.end(), 2, "end");
        test.play(pattern);
        test.play({});
        EXPECT_TRUE(sameLines(world.midi.take(), heard)) << pattern.toStdString();
        EXPECT_EQ(shown.lines, seen);
        EXPECT_EQ(state.MetroPulseNote, note);
    }
}

TEST(Metronome, KeepsItsInstantsWhenTheThreadWakesLateButHurriesNoPulse) {
    std::mt19937 random(1);
    for (const int tempo : {60, 120, 200}) {
        const Lines expected = Beat(tempo).pulses();
        for (const Instant latest : {5ms, 60ms}) {
            Beat late(tempo);
            late.runtime.wakeLate([&] { return latest * (random() % 1000) / 1000; });
            EXPECT_EQ(late.pulses(), expected) << tempo << ' ' << latest / 1ms;
        }
    }
    Beat beat;
    bool stood = false;
    beat.runtime.wakeLate([&] {
        const bool stands = beat.runtime.now() > 2s && !std::exchange(stood, true);
        return stands ? 1700ms : 0ms;
    });
    double last = 0;
    for (const std::string& line : beat.pulses()) {
        if (line.ends_with("reset"))
            continue;
        EXPECT_GT(std::stod(line) - last, 0.98);
        last = std::stod(line);
    }
    EXPECT_GT(last, 6);
}

TEST(Metronome, LightsItsLampsWhenTheyAreHeardAndStopsAllTheSame) {
    for (const auto& [delay, lit] : {std::pair{40ms, "1.028 lamp 0"}, {900ms, "1.438 lamp 0"}}) {
        Beat beat;
        beat.midi.heardLater = delay;
        beat.run();
        EXPECT_THAT(beat.view.take(), testing::Contains(testing::StartsWith(lit)));
    }
    for (Instant end = 800ms; end < 2400ms; end += 20ms) {
        Beat late;
        late.midi.heardLater = 120ms;
        EXPECT_EQ(late.run(end), Beat().run(end)) << end / 1ms;
    }
}
