#pragma once

#include <QObject>
#include <QPointer>
#include <QSize>
#include <QWidget>

#include <vector>

/// Enlarges the type of a window, and with it whatever takes its size from the type, while the
/// window is larger than it was made: in proportion to the smaller of its sides, up to a limit. A
/// desktop's type that is so large that the window would not fit the screen becomes smaller in it.
class RoomScale : public QObject {
    Q_OBJECT

public:
    static constexpr double kLimit = 1.5;

    /// `made` is the size at which the type has its own size. All widgets of the window must have
    /// been made.
    RoomScale(QWidget& window, QSize made);

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void fitScreen();
    bool fits(QSize room) const;
    void follow();
    void scaleType(double scale);

    QWidget& window_;
    QSize made_;
    double ownSize_;  ///< of the window's type, in points

    /// A widget whose type has a size of its own.
    struct Other {
        QPointer<QWidget> widget;
        double size;
    };
    std::vector<Other> others_;
    double scale_ = 1;
};
