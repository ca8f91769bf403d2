#pragma once

#include <QObject>

#include <cstdint>

/// Counts the events by which the user acts on a window. The pointer's moves alone do not count.
class InputWatch : public QObject {
public:
    InputWatch();

    std::uint64_t count() const { return count_; }

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    std::uint64_t count_ = 0;
};
