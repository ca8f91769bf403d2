#pragma once

#include "composer/notation/symbol.h"

#include <vector>

/// How far apart the symbols of a system stand, in staff spaces.
namespace notation {

/// From a symbol to the next one where neither accidentals nor flags need more: it grows with the
/// length, less than in proportion.
double spaceAfter(double quarters);

/// From a bar line to the leftmost ink of the symbol behind it.
constexpr double kBehindBarLine = 1;

/// Between the ledger lines of two symbols.
constexpr double kLedgerGap = 0.25;

/// From each symbol to the next one, and from the last one to the end.
struct Distance {
    double wanted = 0;  ///< by its length
    double least = 0;   ///< that it does not touch the next symbol

    double natural() const { return wanted > least ? wanted : least; }
};
std::vector<Distance> distancesOf(const std::vector<Symbol>& symbols);

/// By what the wanted distances are multiplied so that all fill the room together; 1 or more,
/// unless their natural sum is larger than the room.
double stretchToFill(const std::vector<Distance>& distances, double room);

}  // namespace notation
