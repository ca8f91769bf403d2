#include "widgets/engraving.h"

#include "core/key_signatures.h"
#include "widgets/music_font.h"

#include <QPainter>
#include <QRectF>
#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace engraving {
namespace {

using glyph_table::ArticulationSign;
using glyph_table::Glyph;
using note_values::NoteValue;

constexpr qreal kClefIndent = 0.8;
constexpr qreal kBraceGap = 0.35;
constexpr qreal kTripletSize = 0.8;

/// Those of the metres.
struct Digit {
    int number;
    Glyph glyph;
};
constexpr std::array<Digit, 5> kDigits{{{2, Glyph::TimeSig2},
                                        {3, Glyph::TimeSig3},
                                        {4, Glyph::TimeSig4},
                                        {6, Glyph::TimeSig6},
                                        {8, Glyph::TimeSig8}}};

qreal widthOf(Glyph glyph) {
    return glyph_table::info(glyph).northEast.x;
}

/// The nearest pixel edge. Halves always go the same way, whatever rounding made of them, so that
/// equal distances stay equal.
qreal pixelEdge(qreal device) {
    return std::floor(device + 0.499);
}

qreal pixelThickness(qreal device) {
    return std::max(1.0, std::round(device));
}

QRectF rectOnPixels(const QPainter& painter, const QRectF& rect) {
    const QTransform toDevice = painter.deviceTransform();
    const QRectF device = toDevice.mapRect(rect);
    const qreal width = pixelThickness(device.width());
    const qreal height = pixelThickness(device.height());
    const QRectF snapped(pixelEdge(device.center().x() - width / 2),
                         pixelEdge(device.center().y() - height / 2), width, height);
    return toDevice.inverted().mapRect(snapped);
}

void fill(QPainter& painter, const QRectF& rect) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(rect, painter.pen().color());
    painter.restore();
}

void fillOutline(QPainter& painter, const QPainterPath& outline, QPointF at, qreal xScale,
                 qreal yScale) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(at);
    painter.scale(xScale, yScale);
    painter.fillPath(outline, painter.pen().color());
    painter.restore();
}

void drawGlyph(QPainter& painter, const MusicFont& font, Glyph glyph, QPointF at, qreal space) {
    fillOutline(painter, font.outline(glyph), at, space, space);
}

void drawHorizontal(QPainter& painter, qreal left, qreal right, qreal y, qreal thickness) {
    fillOnPixels(painter, QRectF(left, y - thickness / 2, right - left, thickness));
}

/// From the top of one stave to the bottom of another, so many staff spaces thick.
void drawVertical(QPainter& painter, const Stave& upper, const Stave& lower, qreal x,
                  double thickness) {
    const qreal halfLine = glyph_table::kStaffLineThickness * upper.space / 2;
    fillOnPixels(painter, QRectF(QPointF(x, upper.y(kTopLine) - halfLine),
                                 QPointF(x + thickness * upper.space, lower.y(0) + halfLine)));
}

void drawLedgerLines(QPainter& painter, const Stave& stave, qreal x, const Note& note) {
    const qreal extension = note.ledgerExtension * stave.space;
    const qreal right = x + headWidth(note.duration) * stave.space + extension;
    const auto line = [&](int at) {
        drawHorizontal(painter, x - extension, right, stave.y(at),
                       glyph_table::kLedgerLineThickness * stave.space);
    };
    for (int at = -2; at >= note.position; at -= 2)
        line(at);
    for (int at = kTopLine + 2; at <= note.position; at += 2)
        line(at);
}

/// The stem from the head to a position, on whole pixels.
QRectF drawStem(QPainter& painter, const Stave& stave, qreal x, const Note& note, qreal end) {
    const bool up = stemGoesUp(note);
    const auto& head = glyph_table::info(note_values::rowOf(note.duration).head);
    const glyph_table::Point anchor = up ? head.stemUp : head.stemDown;
    const qreal thickness = glyph_table::kStemThickness * stave.space;
    const qreal edge = x + anchor.x * stave.space;
    const qreal start = stave.y(note.position) - anchor.y * stave.space;
    const QRectF stem(QPointF(up ? edge - thickness : edge, std::min(start, stave.y(end))),
                      QPointF(up ? edge : edge + thickness, std::max(start, stave.y(end))));
    const QRectF snapped = rectOnPixels(painter, stem);
    fill(painter, snapped);
    return snapped;
}

