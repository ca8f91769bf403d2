#pragma once

#include "core/pitch.h"

/// A range chosen on the keyboard, both ends included.
struct KeySpan {
    pitch::NoteIndex lower;
    pitch::NoteIndex upper;

    bool operator==(const KeySpan&) const = default;
};
