#pragma once

#include "widgets/mark_painting.h"

#include <QAbstractButton>

/// A flat button with a background colour of its own, which is not painted while the button is
/// down.
class ColourButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit ColourButton(QWidget* parent = nullptr);

    void setColours(QRgb background, QRgb text);
    /// Makes the button a marker: green with a tick, or red with a cross.
    void showAvailable(bool available);
    /// The height in lines of text.
    void setLines(double lines) { lines_ = lines; }

    QColor background() const { return QColor::fromRgb(background_); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QRgb background_ = qRgb(255, 255, 255);
    QRgb text_ = qRgb(0, 0, 0);
    Mark mark_ = Mark::None;
    double lines_ = 1.6;
};
