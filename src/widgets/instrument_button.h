#pragma once

#include <QPushButton>

/// A button that opens the list of instruments.
class InstrumentButton : public QPushButton {
    Q_OBJECT

public:
    explicit InstrumentButton(QWidget* parent = nullptr);

    /// The program that the list opens at.
    void setProgram(int program) { program_ = program; }

Q_SIGNALS:
    void programChosen(int program);  ///< 0..127 of General MIDI

private:
    int program_ = 0;
};
