#pragma once

#include "composer/melody/play_range.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <utility>

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

    /// An arrow was pressed by neither mouse nor key, so that nothing holds it.
    void onArrowStep(ArrowHandler handler) { step_ = std::move(handler); }

    void showRange(const PlayRange& range);
    void clearRange();
    void showTransposition(int semitones);

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    std::unique_ptr<Ui::RangePanel> ui_;
    ArrowHandler step_;
    bool handled_ = false;  ///< a mouse button or a key is going down on an arrow
};
