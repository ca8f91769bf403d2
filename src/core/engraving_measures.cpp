#include "core/engraving_measures.h"

#include <algorithm>
#include <array>

namespace engraving {
namespace {

using glyph_table::ArticulationSign;
using glyph_table::Glyph;
using note_values::NoteValue;

constexpr std::array<Glyph, 4> kAccidentals{Glyph::AccidentalFlat, Glyph::AccidentalNatural,
                                            Glyph::AccidentalSharp, Glyph::AccidentalDoubleSharp};

constexpr int kOctave = 7;
constexpr double kAccidentalGap = 0.25;
constexpr double kSignDistance = 1.8;  ///< in half spaces

/// Of ties: how far they reach over the heads and stay clear of what is beside them, in staff
/// spaces, and how far their ends and their middles are from the heads' position, in half spaces.
constexpr double kTieOverHead = 0.45;
constexpr double kTieGap = 0.15;
constexpr double kTieEndOnLine = 1.6;
constexpr double kTieEndInSpace = 1.3;
constexpr double kTieEndBetween = 0.6;
constexpr double kTieMiddleOnLine = 2.9;
constexpr double kTieMiddleInSpace = 2.1;
constexpr double kTieMiddleBetween = 1.3;

double widthOf(Glyph glyph) {
    return glyph_table::info(glyph).northEast.x;
}

bool isOnLine(const Note& note) {
    return note.position % 2 == 0;
}

double dotsWidth(int dots) {
    return dots > 0 ? kDotGap + (dots - 1) * kDotDistance + widthOf(Glyph::AugmentationDot) : 0;
}

/// Where the stem and the flags of a note end, which lie outside its head.
double farEnd(const Note& note) {
    const NoteValue& value = note_values::rowOf(note.duration);
    const bool up = stemGoesUp(note);
    if (!value.stem)
        return note.position + (up ? 1 : -1);
    double end = stemEnd(note);
    const auto flag = up ? value.flagUp : value.flagDown;
    if (flag && !note.beamed) {
        const auto& info = glyph_table::info(*flag);
        end += 2 * (up ? info.northEast.y : info.southWest.y);
    }
    return end;
}

}  // namespace

int stemEnd(const Note& note) {
    // Three and more flags would touch the head.
    const bool manyFlags = note.duration >= Duration::ThirtySecond && !note.beamed;
    const int length = kOctave + (manyFlags ? 1 : 0);
    return stemGoesUp(note) ? std::max(note.position + length, kMiddleLine)
                            : std::min(note.position - length, kMiddleLine);
}

int ledgerLines(int position) {
    if (position < 0)
        return -position / 2;
    return std::max(0, (position - kTopLine) / 2);
}

Glyph glyphOf(Accidental accidental) {
    return kAccidentals[static_cast<std::size_t>(accidental) - 1];
}

double headWidth(Duration duration) {
    return widthOf(note_values::rowOf(duration).head);
}

/// Clear of the ledger lines.
double accidentalGap(int position) {
    return kAccidentalGap + (ledgerLines(position) > 0 ? glyph_table::kLedgerLineExtension : 0);
}

/// The flags of a stem that goes up hang down to where the dots stand when there are many or the
/// dots stand higher, beside a head on a line.
double dotsStart(const Note& note) {
    const NoteValue& value = note_values::rowOf(note.duration);
    const double head = widthOf(value.head);
    const bool below = note.position % 2 != 0 && note.duration < Duration::ThirtySecond;
    if (!value.flagUp || note.beamed || !stemGoesUp(note) || below)
        return head;
    return head + widthOf(*value.flagUp) - kDotGap / 2;
}

Extent extentOf(const Note& note) {
    const NoteValue& value = note_values::rowOf(note.duration);
    Extent extent{0, headWidth(note.duration)};
    if (ledgerLines(note.position) > 0) {
        extent.left = note.ledgerExtension;
        extent.right += note.ledgerExtension;
    }
    if (note.accidental != Accidental::None)
        extent.left = widthOf(glyphOf(note.accidental)) + accidentalGap(note.position);
    if (value.flagUp && !note.beamed) {
        const auto& head = glyph_table::info(value.head);
        extent.right =
            std::max(extent.right, stemGoesUp(note) ? head.stemUp.x + widthOf(*value.flagUp)
                                                    : head.stemDown.x + widthOf(*value.flagDown));
    }
    if (note.dots > 0)
        extent.right = std::max(extent.right, dotsStart(note) + dotsWidth(note.dots));
    return extent;
}

double restWidth(Duration duration, int dots) {
    return widthOf(note_values::rowOf(duration).rest) + dotsWidth(dots);
}

Reach headReach(const Note& note) {
    Reach reach{note.position - 1., note.position + 1.};
    if (note.accidental != Accidental::None) {
        const auto& sign = glyph_table::info(glyphOf(note.accidental));
        reach.low = std::min(reach.low, note.position + 2 * sign.southWest.y);
        reach.high = std::max(reach.high, note.position + 2 * sign.northEast.y);
    }
    return reach;
}

Reach reachOf(const Note& note) {
    const double end = farEnd(note);
    const Reach head = headReach(note);
    return {std::min(head.low, end), std::max(head.high, end)};
}

Reach restReach(Duration duration) {
    const auto& rest = glyph_table::info(note_values::rowOf(duration).rest);
    return {restLine(duration) + 2 * rest.southWest.y, restLine(duration) + 2 * rest.northEast.y};
}

/// Towards the stave, and in it, every even position is a line.
int articulationPosition(const Note& note, const ArticulationSign& sign) {
    const bool above = !stemGoesUp(note);
    const int position = note.position + (above ? sign.distance : -sign.distance);
    if (!sign.small)
        return above ? std::max(position, kTopLine + 2) : std::min(position, -2);
    const bool isLine = position % 2 == 0 && (above ? position <= kTopLine : position >= 0);
    return isLine ? position + (above ? 1 : -1) : position;
}

TieCurve tieOverHeads(const Note& first, bool above) {
    const int side = above ? 1 : -1;
    const double end = isOnLine(first) ? kTieEndOnLine : kTieEndInSpace;
    const double middle = isOnLine(first) ? kTieMiddleOnLine : kTieMiddleInSpace;
    return {headWidth(first.duration) - kTieOverHead, kTieOverHead, first.position + side * end,
            first.position + side * middle};
}

TieCurve tieBetweenHeads(const Note& first, bool above) {
    const int side = above ? 1 : -1;
    const bool dotsBeside = first.dots > 0 && (above || !isOnLine(first));
    const double right =
        dotsBeside ? dotsStart(first) + dotsWidth(first.dots) : headWidth(first.duration);
    const double middle = isOnLine(first) ? kTieMiddleBetween : kTieMiddleInSpace;
    return {right + kTieGap, -kTieGap, first.position + side * kTieEndBetween,
            first.position + side * middle};
}

double signPosition(const Note& note) {
    return stemGoesUp(note) ? std::max<double>(farEnd(note), kTopLine) + kSignDistance
                            : std::min<double>(farEnd(note), 0) - kSignDistance;
}

}  // namespace engraving
