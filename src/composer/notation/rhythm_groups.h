#pragma once

#include "composer/notation/symbol.h"

#include <vector>

/// Which symbols belong together by their rhythm.
namespace notation {

/// The symbols under one triplet sign, from one that stands in no bar on: triplet values that
/// follow each other, until they fill a time that plain values fill.
std::vector<Span> tripletsOf(const std::vector<Symbol>& symbols, std::size_t first);

/// Two or more flagged notes under one beam: those of a triplet, or those that begin in the same
/// beat, of so many quarter notes, counted from the start of the melody. Rests and longer values
/// part them.
std::vector<Span> beamsOf(const std::vector<Symbol>& symbols, const std::vector<Span>& triplets,
                          double beat);

/// Parts beams where the staff changes.
std::vector<Span> onOneStaff(const std::vector<Span>& beams, const std::vector<Symbol>& symbols);

}  // namespace notation
