#include "composer/notation/rhythm_groups.h"

#include <cmath>

namespace notation {
namespace {

/// Onsets are sums of durations that texts of 15 digits hold.
constexpr double kTolerance = 1e-6;

/// The shortest time that plain values fill, a dotted 1/64, is a multiple of this.
constexpr double kUnit = 1.0 / 32;

constexpr std::size_t kMostInTriplet = 12;

bool isPlainTime(double quarters) {
    const double units = quarters / kUnit;
    return std::abs(units - std::round(units)) < kTolerance;
}

double beatOf(const Symbol& symbol, double beat) {
    return std::floor((symbol.onset + kTolerance) / beat);
}

}  // namespace

std::vector<Span> tripletsOf(const std::vector<Symbol>& symbols, std::size_t first) {
    std::vector<Span> spans;
    bool open = false;
    double begins = 0;
    for (std::size_t i = first; i < symbols.size(); ++i) {
        const Symbol& symbol = symbols[i];
        if (!symbol.triplet) {
            open = false;
            continue;
        }
        if (!open) {
            spans.push_back({i, i});
            begins = symbol.onset;
        }
        spans.back().last = i;
        const bool full = i - spans.back().first + 1 >= kMostInTriplet;
        open =
            !(symbol.closesEntry && (full || isPlainTime(symbol.onset + symbol.length - begins)));
    }
    return spans;
}

std::vector<Span> beamsOf(const std::vector<Symbol>& symbols, const std::vector<Span>& triplets,
                          double beat) {
    std::vector<Span> beams;
    std::size_t triplet = 0;
    // The triplet that a symbol is in; none is its own number behind the last one.
    const auto tripletOf = [&](std::size_t i) {
        while (triplet < triplets.size() && triplets[triplet].last < i)
            ++triplet;
        const bool inside = triplet < triplets.size() && triplets[triplet].first <= i;
        return inside ? triplet : triplets.size();
    };
    std::size_t before = triplets.size();
    bool open = false;
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const std::size_t now = tripletOf(i);
        const bool together =
            open && symbols[i].flagged() && now == before &&
            (now < triplets.size() || beatOf(symbols[i], beat) == beatOf(symbols[i - 1], beat));
        if (together && !beams.empty() && beams.back().last == i - 1)
            beams.back().last = i;
        else if (together)
            beams.push_back({i - 1, i});
        open = symbols[i].flagged();
        before = now;
    }
    return beams;
}

std::vector<Span> onOneStaff(const std::vector<Span>& beams, const std::vector<Symbol>& symbols) {
    std::vector<Span> parted;
    for (const Span& beam : beams) {
        std::size_t first = beam.first;
        for (std::size_t i = first + 1; i <= beam.last + 1; ++i) {
            if (i <= beam.last && symbols[i].staff == symbols[first].staff)
                continue;
            if (i - 1 > first)
                parted.push_back({first, i - 1});
            first = i;
        }
    }
    return parted;
}

}  // namespace notation
