#include "core/funzioni_mm.h"

#include "support/test_world.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace std::chrono_literals;

namespace {

/// The module and its output written down a second time, in one piece and in a world of its own.
struct Model {
    TestWorld world;
    MidiHandle handle = 0;
    bool lost = false, tried = false, autoSilence = false;
    int device = kMidiMapper, changes = 0, result = 0, instrument = 0, drawn = 0, last = 0;
    int lower = 0, upper = 0;
    std::uint32_t program = 0, message = 0;
    Instant nextTry{0};

    bool isOpen() const { return handle != 0 && !lost; }
    void become(MidiHandle now) {
        handle = now;
        lost = false;
        ++changes;
    }
    bool openAgain() {
        if (world.runtime.now() < nextTry)
            return false;
        nextTry = world.runtime.now() + 500ms;
        const MidiOpenResult opened = world.midi.reopen(handle);
        if (opened.code != 0)
            return false;
        become(opened.handle);
        return program == 0 || world.midi.send(handle, program) >= 0;
    }
    bool ready() { return isOpen() || (lost && openAgain()); }
    int send(std::uint32_t m) {
        const bool isProgram = m % 256 / 16 == 12;
        program = isProgram ? m : program;
        const bool begins = isProgram || (m % 256 / 16 == 9 && m / 65536 % 256 > 0);
        if (lost && begins && openAgain() && isProgram)
            return 0;
        if (!isOpen() || !world.midi.gone(handle))
            return isOpen() ? world.midi.send(handle, m) : 0;
        nextTry = world.runtime.now();
        if (openAgain())
            return isProgram ? 0 : world.midi.send(handle, m);
        lost = !isProgram;
        changes += lost ? 1 : 0;
        return 6;
    }
    void report(const std::string& operation, int code) {
        if (code != 0)
            world.dialogs.lines.push_back("message: Operation:" + operation +
                                          "\r\nErrore di sistema " + std::to_string(code));
    }
    void MidiClose() {
        const int code = handle != 0 ? world.midi.close(handle) : 0;
        if (code != 0 && !lost)
            report("Close midi error: ", code);
        else if (handle != 0)
            become(0);
    }
    bool MidiOpen(int id) {
        if (isOpen())
            MidiClose();
        const MidiOpenResult opened = world.midi.open(id);
        const bool first = !std::exchange(tried, true);
        report("Open", opened.code);
        changes += first && opened.code != 0 ? 1 : 0;
        if (opened.code != 0)
            return false;
        if (lost)
            world.midi.close(handle);
        become(opened.handle);
        device = id;
        return true;
    }
    void SendShortMsg(int status, int data1, int data2) {
        if (65536L * data2 + 256L * data1 + status < 0)
            return;
        message = static_cast<std::uint32_t>(65536L * data2 + 256L * data1 + status);
        report("ShortMsg", result = send(message));
    }
    void ResetOutput() {
        if (isOpen())
            world.midi.reset(handle);
    }
    void PlayNoteIndex(int index) {
        const bool atRandom = index < -1;
        if (atRandom)
            drawn = drawBetween(std::int16_t(lower), std::int16_t(upper), world.random.source()());
        if (index == -1 || last > -1)
            SendShortMsg(144, last + 36, 0);
        if (index == -1)
            return;
        last = atRandom ? drawn : index;
        SendShortMsg(144, last + 36, 100);
        if (atRandom && autoSilence) {
            world.funzioniMM.WaitSeconds(0.9);
            SendShortMsg(144, last + 36, 0);
        }
    }
    void chooseInstrument(int number) {
        instrument = number;
        ++changes;
        send(static_cast<std::uint32_t>(number * 256 + 192));
    }
    Model& output() { return *this; }
};

constexpr int kEvents = 15;

/// One of the module's calls, on the module or on its model, or what happens around it.
bool happen(auto& mm, TestWorld& world, int what, std::int16_t a, std::int16_t b) {
    bool answer = false;
    const int code = b % 3 == 0 ? b : 0;
    world.random.numbers = {static_cast<float>(b) / 128};
    const std::function<void()> events[kEvents] = {
        [&] { answer = mm.MidiOpen(b % 3 - 1); },
        [&] { mm.MidiClose(); },
        [&] { mm.ResetOutput(); },
        [&] { answer = mm.output().ready(); },
        [&] { mm.SendShortMsg(128 + b, a, b); },
        [&] { mm.SendShortMsg(192 + b % 2, b, a); },
        [&] { mm.chooseInstrument(b); },
        [&] { mm.PlayNoteIndex(std::int16_t(b % 12 - 4)); },
        [&] { mm.PlayNoteIndex(b % 60); },
        [&] { world.midi.deviceGone = b % 2 == 0; },
        [&] { world.midi.replug(); },
        [&] { world.runtime.advance(b % 3 * 250ms); },
        [&] { world.midi.openCode = code; },
        [&] { world.midi.closeCode = code; },
        [&] { world.midi.sendCode = code; },
    };
    events[what]();
    return answer;
}

}  // namespace

