#include "shell/control_painting.h"

#include "shell/bar_parts.h"
#include "widgets/appearance.h"
#include "widgets/mark_painting.h"
#include "widgets/pixel_grid.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionSlider>

#include <algorithm>
#include <array>

namespace control_painting {
namespace {

using appearance::mixed;

/// Shares of a colour in its mixture with the background.
constexpr double kOutline = 0.56;
constexpr double kFaintOutline = 0.22;
constexpr double kGroove = 0.12;
constexpr double kHovered = 0.10;
constexpr double kPressed = 0.22;
constexpr double kChosen = 0.28;
constexpr double kDisabledFace = 0.5;

/// In units of the window.
constexpr double kCorner = 3;
constexpr double kLine = 1;
constexpr double kThickLine = 2;
constexpr double kChosenBar = 3;
constexpr double kSliderGroove = 6;
constexpr double kArrow = 4;
constexpr double kTick = 3;

struct State {
    bool enabled, hovered, pressed, focused;

    explicit State(const QStyleOption& option)
        : enabled(option.state.testFlag(QStyle::State_Enabled)),
          hovered(enabled && option.state.testFlag(QStyle::State_MouseOver)),
          pressed(enabled && option.state.testFlag(QStyle::State_Sunken)),
          focused(enabled && option.state.testFlag(QStyle::State_HasFocus)) {}
};

QColor faintColour(const QPalette& palette) {
    return mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window),
                 kFaintOutline);
}

void drawBox(QPainter& painter, const QRectF& rect, const QColor& outline, double line,
             const QBrush& face, double corner = kCorner) {
    painter.setPen(QPen(outline, pixel_grid::thickness(painter, line)));
    painter.setBrush(face);
    painter.drawRoundedRect(pixel_grid::inside(painter, rect, line), corner, corner);
}

/// The accent colour, stronger under the mouse and stronger still while it is dragged.
QColor thumbColour(const QPalette& palette, bool enabled, bool hovered, bool pressed) {
    if (!enabled)
        return faintColour(palette);
    const double share = pressed ? kPressed : hovered ? kHovered : 0;
    return mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Highlight), share);
}

/// Short lines below a slider that has them.
void drawTicks(QPainter& painter, const QStyleOptionSlider& option, const BarParts& parts) {
    const int step = option.tickInterval > 0 ? option.tickInterval : option.pageStep;
    if (!option.subControls.testFlag(QStyle::SC_SliderTickmarks) || step <= 0)
        return;
    const int room = parts.groove.width() - parts.thumb.width();
    for (int value = option.minimum; value <= option.maximum; value += step) {
        const int x = QStyle::sliderPositionFromValue(option.minimum, option.maximum, value, room) +
                      parts.groove.left() + parts.thumb.width() / 2;
        const QRectF tick(x, option.rect.bottom() - kTick, kLine, kTick);
        painter.fillRect(pixel_grid::snapped(painter, tick), outlineColour(option.palette));
    }
}

class Saved {
public:
    explicit Saved(QPainter& painter) : painter_(painter) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
    }
    ~Saved() { painter_.restore(); }
    Q_DISABLE_COPY_MOVE(Saved)

private:
    QPainter& painter_;
};

}  // namespace

QColor outlineColour(const QPalette& palette) {
    return mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), kOutline);
}

void paintButton(QPainter& painter, const QStyleOption& option, bool chosen) {
    const Saved saved(painter);
    const State state(option);
    const QPalette& palette = option.palette;
    const QColor accent = palette.color(QPalette::Highlight);
    const QColor text = palette.color(QPalette::ButtonText);
    QColor face = palette.color(QPalette::Button);
    if (chosen)
        face = mixed(accent, face, kChosen);
    if (state.pressed)
        face = mixed(text, face, kPressed);
    else if (state.hovered)
        face = mixed(accent, face, kHovered);
    const QRectF rect(option.rect);
    if (!state.enabled) {
        drawBox(painter, rect, faintColour(palette), kLine,
                mixed(face, palette.color(QPalette::Window), kDisabledFace));
        return;
    }
    drawBox(painter, rect, state.hovered ? accent : outlineColour(palette),
            state.pressed ? kThickLine : kLine, face);
    if (chosen) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(accent);
        painter.drawRect(
            pixel_grid::snapped(painter, {rect.left() + kCorner, rect.bottom() - kLine - kChosenBar,
                                          rect.width() - 2 * kCorner, kChosenBar}));
    }
    if (state.focused)
        drawBox(painter, rect, accent, kThickLine, Qt::NoBrush);
}

void paintFrame(QPainter& painter, const QStyleOption& option) {
    const Saved saved(painter);
    const State state(option);
    const QPalette& palette = option.palette;
    drawBox(painter, option.rect,
            state.focused   ? palette.color(QPalette::Highlight)
            : state.enabled ? outlineColour(palette)
                            : faintColour(palette),
            state.focused ? kThickLine : kLine, Qt::NoBrush, kCorner - kLine);
}

