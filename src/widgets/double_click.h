#pragma once

#include <QObject>

class QAbstractButton;
class QWidget;

/// Watches a widget, which owns it, for double clicks of the left mouse button and for Enter, which
/// stands for them on the keyboard. The widget itself does not see them any more, so that the
/// second press of a double click is no click of its own.
class DoubleClick : public QObject {
    Q_OBJECT

public:
    enum class SingleClicks { Passed, Ignored };

    explicit DoubleClick(QWidget& widget, SingleClicks singleClicks = SingleClicks::Passed);

Q_SIGNALS:
    void doubleClicked();

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    SingleClicks singleClicks_;
};

/// Lets the mouse click a button by a double click only. The keyboard clicks it by Space or Enter,
/// a screen reader like any other button.
void clickByDoubleClick(QAbstractButton& button);
