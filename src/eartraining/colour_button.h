#pragma once

#include "eartraining/ear_colours.h"
#include "eartraining/mark_painting.h"

#include <QAbstractButton>

/// A flat button on a ground of its own colour, which vanishes while the button is held down.
class ColourButton : public QAbstractButton {
public:
    explicit ColourButton(QWidget* parent = nullptr);

    void setColours(ear_colours::Rgb ground, ear_colours::Rgb text);
    /// Makes the button a marker: green with a tick, or red with a cross.
    void showAvailable(bool available);
    /// The height in lines of text.
    void setLines(double lines) { lines_ = lines; }

    QColor ground() const { return QColor::fromRgb(ground_); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    ear_colours::Rgb ground_ = ear_colours::kConsonant;
    ear_colours::Rgb text_ = ear_colours::kConsonantText;
    Mark mark_ = Mark::None;
    double lines_ = 1.6;
};
