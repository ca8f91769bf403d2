#include "widgets/engraving.h"

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

constexpr std::array<Glyph, 3> kAccidentals{Glyph::AccidentalFlat, Glyph::AccidentalNatural,
                                            Glyph::AccidentalSharp};

constexpr int kOctave = 7;
constexpr int kWholeRestLine = 6;
constexpr qreal kClefIndent = 0.8;
constexpr qreal kBraceGap = 0.35;
constexpr qreal kAccidentalGap = 0.25;
constexpr qreal kDotGap = 0.4;
constexpr qreal kDotDistance = 0.6;
constexpr qreal kTripletSize = 0.8;
constexpr qreal kSignDistance = 1.8;  ///< in half spaces
constexpr qreal kTieOverHead = 0.45;
constexpr qreal kTieDistance = 0.75;
constexpr qreal kTieDepth = 0.45;
constexpr int kTieRoom = 3;  ///< in half spaces

constexpr bool hasLedgerLines(int position) {
    return position < -1 || position > kTopLine + 1;
}

/// From a head's left edge to where its sign ends, in staff spaces: clear of the ledger lines.
constexpr qreal accidentalGap(int position) {
    return kAccidentalGap + (hasLedgerLines(position) ? glyph_table::kLedgerLineExtension : 0);
}

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

void drawLedgerLines(QPainter& painter, const Stave& stave, qreal x, qreal width, int position) {
    const qreal extension = glyph_table::kLedgerLineExtension * stave.space;
    const auto line = [&](int at) {
        drawHorizontal(painter, x - extension, x + width + extension, stave.y(at),
                       glyph_table::kLedgerLineThickness * stave.space);
    };
    for (int at = -2; at >= position; at -= 2)
        line(at);
    for (int at = kTopLine + 2; at <= position; at += 2)
        line(at);
}

