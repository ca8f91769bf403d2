#pragma once

#include "platform/key_codes.h"

#include <QObject>

#include <array>
#include <vector>

/// Which keys are down, fed by the application's key events.
///
/// For a loop that polls, transitions are queued as they come and taken by `advance`, at most one
/// for each key, so that a tap that falls between two passes is down for one of them. While no loop
/// polls, or in a dialog over it, keys only change their state: what was typed then is not played
/// afterwards.
class KeyTable : public QObject {
public:
    explicit KeyTable(QObject* parent = nullptr);

    bool held(KeyCode key) const;

    /// Takes the next transition of every key; answers whether there was any.
    bool advance();

    /// The depth of event loops whose keys are polled, or `kNotPolled`; answers what it was before.
    static constexpr int kNotPolled = -1;
    int setPolledDepth(int depth);

    /// How many event loops run inside each other now.
    static int currentDepth();

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void releaseAll();

    struct Transition {
        KeyCode key;
        bool down;
    };
    void take(const Transition& transition);

    std::vector<Transition> queue_;
    int polledDepth_ = kNotPolled;
    std::array<bool, kKeyLast + 1> down_{};
};
