#include "platform/desktop/end_requests.h"

#include <QEvent>
#include <QGuiApplication>

#include <utility>

EndRequests::EndRequests(std::function<void()> end, const std::function<void()>& save)
    : end_(std::move(end)), signals_(watchEndSignals(end_)) {
    QGuiApplication& application = *qGuiApp;
    application.installEventFilter(this);
    // The logout can still be called off. Where the system does not wait for the loops to return,
    // the toolkit's last word is `aboutToQuit`.
    connect(&application, &QGuiApplication::commitDataRequest, this, [save] { save(); });
    connect(&application, &QGuiApplication::saveStateRequest, this, [save] { save(); });
    connect(&application, &QGuiApplication::aboutToQuit, this, [save] { save(); });
}

/// The toolkit's own answer to a quit is to ask every window to close.
bool EndRequests::eventFilter(QObject* target, QEvent* event) {
    if (event->type() != QEvent::Quit || target != qGuiApp)
        return false;
    end_();
    return true;
}
