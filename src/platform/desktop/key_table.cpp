#include "platform/desktop/key_table.h"

#include "platform/desktop/key_map.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QThread>
#include <QWindow>

#include <bitset>
#include <utility>

KeyTable::KeyTable(QObject* parent) : QObject(parent) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool KeyTable::held(KeyCode key) const {
    return key >= 0 && key <= kKeyLast && down_[static_cast<std::size_t>(key)];
}

bool KeyTable::advance() {
    if (queue_.empty())
        return false;
    std::bitset<kKeyLast + 1> taken;
    std::vector<Transition> later;
    for (const Transition& transition : queue_) {
        const auto key = static_cast<std::size_t>(transition.key);
        if (taken.test(key)) {
            later.push_back(transition);
        } else {
            taken.set(key);
            down_[key] = transition.down;
        }
    }
    queue_ = std::move(later);
    return true;
}

bool KeyTable::eventFilter(QObject* target, QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease: {
            // Widgets get the same event again on its way up; the window gets it once.
            const auto* keyEvent = static_cast<QKeyEvent*>(event);
            if (qobject_cast<QWindow*>(target) && !keyEvent->isAutoRepeat()) {
                const KeyCode key = keyCodeOf(*keyEvent);
                const bool down = event->type() == QEvent::KeyPress;
                const bool isKey = key > 0 && key <= kKeyLast;
                if (isKey && !(down && target->property(kKeepsKeys).toBool()))
                    take({key, down});
            }
            break;
        }
        case QEvent::ApplicationStateChange:
        case QEvent::ApplicationDeactivate:
            releaseAll();
            break;
        default:
            break;
    }
    return false;
}

void KeyTable::take(const Transition& transition) {
    if (polledDepth_ == currentDepth()) {
        queue_.push_back(transition);
        return;
    }
    for (const Transition& waiting : queue_)
        down_[static_cast<std::size_t>(waiting.key)] = waiting.down;
    queue_.clear();
    down_[static_cast<std::size_t>(transition.key)] = transition.down;
}

int KeyTable::setPolledDepth(int depth) {
    return std::exchange(polledDepth_, depth);
}

int KeyTable::currentDepth() {
    return QThread::currentThread()->loopLevel();
}

/// A key that is let go in another application is never reported here.
void KeyTable::releaseAll() {
    queue_.clear();
    down_.fill(false);
}
