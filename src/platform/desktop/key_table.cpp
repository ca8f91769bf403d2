#include "platform/desktop/key_table.h"

#include "platform/desktop/key_map.h"
#include "platform/desktop/shortcut_lookup.h"
#include "platform/system_keyboard.h"

#include <QGuiApplication>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>
#include <QThread>

#include <utility>

namespace {

/// Whether what is typed becomes text in the control that has the focus.
bool textIsTyped() {
    QObject* focus = QGuiApplication::focusObject();
    QInputMethodQueryEvent query(Qt::ImEnabled);
    return focus && QCoreApplication::sendEvent(focus, &query) &&
           query.value(Qt::ImEnabled).toBool();
}

bool isFunctionKey(int key) {
    return key >= Qt::Key_F1 && key <= Qt::Key_F35;
}

}  // namespace

KeyTable::KeyTable() : KeyTable(&system_keyboard::isDown) {}

KeyTable::KeyTable(KeyState isDown) : isDown_(std::move(isDown)) {
    system_keyboard::repeatWithoutReleases();
    QCoreApplication::instance()->installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &KeyTable::loseReleasedKeys);
}

bool KeyTable::advance() {
    repeated_.reset();
    if (queue_.empty())
        return false;
    if (auto* waiting = std::get_if<Work>(&queue_.front())) {
        const Work work = std::move(*waiting);
        queue_.pop_front();
        work();
        return true;
    }
    std::bitset<kKeyLast + 1> taken;
    bool stopped = false;
    for (auto& waiting : std::exchange(queue_, {})) {
        const auto* next = std::get_if<Transition>(&waiting);
        if (next && !stopped && !taken.test(static_cast<std::size_t>(next->key))) {
            taken.set(static_cast<std::size_t>(next->key));
            apply(*next);
        } else {
            stopped = stopped || inOrder_ || !next;
            queue_.push_back(std::move(waiting));
        }
    }
    return true;
}

void KeyTable::post(Work work) {
    if (waits())
        queue_.emplace_back(std::move(work));
    else
        work();
}

bool KeyTable::eventFilter(QObject* target, QEvent* event) {
    if (event->type() == QEvent::ApplicationStateChange ||
        event->type() == QEvent::ApplicationDeactivate)
        loseKeys();
    // Widgets get a key event again on its way up; the window gets it once.
    auto* window = qobject_cast<QWindow*>(target);
    if (!window)
        return false;
    switch (event->type()) {
        case QEvent::ShortcutOverride:
            return announce(*window, *static_cast<QKeyEvent*>(event));
        case QEvent::KeyPress:
            return press(*window, *static_cast<QKeyEvent*>(event));
        case QEvent::KeyRelease:
            return release(*static_cast<QKeyEvent*>(event));
        default:
            return false;
    }
}

KeyTable::Id KeyTable::idOf(const QKeyEvent& event) {
    const quint32 scanCode = event.nativeScanCode();
    return scanCode != 0 ? Id{scanCode} : -Id{event.key()};
}

/// The system announces a press before it looks for a shortcut, which may take the press. Then no
/// control learns of it. A repeat is kept from that: the shortcut could not tell it from a press.
/// With a screen reader, which is asked first, the press itself comes later, also after other keys
/// were announced.
bool KeyTable::announce(QWindow& window, QKeyEvent& event) {
    if (shortcut_lookup::isOwnAnnouncement())
        return false;
    const auto [known, isNew] = pressed_.try_emplace(idOf(event), Press{&window});
    const bool repeats = isRepeat(isNew, event);
    known->second.announced = !repeats;
    if (repeats)
        event.accept();
    return repeats;
}

bool KeyTable::isRepeat(bool isNew, const QKeyEvent& event) {
    return event.isAutoRepeat() || (!isNew && !system_keyboard::marksRepeats());
}

bool KeyTable::press(QWindow& window, const QKeyEvent& event) {
    const auto [known, isNew] = pressed_.try_emplace(idOf(event), Press{&window});
    Press& press = known->second;
    const bool wasAnnounced = std::exchange(press.announced, false);
    if (!wasAnnounced && isRepeat(isNew, event)) {
        take(press, Change::Repeat);
        return !goesOn(press, window, event) || shortcut_lookup::act(window, event, true);
    }
    press.window = &window;
    if (!window.property(kKeepsKeys).toBool())
        press.codes = {keyCodeOf(event), letterKeyOf(event)};
    take(press, Change::Down);
    return false;
}

/// A release that belongs to a repeat is none.
bool KeyTable::release(const QKeyEvent& event) {
    if (event.isAutoRepeat())
        return true;
    if (const auto known = pressed_.extract(idOf(event)))
        take(known.mapped(), Change::Up);
    return false;
}

bool KeyTable::goesOn(const Press& press, const QWindow& window, const QKeyEvent& repeat) {
    const int key = repeat.key();
    if (press.window != &window || key == Qt::Key_Escape || key == Qt::Key_Return ||
        key == Qt::Key_Enter || isFunctionKey(key))
        return false;
    const bool writes = !repeat.text().isEmpty() && repeat.text().front().isPrint();
    return !writes || window.property(kKeepsKeys).toBool() || textIsTyped();
}

void KeyTable::take(const Press& press, Change change) {
    const bool polled = polledDepth_ == currentDepth();
    if (!polled)
        takeAll();
    for (const KeyCode code : press.codes) {
        if (!isKey(code))
            continue;
        if (polled)
            queue_.emplace_back(Transition{code, change});
        else
            apply({code, change});
    }
}

void KeyTable::takeAll() {
    for (const auto& waiting : std::exchange(queue_, {})) {
        if (const auto* transition = std::get_if<Transition>(&waiting))
            apply(*transition);
        else
            std::get<Work>(waiting)();
    }
}

void KeyTable::apply(const Transition& transition) {
    const auto key = static_cast<std::size_t>(transition.key);
    if (transition.change == Change::Repeat)
        repeated_.set(key);
    else
        down_[key] = transition.change == Change::Down;
}

int KeyTable::setPolledDepth(int depth) {
    return std::exchange(polledDepth_, depth);
}

int KeyTable::currentDepth() {
    return QThread::currentThread()->loopLevel();
}

/// A key that is let go in another application is never reported here, and so every key counts as
/// up. One that is really still down goes on to repeat itself when the focus comes back.
void KeyTable::loseKeys() {
    queue_.clear();
    down_.reset();
    std::erase_if(pressed_, [this](const auto& press) {
        const Id id = press.first;
        return id <= 0 || !isDown_(static_cast<std::uint32_t>(id)).value_or(false);
    });
}

/// The toolkit drops a release that comes to a window behind a modal one, and the system one that
/// comes while no window has the focus: between a key that opens or closes a window and the focus
/// of the next window. Its next press would count as a repeat and do nothing.
void KeyTable::loseReleasedKeys() {
    std::erase_if(pressed_, [this](const auto& press) {
        const Id id = press.first;
        if (id <= 0 || isDown_(static_cast<std::uint32_t>(id)).value_or(true))
            return false;
        take(press.second, Change::Up);
        return true;
    });
}