void paintHoveredRow(QPainter& painter, const QStyleOption& option) {
    const QPalette& palette = option.palette;
    painter.fillRect(option.rect, mixed(palette.color(QPalette::Highlight),
                                        palette.color(QPalette::Base), kHovered));
}

void paintMenuTitle(QPainter& painter, const QStyleOption& option) {
    const Saved saved(painter);
    const QColor accent = option.palette.color(QPalette::Highlight);
    QColor face = accent;
    face.setAlphaF(kHovered);
    drawBox(painter, option.rect, accent, kLine, face);
}

void paintCheckBox(QPainter& painter, const QStyleOption& option) {
    const Saved saved(painter);
    const State state(option);
    const QPalette& palette = option.palette;
    const bool on = option.state.testFlag(QStyle::State_On);
    const QColor accent = palette.color(QPalette::Highlight);
    const QRectF rect(option.rect);
    const QColor outline = !state.enabled                         ? faintColour(palette)
                           : on || state.hovered || state.focused ? accent
                                                                  : outlineColour(palette);
    const QColor face = on && state.enabled ? accent : palette.color(QPalette::Base);
    drawBox(painter, rect, outline, state.pressed || state.hovered ? kThickLine : kLine, face,
            kCorner - kLine);
    if (on) {
        paintMark(painter, rect, Mark::Tick,
                  state.enabled ? palette.color(QPalette::HighlightedText)
                                : palette.color(QPalette::WindowText));
    }
}

void paintArrow(QPainter& painter, const QRectF& rect, double angle, const QColor& colour) {
    const Saved saved(painter);
    painter.translate(rect.center());
    painter.rotate(angle);
    const std::array head{QPointF(-kArrow, kArrow / 2), QPointF(0, -kArrow / 2),
                          QPointF(kArrow, kArrow / 2)};
    painter.setPen(QPen(colour, kThickLine, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(head.data(), static_cast<int>(head.size()));
}

void paintScrollBar(QPainter& painter, const QStyleOptionSlider& option, const BarParts& parts,
                    bool setsValue) {
    const Saved saved(painter);
    const State state(option);
    const QPalette& palette = option.palette;
    const auto over = [&](QStyle::SubControl part) {
        return option.activeSubControls.testFlag(part);
    };
    painter.fillRect(option.rect, palette.color(QPalette::Window));
    const bool across = option.orientation == Qt::Horizontal;
    const QColor groove =
        mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), kGroove);
    const QColor line = state.enabled ? outlineColour(palette) : faintColour(palette);
    drawBox(painter, option.rect, setsValue ? line : groove, kLine, groove);
    for (const bool more : {false, true}) {
        const auto part = more ? QStyle::SC_ScrollBarAddLine : QStyle::SC_ScrollBarSubLine;
        const QRectF arrow = more ? parts.more : parts.less;
        if (over(part) && state.enabled) {
            const double share = state.pressed ? kPressed : kHovered;
            drawBox(painter, arrow, palette.color(QPalette::Highlight), kLine,
                    mixed(palette.color(QPalette::WindowText), groove, share));
        }
        const double angle = across ? (more ? 90 : -90) : (more ? 180 : 0);
        paintArrow(painter, arrow, angle,
                   state.enabled ? palette.color(QPalette::WindowText)
                                 : palette.color(QPalette::Disabled, QPalette::WindowText));
    }
    const bool held = over(QStyle::SC_ScrollBarSlider);
    const QColor thumb =
        setsValue || held
            ? thumbColour(palette, state.enabled, state.hovered && held, state.pressed && held)
            : line;
    drawBox(painter, parts.thumb, thumb, kLine, thumb);
    if (state.focused)
        drawBox(painter, option.rect, palette.color(QPalette::Highlight), kThickLine, Qt::NoBrush);
}

void paintSlider(QPainter& painter, const QStyleOptionSlider& option, const BarParts& parts) {
    const Saved saved(painter);
    const State state(option);
    const QPalette& palette = option.palette;
    const bool held = option.activeSubControls.testFlag(QStyle::SC_SliderHandle);
    const QColor thumb = thumbColour(palette, state.enabled, state.hovered, state.pressed && held);
    const QRectF handle(parts.thumb);
    QRectF groove(parts.groove.left(), handle.center().y() - kSliderGroove / 2,
                  parts.groove.width(), kSliderGroove);
    const double round = kSliderGroove / 2;
    drawTicks(painter, option, parts);
    drawBox(painter, groove, state.enabled ? outlineColour(palette) : faintColour(palette), kLine,
            mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), kGroove),
            round);
    groove.setRight(handle.center().x());
    drawBox(painter, groove, thumb, kLine, thumb, round);
    const double side = std::min(handle.width(), handle.height());
    QRectF disc(0, 0, side, side);
    disc.moveCenter(handle.center());
    const double ring = state.pressed && held ? kThickLine : kLine;
    drawBox(painter, disc, palette.color(QPalette::Base), ring, thumb, side / 2);
    if (state.focused)
        drawBox(painter, option.rect, palette.color(QPalette::Highlight), kThickLine, Qt::NoBrush);
}

}  // namespace control_painting
