#include "widgets/degree_label.h"

#include <QPainter>

namespace {

constexpr double kLineHeight = 1.9;

}  // namespace

DegreeLabel::DegreeLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

QString DegreeLabel::numeral() const {
    return text().simplified().section(QLatin1Char(' '), 0, 0);
}

QString DegreeLabel::name() const {
    return text().simplified().section(QLatin1Char(' '), 1);
}

/// Wide enough for the longest numeral.
int DegreeLabel::nameColumn() const {
    return fontMetrics().horizontalAdvance(QStringLiteral("VIII   "));
}

QSize DegreeLabel::sizeHint() const {
    return {nameColumn() + fontMetrics().horizontalAdvance(name()),
            qRound(kLineHeight * fontMetrics().height())};
}

void DegreeLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.drawText(rect(), Qt::AlignVCenter, numeral());
    painter.drawText(rect().adjusted(nameColumn(), 0, 0, 0), Qt::AlignVCenter, name());
}
