#pragma once

#include "core/pitch.h"

/// The range of chord roots, chosen by two clicks on keys; they may be the same key.
class ChordRange {
public:
    enum class Outcome { FirstEnd, AboveLimit, Completed };

    static constexpr pitch::NoteIndex kUnset = -1;
    /// The highest root: the widest chord spans 8 semitones and ends on the highest key.
    static constexpr pitch::NoteIndex kHighestRoot = pitch::kNoteCount - 1 - 8;

    /// A click on a key while the range is not complete.
    Outcome click(pitch::NoteIndex key);
    void clear() { *this = {}; }

    bool begun() const { return upper_ != kUnset; }
    bool complete() const { return complete_; }
    pitch::NoteIndex lower() const { return lower_; }
    pitch::NoteIndex upper() const { return upper_; }

private:
    pitch::NoteIndex lower_ = kUnset;
    pitch::NoteIndex upper_ = kUnset;
    bool complete_ = false;
};