/// Where the head must stand to touch its stem, which stands on whole pixels.
qreal headAt(const Stave& stave, const Note& note, const QRectF& stem) {
    const auto& head = glyph_table::info(note_values::rowOf(note.duration).head);
    return stemGoesUp(note) ? stem.right() - head.stemUp.x * stave.space
                            : stem.left() - head.stemDown.x * stave.space;
}

/// Draws the stem with its flag, and returns where the head must stand.
qreal drawFlaggedStem(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
                      const Note& note) {
    const NoteValue& value = note_values::rowOf(note.duration);
    const bool up = stemGoesUp(note);
    const std::optional<Glyph> flag = up ? value.flagUp : value.flagDown;
    qreal end = stemEnd(note);
    if (flag) {
        const auto& info = glyph_table::info(*flag);
        end += 2 * (up ? info.stemUp.y : info.stemDown.y);
    }
    const QRectF stem = drawStem(painter, stave, x, note, end);
    if (flag) {
        drawGlyph(painter, font, *flag, QPointF(stem.left(), stave.y(stemEnd(note))), stave.space);
    }
    return headAt(stave, note, stem);
}

/// Dots stand in a space: those of a note on a line in the space above it.
void drawDots(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x, int position,
              int dots) {
    const int space = position % 2 == 0 ? position + 1 : position;
    for (int i = 0; i < dots; ++i) {
        const qreal dotX = x + (kDotGap + i * kDotDistance) * stave.space;
        drawGlyph(painter, font, Glyph::AugmentationDot, QPointF(dotX, stave.y(space)),
                  stave.space);
    }
}

void drawHead(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
              const Note& note) {
    const NoteValue& value = note_values::rowOf(note.duration);
    drawLedgerLines(painter, stave, x, note);
    drawGlyph(painter, font, value.head, QPointF(x, stave.y(note.position)), stave.space);
    drawAccidental(painter, font, stave, x, note.position, note.accidental);
    drawDots(painter, font, stave, x + dotsStart(note) * stave.space, note.position, note.dots);
}

}  // namespace

qreal wholePixelSpace(qreal space, qreal devicePixelRatio) {
    return std::max(1.0, std::floor(space * devicePixelRatio + 1e-6)) / devicePixelRatio;
}

Stave onPixels(const QPainter& painter, Stave stave) {
    const qreal thickness = glyph_table::kStaffLineThickness * stave.space;
    const QRectF line(stave.left, stave.bottomLine - thickness / 2, stave.right - stave.left,
                      thickness);
    const QRectF snapped = rectOnPixels(painter, line);
    stave.left = snapped.left();
    stave.right = snapped.right();
    stave.bottomLine = snapped.center().y();
    return stave;
}

void fillOnPixels(QPainter& painter, const QRectF& rect) {
    fill(painter, rectOnPixels(painter, rect));
}

void drawLines(QPainter& painter, const Stave& stave) {
    for (int position = 0; position <= kTopLine; position += 2) {
        drawHorizontal(painter, stave.left, stave.right, stave.y(position),
                       glyph_table::kStaffLineThickness * stave.space);
    }
}

void drawBarline(QPainter& painter, const Stave& upper, const Stave& lower, qreal x) {
    drawVertical(painter, upper, lower, x, glyph_table::kThinBarlineThickness);
}

void drawFinalBarline(QPainter& painter, const Stave& upper, const Stave& lower, qreal right) {
    const qreal thick = right - glyph_table::kThickBarlineThickness * upper.space;
    drawVertical(painter, upper, lower, thick, glyph_table::kThickBarlineThickness);
    drawBarline(painter, upper, lower, right - kFinalBarlineWidth * upper.space);
}

void drawBrace(QPainter& painter, const MusicFont& font, const Stave& upper, const Stave& lower,
               qreal right) {
    const qreal top = upper.y(kTopLine);
    const qreal bottom = lower.y(0);
    const auto& brace = glyph_table::info(Glyph::Brace);
    const qreal scale = (bottom - top) / (brace.northEast.y - brace.southWest.y);
    fillOutline(painter, font.outline(Glyph::Brace),
                QPointF(right - brace.northEast.x * scale, bottom), scale, scale);
}

void drawClef(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x, Clef clef) {
    const bool g = clef == Clef::G;
    drawGlyph(painter, font, g ? Glyph::GClef : Glyph::FClef,
              QPointF(x, stave.y(g ? grand_staff::kGLine : grand_staff::kFLine)), stave.space);
}

