#include "shell/window_style.h"

#include "shell/bar_parts.h"
#include "shell/control_painting.h"
#include "widgets/value_bar.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyleOption>
#include <QStyleOptionSlider>

#include <algorithm>

namespace {

constexpr double kLetterSize = 0.68;  ///< of a badge's side
constexpr int kLowestControl = 24;
constexpr double kIconInLines = 1.2;
constexpr double kButtonMargins = 1.1;  ///< on both sides of its text, in lines
constexpr int kValueBarExtent = 24;
constexpr int kScrollBarExtent = 16;
constexpr int kSliderThumb = 18;
constexpr int kCheckBoxSide = 18;

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

void drawArrow(QStyle::PrimitiveElement element, const QStyleOption& option, QPainter& painter) {
    const double angle = element == QStyle::PE_IndicatorArrowUp      ? 0
                         : element == QStyle::PE_IndicatorArrowRight ? 90
                         : element == QStyle::PE_IndicatorArrowDown  ? 180
                                                                     : -90;
    const bool enabled = option.state.testFlag(QStyle::State_Enabled);
    control_painting::paintArrow(
        painter, option.rect, angle,
        option.palette.color(enabled ? QPalette::Active : QPalette::Disabled,
                             QPalette::ButtonText));
}

bool isHovered(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_Enabled) &&
           option.state.testFlag(QStyle::State_MouseOver);
}

bool isValueBar(const QWidget* widget) {
    return qobject_cast<const ValueBar*>(widget) != nullptr;
}

}  // namespace

/// Lists are not told by the toolkit which row the mouse is over.
void WindowStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (auto* list = qobject_cast<QAbstractItemView*>(widget))
        list->viewport()->setAttribute(Qt::WA_Hover);
}

/// The windows' own buttons have no icons, so those of the standard boxes have none either.
int WindowStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* answer) const {
    return hint == SH_DialogButtonBox_ButtonsHaveIcons
               ? 0
               : QProxyStyle::styleHint(hint, option, widget, answer);
}

int WindowStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                             const QWidget* widget) const {
    switch (metric) {
        case PM_ScrollBarExtent:
            return isValueBar(widget) ? kValueBarExtent : kScrollBarExtent;
        case PM_ButtonIconSize:
            return widget ? qRound(kIconInLines * widget->fontMetrics().height())
                          : QProxyStyle::pixelMetric(metric, option, widget);
        case PM_SliderThickness:
            return kLowestControl;
        case PM_SliderControlThickness:
        case PM_SliderLength:
            return kSliderThumb;
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
            return kCheckBoxSide;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QSize WindowStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                    const QSize& contents, const QWidget* widget) const {
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    switch (type) {
        case CT_PushButton: {
            const int margins = button ? qRound(kButtonMargins * button->fontMetrics.height()) : 0;
            // The toolkit would make a short text's button with an icon wider.
            if (button && !button->icon.isNull())
                return {contents.width() + margins, std::max(size.height(), kLowestControl)};
            return size.expandedTo({contents.width() + margins, kLowestControl});
        }
        case CT_ToolButton:
        case CT_CheckBox:
        case CT_ComboBox:
        case CT_LineEdit:
            return size.expandedTo({0, kLowestControl});
        default:
            return size;
    }
}

QRect WindowStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                  SubControl part, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || !bar || !isValueBar(widget))
        return QProxyStyle::subControlRect(control, option, part, widget);
    const BarParts parts = valueBarParts(*bar);
    const auto between = [bar](const QRect& from, const QRect& to) {
        return bar->orientation == Qt::Horizontal ? QRect(QPoint(from.right() + 1, from.top()),
                                                          QPoint(to.left() - 1, from.bottom()))
                                                  : QRect(QPoint(from.left(), from.bottom() + 1),
                                                          QPoint(from.right(), to.top() - 1));
    };
    switch (part) {
        case SC_ScrollBarSubLine:
            return parts.less;
        case SC_ScrollBarAddLine:
            return parts.more;
        case SC_ScrollBarSlider:
            return parts.thumb;
        case SC_ScrollBarSubPage:
            return between(parts.less, parts.thumb);
        case SC_ScrollBarAddPage:
            return between(parts.thumb, parts.more);
        case SC_ScrollBarGroove:
            return parts.groove;
        default:
            return {};
    }
}

