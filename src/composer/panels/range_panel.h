#pragma once

#include "composer/melody/play_range.h"

#include <QWidget>

#include <functional>
#include <memory>

class QLineEdit;

namespace Ui {
class RangePanel;
}

/// The ends of the range that is played, in boxes with arrows, and the transposition.
class RangePanel : public QWidget {
public:
    using ArrowHandler = std::function<void(PlayRange::Arrow arrow)>;
    using BoxHandler = std::function<void(QLineEdit& box)>;

    explicit RangePanel(QWidget* parent = nullptr);
    ~RangePanel() override;

    Ui::RangePanel& ui() { return *ui_; }

    /// An arrow went down; it went up, or lost the mouse or the focus.
    void onArrowDown(const ArrowHandler& handler);
    void onArrowUp(const std::function<void()>& handler);

    /// A box was left after a change. Enter comes as `onBoxEnter` as well.
    void onBoxLeft(const BoxHandler& handler);
    void onBoxEnter(const BoxHandler& handler);

    void showRange(const PlayRange& range);
    void clearRange();
    void showTransposition(int semitones);

private:
    std::unique_ptr<Ui::RangePanel> ui_;
};
