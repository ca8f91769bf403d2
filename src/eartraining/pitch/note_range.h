#pragma once

#include "core/pitch.h"

class FunzioniMM;

/// The range of the pitch exercise, chosen by two clicks on keys at least two semitones apart, and
/// what a further click on a key means. The range itself is the sound module's, whose random draw
/// goes by it; -1 stands for a bound that is not set.
class NoteRange {
public:
    enum class Outcome {
        FirstEnd,
        TooSmall,    ///< the second click is too near above the first, or on it
        NotAllowed,  ///< the second click is too near below the first
        Completed,
        Outside,  ///< of a complete range
        Inside,
    };

    explicit NoteRange(FunzioniMM& funzioniMM) : funzioniMM_(funzioniMM) { clear(); }

    Outcome click(pitch::NoteIndex key);
    void clear();

    pitch::NoteIndex lower() const;
    pitch::NoteIndex upper() const;
    bool begun() const { return upper() >= 0; }
    bool complete() const { return complete_; }
    bool isEnd(pitch::NoteIndex key) const { return key == lower() || key == upper(); }

private:
    Outcome secondClick(pitch::NoteIndex key);
    void set(pitch::NoteIndex lower, pitch::NoteIndex upper);

    FunzioniMM& funzioniMM_;
    bool complete_ = false;
};
