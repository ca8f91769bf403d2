#include "composer/notation/beams.h"

#include <algorithm>
#include <cmath>

namespace notation {
namespace {

/// In half spaces.
constexpr double kStem = 6.5;
constexpr double kMoreStem = kBeamDistance;  ///< for each beam from the third on
constexpr double kRiseShare = 0.45;
constexpr double kMostRise = 2;          ///< of a narrow beam
constexpr double kMostWideSlope = 0.25;  ///< half spaces a staff space, of a wide one
constexpr double kMostSlope = 0.5;
constexpr double kClearOfHead = 0.4;  ///< and of an accidental

constexpr double kStub = 1.1;  ///< in staff spaces
constexpr double kTolerance = 1e-6;

int beamsOf(const Symbol& symbol) {
    return static_cast<int>(symbol.value.duration) - static_cast<int>(engraving::Duration::Eighth) +
           1;
}

double stemLength(const Symbol& symbol) {
    return kStem + std::max(0, beamsOf(symbol) - 2) * kMoreStem;
}

/// Half spaces a staff space. A beam follows the way from the first note to the last one, but
/// flatter; it lies level where a note between them is nearest to it.
double slopeOf(const std::vector<Symbol>& symbols, const Span& beam, double towardsBeam) {
    const auto height = [&](std::size_t i) { return towardsBeam * symbols[i].note.position; };
    const double first = height(beam.first);
    const double last = height(beam.last);
    for (std::size_t i = beam.first + 1; i < beam.last; ++i) {
        if (height(i) >= std::max(first, last))
            return 0;
    }
    const double width = symbols[beam.last].x - symbols[beam.first].x;
    const double most = std::max(kMostRise, kMostWideSlope * width);
    const double rise = std::clamp((last - first) * kRiseShare, -most, most);
    return towardsBeam * std::clamp(rise / width, -kMostSlope, kMostSlope);
}

/// A stub points to the note that it makes a beat with.
double stubOf(const std::vector<Symbol>& symbols, const Span& beam, std::size_t i) {
    if (i == beam.first)
        return kStub;
    if (i == beam.last)
        return -kStub;
    const double pairs = symbols[i].onset / (2 * symbols[i].length);
    return std::abs(pairs - std::round(pairs)) < kTolerance ? kStub : -kStub;
}

void addLines(Beam& beam, const std::vector<Symbol>& symbols, int level) {
    const auto has = [&](std::size_t i) {
        return i <= beam.notes.last && beamsOf(symbols[i]) > level;
    };
    for (std::size_t i = beam.notes.first; i <= beam.notes.last; ++i) {
        if (!has(i))
            continue;
        const std::size_t first = i;
        while (has(i + 1))
            ++i;
        beam.lines.push_back({first, i, level, first == i ? stubOf(symbols, beam.notes, i) : 0});
    }
}

/// The note whose head or accidental is below or above the end of a stub.
const Symbol* besideStub(const std::vector<Symbol>& symbols, const Beam& beam,
                         const Beam::Line& line) {
    if (line.stub == 0)
        return nullptr;
    const Symbol& symbol = symbols[line.first];
    const double stem = symbol.x + (beam.stemsUp ? engraving::headWidth(symbol.value.duration) : 0);
    const double end = stem + line.stub;
    if (line.stub > 0) {
        const Symbol& next = symbols[line.first + 1];
        return end > next.x - extentOf(next).left ? &next : nullptr;
    }
    const Symbol& before = symbols[line.first - 1];
    return end < before.x + extentOf(before).right ? &before : nullptr;
}

/// How high the ink of a note's head and accidental reaches, or how low on the other side.
double reachOf(const Symbol& symbol, double side) {
    engraving::Reach reach = engraving::headReach(symbol.note);
    return side > 0 ? reach.high : -reach.low;
}

}  // namespace

void turnStems(std::vector<Symbol>& symbols, const Span& beam) {
    int above = 0;
    int below = 0;
    for (std::size_t i = beam.first; i <= beam.last; ++i) {
        above = std::max(above, symbols[i].note.position - engraving::kMiddleLine);
        below = std::max(below, engraving::kMiddleLine - symbols[i].note.position);
    }
    for (std::size_t i = beam.first; i <= beam.last; ++i) {
        symbols[i].note.stem = below > above ? engraving::Stem::Up : engraving::Stem::Down;
        symbols[i].note.beamed = true;
    }
}

Beam layOutBeam(std::vector<Symbol>& symbols, const Span& notes) {
    Beam beam{notes, engraving::stemGoesUp(symbols[notes.first].note), {}};
    int most = 0;
    for (std::size_t i = notes.first; i <= notes.last; ++i)
        most = std::max(most, beamsOf(symbols[i]));
    for (int level = 0; level < most; ++level)
        addLines(beam, symbols, level);

    const double side = beam.stemsUp ? 1 : -1;
    const double slope = slopeOf(symbols, notes, side);
    const double origin = symbols[notes.first].x;
    const double stem =  // from the left edge of a head
        beam.stemsUp ? engraving::headWidth(symbols[notes.first].value.duration) : 0;
    // Far enough from every head, and no end short of the middle line.
    double height = -1e9;
    const auto reachTo = [&](double x, double least) {
        height = std::max(height, least - side * slope * (x - origin));
    };
    for (std::size_t i = notes.first; i <= notes.last; ++i) {
        const Symbol& symbol = symbols[i];
        reachTo(symbol.x, side * symbol.note.position + stemLength(symbol));
        reachTo(symbol.x, side * engraving::kMiddleLine);
    }
    for (const Beam::Line& line : beam.lines) {
        const double inwards = line.level * kBeamDistance + 2 * glyph_table::kBeamThickness;
        const auto clear = [&](double x, const Symbol& symbol) {
            reachTo(x, reachOf(symbol, side) + kClearOfHead + inwards);
        };
        for (std::size_t i = line.first + 1; i <= line.last; ++i)
            clear(symbols[i].x - extentOf(symbols[i]).left - stem, symbols[i]);
        if (const Symbol* next = besideStub(symbols, beam, line)) {
            clear(symbols[line.first].x, *next);
            clear(next->x, *next);
        }
    }
    // Halves, so that the edges of level beams stand on lines or in the middle of a space.
    height = std::ceil(height * 2 - kTolerance) / 2;
    for (std::size_t i = notes.first; i <= notes.last; ++i)
        symbols[i].stemEnd = side * height + slope * (symbols[i].x - origin);
    return beam;
}

}  // namespace notation
