#pragma once

#include "platform/key_codes.h"

#include <QObject>

#include <array>
#include <vector>

/// Which keys are down, fed by the application's key events.
///
/// Transitions are queued as they come and taken by `advance`, at most one for each key, so that a
/// tap that falls between two passes of a loop is down for one of them.
class KeyTable : public QObject {
public:
    explicit KeyTable(QObject* parent = nullptr);

    bool held(KeyCode key) const;

    /// Takes the next transition of every key; answers whether there was any.
    bool advance();

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void releaseAll();

    struct Transition {
        KeyCode key;
        bool down;
    };
    std::vector<Transition> queue_;
    std::array<bool, kKeyLast + 1> down_{};
};
