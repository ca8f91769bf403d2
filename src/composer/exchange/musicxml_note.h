#pragma once

#include "composer/exchange/imported_score.h"

#include <optional>
#include <vector>

class XmlCursor;

namespace musicxml {

/// A note as its element tells it.
struct NoteElement {
    bool grace = false;
    bool cue = false;
    bool chord = false;
    bool unpitched = false;
    bool rest = false;
    std::optional<int> pitch;  ///< MIDI note number as written; nothing if it is no semitone
    double duration = 0;       ///< in the file's divisions; below 0 if it is no number
    std::optional<std::int64_t> typeTicks;  ///< what type, dots and tuplet give
    int voice = 0;
    char letter = 'n';
    bool tieStarts = false;
    bool tieStops = false;
    std::vector<imported::LeftOut> leftOut;
};

/// Reads the element that was entered and leaves it.
NoteElement readNote(XmlCursor& xml);

}  // namespace musicxml
