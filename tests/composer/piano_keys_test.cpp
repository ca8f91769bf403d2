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
    std::vector<int> lines;  ///< ended notes are negative
    void noteDown(pitch::NoteNumber note) override { lines.push_back(note); }
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
    for (int i = 0; i < 5000; ++i) {
        const auto& [key, offset] = ends[random() % ends.size()];
        switch (random() % 5) {
            case 0: {
                const char letter = polled[random() % polled.size()];
                const bool typing = random() % 4 == 0;
                runtime.press(letter, runtime.now(), runtime.now() + 1ns);
                runtime.yield();
                for (int pass = 0; pass < 2; ++pass)
                    keys.poll(typing && pass == 0);
                const int note = base + static_cast<int>(polled.find(letter));
                if (!typing)
                    wanted.insert(wanted.end(), {note, -note});
                runtime.runActs();
                keys.poll();
                break;
            }
            case 1: {
                EXPECT_TRUE(keys.keyDown(key));
                const bool looksAtComma =
                    key == 8 && backspace == PianoKeys::Backspace::LooksAtComma;
                if (held.contains(looksAtComma ? KeyCode{188} : key))
                    break;
                if (held.contains(key) && held[key] != base + offset)
                    end(key);
                held[key] = base + offset;
                wanted.push_back(base + offset);
                break;
            }
            case 2:
                EXPECT_TRUE(keys.keyUp(key));
                end(key);
                break;
            case 3:
                if (random() % 4 != 0)
                    break;
                keys.cycleOctave();
                base = base == 60 ? 36 : base + 12;
                break;
            default:
                if (random() % 8 != 0)
                    break;
                keys.releaseAll();
                for (const auto& [each, unused] : ends)
                    end(each);
        }
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
