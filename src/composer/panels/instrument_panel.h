#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class InstrumentPanel;
}

/// The instrument's slider with its caption, and a button that opens the list of all
/// instruments.
class InstrumentPanel : public QWidget {
    Q_OBJECT

public:
    explicit InstrumentPanel(QWidget* parent = nullptr);
    ~InstrumentPanel() override;

    /// Shows a program without `programChosen`.
    void showProgram(int program);

Q_SIGNALS:
    void programChosen(int program);  ///< 0..127 of General MIDI

private:
    std::unique_ptr<Ui::InstrumentPanel> ui_;
};
