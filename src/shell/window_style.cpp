#include "shell/window_style.h"

#include "widgets/appearance.h"
#include "widgets/level_bar.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QStyleOption>

namespace {

constexpr double kLetterSize = 0.68;  ///< of a badge's side
constexpr double kOutlineShare = 0.38;
constexpr double kOutlineCorner = 2;
constexpr int kShortestSlider = 10;

/// A disc in the accent colour with a letter.
QIcon badge(QChar letter) {
    const QPalette palette = QApplication::palette();
    QIcon icon;
    for (const int side : {32, 48, 64, 96, 128}) {
        QPixmap picture(side, side);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette.color(QPalette::Highlight));
        painter.drawEllipse(QRectF(picture.rect()).adjusted(1, 1, -1, -1));
        QFont font = QApplication::font();
        font.setPixelSize(qRound(kLetterSize * side));
        font.setBold(true);
        painter.setFont(font);
        painter.setPen(palette.color(QPalette::HighlightedText));
        painter.drawText(picture.rect(), Qt::AlignCenter, letter);
        icon.addPixmap(picture);
    }
    return icon;
}

void drawOutline(QPainter& painter, const QRectF& rect, const QColor& colour) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(colour);
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), kOutlineCorner, kOutlineCorner);
    painter.restore();
}

}  // namespace

/// The windows' own buttons have no icons, so those of the standard boxes have none either.
int WindowStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* answer) const {
    return hint == SH_DialogButtonBox_ButtonsHaveIcons
               ? 0
               : QProxyStyle::styleHint(hint, option, widget, answer);
}

/// A short bar still leaves its slider room to move.
int WindowStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                             const QWidget* widget) const {
    if (metric == PM_ScrollBarSliderMin && qobject_cast<const LevelBar*>(widget))
        return kShortestSlider;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

QIcon WindowStyle::standardIcon(StandardPixmap icon, const QStyleOption* option,
                                const QWidget* widget) const {
    if (icon == SP_MessageBoxInformation)
        return badge(QLatin1Char('i'));
    if (icon == SP_MessageBoxQuestion)
        return badge(QLatin1Char('?'));
    return QProxyStyle::standardIcon(icon, option, widget);
}

/// Fusion's outlines are darker than the background, so that they cannot be seen on a dark one; and
/// it does not show that a list has the focus, as it does for a line of text.
void WindowStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool list = element == PE_Frame && qobject_cast<const QAbstractItemView*>(widget);
    const bool label = element == PE_Frame && (qobject_cast<const QLabel*>(widget) ||
                                               qobject_cast<const QAbstractButton*>(widget));
    const bool box = element == PE_IndicatorCheckBox || element == PE_FrameLineEdit;
    const bool focused = option->state.testFlag(State_HasFocus);
    const QColor background = option->palette.color(QPalette::Window);
    if (list && focused)
        drawOutline(*painter, option->rect, option->palette.color(QPalette::Highlight));
    else if ((list || label || box) && !focused && background.lightness() < 128)
        drawOutline(*painter, option->rect,
                    appearance::mixed(option->palette.color(QPalette::WindowText), background,
                                      kOutlineShare));
}
