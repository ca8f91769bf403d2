#pragma once

#include <QObject>
#include <QPointer>
#include <QSize>
#include <QWidget>

#include <vector>

/// Enlarges the type of a window, and with it whatever takes its size from the type, while the
/// window is larger than it was made: in proportion to the smaller of its sides, up to a limit and
/// as far as everything fits. A desktop's type that is so large that the window would not fit the
/// screen becomes smaller in it, also when controls are shown later.
class RoomScale : public QObject {
    Q_OBJECT

public:
    static constexpr double kLimit = 1.5;

    /// `made` is the size at which the type has its own size; it grows to `limit` times that. All
    /// widgets of the window must have been made.
    RoomScale(QWidget& window, QSize made, double limit = kLimit);

    /// A size that was made for usual type, in the type of the window where that is larger.
    static QSize forType(const QWidget& window, QSize size);

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void followSize();
    void enlarge(int steps);
    void fitScreen();
    QSize roomHere() const;
    bool fits(QSize room) const;
    double type() const;
    void applyType();

    QWidget& window_;
    QSize made_;
    double limit_;
    double ownSize_;  ///< of the window's type, in points
    double fit_ = 1;  ///< what the screen leaves of that
    int steps_ = 0;   ///< by which the type is larger in the window's room
    int wantedSteps_ = 0;

    /// A widget whose type has a size of its own.
    struct Other {
        QPointer<QWidget> widget;
        double size;
    };
    std::vector<Other> others_;
};