QIcon WindowStyle::standardIcon(StandardPixmap icon, const QStyleOption* option,
                                const QWidget* widget) const {
    if (icon == SP_MessageBoxInformation)
        return badge(QLatin1Char('i'));
    if (icon == SP_MessageBoxQuestion)
        return badge(QLatin1Char('?'));
    return QProxyStyle::standardIcon(icon, option, widget);
}

void WindowStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const {
    switch (element) {
        case PE_PanelButtonCommand:
        case PE_PanelButtonTool:
            control_painting::paintButton(*painter, *option, option->state.testFlag(State_On));
            return;
        case PE_IndicatorCheckBox:
            control_painting::paintCheckBox(*painter, *option);
            return;
        case PE_FrameFocusRect:
            // Buttons have a ring of their own.
            if (qobject_cast<const QPushButton*>(widget) || qobject_cast<const QComboBox*>(widget))
                return;
            break;
        case PE_PanelItemViewItem:
            if (isHovered(*option) && !option->state.testFlag(State_Selected))
                control_painting::paintHoveredRow(*painter, *option);
            break;
        case PE_IndicatorArrowUp:
        case PE_IndicatorArrowRight:
        case PE_IndicatorArrowDown:
        case PE_IndicatorArrowLeft:
            drawArrow(element, *option, *painter);
            return;
        default:
            break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool list = element == PE_Frame && qobject_cast<const QAbstractItemView*>(widget);
    const bool label = element == PE_Frame && (qobject_cast<const QLabel*>(widget) ||
                                               qobject_cast<const QAbstractButton*>(widget));
    if (list || label || element == PE_FrameLineEdit)
        control_painting::paintFrame(*painter, *option);
}

void WindowStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    constexpr State kCurrent = State_Enabled | State_Selected;
    const bool title = element == CE_MenuBarItem && !option->state.testFlag(State_Sunken) &&
                       (option->state & kCurrent) == kCurrent;
    QProxyStyle::drawControl(element, option, painter, widget);
    if (title)
        control_painting::paintMenuTitle(*painter, *option);
}

void WindowStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                     QPainter* painter, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (control == CC_ScrollBar && bar)
        drawScrollBar(*bar, *painter, widget);
    else if (control == CC_Slider && bar)
        drawSlider(*bar, *painter, widget);
    else if (control == CC_ComboBox && combo && !combo->editable)
        drawComboBox(*option, *painter, widget);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void WindowStyle::drawComboBox(const QStyleOptionComplex& option, QPainter& painter,
                               const QWidget* widget) const {
    control_painting::paintButton(painter, option, false);
    const bool enabled = option.state.testFlag(State_Enabled);
    control_painting::paintArrow(
        painter, subControlRect(CC_ComboBox, &option, SC_ComboBoxArrow, widget), 180,
        option.palette.color(enabled ? QPalette::Active : QPalette::Disabled,
                             QPalette::ButtonText));
}

void WindowStyle::drawSlider(const QStyleOptionSlider& option, QPainter& painter,
                             const QWidget* widget) const {
    BarParts parts;
    parts.groove = subControlRect(CC_Slider, &option, SC_SliderGroove, widget);
    parts.thumb = subControlRect(CC_Slider, &option, SC_SliderHandle, widget);
    control_painting::paintSlider(painter, option, parts);
}

void WindowStyle::drawScrollBar(const QStyleOptionSlider& option, QPainter& painter,
                                const QWidget* widget) const {
    const auto part = [&](SubControl which) {
        return subControlRect(CC_ScrollBar, &option, which, widget);
    };
    control_painting::paintScrollBar(painter, option,
                                     {part(SC_ScrollBarGroove), part(SC_ScrollBarSlider),
                                      part(SC_ScrollBarSubLine), part(SC_ScrollBarAddLine)},
                                     isValueBar(widget));
}
