#pragma once

#include "composer/melody/play_range.h"

#include <QWidget>

#include <memory>

namespace Ui {
class RangePanel;
}

/// The ends of the range that is played, in boxes with arrows, and the transposition.
class RangePanel : public QWidget {
    Q_OBJECT

public:
    explicit RangePanel(QWidget* parent = nullptr);
    ~RangePanel() override;

    Ui::RangePanel& ui() { return *ui_; }

    void showRange(const PlayRange& range);
    void clearRange();
    void showTransposition(int semitones, const QString& hint);

Q_SIGNALS:
    /// An arrow went down; it went up, or lost the mouse or the focus.
    void arrowDown(PlayRange::Arrow arrow);
    void arrowUp();

    /// An arrow was pressed by neither mouse nor key, so that nothing holds it.
    void arrowStepped(PlayRange::Arrow arrow);

protected:
    bool eventFilter(QObject* target, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void keepRoomForHint();

    std::unique_ptr<Ui::RangePanel> ui_;
    bool held_ = false;  ///< a mouse button or a key is going down on an arrow
};
