#include "widgets/action_icon.h"

#include "core/note_values.h"
#include "widgets/music_font.h"

#include <QAbstractButton>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

#include <cmath>
#include <numbers>

namespace {

/// Icons are drawn on a square of so many units, with lines so thick.
constexpr qreal kSide = 16;
constexpr qreal kLine = 1.6;
constexpr int kTeeth = 8;
constexpr qreal kPlace = 1.2;  ///< in sides of the icon; the rest keeps the text away

QPainterPath polygon(std::initializer_list<QPointF> points, bool closed) {
    QPainterPath path;
    for (const QPointF& point : points) {
        if (path.elementCount() == 0)
            path.moveTo(point);
        else
            path.lineTo(point);
    }
    if (closed)
        path.closeSubpath();
    return path;
}

QPainterPath lines(std::initializer_list<QLineF> all) {
    QPainterPath path;
    for (const QLineF& line : all) {
        path.moveTo(line.p1());
        path.lineTo(line.p2());
    }
    return path;
}

QPainterPath bin() {
    QPainterPath path = lines({{2.5, 4, 13.5, 4}, {6.5, 7, 6.5, 11.5}, {9.5, 7, 9.5, 11.5}});
    path.addPath(polygon({{4, 4}, {4.7, 14}, {11.3, 14}, {12, 4}}, false));
    path.addPath(polygon({{6, 4}, {6, 2}, {10, 2}, {10, 4}}, false));
    return path;
}

QPainterPath backspace() {
    QPainterPath path = polygon({{1.5, 8}, {5.5, 3}, {14.5, 3}, {14.5, 13}, {5.5, 13}}, true);
    path.addPath(lines({{7.5, 5.8, 12, 10.2}, {12, 5.8, 7.5, 10.2}}));
    return path;
}

QPainterPath duplicate() {
    QPainterPath path;
    path.addRoundedRect(2, 2, 8, 8, 1, 1);
    path.addPath(polygon({{13.5, 6}, {13.5, 13.5}, {6, 13.5}}, false));
    return path;
}

QPainterPath newFolder() {
    QPainterPath path =
        polygon({{1.5, 13}, {1.5, 3.5}, {6, 3.5}, {7.5, 5.5}, {14.5, 5.5}, {14.5, 13}}, true);
    path.addPath(lines({{8, 7.2, 8, 11.4}, {5.9, 9.3, 10.1, 9.3}}));
    return path;
}

QPainterPath update() {
    QPainterPath path;
    path.arcMoveTo(2.5, 2.5, 11, 11, 30);
    path.arcTo(2.5, 2.5, 11, 11, 30, 290);
    path.addPath(polygon({{13.8, 1.6}, {13, 5.4}, {9.4, 4.4}}, false));
    return path;
}

QPainterPath settings() {
    QPainterPath path;
    path.addEllipse(QPointF(8, 8), 4.2, 4.2);
    path.addEllipse(QPointF(8, 8), 1.2, 1.2);
    for (int tooth = 0; tooth < kTeeth; ++tooth) {
        const qreal angle = 2 * std::numbers::pi * tooth / kTeeth;
        const QPointF out(std::cos(angle), std::sin(angle));
        path.moveTo(QPointF(8, 8) + 4.8 * out);
        path.lineTo(QPointF(8, 8) + 6.6 * out);
    }
    return path;
}

QPainterPath outlineOf(ActionIcon icon) {
    switch (icon) {
        case ActionIcon::Backspace:
            return backspace();
        case ActionIcon::Clear:
            return lines({{3, 3, 13, 13}, {13, 3, 3, 13}});
        case ActionIcon::Insert:
            return lines({{8, 2.5, 8, 13.5}, {2.5, 8, 13.5, 8}});
        case ActionIcon::Duplicate:
            return duplicate();
        case ActionIcon::Edit:
            return polygon({{2.5, 13.5}, {3.3, 10}, {11, 2.3}, {13.7, 5}, {6, 12.7}}, true);
        case ActionIcon::Delete:
            return bin();
        case ActionIcon::NewFolder:
            return newFolder();
        case ActionIcon::Update:
            return update();
        case ActionIcon::Settings:
            return settings();
        default:
            return {};
    }
}

/// A glyph of the music font so many units high, its left edge and its middle at a point.
QPainterPath glyph(glyph_table::Glyph which, qreal height, QPointF place) {
    const QPainterPath& path = MusicFont::shared().outline(which);
    const QRectF box = path.boundingRect();
    const qreal scale = height / box.height();
    return QTransform()
        .translate(place.x(), place.y())
        .scale(scale, scale)
        .translate(-box.left(), -box.center().y())
        .map(path);
}

QPainterPath faceOf(ActionIcon icon) {
    const note_values::NoteValue& crotchet = note_values::rowOf(note_values::Duration::Quarter);
    QPainterPath path;
    switch (icon) {
        case ActionIcon::Play:
            return polygon({{3.5, 2}, {3.5, 14}, {14, 8}}, true);
        case ActionIcon::Stop:
            path.addRoundedRect(3, 3, 10, 10, 1, 1);
            return path;
        case ActionIcon::Note:
            path = glyph(crotchet.head, 5.2, {3.5, 12.2});
            path.addRect(path.boundingRect().right() - kLine, 1, kLine, 11);
            path.setFillRule(Qt::WindingFill);
            return path;
        case ActionIcon::Rest:
            return glyph(crotchet.rest, 14.5, {5.4, 8});
        default:
            return {};
    }
}

class Engine : public QIconEngine {
public:
    explicit Engine(ActionIcon icon) : icon_(icon) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const QColor colour = QGuiApplication::palette().color(
            mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active, QPalette::ButtonText);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const qreal unit = rect.height() / (kPlace * kSide);
        painter->translate(rect.left(), rect.center().y() - unit * kSide / 2);
        painter->scale(unit, unit);
        draw(*painter, colour);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }
    QIconEngine* clone() const override { return new Engine(*this); }

private:
    void draw(QPainter& painter, const QColor& colour) const {
        painter.fillPath(faceOf(icon_), colour);
        painter.strokePath(outlineOf(icon_),
                           QPen(colour, kLine, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }

    ActionIcon icon_;
};

}  // namespace

QIcon actionIcon(ActionIcon icon) {
    return QIcon(new Engine(icon));
}

void setActionIcon(QAbstractButton& button, ActionIcon icon) {
    button.setIcon(actionIcon(icon));
}
