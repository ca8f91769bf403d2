#pragma once

#include <QGroupBox>

#include <memory>

namespace Ui {
class InstrumentFrame;
}

/// The frame `Fr1`, in which any of the 128 instruments can be chosen; hidden until it is opened.
class InstrumentFrame : public QGroupBox {
    Q_OBJECT

public:
    explicit InstrumentFrame(QWidget* parent = nullptr);
    ~InstrumentFrame() override;

    /// Shows the frame with an instrument and gives the focus to the slider.
    void open(int program);
    /// Shows an instrument, without the signal that it was chosen.
    void showProgram(int program);

Q_SIGNALS:
    void programChosen(int program);

private:
    std::unique_ptr<Ui::InstrumentFrame> ui_;
};
