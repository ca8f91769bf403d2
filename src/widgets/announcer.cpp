#include "widgets/announcer.h"

#include "widgets/spoken_text.h"

#include <QAccessible>
#include <QApplication>
#include <QMetaMethod>
#include <QPointer>

#include <algorithm>
#include <utility>

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
    while (!waiting_.empty() && waiting_.front().due <= now()) {
        const QString text = std::move(waiting_.front().text);
        waiting_.pop_front();
        speak_(text);
    }
    if (!waiting_.empty())
        timer_.start(waiting_.front().due - now());
}
