#include "widgets/piano_keyboard.h"

#include "core/note_words.h"
#include "core/pitch.h"
#include "platform/user_text.h"
#include "widgets/announcement.h"
#include "widgets/piano_key_accessible.h"
#include "widgets/pixel_grid.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QTimer>

#include <algorithm>

namespace {

using piano_key_layout::isSharp;
using piano_key_layout::kKeysInOctave;

constexpr int kMiddleC = pitch::noteIndexOf(pitch::kMiddleC);
constexpr int kTapMilliseconds = 250;

constexpr QColor kRangeMark(0, 255, 0);
constexpr QColor kGap(70, 70, 74);

/// In pixels.
constexpr double kFrame = 1;

constexpr double kMarkWidth = 0.5;  ///< a range mark's share of its key
constexpr double kDisabledOpacity = 0.5;
constexpr double kLongestKey = 6;  ///< in widths of a natural, about as on a piano

bool presses(const QKeyEvent& event) {
    return event.key() == Qt::Key_Space || event.key() == Qt::Key_Return ||
           event.key() == Qt::Key_Enter;
}

}  // namespace

PianoKey::PianoKey(int index, QWidget* parent) : QWidget(parent), index_(index) {
    setObjectName(QStringLiteral("lb_%1").arg(index));
    setAccessibleName(noteInWords(index + pitch::kLowestNote));
    if (index == kMiddleC)
        setToolTip(UserText::tr("Do Centrale"));
}

PianoKeyboard::PianoKeyboard(QWidget* parent) : QWidget(parent), cursor_(kMiddleC) {
    installPianoKeyAccessible();
    setAccessibleName(UserText::tr("Tastiera"));
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);

    for (int i = 0; i < kKeys; ++i) {
        const auto place = static_cast<std::size_t>(i);
        keys_[place] = new PianoKey(i, this);
        auto* mark = new QWidget(this);
        mark->setObjectName(QStringLiteral("lbr_%1").arg(i));
        mark->setAttribute(Qt::WA_TransparentForMouseEvents);
        mark->setAutoFillBackground(true);
        QPalette green = mark->palette();
        green.setColor(QPalette::Window, kRangeMark);
        mark->setPalette(green);
        mark->hide();
        rangeMarks_[place] = mark;
    }
    for (PianoKey* key : keys_) {
        if (isSharp(key->index()))
            key->raise();
    }
}

void PianoKeyboard::setMarked(int index, bool on) {
    setShown(marked_, index, on);
}

void PianoKeyboard::setHeld(int index, bool on) {
    setShown(held_, index, on);
}

void PianoKeyboard::setShown(std::array<bool, kKeys>& keys, int index, bool on) {
    if (!isKey(index) || keys[static_cast<std::size_t>(index)] == on)
        return;
    const bool before = pressed(index);
    keys[static_cast<std::size_t>(index)] = on;
    if (pressed(index) == before)
        return;
    repaintKey(index);
    QAccessible::State changed;
    changed.pressed = true;
    QAccessibleStateChangeEvent event(keyWidget(index), changed);
    QAccessible::updateAccessibility(&event);
}

bool PianoKeyboard::marked(int index) const {
    return isKey(index) && marked_[static_cast<std::size_t>(index)];
}

bool PianoKeyboard::pressed(int index) const {
    return marked(index) || (isKey(index) && held_[static_cast<std::size_t>(index)]);
}

void PianoKeyboard::setRangeMark(int index, bool on) {
    if (!isKey(index) || rangeMark(index) == on)
        return;
    rangeMarked_[static_cast<std::size_t>(index)] = on;
    markWidget(index)->setVisible(on && showsRangeMarks_);
    keyWidget(index)->setAccessibleDescription(on ? UserText::tr("contrassegnato") : QString());
}

bool PianoKeyboard::rangeMark(int index) const {
    return isKey(index) && rangeMarked_[static_cast<std::size_t>(index)];
}

void PianoKeyboard::showRangeMarks(bool on) {
    showsRangeMarks_ = on;
    for (int i = 0; i < kKeys; ++i)
        markWidget(i)->setVisible(on && rangeMark(i));
    arrange();
    updateGeometry();
}

void PianoKeyboard::moveCursor(int index) {
    if (!isKey(index) || index == cursor_)
        return;
    update(keyWidget(cursor_)->geometry());
    cursor_ = index;
    update(keyWidget(cursor_)->geometry());
    announceCursor(*this, *keyWidget(cursor_));
}

