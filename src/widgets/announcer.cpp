#include "widgets/announcer.h"

#include "widgets/spoken_text.h"

#include <QAccessible>
#include <QApplication>
#include <QMetaMethod>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace {

/// Between two texts. Of two that come together a screen reader now and then says the second first.
constexpr std::chrono::milliseconds kGap{40};
constexpr std::chrono::milliseconds kNow{0};

}  // namespace

Announcer& Announcer::shared() {
    static QPointer<Announcer> announcer;
    if (!announcer)
        announcer = new Announcer(spoken_text::say, qApp);
    return *announcer;
}

Announcer::Announcer(Speak speak, QObject* parent) : QObject(parent), speak_(std::move(speak)) {
    clock_.start();
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.callOnTimeout(this, &Announcer::sayDue);
}

bool Announcer::heard() const {
    return QAccessible::isActive() || isSignalConnected(QMetaMethod::fromSignal(&Announcer::given));
}

void Announcer::say(const QString& text, std::chrono::milliseconds delay) {
    std::chrono::milliseconds due = now() + delay;
    if (!waiting_.empty())
        due = std::max(due, waiting_.back().due);
    waiting_.push_back({text, due});
    Q_EMIT given(text);
    sayDue();
}

std::chrono::milliseconds Announcer::now() const {
    return std::chrono::milliseconds{clock_.elapsed()};
}

void Announcer::sayDue() {
    if (!waiting_.empty() && leftToWait() <= kNow) {
        const QString text = std::move(waiting_.front().text);
        waiting_.pop_front();
        earliest_ = now() + kGap;
        speak_(text);
    }
    if (!waiting_.empty())
        timer_.start(std::max(leftToWait(), kNow));
}

std::chrono::milliseconds Announcer::leftToWait() const {
    return std::max(waiting_.front().due, earliest_) - now();
}
