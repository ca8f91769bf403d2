#pragma once

#include "composer/melody/play_range.h"

#include <QWidget>

#include <functional>
#include <memory>

namespace Ui {
class RangePanel;
}

/// The ends of the range that is played, in boxes with arrows, and the transposition.
class RangePanel : public QWidget {
public:
    using ArrowHandler = std::function<void(PlayRange::Arrow arrow)>;

    explicit RangePanel(QWidget* parent = nullptr);
    ~RangePanel() override;

    Ui::RangePanel& ui() { return *ui_; }

    /// An arrow went down; it went up, or lost the mouse or the focus.
    void onArrowDown(const ArrowHandler& handler);
    void onArrowUp(const std::function<void()>& handler);

    void showRange(const PlayRange& range);
    void clearRange();
    void showTransposition(int semitones);

private:
    std::unique_ptr<Ui::RangePanel> ui_;
};
