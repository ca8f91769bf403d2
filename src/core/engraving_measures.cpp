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
constexpr int kTieRoom = 3;            ///< in half spaces

double widthOf(Glyph glyph) {
    return glyph_table::info(glyph).northEast.x;
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
    return stemGoesUp(note) ? std::max(note.position + kOctave, kMiddleLine)
                            : std::min(note.position - kOctave, kMiddleLine);
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
        extent.left = glyph_table::kLedgerLineExtension;
        extent.right += glyph_table::kLedgerLineExtension;
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

Reach reachOf(const Note& note) {
    const double end = farEnd(note);
    Reach reach{std::min<double>(note.position - 1, end), std::max<double>(note.position + 1, end)};
    if (note.accidental != Accidental::None) {
        const auto& sign = glyph_table::info(glyphOf(note.accidental));
        reach.low = std::min(reach.low, note.position + 2 * sign.southWest.y);
        reach.high = std::max(reach.high, note.position + 2 * sign.northEast.y);
    }
    return reach;
}

Reach restReach(Duration duration) {
    const auto& rest = glyph_table::info(note_values::rowOf(duration).rest);
    return {restLine(duration) + 2 * rest.southWest.y, restLine(duration) + 2 * rest.northEast.y};
}

int articulationPosition(const Note& note, const ArticulationSign& sign, bool tied) {
    const bool above = !stemGoesUp(note);
    const int distance = sign.distance + (tied ? kTieRoom : 0);
    const int position = above ? note.position + distance : note.position - distance;
    const bool inStave = position >= 0 && position <= kTopLine;
    if (!sign.small)
        return above ? std::max(position, kTopLine + 2) : std::min(position, -2);
    if (inStave && position % 2 == 0)
        return above ? position + 1 : position - 1;
    return position;
}

double signPosition(const Note& note) {
    return stemGoesUp(note) ? std::max<double>(farEnd(note), kTopLine) + kSignDistance
                            : std::min<double>(farEnd(note), 0) - kSignDistance;
}

}  // namespace engraving
