#pragma once

#include <QSlider>
#include <QTimer>

/// A slider of General MIDI's programs, 0..127. Screen readers say its number, and the name of the
/// instrument as soon as it rests.
class InstrumentSlider : public QSlider {
    Q_OBJECT

public:
    explicit InstrumentSlider(QWidget* parent = nullptr);

private:
    void sayName() const;

    QTimer resting_;
};
