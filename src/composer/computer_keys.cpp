#include "composer/computer_keys.h"

#include "platform/runtime.h"

namespace {

constexpr auto kSigns = PianoKeys::kRowEnds;
constexpr KeyCode kKeyF5 = kKeyF1 + 4;
constexpr KeyCode kKeyF6 = kKeyF1 + 5;
constexpr std::array<KeyCode, 6> kMoves{kKeyLeft, kKeyRight, kKeyUp, kKeyDown, kKeyF5, kKeyF6};

bool takenBy(const ComputerKeys::Focus& focus, KeyCode key) {
    if (key == kKeyLeft || key == kKeyRight)
        return focus.takesSideways;
    return (key == kKeyUp || key == kKeyDown) && focus.takesUpAndDown;
}

}  // namespace

ComputerKeys::ComputerKeys(const Runtime& runtime, ComputerKeysListener& listener)
    : runtime_(runtime),
      listener_(listener),
      piano_(runtime, listener, PianoKeys::Backspace::LooksAtComma) {}

void ComputerKeys::poll(const Focus& focus) {
    piano_.poll(focus.typing);
    pollSigns(focus.typing);
    pollMoves(focus);
}

/// Auto-repeats of a key that plays go on to `PianoKeys`, which decides what they do.
void ComputerKeys::pollSigns(bool typing) {
    for (std::size_t i = 0; i < kSigns.size(); ++i) {
        const KeyCode key = kSigns[i];
        const bool down = runtime_.held(key);
        const bool changed = down != (signs_[i] != State::Up);
        if (changed)
            signs_[i] = !down ? State::Up : typing ? State::Ignored : State::Down;
        if (changed && !down)
            piano_.keyUp(key);
        else if (signs_[i] == State::Down && !typing && (changed || runtime_.repeated(key)))
            piano_.keyDown(key);
    }
}

/// The state is noted before the key acts: a step plays its entry, and keys are polled meanwhile.
void ComputerKeys::pollMoves(const Focus& focus) {
    for (std::size_t i = 0; i < kMoves.size(); ++i) {
        const KeyCode key = kMoves[i];
        const bool down = runtime_.held(key);
        if (down == (moves_[i] != State::Up))
            continue;
        moves_[i] = !down ? State::Up : takenBy(focus, key) ? State::Ignored : State::Down;
        if (moves_[i] == State::Down)
            moveDown(key);
        else if (!down && key == semitoneKey_) {
            semitoneKey_ = 0;
            listener_.semitoneKeyUp();
        }
    }
}

void ComputerKeys::moveDown(KeyCode key) {
    if (key != kKeyUp && key != kKeyDown) {
        listener_.stepKeyDown(key == kKeyRight || key == kKeyF6);
        return;
    }
    if (semitoneKey_ != 0)
        listener_.semitoneKeyUp();
    semitoneKey_ = key;
    listener_.semitoneKeyDown(key == kKeyUp);
}

void ComputerKeys::releaseAll() {
    piano_.releaseAll();
    if (semitoneKey_ != 0) {
        semitoneKey_ = 0;
        listener_.semitoneKeyUp();
    }
}
