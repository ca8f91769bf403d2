#include "widgets/keyboard_span.h"

#include "core/pitch.h"
#include "widgets/piano_keyboard.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr QColor kName(96, 96, 100);
constexpr QColor kSpan(0, 150, 0);
constexpr double kSpanHeight = 0.5;    ///< of the room below the keys
constexpr double kMostRows = 1.25;     ///< its height and its distance, in rows of range marks
constexpr double kNameShare = 0.8;     ///< of a key's width
constexpr double kSmallestName = 0.6;  ///< of the usual text

}  // namespace

KeyboardSpan::KeyboardSpan(PianoKeyboard& keyboard) : QWidget(&keyboard), keyboard_(keyboard) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    keyboard_.installEventFilter(this);
    setGeometry(keyboard_.rect());
}

void KeyboardSpan::setSpan(std::optional<std::pair<int, int>> span) {
    span_ = span;
    update();
}

bool KeyboardSpan::eventFilter(QObject* /*target*/, QEvent* event) {
    if (event->type() == QEvent::Resize)
        setGeometry(keyboard_.rect());
    return false;
}

void KeyboardSpan::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintNames(painter);
    if (span_)
        paintSpan(painter);
}

/// As large as a key has room for, above middle C's square; left out where that is too small to
/// read.
void KeyboardSpan::paintNames(QPainter& painter) const {
    const QString name = pitch::NoteName(pitch::kLowestNote);
    const double width = keyboard_.keyFace(0).width();
    const double scale = std::min(1.0, kNameShare * width / fontMetrics().horizontalAdvance(name));
    if (scale < kSmallestName)
        return;
    QFont font = painter.font();
    font.setPointSizeF(scale * font.pointSizeF());
    painter.setFont(font);
    painter.setPen(kName);
    const int bottom = keyboard_.middleCSquare().top() - 2;
    for (int key = 0; key < PianoKeyboard::kKeys; key += piano_key_layout::kKeysInOctave) {
        QRect place = keyboard_.keyFace(key);
        place.setBottom(bottom);
        painter.drawText(place, Qt::AlignHCenter | Qt::AlignBottom, name);
    }
}

/// Below the naturals, between the middles of the two keys; near them, however much room there is.
void KeyboardSpan::paintSpan(QPainter& painter) const {
    const QRectF keys = keyboard_.keyArea();
    const double room = height() - keys.bottom();
    const double row = keyboard_.markRowHeight();
    const double left = piano_key_layout::keyRect(span_->first, keys).center().x();
    const double right = piano_key_layout::keyRect(span_->second, keys).center().x();
    const double line = std::min(kSpanHeight * room, kMostRows * row);
    const double top = keys.bottom() + std::min((room - line) / 2, kMostRows * row);
    painter.fillRect(QRectF(left, top, right - left, line), kSpan);
}
