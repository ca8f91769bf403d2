#pragma once

#include "eartraining/score.h"

#include <QWidget>

#include <functional>
#include <memory>

namespace Ui {
class ScorePanel;
}

/// The counters of right and wrong answers, their percentage and the verdict on the last answer.
class ScorePanel : public QWidget {
public:
    explicit ScorePanel(QWidget* parent = nullptr);
    ~ScorePanel() override;

    void show(const Score& score);
    void announceVerdict(const Score& score);

    void onPercentageDoubleClick(const std::function<void()>& handler);

private:
    std::unique_ptr<Ui::ScorePanel> ui_;
};
