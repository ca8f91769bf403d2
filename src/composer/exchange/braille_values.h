#pragma once

#include "composer/score/bar_view.h"

namespace braille {

/// Whether the values of a bar must be told by signs, since each cell stands for a large and for a
/// small value: they must unless the bar's length leaves one way to read it.
bool needsValueSigns(const std::vector<score::WrittenNote>& notes,
                     const std::optional<score::Metre>& metre);

}  // namespace braille
