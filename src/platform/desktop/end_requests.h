#pragma once

#include "platform/end_signals.h"

#include <QObject>

#include <functional>
#include <memory>

/// What asks the program to end from outside its windows: the desktop at a logout, the toolkit when
/// the last window has closed, and the system's signals. None of them is to bring up a question.
class EndRequests : public QObject {
public:
    /// `end` ends the program; `save` is called when it may be ended soon.
    EndRequests(std::function<void()> end, const std::function<void()>& save);

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    std::function<void()> end_;
    std::unique_ptr<EndSignals> signals_;
};
