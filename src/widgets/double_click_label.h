#pragma once

#include <QToolButton>

/// A button that looks like a framed label. The mouse presses it by a double click only; the
/// keyboard by Space or Enter.
class DoubleClickLabel : public QToolButton {
public:
    explicit DoubleClickLabel(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};
