#pragma once

#include "core/pitch.h"
#include "reading/reading_statistics.h"
#include "reading/reading_verdict.h"

#include <QWidget>

#include <array>
#include <memory>

class QLabel;
class QPushButton;
class ReadingStaff;
class VerdictBadge;

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
    /// Shows the keys that answer in a mode: under each button and, for the automatic mode, in
    /// words.
    void showKeys(ReadingMode mode);
    /// At the note and at the button; nothing hides it.
    void showVerdict(const std::optional<ReadingVerdict::Shown>& shown);

private:
    std::unique_ptr<Ui::ReadingBoard> ui_;
    std::array<QPushButton*, pitch::kDegrees> buttons_;
    std::array<QLabel*, pitch::kDegrees> keys_;
    VerdictBadge* verdict_;
};
