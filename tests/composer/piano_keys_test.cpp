#include "core/piano_keys.h"

#include "support/virtual_runtime.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

class PianoKeysTest : public ::testing::Test, public PianoKeysListener {
protected:
    void noteDown(pitch::NoteNumber note) override { notes.push_back(note); }
    void noteUp(pitch::NoteNumber note) override { notes.push_back(-note); }

    std::vector<int> take() { return std::exchange(notes, {}); }

    /// One key down for one pass of the window's loop, and up at the next.
    void tap(KeyCode key, bool typing = false) {
        runtime.press(key, runtime.now(), runtime.now() + Instant(1));
        runtime.yield();
        keys.poll(typing);
        keys.poll();
        runtime.runActs();
        keys.poll();
    }

    VirtualRuntime runtime;
    std::vector<int> notes;  ///< ended notes are negative
    PianoKeys keys{runtime, *this, PianoKeys::Backspace::LooksAtComma};
};

TEST_F(PianoKeysTest, EveryKeyPlaysItsNoteOnceAndEndsIt) {
    const std::string polled = "ZSXDCVGBHNJMQ2W3ER5T6Y7UI9O0P";
    for (const int base : {48, 60, 36}) {
        for (std::size_t i = 0; i < polled.size(); ++i) {
            const int note = base + static_cast<int>(i);
            tap(polled[i]);
            EXPECT_THAT(take(), ElementsAre(note, -note));
        }
        const std::vector<std::pair<KeyCode, int>> events{{188, 12}, {76, 13},  {190, 14},
                                                          {192, 15}, {189, 16}, {186, 29},
                                                          {221, 30}, {187, 31}, {8, 32}};
        for (const auto& [key, offset] : events) {
            EXPECT_TRUE(keys.keyDown(key));
            if (key != kKeyBackspace) {
                keys.keyDown(key);
            }
            EXPECT_TRUE(keys.keyUp(key));
            EXPECT_TRUE(keys.keyUp(key));
            EXPECT_THAT(take(), ElementsAre(base + offset, -base - offset));
        }
        keys.cycleOctave();
    }
    EXPECT_FALSE(keys.keyDown('Z'));
    EXPECT_EQ(keys.octaveBase(), 48);
}

TEST_F(PianoKeysTest, BackspaceLooksAtTheCommaKey) {
    keys.keyDown(kKeyBackspace);
    keys.keyDown(kKeyBackspace);
    keys.keyUp(kKeyBackspace);
    EXPECT_THAT(take(), ElementsAre(80, 80, -80));
    keys.keyDown(kKeyComma);
    keys.keyDown(kKeyBackspace);
    keys.keyUp(kKeyBackspace);
    keys.keyUp(kKeyComma);
    EXPECT_THAT(take(), ElementsAre(60, -60));

    keys.keyDown(kKeyBackspace);
    keys.cycleOctave();
    keys.keyDown(kKeyBackspace);
    keys.releaseAll();
    EXPECT_THAT(take(), ElementsAre(80, -80, 92, -92));

    PianoKeys regular(runtime, *this, PianoKeys::Backspace::Regular);
    regular.keyDown(kKeyComma);
    regular.keyDown(kKeyBackspace);
    regular.keyDown(kKeyBackspace);
    regular.releaseAll();
    EXPECT_THAT(take(), ElementsAre(60, 80, -60, -80));
}

TEST_F(PianoKeysTest, NoNoteHangsAndNoTypedKeySounds) {
    runtime.press('Z', 0ns, 1ns);
    runtime.yield();
    keys.poll();
    keys.cycleOctave();
    keys.releaseAll();
    EXPECT_THAT(take(), ElementsAre(48, -48));
    runtime.runActs();
    tap('Q', true);
    EXPECT_THAT(take(), ElementsAre());
    tap('Q');
    EXPECT_THAT(take(), ElementsAre(72, -72));
}

}  // namespace
