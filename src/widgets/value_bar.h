#pragma once

#include <QScrollBar>

/// A scroll bar that sets a value. The keys and the wheel move it as it lies: Right, Up, Page Up
/// and the wheel turned up add.
class ValueBar : public QScrollBar {
    Q_OBJECT

public:
    explicit ValueBar(QWidget* parent = nullptr) : ValueBar(Qt::Horizontal, parent) {}

protected:
    ValueBar(Qt::Orientation orientation, QWidget* parent);
};