void drawStaff(QPainter& painter, const MusicFont& font, const Stave& stave, Clef clef) {
    drawLines(painter, stave);
    drawClef(painter, font, stave, stave.left + kClefIndent * stave.space, clef);
}

void drawGrandStaff(QPainter& painter, const MusicFont& font, const Stave& treble,
                    const Stave& bass) {
    drawBarline(painter, treble, bass, treble.left);
    drawBrace(painter, font, treble, bass, treble.left - kBraceGap * treble.space);
    drawStaff(painter, font, treble, Clef::G);
    drawStaff(painter, font, bass, Clef::F);
}

void drawNote(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
              const Note& note) {
    const bool stem = note_values::rowOf(note.duration).stem;
    drawHead(painter, font, stave, stem ? drawFlaggedStem(painter, font, stave, x, note) : x, note);
}

QRectF drawBeamedNote(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
                      const Note& note, qreal stemEnd) {
    // Half a beam short, so that no rounded end looks out of a slanted beam.
    const double inwards =
        stemGoesUp(note) ? -glyph_table::kBeamThickness : glyph_table::kBeamThickness;
    const QRectF stem = drawStem(painter, stave, x, note, stemEnd + inwards);
    drawHead(painter, font, stave, headAt(stave, note, stem), note);
    return stem;
}

void drawRest(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
              Duration duration, int dots) {
    const Glyph rest = note_values::rowOf(duration).rest;
    drawGlyph(painter, font, rest, QPointF(x, stave.y(restLine(duration))), stave.space);
    drawDots(painter, font, stave, x + widthOf(rest) * stave.space, kMiddleLine, dots);
}

void drawAccidental(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
                    int position, Accidental accidental) {
    if (accidental == Accidental::None)
        return;
    const Glyph sign = glyphOf(accidental);
    const qreal reach = (widthOf(sign) + accidentalGap(position)) * stave.space;
    drawGlyph(painter, font, sign, QPointF(x - reach, stave.y(position)), stave.space);
}

void drawKeySignature(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
                      Clef clef, int fifths) {
    const Accidental sign = fifths > 0 ? Accidental::Sharp : Accidental::Flat;
    const int shift = clef == Clef::G ? 0 : key_signatures::kBassShift;
    for (const key_signatures::Sign& altered : key_signatures::signsOf(fifths)) {
        x += kKeySignStep * stave.space;
        drawAccidental(painter, font, stave, x, altered.position - shift, sign);
    }
}

void drawMetre(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x, int beats,
               int beatValue) {
    const auto draw = [&](int number, int position) {
        const auto* const digit =
            std::find_if(kDigits.begin(), kDigits.end(),
                         [number](const Digit& row) { return row.number == number; });
        if (digit == kDigits.end())
            return;
        const auto& info = glyph_table::info(digit->glyph);
        const qreal middle = (kMetreWidth - info.southWest.x - info.northEast.x) / 2;
        drawGlyph(painter, font, digit->glyph, QPointF(x + middle * stave.space, stave.y(position)),
                  stave.space);
    };
    draw(beats, kMiddleLine + 2);
    draw(beatValue, kMiddleLine - 2);
}

void drawArticulation(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
                      const Note& note, const ArticulationSign& sign) {
    const bool above = !stemGoesUp(note);
    const Glyph glyph = above ? sign.above : sign.below;
    const auto& info = glyph_table::info(glyph);
    const qreal middleX = (info.southWest.x + info.northEast.x) / 2;
    const qreal middleY = (info.southWest.y + info.northEast.y) / 2;
    const int position = articulationPosition(note, sign);
    drawGlyph(painter, font, glyph,
              QPointF(x + (headWidth(note.duration) / 2 - middleX) * stave.space,
                      stave.y(position) + middleY * stave.space),
              stave.space);
}

void drawTripletSign(QPainter& painter, const MusicFont& font, const Stave& stave, qreal middle,
                     qreal position) {
    const auto& info = glyph_table::info(Glyph::Tuplet3);
    const qreal size = kTripletSize * stave.space;
    const QPointF at(middle - (info.southWest.x + info.northEast.x) / 2 * size,
                     stave.bottomLine - position * stave.space / 2 +
                         (info.southWest.y + info.northEast.y) / 2 * size);
    drawGlyph(painter, font, Glyph::Tuplet3, at, size);
}

}  // namespace engraving
