#pragma once

#include "composer/notation/source.h"
#include "composer/notation/symbol.h"

#include <optional>
#include <vector>

namespace notation {

/// What a system is made of, and more behind it.
struct Reading {
    std::vector<staff_entry::Entry> entries;  ///< from the one where the system starts
    std::vector<Symbol> symbols;
    std::vector<Span> triplets;
    std::vector<std::optional<BarPlace>> behind;  ///< the place behind each symbol
    int readTo = 0;                               ///< nothing depends on an entry from this one on
    bool all = false;                             ///< the melody ends with it
    std::optional<int> barless;  ///< the entry that cannot be written in bars, and ends them
};

/// Reads the entries that could fit into a room, in staff spaces, and a few more. The bars are
/// those of the bar view; they end before an entry that no values give in its place, since its
/// time, and that of all that follow, is not known exactly.
Reading readSymbols(const Source& source, const SystemStart& start, double room);

}  // namespace notation
