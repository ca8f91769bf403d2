#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <deque>
#include <functional>

/// Says texts in the order in which they are given, each once and not before its time. It owns no
/// widget, so that it changes neither what is painted nor the focus.
class Announcer : public QObject {
    Q_OBJECT

public:
    using Speak = std::function<void(const QString& text)>;

    explicit Announcer(Speak speak, QObject* parent = nullptr);

    /// The application's one, which speaks through the screen reader.
    static Announcer& shared();

    /// Whether anybody listens, so that announcing is worth the while.
    bool heard() const;

    /// Says the text after those that wait, and not before `delay` has passed.
    void say(const QString& text, std::chrono::milliseconds delay);

Q_SIGNALS:
    /// A text was given, to be said now or later.
    void given(const QString& text);

private:
    struct Waiting {
        QString text;
        std::chrono::milliseconds due;  ///< on `clock_`
    };

    std::chrono::milliseconds now() const;
    void sayDue();
    std::chrono::milliseconds leftToWait() const;

    Speak speak_;
    std::deque<Waiting> waiting_;
    std::chrono::milliseconds earliest_{};  ///< for the next text, on `clock_`
    QTimer timer_;
    QElapsedTimer clock_;
};
