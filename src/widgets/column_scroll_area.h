#pragma once

#include <QScrollArea>

/// A column of controls that scrolls up and down where the window is too low for them. It is as
/// wide as they need, and keeps the room for the bar free while there is none.
class ColumnScrollArea : public QScrollArea {
    Q_OBJECT

public:
    explicit ColumnScrollArea(QWidget* parent = nullptr);

    /// Scrolls to a control that was just shown, as soon as it has its place.
    void reveal(QWidget& control);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void keepBarFree();
    int widthFor(int content) const;
};