TEST(FunzioniMM, AgreesWithItsModelUnderRandomCalls) {
    std::mt19937 engine(1);
    for (int run = 0; run < 300 && !testing::Test::HasFailure(); ++run) {
        TestWorld world;
        Model model;
        FunzioniMM& mm = world.funzioniMM;
        int changes = 0;
        mm.onChange([&changes] { ++changes; });
        mm.setAutoSilence(model.autoSilence = run % 2 == 0);
        mm.setRangeLower(std::int16_t(model.lower = run % 7 - 1));
        mm.setRangeUpper(std::int16_t(model.upper = model.lower + run % 5 * 10));
        std::string trace;
        for (int step = 0; step < 60 && !testing::Test::HasFailure(); ++step) {
            const auto what = static_cast<int>(engine() % kEvents);
            const auto a = static_cast<std::int16_t>(engine());
            const auto b = static_cast<std::int16_t>(engine() % 128);
            trace += std::to_string(what) + '(' + std::to_string(b) + ") ";
            EXPECT_EQ(happen(mm, world, what, a, b), happen(model, model.world, what, a, b));
            EXPECT_EQ(world.midi.take(), model.world.midi.take());
            EXPECT_EQ(world.dialogs.lines, model.world.dialogs.lines);
            EXPECT_EQ(std::tuple(mm.output().isOpen(), mm.output().isLost(), mm.output().wasTried(),
                                 mm.output().deviceId(), changes, mm.lastMessage(),
                                 mm.lastSendResult(), mm.currentInstrument(), mm.lastNoteIndex(),
                                 mm.drawnIndex(), world.random.drawn),
                      std::tuple(model.isOpen(), model.lost, model.tried, model.device,
                                 model.changes, model.message, model.result, model.instrument,
                                 model.last, model.drawn, model.world.random.drawn));
        }
        EXPECT_FALSE(testing::Test::HasFailure()) << "event(b): " << trace;
    }
}

TEST(FunzioniMM, WaitsUntilTheFirstReadingThatTheRuleAcceptsAndLetsNothingHappen) {
    std::mt19937 engine(1);
    TestWorld world;
    bool interrupted = false;
    for (int i = 0; i < 20000; ++i) {
        const double seconds = i == 0 ? std::nan("") : double(engine() % 12000) / 1000 - 1;
        const QTime time = QTime(0, 0).addMSecs(static_cast<int>(engine() % 86'400'000));
        world.runtime.setWallClock(QDateTime(QDate(2004, 10, 1), time));
        const Instant begin = world.runtime.now();
        const double start = world.runtime.secondsSinceMidnight();
        const auto isOver = [&](double waited) {
            return !(seconds > 0 && seconds < 10) ||
                   static_cast<float>(start + seconds) <= static_cast<float>(start + waited);
        };
        world.runtime.at(begin, [&] { interrupted = true; });
        world.funzioniMM.WaitSeconds(seconds);
        const double waited = std::chrono::duration<double>(world.runtime.now() - begin).count();
        ASSERT_TRUE(isOver(waited + 1e-9)) << start << " + " << seconds << ", not " << waited;
        ASSERT_TRUE(waited == 0 || !isOver(waited - 1e-9)) << start << " + " << seconds;
        ASSERT_FALSE(interrupted);
        world.runtime.forgetActs();
    }
}
