#pragma once

#include "platform/key_codes.h"

#include <QObject>
#include <QPointer>
#include <QWindow>

#include <array>
#include <bitset>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <variant>

class QKeyEvent;

/// Which keys are down, fed by the application's key events.
///
/// A press of a key that is down already is a repeat, whether the system marked it or not, and the
/// table alone decides that. A repeat moves a cursor on or writes a letter once more; it presses
/// nothing again: one of a letter or sign where no text is typed, of Enter, Escape or a function
/// key, or one that comes to another window than the press, reaches no control.
/// One that goes on is looked up among the shortcuts as a repeat, so that these decide by
/// themselves whether they repeat.
///
/// For a loop that polls, transitions are queued as they come and taken by `advance`, at most one
/// for each key, so that a tap that falls between two passes is down for one of them. Where that is
/// asked for, what was typed ahead comes one after the other. Work takes its turn among it.
/// While no loop polls, or in a dialog over it, keys only change their state: what was typed then
/// is not played afterwards.
class KeyTable : public QObject {
public:
    /// Whether the key with a scan code is down now; nothing where that is not known.
    using KeyState = std::function<std::optional<bool>(std::uint32_t scanCode)>;

    KeyTable();
    explicit KeyTable(KeyState isDown);

    bool held(KeyCode key) const { return isKey(key) && down_[static_cast<std::size_t>(key)]; }

    /// Whether a repeat of the key was among the transitions last taken.
    bool repeated(KeyCode key) const {
        return isKey(key) && repeated_[static_cast<std::size_t>(key)];
    }

    /// Takes the next transition of every key, in order only those before the second one of a key,
    /// or does the next work; answers whether there was any.
    bool advance();

    /// Whether no key is to overtake another one; answers what it was before.
    bool setInOrder(bool on) { return std::exchange(inOrder_, on); }

    /// Does work when all transitions that wait have been taken, and before those that come later;
    /// at once where none wait or no loop polls.
    void post(std::function<void()> work);

    /// Whether transitions wait for the loop that runs now to take them.
    bool waits() const { return polledDepth_ == currentDepth() && !queue_.empty(); }

    /// The depth of event loops whose keys are polled, or `kNotPolled`; answers what it was before.
    static constexpr int kNotPolled = -1;
    int setPolledDepth(int depth);

    /// How many event loops run inside each other now.
    static int currentDepth();

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    /// A key as the system counts them: its scan code, or else, negative, what the toolkit calls
    /// it.
    using Id = std::int64_t;

    /// A key that is down on the keyboard.
    struct Press {
        QPointer<QWindow> window;        ///< where it was pressed
        std::array<KeyCode, 2> codes{};  ///< by place and by letter; 0 = none
        bool announced = false;          ///< its `KeyPress` is still to come
    };

    enum class Change { Down, Up, Repeat };
    struct Transition {
        KeyCode key;
        Change change;
    };
    using Work = std::function<void()>;

    static bool isKey(KeyCode key) { return key > 0 && key <= kKeyLast; }
    static Id idOf(const QKeyEvent& event);
    /// Whether a press, of a key that was up as far as is known or not, is a repeat.
    static bool isRepeat(bool isNew, const QKeyEvent& event);
    static bool goesOn(const Press& press, const QWindow& window, const QKeyEvent& repeat);

    bool announce(QWindow& window, QKeyEvent& event);
    bool press(QWindow& window, const QKeyEvent& event);
    bool release(const QKeyEvent& event);
    void loseKeys();
    void loseReleasedKeys();
    void take(const Press& press, Change change);
    void apply(const Transition& transition);
    void takeAll();

    const KeyState isDown_;
    std::map<Id, Press> pressed_;
    std::deque<std::variant<Transition, Work>> queue_;
    int polledDepth_ = kNotPolled;
    bool inOrder_ = false;
    std::bitset<kKeyLast + 1> down_;
    std::bitset<kKeyLast + 1> repeated_;
};