QRect PianoKeyboard::middleCSquare() const {
    const QRectF key = piano_key_layout::keyRect(kMiddleC, keyArea_);
    const double side = std::min(key.width() * 0.3, key.height() * 0.08);
    return QRectF(key.center().x() - side / 2, key.bottom() - 2.2 * side, side, side).toRect();
}

void PianoKeyboard::tap(int index) {
    if (!isKey(index))
        return;
    if (press_ && press_->holder == Holder::ScreenReader)
        end(true);
    begin(index, Holder::ScreenReader);
    const int tap = ++taps_;
    QTimer::singleShot(kTapMilliseconds, this, [this, tap] {
        if (tap == taps_ && press_ && press_->holder == Holder::ScreenReader)
            end(true);
    });
}

QSize PianoKeyboard::sizeHint() const {
    const int line = fontMetrics().height();
    return {kKeys * line, 7 * line + 2 * markRowHeight()};
}

QSize PianoKeyboard::minimumSizeHint() const {
    const int line = fontMetrics().height();
    return {piano_key_layout::kNaturals * line / 2, 4 * line + 2 * markRowHeight()};
}

/// A window that a dialog blocks is not sent the release of what was held.
bool PianoKeyboard::event(QEvent* event) {
    if (event->type() == QEvent::WindowBlocked)
        end(false);
    if (event->type() == QEvent::HoverLeave)
        setHovered(std::nullopt);
    else if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverMove)
        setHovered(piano_key_layout::keyAt(static_cast<QHoverEvent*>(event)->position(), keyArea_));
    return QWidget::event(event);
}

void PianoKeyboard::setHovered(std::optional<int> key) {
    if (key == hovered_)
        return;
    for (const auto& changed : {hovered_, key}) {
        if (changed)
            update(keyWidget(*changed)->geometry());
    }
    hovered_ = key;
}

void PianoKeyboard::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1 : kDisabledOpacity);
    painter.fillRect(
        pixel_grid::snapped(painter, keyArea_.adjusted(-kFrame, -kFrame, kFrame, kFrame)), kGap);
    const bool dark = palette().color(QPalette::Base).lightness() < 128;
    for (const bool sharps : {false, true}) {
        for (int i = 0; i < kKeys; ++i) {
            if (isSharp(i) != sharps || !event->rect().intersects(keyWidget(i)->geometry()))
                continue;
            const QRectF key = piano_key_layout::keyRect(i, keyArea_);
            sharps ? piano_key_painting::paintSharp(painter, key, lookOf(i))
                   : piano_key_painting::paintNatural(painter, key, lookOf(i), dark);
        }
        if (!sharps)
            piano_key_painting::paintMiddleC(painter, middleCSquare());
    }
    if (hasFocus())
        piano_key_painting::paintCursor(painter, piano_key_layout::keyRect(cursor_, keyArea_),
                                        isSharp(cursor_), palette().color(QPalette::Highlight));
}

piano_key_painting::Look PianoKeyboard::lookOf(int index) const {
    using piano_key_painting::Look;
    if (pressed(index))
        return Look::Pressed;
    return isEnabled() && index == hovered_ ? Look::Hovered : Look::Up;
}

void PianoKeyboard::resizeEvent(QResizeEvent* /*event*/) {
    arrange();
}

void PianoKeyboard::hideEvent(QHideEvent* event) {
    end(false);
    QWidget::hideEvent(event);
}

void PianoKeyboard::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        end(false);
    if (event->type() == QEvent::FontChange) {
        arrange();
        updateGeometry();
    }
    QWidget::changeEvent(event);
}

void PianoKeyboard::mousePressEvent(QMouseEvent* event) {
    const auto key = piano_key_layout::keyAt(event->position(), keyArea_);
    if (event->button() != Qt::LeftButton || !key) {
        QWidget::mousePressEvent(event);
        return;
    }
    if (heldByMouse())
        end(false);
    begin(*key, Holder::Mouse);
}

/// Two quick clicks on neighbouring keys, as in a trill, are no double click.
void PianoKeyboard::mouseDoubleClickEvent(QMouseEvent* event) {
    const auto key = piano_key_layout::keyAt(event->position(), keyArea_);
    if (!reportsDoubleClicks() || event->button() != Qt::LeftButton || !key ||
        key != lastClicked_ || press_) {
        mousePressEvent(event);
        return;
    }
    press_ = Press{*key, Holder::DoubleClick};
    Q_EMIT keyDoubleClick(*key);
}

