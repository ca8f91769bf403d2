#pragma once

#include "core/pitch.h"

#include <QWidget>

#include <array>
#include <memory>

class QPushButton;
class ReadingStaff;

namespace Ui {
class ReadingBoard;
}

/// The left half of the drill: the staff and under it the seven answer buttons.
class ReadingBoard : public QWidget {
    Q_OBJECT

public:
    explicit ReadingBoard(QWidget* parent = nullptr);
    ~ReadingBoard() override;

    ReadingStaff& staff();

    /// `pdo` … `psi`, by degree.
    const std::array<QPushButton*, pitch::kDegrees>& answerButtons() const { return buttons_; }

    void nameAnswers(pitch::AnswerNames style);
    void enableAnswers(bool on);

private:
    std::unique_ptr<Ui::ReadingBoard> ui_;
    std::array<QPushButton*, pitch::kDegrees> buttons_;
};
