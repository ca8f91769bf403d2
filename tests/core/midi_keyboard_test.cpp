#include "core/midi_keyboard.h"

#include "platform/midi_bytes.h"
#include "support/test_world.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using Log = std::vector<std::string>;

struct LoggingWindow : MidiKeysListener {
    LoggingWindow(TestWorld& world, char theName, Log& theLog)
        : name(theName), log(theLog), keys(&world.midiKeyboard, *this, [this] { return active; }) {}

    void note(const std::string& what) { log.push_back(name + what); }
    void keyDown(int key) override { note("+" + std::to_string(key)); }
    void keyUp(int key) override { note("-" + std::to_string(key)); }
    void pedalDown() override { note("p"); }

    char name;
    Log& log;
    bool active = true;
    MidiKeyboard::Window keys;
};

/// The bytes of three inputs and the keys of two windows in the plainest way.
struct PlainKeyboard {
    std::vector<int> bytes[4];       ///< since the last status byte, with it
    std::multiset<int> down[4][16];  ///< notes; 128 is the pedal
    std::map<int, char> playedIn;
    Log log;

    bool isDown(int note) const {
        return std::any_of(&down[0][0], &down[3][15] + 1,
                           [note](const auto& notes) { return notes.count(note) > 0; });
    }
    void releaseUnheld() {
        for (const auto& [note, window] : std::map<int, char>(playedIn)) {
            if (!isDown(note)) {
                playedIn.erase(note);
                log.push_back(window + ("-" + std::to_string(note)));
            }
        }
    }
    /// `front` is the window in front, or 0.
    void byte(int input, int byte, char front) {
        auto& since = bytes[input];
        if (byte >= 0xF8)
            return;
        if (byte >= 0x80)
            since.clear();
        since.push_back(byte);
        const int status = since.front();
        const std::size_t length = status >= 0xC0 && status < 0xE0 ? 1 : 2;
        if (status < 0x80 || status >= 0xF0 || byte >= 0x80 || (since.size() - 1) % length != 0)
            return;
        auto& notes = down[input][status % 16];
        const int first = since.end()[-static_cast<int>(length)];
        const int kind = status / 16;
        if (kind == 0x8 || kind == 0x9) {
            notes.erase(first);
            releaseUnheld();
            const bool wasDown = isDown(first);
            if (kind == 0x9 && byte > 0) {
                notes.insert(first);
                if (!wasDown && front) {
                    playedIn[first] = front;
                    log.push_back(front + ("+" + std::to_string(first)));
                }
            }
        } else if (kind == 0xB && first == 64) {
            const bool presses = byte >= 64 && notes.count(128) == 0;
            notes.erase(128);
            if (byte >= 64)
                notes.insert(128);
            if (presses && front)
                log.push_back(front + std::string("p"));
        } else if (kind == 0xB && (first == 120 || first == 123)) {
            const bool pedal = notes.count(128) > 0;
            notes.clear();
            if (pedal)
                notes.insert(128);
            releaseUnheld();
        }
    }
};

}  // namespace

TEST(MidiKeyboard, AnyBytesFromAnyInputsLeaveNoKeyDownAndPlayInTheWindowInFront) {
    std::mt19937 random(1);
    const auto draw = [&random](int count) { return static_cast<int>(random() % count); };
    for (int round = 0; round < 40; ++round) {
        TestWorld world;
        world.midiKeyboard.listen();
        PlainKeyboard plain;
        Log log;
        LoggingWindow lower(world, 'A', log);
        std::unique_ptr<LoggingWindow> upper;
        midi_bytes::Parser parsers[4];
        std::set<int> plugged;
        for (int i = 0; i < 3000; ++i) {
            const Instant before = world.runtime.now();
            world.runtime.advance(Instant{1});
            const int what = draw(200), input = draw(3) + 1;
            const char front = upper && upper->active ? 'B' : lower.active ? 'A' : '\0';
            if (what == 0 || i == 2999) {
                if (i == 2999)
                    plugged.clear();
                else if (plugged.erase(input) == 0)
                    plugged.insert(input);
                std::vector<MidiInput> inputs;
                inputs.reserve(plugged.size());
                for (const int id : plugged)
                    inputs.push_back({id, QString::number(id)});
                for (int id = 1; id < 4; ++id) {
                    if (plugged.count(id) == 0)
                        std::fill(std::begin(plain.down[id]), std::end(plain.down[id]),
                                  std::multiset<int>());
                }
                plain.releaseUnheld();
                world.midiIn.plug(inputs);
            } else if (what == 1) {
                (upper && draw(2) ? *upper : lower).active ^= true;
            } else if (what == 2) {
                for (const auto& [note, window] : std::map<int, char>(plain.playedIn)) {
                    if (upper && window == 'B' && plain.playedIn.erase(note) > 0)
                        plain.log.push_back("B-" + std::to_string(note));
                }
                upper = upper ? nullptr : std::make_unique<LoggingWindow>(world, 'B', log);
                world.midiIn.send(input, 0x643C90, before);  // played before the change
                world.midiIn.send(input, 0x3C90, before);
                plain.down[input][0].erase(60);
                plain.releaseUnheld();
            } else if (plugged.count(input) > 0) {
                constexpr int kLikely[] = {0x90, 0x90, 0x80, 0xB0, 60, 61, 64, 64, 0, 127};
                const int byte = draw(5) == 0 ? draw(256) : kLikely[draw(10)];
                const auto one = static_cast<unsigned char>(byte);
                parsers[input].feed(&one, 1, [&](std::uint32_t message) {
                    if (midi_bytes::isAboutKeys(message))
                        world.midiIn.send(input, message, world.runtime.now());
                });
                plain.byte(input, byte, front);
            }
            std::sort(log.begin(), log.end());
            std::sort(plain.log.begin(), plain.log.end());
            ASSERT_EQ(log, plain.log) << round << ' ' << i;
            log.clear();
            plain.log.clear();
        }
        EXPECT_TRUE(plain.playedIn.empty());
    }
}
