#include "core/funzioni_mm.h"

#include "support/test_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

using namespace std::chrono_literals;

namespace {

/// The module and its output written down a second time, in one piece and in a world of its own.
struct Model {
    TestWorld world;
    MidiHandle handle = 0;
    bool lost = false, autoSilence = false, noteDrawn = false;
    int device = kMidiMapper, changes = 0, result = 0, instrument = 0, drawn = 0, last = 0;
    int lower = 0, upper = 0;
    std::uint32_t program = 0, message = 0;
    Instant nextTry{0};

    bool isOpen() const { return handle != 0 && !lost; }
    bool openAgain() {
        if (world.runtime.now() < nextTry)
            return false;
        nextTry = world.runtime.now() + 500ms;
        const MidiOpenResult opened = world.midi.reopen(handle);
        if (opened.code != 0)
            return false;
        handle = opened.handle;
        lost = false;
        ++changes;
        if (program != 0)
            world.midi.send(handle, program);
        return true;
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
        const std::string text = "\r\nErrore di sistema " + std::to_string(code);
        if (code != 0)
            world.dialogs.lines.push_back("message: Operation:" + operation + text);
    }
    void MidiClose() {
        if (handle == 0)
            return;
        const int code = world.midi.close(handle);
        if (code != 0 && !lost)
            return report("Close midi error: ", code);
        handle = 0;
        lost = false;
        ++changes;
    }
    void MidiOpen(int id) {
        if (isOpen())
            MidiClose();
        const MidiOpenResult opened = world.midi.open(id);
        if (opened.code != 0)
            return report("Open", opened.code);
        if (lost)
            world.midi.close(handle);
        handle = opened.handle;
        lost = false;
        device = id;
        ++changes;
    }
    void SendShortMsg(int status, int data1, int data2) {
        if (65536L * data2 + 256L * data1 + status < 0)
            return;
        message = static_cast<std::uint32_t>(65536L * data2 + 256L * data1 + status);
        result = send(message);
        report("ShortMsg", result);
    }
    void NoteOn(int channel, int note, int velocity) {
        SendShortMsg(143 + channel, note, velocity);
    }
    void NoteOff(int channel, int note) { SendShortMsg(143 + channel, note, 0); }
    void ProgramChange(int number) { send(static_cast<std::uint32_t>(number * 256 + 192)); }
    void ResetOutput() {
        if (isOpen())
            world.midi.reset(handle);
    }
    void PlayNoteIndex(int index) {
        if (index < -1)
            drawn = drawBetween(std::int16_t(lower), std::int16_t(upper), world.random.source()());
        if (index == -1 || last > -1)
            NoteOff(1, last + 36);
        if (index == -1)
            return;
        last = index < -1 ? drawn : index;
        NoteOn(1, last + 36, 100);
        noteDrawn = noteDrawn || index < -1;
        if (index < -1 && autoSilence) {
            world.funzioniMM.WaitSeconds(0.9);
            NoteOff(1, last + 36);
        }
    }
    void chooseInstrument(int number) {
        instrument = number;
        ++changes;
        ProgramChange(number);
    }
    Model& output() { return *this; }
};

constexpr int kCalls = 14;

/// One of the module's calls, on the module or on its model.
void call(auto& mm, int what, std::int16_t a, std::int16_t b) {
    const std::function<void()> calls[kCalls] = {
        [&] { mm.MidiOpen(b % 3 - 1); },
        [&] { mm.MidiClose(); },
        [&] { mm.ResetOutput(); },
        [&] { mm.output().ready(); },
        [&] { mm.SendShortMsg(128 + b, a, b); },
        [&] { mm.SendShortMsg(192 + b % 2, b, a); },
        [&] { mm.NoteOn(b % 16 + 1, b, 90); },
        [&] { mm.NoteOff(b % 16 + 1, b); },
        [&] { mm.ProgramChange(b); },
        [&] { mm.chooseInstrument(b); },
        [&] { mm.PlayNoteIndex(-1); },
        [&] { mm.PlayNoteIndex(std::int16_t(-2 - b)); },
        [&] { mm.PlayNoteIndex(b % 60); },
        [&] { mm.PlayNoteIndex(b % 60); },
    };
    calls[what]();
}

/// What happens around the module.
void disturb(TestWorld& world, int what, std::int16_t b) {
    if (what == 0)
        world.midi.deviceGone = !world.midi.deviceGone;
    else if (what == 1)
        world.midi.replug();
    else if (what == 2)
        world.runtime.advance(std::chrono::milliseconds(b % 3 * 250));
    world.midi.openCode = what == 3 ? b : 0;
    world.midi.closeCode = what == 4 ? b : 0;
    world.midi.sendCode = what == 5 ? b : 0;
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
            const auto what = static_cast<int>(engine() % (kCalls + 6));
            const auto a = static_cast<std::int16_t>(engine());
            const auto b = static_cast<std::int16_t>(engine() % 128);
            trace +=
                std::to_string(what) + '(' + std::to_string(a) + ',' + std::to_string(b) + ") ";
            for (TestWorld* either : {&world, &model.world}) {
                either->random.numbers = {static_cast<float>(b) / 128};
                if (what >= kCalls)
                    disturb(*either, what - kCalls, b);
            }
            if (what < kCalls) {
                call(mm, what, a, b);
                call(model, what, a, b);
            }
            EXPECT_EQ(world.midi.take(), model.world.midi.take());
            EXPECT_EQ(world.dialogs.lines, model.world.dialogs.lines);
            EXPECT_EQ(
                std::tuple(mm.output().isOpen(), mm.output().isLost(), changes, mm.lastMessage(),
                           mm.lastSendResult(), mm.currentInstrument(), mm.lastNoteIndex(),
                           mm.drawnIndex(), mm.noteDrawn(), world.random.drawn),
                std::tuple(model.isOpen(), model.lost, model.changes, model.message, model.result,
                           model.instrument, model.last, model.drawn, model.noteDrawn,
                           model.world.random.drawn));
            if (model.handle != 0) {
                EXPECT_EQ(mm.output().deviceId(), model.device);
                EXPECT_EQ(mm.output().deviceName(), world.midi.deviceName(model.device));
            }
        }
        EXPECT_FALSE(testing::Test::HasFailure()) << "call(a,b): " << trace;
    }
}
