#pragma once

#include <QPushButton>

/// A small square button that shows and hides something beside it: "+" on one background colour,
/// "-" on another. Both are light in every theme.
class KeyButton : public QPushButton {
    Q_OBJECT

public:
    static constexpr QRgb kClosed = qRgb(255, 128, 128);
    static constexpr QRgb kOpen = qRgb(238, 255, 192);

    explicit KeyButton(QWidget* parent = nullptr);

    void showOpen(bool open);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QRgb background_ = kClosed;
};
