#pragma once

#include "core/piano_keys.h"

#include <array>

class Runtime;

/// What the computer keyboard does in the composer beside playing notes.
class ComputerKeysListener : public PianoKeysListener {
public:
    virtual void stepKeyDown(bool forward) = 0;      ///< Left and F5, Right and F6
    virtual void semitoneKeyDown(bool upwards) = 0;  ///< Down, Up
    virtual void semitoneKeyUp() = 0;
};

/// All keys that the composer polls, once a pass of whichever of its loops runs.
class ComputerKeys {
public:
    /// What the keys mean just now, by the control that has the focus.
    struct Focus {
        bool typing = false;         ///< letters, digits and signs are text
        bool takesSideways = false;  ///< Left and Right are the control's own
        bool takesUpAndDown = false;
    };

    ComputerKeys(const Runtime& runtime, ComputerKeysListener& listener);

    void poll(const Focus& focus);

    /// Ends every note that a key holds.
    void releaseAll();

    PianoKeys& piano() { return piano_; }

private:
    static constexpr std::size_t kMoveCount = 6;
    enum class State { Up, Down, Ignored };

    void pollSigns(bool typing);
    void pollMoves(const Focus& focus);
    void moveDown(KeyCode key);

    const Runtime& runtime_;
    ComputerKeysListener& listener_;
    PianoKeys piano_;
    std::array<State, PianoKeys::kRowEnds.size()> signs_{};
    std::array<State, kMoveCount> moves_{};
    KeyCode semitoneKey_ = 0;  ///< the one whose note sounds
};
