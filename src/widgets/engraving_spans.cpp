#include "widgets/engraving_spans.h"

#include <QPainter>
#include <QPainterPath>
#include <QRectF>

#include <algorithm>
#include <cmath>

namespace engraving {
namespace {

constexpr qreal kBracketHook = 0.7;
constexpr qreal kBracketGap = 0.85;  ///< from the middle of the "3" to the line beside it

}  // namespace

void drawTie(QPainter& painter, const Stave& stave, qreal left, qreal right,
             const TieCurve& curve) {
    const qreal space = stave.space;
    const QPointF start(left, stave.y(curve.ends));
    const QPointF end(right, start.y());
    const qreal third = (right - left) / 3;
    const qreal thick = glyph_table::kTieMidpointThickness * space;
    const qreal thin = glyph_table::kTieEndpointThickness * space;
    const qreal depth = stave.y(curve.middle) - start.y();
    const qreal halfStroke = std::copysign(thick / 2, depth);
    const QPointF outer(0, (depth + halfStroke) * 4 / 3);
    const QPointF inner(0, (depth - halfStroke) * 4 / 3);

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

void drawTieOfNotes(QPainter& painter, const Stave& stave, qreal from, qreal to, const Note& note) {
    const TieCurve curve = tieOverHeads(note, !stemGoesUp(note));
    drawTie(painter, stave, from + curve.from * stave.space, to + curve.to * stave.space, curve);
}

void drawBeam(QPainter& painter, const Stave& stave, QPointF from, QPointF to, bool stemsUp) {
    const QPointF depth(0, (stemsUp ? 1 : -1) * glyph_table::kBeamThickness * stave.space);
    QPainterPath path(from);
    path.lineTo(to);
    path.lineTo(to + depth);
    path.lineTo(from + depth);
    path.closeSubpath();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, painter.pen().color());
    painter.restore();
}

void drawTripletBracket(QPainter& painter, const MusicFont& font, const Stave& stave, qreal left,
                        qreal right, qreal position, bool above) {
    const qreal middle = (left + right) / 2;
    const qreal gap = kBracketGap * stave.space;
    const qreal thickness = glyph_table::kTupletBracketThickness * stave.space;
    const qreal y = stave.y(position);
    const qreal hook = (above ? 1 : -1) * kBracketHook * stave.space;
    drawTripletSign(painter, font, stave, middle, position);
    const auto stroke = [&](qreal x1, qreal y1, qreal x2, qreal y2) {
        fillOnPixels(painter, QRectF(QPointF(std::min(x1, x2), std::min(y1, y2)),
                                     QPointF(std::max(x1, x2), std::max(y1, y2))));
    };
    if (middle - gap > left) {
        stroke(left, y - thickness / 2, middle - gap, y + thickness / 2);
        stroke(middle + gap, y - thickness / 2, right, y + thickness / 2);
        stroke(left, y, left + thickness, y + hook);
        stroke(right - thickness, y, right, y + hook);
    }
}

}  // namespace engraving
