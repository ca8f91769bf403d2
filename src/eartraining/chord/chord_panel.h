#pragma once

#include <QGroupBox>

#include <array>
#include <memory>

class ChordExercise;
class ColourButton;

namespace Ui {
class ChordPanel;
}

/// The frame of the chord exercise: an answer button and a marker for each type, and the
/// exercise's controls.
class ChordPanel : public QGroupBox {
public:
    explicit ChordPanel(QWidget* parent = nullptr);
    ~ChordPanel() override;

    Ui::ChordPanel& ui() { return *ui_; }
    void attach(ChordExercise& exercise);

private:
    void buildTypes();
    void EsclTa_Click(int type);
    void lblVt_Click();
    void showMode();
    void showAvailability(int type);

    std::unique_ptr<Ui::ChordPanel> ui_;
    ChordExercise* exercise_ = nullptr;
    std::array<ColourButton*, 4> types_{};    ///< `TipoAcc`
    std::array<ColourButton*, 4> markers_{};  ///< `EsclTa`
};
