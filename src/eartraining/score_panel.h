#pragma once

#include "eartraining/score.h"

#include <QWidget>

#include <memory>

namespace Ui {
class ScorePanel;
}

/// The counters of right and wrong answers, their percentage and the verdict on the last answer.
class ScorePanel : public QWidget {
    Q_OBJECT

public:
    explicit ScorePanel(QWidget* parent = nullptr);
    ~ScorePanel() override;

    void show(const Score& score);

Q_SIGNALS:
    /// By mouse, keyboard or screen reader.
    void percentageDoubleClicked();

private:
    std::unique_ptr<Ui::ScorePanel> ui_;
};
