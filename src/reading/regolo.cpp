#include "reading/regolo.h"

#include "platform/user_text.h"
#include "reading/regolo_accessible.h"
#include "reading/regolo_marker.h"
#include "reading/ruler.h"
#include "widgets/announcement.h"
#include "widgets/engraving.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr auto kSteps = staff_step::all();
constexpr int kMiddleC = pitch::kMiddleCStep + staff_step::kTrebleShift;
constexpr int kOctave = pitch::kDegrees;

/// Shares of the ruler's width.
constexpr double kLineX = 0.78;
constexpr double kStaffLineTick = 0.52;
constexpr double kLedgerLineTick = 0.36;
constexpr double kSpaceTick = 0.24;

constexpr double kTickThickness = 0.25;  ///< in half staff spaces
constexpr double kSignSize = 0.8;
constexpr double kHighlightOpacity = 0.25;
constexpr double kDisabledOpacity = 0.35;

double tickLength(int step) {
    const int position = staff_layout::positionOnStave(step);
    if (position % 2 != 0)
        return kSpaceTick;
    return position >= 0 && position <= engraving::kTopLine ? kStaffLineTick : kLedgerLineTick;
}

int indexOf(int step) {
    return static_cast<int>(std::find(kSteps.begin(), kSteps.end(), step) - kSteps.begin());
}

/// The step `count` notes above another, or the last one on the way.
int stepAbove(int step, int count) {
    const int last = static_cast<int>(kSteps.size()) - 1;
    return kSteps[static_cast<std::size_t>(std::clamp(indexOf(step) + count, 0, last))];
}

/// Where a cursor key leads; nothing for any other key.
std::optional<int> keyTarget(int key, int from) {
    switch (key) {
        case Qt::Key_Up:
            return stepAbove(from, 1);
        case Qt::Key_Down:
            return stepAbove(from, -1);
        case Qt::Key_PageUp:
            return stepAbove(from, kOctave);
        case Qt::Key_PageDown:
            return stepAbove(from, -kOctave);
        case Qt::Key_Home:
            return kSteps.back();
        case Qt::Key_End:
            return kSteps.front();
        default:
            return std::nullopt;
    }
}

/// A small arrow head that points at the staff, `size` long, its point on the left.
QPainterPath chosenSign(QPointF point, double size) {
    QPainterPath path(point);
    path.lineTo(point + QPointF(size, -size * 0.6));
    path.lineTo(point + QPointF(size, size * 0.6));
    path.closeSubpath();
    return path;
}

}  // namespace

Regolo::Regolo(QWidget* parent) : QWidget(parent), line_(new QWidget(this)), cursor_(kMiddleC) {
    installRegoloAccessible();
    // The composer's staff has the same given name: they are never in one window.
    setObjectName(QStringLiteral("Regolo"));
    setToolTip(UserText::tr("Clicca per scegliere l'intervallo"));
    setAccessibleName(UserText::tr("Righello dell'intervallo"));
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);

    line_->setObjectName(QStringLiteral("Line1"));
    line_->setAttribute(Qt::WA_TransparentForMouseEvents);
    line_->setBackgroundRole(QPalette::PlaceholderText);
    line_->setAutoFillBackground(true);
    std::transform(kSteps.begin(), kSteps.end(), markers_.begin(),
                   [this](int step) { return new RegoloMarker(step, this); });
}

void Regolo::setScale(const staff_layout::Scale& scale) {
    scale_ = scale;
    arrange();
}

void Regolo::hideMarker(int step) {
    if (!staff_step::carriesNote(step))
        return;
    markerOf(step).hide();
    update();
}

void Regolo::showAllMarkers() {
    for (RegoloMarker* marker : markers_)
        marker->show();
    update();
}

void Regolo::moveCursor(int step) {
    if (!staff_step::carriesNote(step) || step == cursor_)
        return;
    cursor_ = step;
    announceCursor(*this, markerOf(cursor_));
    reportPointed();
    update();
}

void Regolo::pressStep(int step) {
    if (const auto band = ruler::bandOf(step))
        Q_EMIT pressed(band->centre());
}

void Regolo::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = palette().color(QPalette::Highlight);
    painter.setOpacity(isEnabled() ? 1 : kDisabledOpacity);
    for (const RegoloMarker* marker : markers_) {
        if (marker->isHidden()) {
            const double size = 2 * kSignSize * scale_.halfSpace;
            const QPointF point(width() * kLineX - size, marker->tick().center().y());
            painter.fillPath(chosenSign(point, size), accent);
        }
    }
    if (hovered_) {
        QColor light = accent;
        light.setAlphaF(kHighlightOpacity);
        painter.setPen(Qt::NoPen);
        painter.setBrush(light);
        painter.drawRoundedRect(bandRect(*hovered_), 3, 3);
    }
    if (hasFocus()) {
        painter.setPen(QPen(accent, 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(bandRect(cursor_), 3, 3);
    }
}

void Regolo::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    Q_EMIT pressed(twipsAt(event->position().y()));
}

void Regolo::mouseMoveEvent(QMouseEvent* event) {
    setHovered(ruler::stepAt(twipsAt(event->position().y())));
}

void Regolo::leaveEvent(QEvent* /*event*/) {
    setHovered(std::nullopt);
}

void Regolo::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter) {
        pressStep(cursor_);
    } else if (const auto target = keyTarget(key, cursor_)) {
        moveCursor(*target);
    } else {
        QWidget::keyPressEvent(event);
    }
}

void Regolo::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    announceCursorOnFocus(*this, [this]() -> QWidget& { return markerOf(cursor_); });
    reportPointed();
}

void Regolo::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    reportPointed();
}

void Regolo::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange)
        setHovered(std::nullopt);
    QWidget::changeEvent(event);
}

RegoloMarker& Regolo::markerOf(int step) const {
    return *markers_[static_cast<std::size_t>(indexOf(step))];
}

double Regolo::twipsAt(double y) const {
    return staff_layout::twipsAt(scale_.place(y));
}

QRectF Regolo::bandRect(int step) const {
    const double y = scale_.y(staff_layout::placeOf(step));
    return QRectF(1, y - scale_.halfSpace, width() - 2.0, 2 * scale_.halfSpace);
}

void Regolo::setHovered(std::optional<int> step) {
    if (step == hovered_)
        return;
    hovered_ = step;
    reportPointed();
    update();
}

/// The mouse pointer has precedence over the keyboard's cursor: it is what the user moves.
void Regolo::reportPointed() {
    std::optional<int> step = hovered_;
    if (!step && hasFocus())
        step = cursor_;
    if (step == lastPointed_)
        return;
    lastPointed_ = step;
    Q_EMIT pointed(step);
}

void Regolo::arrange() {
    const double lineX = width() * kLineX;
    const double thickness = kTickThickness * scale_.halfSpace;
    line_->setGeometry(qRound(lineX), qRound(scale_.y(1)), 1,
                       qRound((staff_layout::kHeight - 2) * scale_.halfSpace));
    for (RegoloMarker* marker : markers_) {
        const double y = scale_.y(staff_layout::placeOf(marker->step()));
        const double length = width() * tickLength(marker->step());
        marker->setTick(QRectF(lineX - length, y - thickness / 2, length, thickness));
    }
    update();
}
