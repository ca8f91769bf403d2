#pragma once

#include <QScrollArea>

/// A column of controls that scrolls up and down where the window is too low for them. It is as
/// wide as they need, and keeps the room for the bar free while there is none.
class ColumnScrollArea : public QScrollArea {
    Q_OBJECT

public:
    explicit ColumnScrollArea(QWidget* parent = nullptr);

    /// Whether it asks for the size of the whole column, as far as the screen has it: a column that
    /// is the whole window is not to be scrolled where that can be helped, and sideways as well
    /// where it cannot.
    void setAsksForAll(bool on);

    /// To be called after controls were shown: makes the window higher where they do not fit, as
    /// far as the screen has room. A window that fills the screen stays as it is.
    void makeRoom();

    /// Scrolls to a control that was just shown, as soon as it has its place.
    void reveal(QWidget& control);

    /// Beside the column, for the bar.
    int barRoom() const;

    /// Whether it asks for the whole column and the screen lacks the room.
    bool lacksRoom() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* target, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void keepBarFree();
    void fitColumn();
    void enlargeWindow();
    int barGap() const;
    int widthFor(int content) const;
    QSize leastSize() const;
    QSize roomBelowMenu() const;

    bool asksForAll_ = false;
};
