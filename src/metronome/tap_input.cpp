#include "metronome/tap_input.h"

#include "platform/runtime.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <utility>

TapInput::TapInput(QAbstractButton& button, const Runtime& runtime)
    : QObject(&button), button_(button), runtime_(runtime) {
    QCoreApplication::instance()->installEventFilter(this);
    connect(&button, &QAbstractButton::pressed, this,
            [this] { report(std::exchange(pressed_, std::nullopt)); });
}

bool TapInput::eventFilter(QObject* target, QEvent* event) {
    const QEvent::Type type = event->type();
    const bool key = type == QEvent::KeyPress;
    if (!key && type != QEvent::MouseButtonPress && type != QEvent::MouseButtonDblClick)
        return false;
    const quint64 timestamp = static_cast<QInputEvent*>(event)->timestamp();
    if (target == &button_)
        pressed_ = timestamp;
    const auto* receiver = qobject_cast<QWidget*>(target);
    if (!key || !receiver || !isTap(*receiver, *static_cast<QKeyEvent*>(event)))
        return false;
    report(timestamp);
    return true;
}

/// A key that a line of text does not take goes on to the widgets around it.
bool TapInput::isTap(const QWidget& receiver, const QKeyEvent& key) const {
    const auto chord = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const auto* line = qobject_cast<const QLineEdit*>(receiver.window()->focusWidget());
    return key.key() == Qt::Key_T && !key.modifiers().testAnyFlags(chord) &&
           (!line || line->isReadOnly()) && receiver.window() == button_.window() &&
           button_.isVisible() && button_.isEnabled();
}

/// A screen reader's press has no time of its own.
void TapInput::report(std::optional<quint64> timestamp) {
    using std::chrono::milliseconds;
    Q_EMIT tapped(timestamp.value_or(0) != 0
                      ? milliseconds(*timestamp)
                      : std::chrono::duration_cast<milliseconds>(runtime_.now()));
}