void PianoKeyboard::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !heldByMouse()) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    const bool over = piano_key_layout::keyAt(event->position(), keyArea_) == press_->key;
    const bool click = over && press_->holder == Holder::Mouse;
    lastClicked_ = click ? std::optional(press_->key) : std::nullopt;
    end(click);
}

void PianoKeyboard::keyPressEvent(QKeyEvent* event) {
    if (presses(*event)) {
        if (press_)
            return;
        begin(cursor_, Holder::Keyboard);
        if (event->key() != Qt::Key_Space)
            Q_EMIT keyEntered(cursor_);
    } else if (const auto target = keyTarget(event->key())) {
        moveCursor(*target);
    } else {
        QWidget::keyPressEvent(event);
    }
}

void PianoKeyboard::keyReleaseEvent(QKeyEvent* event) {
    if (!presses(*event)) {
        QWidget::keyReleaseEvent(event);
        return;
    }
    if (press_ && press_->holder == Holder::Keyboard)
        end(true);
}

void PianoKeyboard::focusInEvent(QFocusEvent* /*event*/) {
    update(keyWidget(cursor_)->geometry());
    announceCursorOnFocus(*this, [this]() -> QWidget& { return *keyWidget(cursor_); });
}

void PianoKeyboard::focusOutEvent(QFocusEvent* /*event*/) {
    update(keyWidget(cursor_)->geometry());
    if (press_ && press_->holder == Holder::Keyboard)
        end(false);
}

/// Where a key moves the cursor; nothing for a key that does not.
std::optional<int> PianoKeyboard::keyTarget(int key) const {
    const auto by = [this](int keys) { return std::clamp(cursor_ + keys, 0, kKeys - 1); };
    switch (key) {
        case Qt::Key_Left:
            return by(-1);
        case Qt::Key_Right:
            return by(1);
        case Qt::Key_PageDown:
            return by(-kKeysInOctave);
        case Qt::Key_PageUp:
            return by(kKeysInOctave);
        case Qt::Key_Home:
            return 0;
        case Qt::Key_End:
            return kKeys - 1;
        default:
            return std::nullopt;
    }
}

/// One key is held at a time: while the mouse holds one, a press by the keyboard or a screen reader
/// is ignored, and the other way round.
void PianoKeyboard::begin(int index, Holder holder) {
    if (press_)
        return;
    press_ = Press{index, holder};
    Q_EMIT keyDown(index);
}

void PianoKeyboard::end(bool click) {
    if (!press_)
        return;
    const int key = press_->key;
    press_.reset();
    Q_EMIT keyUp(key);
    if (click)
        Q_EMIT keyClick(key);
}

/// Without a listener the second press of a double click is a press like any other.
bool PianoKeyboard::reportsDoubleClicks() const {
    return isSignalConnected(QMetaMethod::fromSignal(&PianoKeyboard::keyDoubleClick));
}

bool PianoKeyboard::heldByMouse() const {
    return press_ && (press_->holder == Holder::Mouse || press_->holder == Holder::DoubleClick);
}

void PianoKeyboard::arrange() {
    const double row = markRowHeight();
    keyArea_ = QRectF(rect()).adjusted(kFrame, kFrame + row, -kFrame, -kFrame - row);
    const double longest = kLongestKey * keyArea_.width() / piano_key_layout::kNaturals;
    const double spare = std::max(0.0, keyArea_.height() - longest) / 2;
    keyArea_.adjust(0, spare, 0, -spare);
    for (int i = 0; i < kKeys; ++i) {
        const QRectF key = piano_key_layout::keyRect(i, keyArea_);
        keyWidget(i)->setGeometry(key.toAlignedRect());
        const double width = kMarkWidth * key.width();
        const double top = isSharp(i) ? keyArea_.top() - row : keyArea_.bottom() + kFrame + 1;
        markWidget(i)->setGeometry(
            QRectF(key.center().x() - width / 2, top, width, std::max(0.0, row - 2)).toRect());
    }
    update();
    Q_EMIT arranged();
}

void PianoKeyboard::repaintKey(int index) {
    if (isVisible())
        repaint(keyWidget(index)->geometry());
}

int PianoKeyboard::markRowHeight() const {
    return showsRangeMarks_ ? std::max(6, fontMetrics().height() / 2) : 0;
}
