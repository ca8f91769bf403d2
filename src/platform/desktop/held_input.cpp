#include "platform/desktop/held_input.h"

#include "platform/desktop/shortcut_lookup.h"
#include "platform/desktop/user_input.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

using namespace std::chrono_literals;

/// How soon it is tried again if a wait lets nothing through.
constexpr auto kRetry = 10ms;
constexpr int kTries = 30;

bool isHeldBack(const QEvent& event) {
    return isUserInput(event.type()) || event.type() == QEvent::MouseMove;
}

/// The release that belongs to a press; nothing for any other event.
std::unique_ptr<QEvent> releaseOf(const QEvent& press) {
    if (press.type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(press);
        return std::make_unique<QKeyEvent>(QEvent::KeyRelease, key.key(), key.modifiers(),
                                           key.nativeScanCode(), key.nativeVirtualKey(),
                                           key.nativeModifiers(), key.text());
    }
    if (press.type() == QEvent::MouseButtonPress || press.type() == QEvent::MouseButtonDblClick) {
        const auto& mouse = static_cast<const QMouseEvent&>(press);
        return std::make_unique<QMouseEvent>(QEvent::MouseButtonRelease, mouse.position(),
                                             mouse.globalPosition(), mouse.button(),
                                             mouse.buttons() & ~mouse.button(), mouse.modifiers());
    }
    return nullptr;
}

bool isReleaseOf(const QEvent& event, const QEvent& wanted) {
    if (event.type() != wanted.type())
        return false;
    if (wanted.type() == QEvent::KeyRelease)
        return static_cast<const QKeyEvent&>(event).key() ==
               static_cast<const QKeyEvent&>(wanted).key();
    return static_cast<const QMouseEvent&>(event).button() ==
           static_cast<const QMouseEvent&>(wanted).button();
}

/// The press is announced first, as one that comes from the system is.
bool isShortcut(QWindow& window, const QEvent& event) {
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    QKeyEvent announced(QEvent::ShortcutOverride, key.key(), key.modifiers(), key.nativeScanCode(),
                        key.nativeVirtualKey(), key.nativeModifiers(), key.text(),
                        key.isAutoRepeat(), static_cast<quint16>(key.count()));
    QCoreApplication::sendEvent(&window, &announced);
    return !announced.isAccepted() && shortcut_lookup::act(window, key, key.isAutoRepeat());
}

}  // namespace

HeldInput::HeldInput() {
    delivery_.setSingleShot(true);
    delivery_.callOnTimeout(this, &HeldInput::deliver);
}

HeldInput::~HeldInput() = default;

HeldInput::Box::Box(HeldInput& input) : input_(input) {
    ++input_.boxes_;
    input_.take();
}

HeldInput::Box::~Box() {
    if (--input_.boxes_ == 0 && !input_.held_.empty())
        input_.delivery_.start(0);
    input_.triesLeft_ = kTries;
}

void HeldInput::take() {
    takeQueue();
    letGo();
}

bool HeldInput::collect(const std::function<bool(const QEvent&)>& wanted) {
    const std::size_t before = held_.size();
    takeQueue();
    if (!held_.empty())
        delivery_.start(0);
    triesLeft_ = kTries;
    return std::any_of(held_.begin() + static_cast<std::ptrdiff_t>(before), held_.end(),
                       [&wanted](const Held& held) { return wanted(*held.event); });
}

void HeldInput::takeQueue() {
    const Pause noDeliveries;
    QCoreApplication::instance()->installEventFilter(this);
    QCoreApplication::processEvents();
    QCoreApplication::instance()->removeEventFilter(this);
}

bool HeldInput::eventFilter(QObject* target, QEvent* event) {
    // A shortcut that somebody claims is left to the key press after it.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    auto* window = qobject_cast<QWindow*>(target);
    if (!window || !event->spontaneous() || !isHeldBack(*event))
        return false;
    if (event->type() == QEvent::Close)
        event->ignore();
    held_.push_back({window, std::unique_ptr<QEvent>(event->clone())});
    return true;
}

/// A release that the box takes would never reach the window.
void HeldInput::letGo() {
    for (std::size_t i = 0; i < held_.size(); ++i) {
        auto release = releaseOf(*held_[i].event);
        const auto isRelease = [&](const Held& held) { return isReleaseOf(*held.event, *release); };
        if (release &&
            std::none_of(held_.begin() + static_cast<std::ptrdiff_t>(i), held_.end(), isRelease))
            held_.push_back({held_[i].window, std::move(release)});
    }
}

void HeldInput::deliver() {
    if (held_.empty())
        return;
    if (paused_ > 0 || boxes_ > 0) {
        delivery_.start(kRetry);
        return;
    }
    while (boxes_ == 0 && !held_.empty()) {
        const Held& next = held_.front();
        if (next.window && next.event->type() == QEvent::KeyPress && !next.window->isActive() &&
            triesLeft_-- > 0) {
            delivery_.start(kRetry);
            return;
        }
        const Held first = std::move(held_.front());
        held_.erase(held_.begin());
        // It may run a loop that the others are meant for.
        delivery_.start(0);
        if (first.window && !isShortcut(*first.window, *first.event))
            QCoreApplication::sendEvent(first.window, first.event.get());
    }
}
