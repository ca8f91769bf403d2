#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

class QEvent;
class QWindow;

/// Keeps the input that waits in the queue when a box opens, and delivers it when the last box is
/// closed. The toolkit would drop it: it looks for the box only when an event's turn comes, so that
/// a click on a window counts as a click past the box, though there was none yet.
///
/// What was pressed and not let go again before the box is let go after it. What comes while a box
/// is on show is the toolkit's business.
class HeldInput : public QObject {
public:
    HeldInput();
    ~HeldInput() override;

    /// While one of these exists a box is on show. The queue is taken when it is made.
    class Box {
    public:
        explicit Box(HeldInput& input);
        ~Box();
        Box(const Box&) = delete;
        Box& operator=(const Box&) = delete;

    private:
        HeldInput& input_;
    };

    /// Takes the queue while no box is on show, as in a wait. It is delivered as soon as no `Pause`
    /// is left. Answers whether `wanted` is true of anything in it.
    bool collect(const std::function<bool(const QEvent&)>& wanted);

    /// While one of these exists no input is let through.
    class Pause {
    public:
        Pause() { ++paused_; }
        ~Pause() { --paused_; }
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;
    };

    static bool paused() { return paused_ > 0; }

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    struct Held {
        QPointer<QWindow> window;
        std::unique_ptr<QEvent> event;
    };

    void take();
    void takeQueue();
    void letGo();
    void deliver();

    static inline int paused_ = 0;

    std::vector<Held> held_;
    int boxes_ = 0;  ///< on show
    QTimer delivery_;
    int triesLeft_ = 0;  ///< to find the window active again, for a shortcut
};
