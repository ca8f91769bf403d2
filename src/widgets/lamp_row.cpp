#include "widgets/lamp_row.h"

#include "core/lamp_colours.h"
#include "platform/user_text.h"
#include "widgets/parts_accessible.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>

#include <algorithm>

namespace {

using lamp_colours::Colour;

/// The lamp's share of its place in the row; the rest is the gap to its neighbours.
constexpr double kLampShare = 0.86;
constexpr int kRimDarkness = 160;  ///< of the lamp's colour, in percent
constexpr double kSmallestPlace = 0.5;
constexpr double kUsualPlace = 0.8;
constexpr double kLowestRow = 1.8;
constexpr double kUsualRow = 5;  ///< this and those above in heights of a text line

QColor fromBgr(Colour colour) {
    return QColor(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                  static_cast<int>(colour >> 16 & 0xFF));
}

QString nameOf(Colour colour) {
    const auto* found = std::find_if(
        lamp_colours::kAll.begin(), lamp_colours::kAll.end(),
        [colour](const lamp_colours::NamedColour& entry) { return entry.colour == colour; });
    return found == lamp_colours::kAll.end() ? UserText::tr("accesa") : UserText::tr(found->name);
}

}  // namespace

class Lamp : public QLabel {
public:
    Lamp(int index, QWidget* parent) : QLabel(parent), index_(index) {
        setObjectName(QStringLiteral("lblPuls_%1").arg(index));
        setColour(lamp_colours::kUnlit);
    }

    void setColour(Colour colour) {
        if (colour == colour_)
            return;
        colour_ = colour;
        QPalette lit = palette();
        lit.setColor(QPalette::Window, fromBgr(colour));
        setPalette(lit);
        setAccessibleName(UserText::tr("Pulsazione %1: %2").arg(index_ + 1).arg(nameOf(colour)));
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor colour = palette().color(QPalette::Window);
        painter.setBrush(colour);
        painter.setPen(colour.darker(kRimDarkness));
        painter.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    }

private:
    int index_;
    Colour colour_ = 0xFFFFFFFF;  ///< no colour, so that the first one is taken
};

LampRow::LampRow(QWidget* parent) : QWidget(parent), lamps_{} {
    installPartsAccessible<LampRow, QAccessible::Grouping>();
    setAccessibleName(UserText::tr("Pulsazioni"));
    for (int i = 0; i < kCount; ++i)
        lamps_[static_cast<std::size_t>(i)] = new Lamp(i, this);
    arrange();
}

void LampRow::setVisibleLamps(int count) {
    visible_ = std::clamp(count, 0, kCount);
    for (int i = 0; i < kCount; ++i)
        lamps_[static_cast<std::size_t>(i)]->setVisible(i < visible_);
    arrange();
}

void LampRow::setColour(int lamp, Colour colour) {
    if (lamp >= 0 && lamp < kCount)
        lamps_[static_cast<std::size_t>(lamp)]->setColour(colour);
}

void LampRow::setAllColours(Colour colour) {
    for (Lamp* lamp : lamps_)
        lamp->setColour(colour);
}

QSize LampRow::sizeHint() const {
    const int line = fontMetrics().height();
    return {qRound(kCount * kUsualPlace * line), qRound(kUsualRow * line)};
}

QSize LampRow::minimumSizeHint() const {
    const int line = fontMetrics().height();
    return {qRound(kCount * kSmallestPlace * line), qRound(kLowestRow * line)};
}

void LampRow::resizeEvent(QResizeEvent* /*event*/) {
    arrange();
}

void LampRow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    QWidget::changeEvent(event);
}

/// In one row, or in two where the lamps are larger so.
void LampRow::arrange() {
    const int count = std::max(visible_, 1);
    const auto inRow = [count](int rows) { return (count + rows - 1) / rows; };
    const auto placeOf = [&](int rows) {
        return std::min(height() / static_cast<double>(rows),
                        width() / static_cast<double>(inRow(rows)));
    };
    const int rows = placeOf(2) > placeOf(1) ? 2 : 1;
    const double place = placeOf(rows);
    const int side = std::max(1, static_cast<int>(place * kLampShare));
    const double margin = (place - side) / 2;
    for (int i = 0; i < kCount; ++i) {
        const int row = std::min(i / inRow(rows), rows - 1);
        const double top = row * place + (height() - rows * place) / 2;
        lamps_[static_cast<std::size_t>(i)]->setGeometry(
            qRound((i - row * inRow(rows)) * place + margin), qRound(top + margin), side, side);
    }
}