/// Draws the stem with its flag, and returns how far the head must move to touch the stem, which
/// stands on whole pixels.
qreal drawStem(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
               const Note& note) {
    const NoteValue& value = note_values::rowOf(note.duration);
    const bool up = stemGoesUp(note.position);
    const auto& head = glyph_table::info(value.head);
    const glyph_table::Point anchor = up ? head.stemUp : head.stemDown;

    const qreal thickness = glyph_table::kStemThickness * stave.space;
    const qreal edge = x + anchor.x * stave.space;
    const qreal start = stave.y(note.position) - anchor.y * stave.space;
    const qreal flagY = stave.y(stemEnd(note.position));
    qreal end = flagY;
    const std::optional<Glyph> flag = up ? value.flagUp : value.flagDown;
    if (flag) {
        const auto& info = glyph_table::info(*flag);
        end -= (up ? info.stemUp.y : info.stemDown.y) * stave.space;
    }

    const QRectF stem(QPointF(up ? edge - thickness : edge, std::min(start, end)),
                      QPointF(up ? edge : edge + thickness, std::max(start, end)));
    const QRectF snapped = rectOnPixels(painter, stem);
    fill(painter, snapped);
    if (flag)
        drawGlyph(painter, font, *flag, QPointF(snapped.left(), flagY), stave.space);
    return up ? snapped.right() - edge : snapped.left() - edge;
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

qreal dotsWidth(int dots) {
    return dots > 0 ? kDotGap + (dots - 1) * kDotDistance + widthOf(Glyph::AugmentationDot) : 0;
}

/// From the head's left edge. The flags of a stem that goes up hang down to where the dots stand
/// when there are many or the dots stand higher, beside a head on a line.
qreal dotsStart(const Note& note) {
    const NoteValue& value = note_values::rowOf(note.duration);
    const qreal head = widthOf(value.head);
    const bool below = note.position % 2 != 0 && note.duration < Duration::ThirtySecond;
    if (!value.flagUp || !stemGoesUp(note.position) || below)
        return head;
    return head + widthOf(*value.flagUp) - kDotGap / 2;
}

int articulationPosition(int head, const ArticulationSign& sign, bool above, bool tied) {
    const int distance = sign.distance + (tied ? kTieRoom : 0);
    const int position = above ? head + distance : head - distance;
    const bool inStave = position >= 0 && position <= kTopLine;
    if (!sign.small)
        return above ? std::max(position, kTopLine + 2) : std::min(position, -2);
    if (inStave && position % 2 == 0)
        return above ? position + 1 : position - 1;
    return position;
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

int stemEnd(int position) {
    return stemGoesUp(position) ? std::max(position + kOctave, kMiddleLine)
                                : std::min(position - kOctave, kMiddleLine);
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
    const qreal thickness = glyph_table::kThinBarlineThickness * upper.space;
    const qreal halfLine = glyph_table::kStaffLineThickness * upper.space / 2;
    fillOnPixels(painter, QRectF(QPointF(x, upper.y(kTopLine) - halfLine),
                                 QPointF(x + thickness, lower.y(0) + halfLine)));
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

void drawGrandStaff(QPainter& painter, const MusicFont& font, const Stave& treble,
                    const Stave& bass) {
    drawLines(painter, treble);
    drawLines(painter, bass);
    drawBarline(painter, treble, bass, treble.left);
    drawBrace(painter, font, treble, bass, treble.left - kBraceGap * treble.space);
    const qreal clefX = treble.left + kClefIndent * treble.space;
    drawClef(painter, font, treble, clefX, Clef::G);
    drawClef(painter, font, bass, clefX, Clef::F);
}

void drawNote(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
              const Note& note) {
    const NoteValue& value = note_values::rowOf(note.duration);
    const qreal width = headWidth(note.duration) * stave.space;
    const qreal y = stave.y(note.position);
    const qreal headX = value.stem ? x + drawStem(painter, font, stave, x, note) : x;

    drawLedgerLines(painter, stave, headX, width, note.position);
    drawGlyph(painter, font, value.head, QPointF(headX, y), stave.space);
    drawAccidental(painter, font, stave, headX, note.position, note.accidental);
    drawDots(painter, font, stave, headX + dotsStart(note) * stave.space, note.position, note.dots);
}

void drawRest(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
              Duration duration, int dots) {
    const Glyph rest = note_values::rowOf(duration).rest;
    const int position = duration == Duration::Whole ? kWholeRestLine : kMiddleLine;
    drawGlyph(painter, font, rest, QPointF(x, stave.y(position)), stave.space);
    drawDots(painter, font, stave, x + widthOf(rest) * stave.space, kMiddleLine, dots);
}

qreal headWidth(Duration duration) {
    return widthOf(note_values::rowOf(duration).head);
}

Extent extentOf(const Note& note) {
    const NoteValue& value = note_values::rowOf(note.duration);
    Extent extent{0, headWidth(note.duration)};
    if (hasLedgerLines(note.position)) {
        extent.left = glyph_table::kLedgerLineExtension;
        extent.right += glyph_table::kLedgerLineExtension;
    }
    if (note.accidental != Accidental::None) {
        const Glyph sign = kAccidentals[static_cast<std::size_t>(note.accidental) - 1];
        extent.left = widthOf(sign) + accidentalGap(note.position);
    }
    if (value.flagUp) {
        const bool up = stemGoesUp(note.position);
        const auto& head = glyph_table::info(value.head);
        extent.right = std::max(extent.right, up ? head.stemUp.x + widthOf(*value.flagUp)
                                                 : head.stemDown.x + widthOf(*value.flagDown));
    }
    if (note.dots > 0)
        extent.right = std::max(extent.right, dotsStart(note) + dotsWidth(note.dots));
    return extent;
}

qreal restWidth(Duration duration, int dots) {
    return widthOf(note_values::rowOf(duration).rest) + dotsWidth(dots);
}

void drawAccidental(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
                    int position, Accidental accidental) {
    if (accidental == Accidental::None)
        return;
    const Glyph sign = kAccidentals[static_cast<std::size_t>(accidental) - 1];
    const qreal reach = (widthOf(sign) + accidentalGap(position)) * stave.space;
    drawGlyph(painter, font, sign, QPointF(x - reach, stave.y(position)), stave.space);
}

void drawArticulation(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
                      const Note& note, const ArticulationSign& sign, bool tied) {
    const bool above = !stemGoesUp(note.position);
    const Glyph glyph = above ? sign.above : sign.below;
    const auto& info = glyph_table::info(glyph);
    const qreal middleX = (info.southWest.x + info.northEast.x) / 2;
    const qreal middleY = (info.southWest.y + info.northEast.y) / 2;
    const int position = articulationPosition(note.position, sign, above, tied);
    drawGlyph(painter, font, glyph,
              QPointF(x + (headWidth(note.duration) / 2 - middleX) * stave.space,
                      stave.y(position) + middleY * stave.space),
              stave.space);
}

void drawTie(QPainter& painter, const Stave& stave, qreal from, qreal to, const Note& note) {
    const qreal side = stemGoesUp(note.position) ? 1 : -1;
    const qreal space = stave.space;
    const QPointF start(from + (headWidth(note.duration) - kTieOverHead) * space,
                        stave.y(note.position) + side * kTieDistance * space);
    const QPointF end(to + kTieOverHead * space, start.y());
    const qreal third = (end.x() - start.x()) / 3;
    const qreal thick = glyph_table::kTieMidpointThickness * space;
    const qreal thin = glyph_table::kTieEndpointThickness * space;
    const QPointF outer(0, side * (kTieDepth * space + thick / 2) * 4 / 3);
    const QPointF inner(0, side * (kTieDepth * space - thick / 2) * 4 / 3);

    QPainterPath path(start);
    path.cubicTo(start + QPointF(third, 0) + outer, end - QPointF(third, 0) + outer, end);
    path.cubicTo(end - QPointF(third, 0) + inner, start + QPointF(third, 0) + inner, start);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(painter.pen().color());
    painter.setPen(QPen(painter.pen().color(), thin, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
    painter.restore();
}

qreal signPosition(const Note& note) {
    const NoteValue& value = note_values::rowOf(note.duration);
    if (stemGoesUp(note.position)) {
        qreal reach = value.stem ? stemEnd(note.position) : note.position + 1;
        if (value.flagUp)
            reach += 2 * glyph_table::info(*value.flagUp).northEast.y;
        return std::max<qreal>(reach, kTopLine) + kSignDistance;
    }
    qreal reach = value.stem ? stemEnd(note.position) : note.position - 1;
    if (value.flagDown)
        reach += 2 * glyph_table::info(*value.flagDown).southWest.y;
    return std::min<qreal>(reach, 0) - kSignDistance;
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
