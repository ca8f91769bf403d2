#include "composer/staff/staff_marks.h"

#include "composer/notation/system_ink.h"
#include "composer/staff/staff_page.h"
#include "widgets/appearance.h"
#include "widgets/engraving.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

#include <algorithm>

namespace staff_marks {
namespace {

constexpr int kNumbersEvery = 5;
constexpr double kNumberSize = 0.72;  ///< of the widget's font
constexpr double kNumberInk = 0.72;
constexpr double kCurrentTint = 0.24;

/// In staff spaces.
constexpr double kFlagAir = 0.2;  ///< to the ink below it
constexpr double kFlag = 1.4;
constexpr double kLine = 0.2;
constexpr double kOver = 2.2;  ///< from the treble staff to the flag's top
constexpr double kOverClef = 1.7;

void chooseNumberFont(QPainter& painter, const QWidget& widget) {
    painter.setFont(numberFont(widget));
    painter.setPen(appearance::mixed(widget.palette().color(QPalette::Text),
                                     widget.palette().color(QPalette::Base), kNumberInk));
}

}  // namespace

QFont numberFont(const QWidget& widget) {
    QFont font = widget.font();
    font.setPixelSize(std::max(9, qRound(kNumberSize * widget.fontInfo().pixelSize())));
    return font;
}

void paintBarNumber(QPainter& painter, const QWidget& widget, const StaffPage& page,
                    std::size_t system) {
    const notation::System& shown = page.system(system);
    const auto place = page.placeOf(system);
    chooseNumberFont(painter, widget);
    painter.drawText(QPointF(place.left, place.top + (shown.above / 2 - kOverClef) * place.space),
                     shown.barNumberText());
}

void paintNumbers(QPainter& painter, const QWidget& widget, const StaffPage& page,
                  std::size_t system) {
    chooseNumberFont(painter, widget);
    const QFontMetricsF metrics(painter.font());
    const notation::System& shown = page.system(system);
    const auto place = page.placeOf(system);
    const qreal ink = shown.bottomLine(notation::Staff::Bass) + shown.ink;
    const qreal baseline = place.top + ink * place.space / 2 + metrics.ascent();
    for (const notation::Symbol& symbol : shown.symbols) {
        const int number = symbol.entry + 1;
        const bool first = symbol.entry == shown.start.entry;
        if (!symbol.opensEntry || (!first && number % kNumbersEvery != 0))
            continue;
        const QString text = QString::number(number);
        const double middle = symbol.x + engraving::headWidth(symbol.value.duration) / 2;
        painter.drawText(QPointF(place.x(middle) - metrics.horizontalAdvance(text) / 2, baseline),
                         text);
    }
}

void paintRange(QPainter& painter, const QWidget& widget, const StaffPage& page, std::size_t system,
                const PlayRange& range) {
    const notation::System& shown = page.system(system);
    const auto place = page.placeOf(system);
    const qreal space = place.space;
    const qreal trebleTop = place.top + shown.above * space / 2;
    const qreal bottom = place.top + shown.bottomLine(notation::Staff::Bass) * space / 2 + space;
    const QColor colour = widget.palette().color(QPalette::Highlight);
    painter.setPen(colour);
    const auto mark = [&](double x, int inwards) {
        const double tip = x + inwards * kFlag;
        const engraving::Reach ink = notation::reachBetween(
            notation::inksOf(shown), notation::Staff::Treble, std::min(x, tip), std::max(x, tip));
        const double over = (ink.high - engraving::kTopLine) / 2 + kFlagAir + kFlag;
        const qreal top = trebleTop - std::max(kOver, over) * space;
        const qreal line = place.x(x);
        engraving::fillOnPixels(painter,
                                QRectF(line - kLine * space / 2, top, kLine * space, bottom - top));
        QPainterPath flag(QPointF(line, top));
        flag.lineTo(place.x(tip), top + kFlag * space / 2);
        flag.lineTo(line, top + kFlag * space);
        flag.closeSubpath();
        painter.fillPath(flag, colour);
    };
    if (shown.opens(range.first))
        mark(shown.stretchOf(range.first).left, 1);
    if (shown.closes(range.last))
        mark(shown.stretchOf(range.last).right, -1);
}

void paintCurrent(QPainter& painter, const QWidget& widget, const StaffPage& page,
                  std::size_t system, int entry) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(appearance::mixed(widget.palette().color(QPalette::Highlight),
                                       widget.palette().color(QPalette::Base), kCurrentTint));
    painter.drawRoundedRect(page.rectOf(system, entry), 4, 4);
}

}  // namespace staff_marks
