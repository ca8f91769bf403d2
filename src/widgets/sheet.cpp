#include "widgets/sheet.h"

#include "widgets/appearance.h"

#include <QLayout>
#include <QPainter>

namespace {

constexpr double kHeadingScale = 1.2;
constexpr int kHeadingRoom = 24;  ///< besides a line of text
constexpr int kMargin = 18;

}  // namespace

Sheet::Sheet(QWidget* parent) : QGroupBox(parent) {}

/// The style keeps room for a line of text above the layout's own margins.
void Sheet::setPage(QLayout* page) {
    page->setContentsMargins(kMargin, kHeadingRoom + kMargin / 2, kMargin, kMargin * 3 / 4);
    setLayout(page);
}

void Sheet::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QColor textColour = palette().color(QPalette::Text);
    appearance::paintCard(painter, *this);

    const int rule = contentsRect().top() + kHeadingRoom;
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.drawLine(kMargin, rule, width() - kMargin, rule);
    painter.setPen(textColour);
    QFont heading = font();
    heading.setPointSizeF(heading.pointSizeF() * kHeadingScale);
    heading.setBold(true);
    painter.setFont(heading);
    painter.drawText(QRect(kMargin, 0, width() - 2 * kMargin, rule), Qt::AlignVCenter, title());
}
