#include "core/piano_keys.h"

#include "support/virtual_runtime.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;

struct Notes : PianoKeysListener {
    std::vector<int> lines;  ///< ended notes are negative, repeated ones from 1000 on
    void noteDown(pitch::NoteNumber note) override { lines.push_back(note); }
    void noteRepeated(pitch::NoteNumber note) override { lines.push_back(1000 + note); }
    void noteUp(pitch::NoteNumber note) override { lines.push_back(-note); }
};

/// The keyboard at random beside a plain table of the notes that its keys hold.
void playBesideTheTable(PianoKeys::Backspace backspace) {
    const std::string polled = "ZSXDCVGBHNJMQ2W3ER5T6Y7UI9O0P";
    const std::vector<std::pair<KeyCode, int>> ends{{188, 12}, {76, 13},  {190, 14},
                                                    {192, 15}, {189, 16}, {186, 29},
                                                    {221, 30}, {187, 31}, {8, 32}};
    VirtualRuntime runtime;
    Notes notes;
    PianoKeys keys(runtime, notes, backspace);
    std::mt19937 random(1);
    std::vector<int> wanted;
    std::map<KeyCode, int> held;  ///< 0 sounds nothing
    int base = 48;
    const auto end = [&](KeyCode key) {
        const auto note = held.extract(key);
        if (note && note.mapped() != 0)
            wanted.push_back(-note.mapped());
    };
    const auto act = [&](KeyCode key, int offset) {
        const int operation = static_cast<int>(random() % 40);
        if (operation < 10) {
            const char letter = polled[random() % polled.size()];
            const int note = base + static_cast<int>(polled.find(letter));
            const bool typing = operation == 0;
            runtime.press(letter, runtime.now(), runtime.now() + 1ns);
            runtime.yield();
            keys.poll(typing);
            keys.poll();
            if (operation == 1)
                keys.releaseAll();
            runtime.runActs();
            keys.poll();
            if (!typing)
                wanted.insert(wanted.end(), {note, -note});
            for (std::size_t i = 0; i < ends.size() && operation == 1; ++i)
                end(ends[i].first);
        } else if (operation < 22) {
            EXPECT_TRUE(keys.keyDown(key));
            const bool looksAtComma = key == 8 && backspace == PianoKeys::Backspace::LooksAtComma;
            if (held.contains(looksAtComma ? KeyCode{188} : key))
                return;
            const int repeated = held.contains(key) ? 1000 : 0;
            if (repeated && held[key] != base + offset)
                end(key);
            held[key] = base + offset;
            wanted.push_back(repeated + base + offset);
        } else if (operation < 36) {
            EXPECT_TRUE(keys.keyUp(key));
            end(key);
        } else if (operation < 39) {
            keys.cycleOctave();
            base = base == 60 ? 36 : base + 12;
        } else {
            keys.releaseAll();
            for (const auto& [each, unused] : ends)
                end(each);
        }
    };
    for (int i = 0; i < 5000; ++i) {
        const auto& [key, offset] = ends[random() % ends.size()];
        act(key, offset);
        ASSERT_EQ(std::exchange(notes.lines, {}), std::exchange(wanted, {})) << i;
        ASSERT_EQ(keys.octaveBase(), base);
    }
    EXPECT_FALSE(keys.keyDown('Z') || keys.keyUp('Z'));
    keys.resetOctave();
    EXPECT_EQ(keys.octaveBase(), 48);
}

TEST(PianoKeys, BeginAndEndTheNotesOfTheirPlaces) {
    playBesideTheTable(PianoKeys::Backspace::LooksAtComma);
    playBesideTheTable(PianoKeys::Backspace::Regular);
}

}  // namespace
