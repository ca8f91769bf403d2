#include "eartraining/pitch/note_range.h"

#include "core/funzioni_mm.h"

namespace {

constexpr pitch::NoteIndex kUnset = -1;
constexpr int kSmallest = 2;  ///< in semitones

}  // namespace

pitch::NoteIndex NoteRange::lower() const {
    return funzioniMM_.rangeLower();
}

pitch::NoteIndex NoteRange::upper() const {
    return funzioniMM_.rangeUpper();
}

void NoteRange::set(pitch::NoteIndex lower, pitch::NoteIndex upper) {
    funzioniMM_.setRangeLower(lower);
    funzioniMM_.setRangeUpper(upper);
}

void NoteRange::clear() {
    set(kUnset, kUnset);
    complete_ = false;
}

NoteRange::Outcome NoteRange::click(pitch::NoteIndex key) {
    if (complete_)
        return key < lower() || key > upper() ? Outcome::Outside : Outcome::Inside;
    if (upper() != kUnset)
        return secondClick(key);
    funzioniMM_.setRangeUpper(key);
    return Outcome::FirstEnd;
}

/// The first click stays the upper bound until the range is complete.
NoteRange::Outcome NoteRange::secondClick(pitch::NoteIndex key) {
    const pitch::NoteIndex first = upper();
    if (key < first) {
        set(key, first);
        if (first - key < kSmallest)
            return Outcome::NotAllowed;
    } else if (key - first < kSmallest) {
        set(first, first);
        return Outcome::TooSmall;
    } else {
        set(first, key);
    }
    complete_ = true;
    return Outcome::Completed;
}
