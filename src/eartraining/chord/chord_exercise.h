#pragma once

#include "eartraining/chord/chord_range.h"
#include "eartraining/chord/chord_types.h"

#include <array>

class EarDesk;

/// Recognising the type of a chord whose root falls into a range that the user chooses on the
/// keyboard. Answers are judged even while the exercise does not run.
class ChordExercise {
public:
    /// `chord` holds the notes of the current chord, which outlives the window.
    ChordExercise(EarDesk& desk, chord_types::Notes& chord) : desk_(desk), chord_(chord) {}

    /// A click on a key while the exercise is on show.
    void keyClicked(pitch::NoteIndex key);

    /// Only with a complete range.
    void startOrStop();
    void typeClicked(int type);

    bool available(int type) const { return !excluded_[static_cast<std::size_t>(type)]; }
    /// Takes one of the less common types out of the draw or puts it back in.
    void toggleAvailable(int type);

    /// Whether the keys of each chord are shown as it is played.
    bool showsKeys() const { return showsKeys_; }
    void toggleKeys() { showsKeys_ = !showsKeys_; }

    const ChordRange& range() const { return range_; }
    void resetRange();
    void forgetRange() { range_.clear(); }
    /// Ends a chord that is left to sound.
    void quiet();

private:
    void drawAndPlay();
    void drawChord();
    void playChord();
    void silenceChord();
    bool endChord();

    EarDesk& desk_;
    chord_types::Notes& chord_;
    ChordRange range_;
    std::array<bool, chord_types::kCount> excluded_{};
    std::int16_t current_ = 0;
    bool showsKeys_ = true;
    bool sounding_ = false;
};
