#include "eartraining/chord/chord_range.h"

#include <algorithm>

ChordRange::Outcome ChordRange::click(pitch::NoteIndex key) {
    if (key > kHighestRoot)
        return Outcome::AboveLimit;
    const pitch::NoteIndex first = upper_;
    upper_ = std::max(key, first);
    if (first == kUnset)
        return Outcome::FirstEnd;
    lower_ = std::min(key, first);
    complete_ = true;
    return Outcome::Completed;
}
