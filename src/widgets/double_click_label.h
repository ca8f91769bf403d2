#pragma once

#include <QToolButton>

/// A button that looks like a framed label and is clicked as `clickByDoubleClick` says.
class DoubleClickLabel : public QToolButton {
    Q_OBJECT

public:
    explicit DoubleClickLabel(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
