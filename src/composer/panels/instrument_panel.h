#pragma once

#include <QWidget>

#include <memory>

class QMenu;

namespace Ui {
class InstrumentPanel;
}

/// The instrument's slider with its caption, and a menu of all instruments by family.
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
    void fillFamily(QMenu& menu, int firstProgram);

    std::unique_ptr<Ui::InstrumentPanel> ui_;
};
