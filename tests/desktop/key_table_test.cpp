#include "platform/desktop/key_table.h"

#include "platform/desktop/key_map.h"
#include "platform/desktop/qt_runtime.h"
#include "support/window_driver.h"

#include <QApplication>
#include <QKeyEvent>
#include <QShortcut>

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <random>
#include <set>
#include <utility>
#include <vector>
#if __has_include(<linux/input-event-codes.h>)
#include <linux/input-event-codes.h>
#endif

namespace {

constexpr QKeyCombination kUndo = Qt::CTRL | Qt::Key_Z;
constexpr QKeyCombination kSave = Qt::CTRL | Qt::Key_S;
constexpr QKeyCombination kStart = Qt::CTRL | Qt::Key_Enter;

/// A window that counts the presses that reach it and its shortcuts, of which one does not repeat.
struct Typed : QWidget {
    int presses = 0;

    Typed() {
        setFocusPolicy(Qt::StrongFocus);
        for (const QKeyCombination keys : {kUndo, kSave, kStart}) {
            auto* shortcut = new QShortcut(keys, this, [this] { ++presses; });
            shortcut->setAutoRepeat(keys != kSave);
        }
    }
    void keyPressEvent(QKeyEvent* /*event*/) override { ++presses; }
    void activate() {
        show();
        activateWindow();
        QCoreApplication::processEvents();
    }
};

/// The table in its plainest form.
struct PlainKey {
    QKeyCombination key;
    KeyCode code;
    QString text;
    int window = -1;    ///< where it was pressed; -1: it is up as far as is known
    bool plays = true;  ///< pressed in a window that does not keep its keys
    bool held = false;
    bool repeated = false;

    void apply(QEvent::Type change) {
        if (change == QEvent::None)
            repeated = true;
        else
            held = change == QEvent::KeyPress;
    }
};

/// Whether the system marks the events of a repeat, and sends a release before each.
struct KeyTableModel : testing::TestWithParam<bool> {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(, KeyTableModel, testing::Bool());

TEST_P(KeyTableModel, RandomKeysInTwoWindowsAreHeldAndPressedAsInThePlainTable) {
    QtRuntime runtime;
    Typed windows[2];
    std::mt19937 random(20);
    PlainKey keys[] = {{kUndo, 'Z', "\x1a"},
                       {kSave, 'S', "\x13"},
                       {kStart, letterKey('R'), "\r"},
                       {Qt::Key_D, 'D', "d"},
                       {Qt::Key_F, letterKey('F'), "f"},
                       {Qt::Key_Left, kKeyLeft, {}},
                       {Qt::Key_Backspace, kKeyBackspace, "\b"},
                       {Qt::Key_Return, kKeyEnter, "\r"},
                       {Qt::Key_Escape, kKeyEscape, "\x1b"},
                       {Qt::Key_F3, kKeyF1 + 2, {}}};
    int active = 0;
    int expected[2] = {};
    bool writes = false;
    bool keeps[2] = {};
    std::vector<std::function<void()>> events;  ///< that come with the next pass
    bool came = false;  ///< among them others than presses that a shortcut takes
    std::string acts;   ///< since all keys were up last
    /// `KeyPress`, `KeyRelease`, or `None` for a repeat; of no key, a work.
    using Change = std::pair<PlainKey*, QEvent::Type>;
    std::vector<Change> coming;  ///< with the next pass
    std::deque<Change> waiting;  ///< to be polled
    bool inOrder = false;
    int worksDone = 0;
    int worksExpected = 0;
    windows[active].activate();

    for (int step = 0; step < 6000; ++step) {
        PlainKey& one = keys[random() % std::size(keys)];
        Typed& window = windows[active];
        const auto send = [&](QEvent::Type type, bool marked) {
            events.emplace_back([&window, &one, type, marked] {
                sendSystemKey(window, type, one.key.key(), one.key.keyboardModifiers(), one.text,
                              marked);
            });
        };
        const auto take = [&](QEvent::Type change) {
            if (one.plays)
                coming.emplace_back(&one, change);
        };
        const int act = static_cast<int>(random() % 16);
        acts += " " + std::to_string(act) + one.text.toStdString();
        if (act < 5 && one.window < 0) {
            one.window = active;
            one.plays = !keeps[active] && one.key.keyboardModifiers() == 0;
            ++expected[active];
            send(QEvent::KeyPress, false);
            came |= one.key.keyboardModifiers() == 0;
            take(QEvent::KeyPress);
        } else if (act < 7 && one.window >= 0) {
            const bool movesOrWrites =
                one.text.isEmpty() || one.text[0] < u' ' || writes || keeps[active];
            const bool goesOn = movesOrWrites && one.window == active && one.key != kSave &&
                                one.key.key() != Qt::Key_F3 && one.key.key() != Qt::Key_Return &&
                                one.key != kStart && one.key.key() != Qt::Key_Escape;
            expected[active] += goesOn;
            if (GetParam())
                send(QEvent::KeyRelease, true);
            send(QEvent::KeyPress, GetParam());
            came = true;
            take(QEvent::None);
        } else if (act < 10 && one.window >= 0) {
            one.window = -1;
            send(QEvent::KeyRelease, false);
            came = true;
            take(QEvent::KeyRelease);
        } else if (act == 9) {
            events.emplace_back([&] { runtime.afterKeys([&] { ++worksDone; }); });
            coming.emplace_back(nullptr, QEvent::None);
        } else if (act >= 10) {
            for (auto& event : std::exchange(events, {}))
                QMetaObject::invokeMethod(qApp, event, Qt::QueuedConnection);
            const bool polled = act < 14;
            if (polled)
                runtime.yield();
            else
                QCoreApplication::processEvents();
            for (PlainKey& key : keys)
                key.repeated = !polled && key.repeated;
            for (const Change& each : std::exchange(coming, {})) {
                const bool atOnce = !each.first && (!polled || waiting.empty());
                atOnce ? void(++worksExpected) : waiting.push_back(each);
            }
            std::set<PlainKey*> taken;
            bool stopped = false;
            for (const Change& each : std::exchange(waiting, {})) {
                const auto [key, change] = each;
                const bool alone = !key && !stopped && taken.empty();
                if (!polled ? came : key ? !stopped && taken.insert(key).second : alone) {
                    key ? key->apply(change) : void(++worksExpected);
                    stopped |= polled && !key;
                } else {
                    waiting.push_back(each);
                    stopped |= inOrder || !key;
                }
            }
            ASSERT_EQ(worksDone, worksExpected) << acts;
            for (const PlainKey& key : keys) {
                ASSERT_EQ(runtime.held(key.code), key.held) << key.code << acts;
                ASSERT_EQ(runtime.repeated(key.code), key.repeated) << key.code << acts;
            }
            came = false;
            for (int i : {0, 1})
                ASSERT_EQ(windows[i].presses, expected[i]) << i << acts;
            // Between the passes the user goes to another window, or from text to a button.
            if (act == 10)
                windows[active ^= 1].activate();
            writes = act == 11 ? !writes : writes;
            for (Typed& each : windows)
                each.setAttribute(Qt::WA_InputMethodEnabled, writes);
            if (act == 13)
                runtime.pollKeysInOrder(inOrder ^= true);
            if (act == 12)
                window.windowHandle()->setProperty(kKeepsKeys, keeps[&window - windows] ^= true);
            if (act == 14 && random() % 4 == 0) {
                QEvent lost(QEvent::ApplicationDeactivate);
                QCoreApplication::sendEvent(qApp, &lost);
                for (PlainKey& key : keys) {
                    key.window = -1;
                    key.held = false;
                }
                waiting.clear();
                acts.clear();
            }
        }
    }
}

/// The toolkit drops a release that comes to a window behind a modal one; the test sends none.
TEST(KeyTable, AsksTheSystemWhichKeysAreStillDownWhenTheFocusGoes) {
    std::optional<bool> isDown;
    KeyTable keys([&](std::uint32_t) { return isDown; });
    Typed windows[2];
    const auto press = [&](Typed& window, int key, quint32 scanCode) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, scanCode, 0, 0);
        QCoreApplication::sendEvent(window.windowHandle(), &event);
        return std::exchange(window.presses, 0);
    };
    windows[0].activate();
    press(windows[0], Qt::Key_Return, 36);
    press(windows[0], Qt::Key_W, 0);
    for (const auto state : {std::optional<bool>(), std::optional(true), std::optional(false)}) {
        isDown = state;
        windows[0].activate();
        windows[1].activate();
        EXPECT_EQ(press(windows[1], Qt::Key_Return, 36), isDown == false) << "down or unknown";
    }
    EXPECT_TRUE(keys.held('W')) << "a key without a scan code cannot be asked for";
    QEvent lost(QEvent::ApplicationStateChange);
    for (const bool down : {false, true}) {
        isDown = down;
        QCoreApplication::sendEvent(qApp, &lost);
        EXPECT_FALSE(keys.held('W') || keys.held(kKeyEnter));
        EXPECT_EQ(press(windows[1], Qt::Key_Return, 36), !down) << "goes on to repeat itself";
    }
}

TEST(KeyTable, TakesAPressThatComesAfterOtherKeysWereAnnounced) {
    const KeyTable keys([](std::uint32_t) { return std::nullopt; });
    Typed window;
    window.activate();
    const auto send = [&](QEvent::Type type) {
        for (const int key : {Qt::Key_Left, Qt::Key_Return}) {
            QKeyEvent event(type, key, Qt::NoModifier, static_cast<quint32>(key), 0, 0);
            QCoreApplication::sendEvent(window.windowHandle(), &event);
        }
        return std::exchange(window.presses, 0);
    };
    EXPECT_EQ(send(QEvent::ShortcutOverride) + send(QEvent::KeyPress), 2);
    EXPECT_EQ(send(QEvent::ShortcutOverride) + send(QEvent::KeyPress), 1)
        << "only the arrow repeats";
}

#ifdef KEY_Q
/// The system's own list of places is the measure; a key without a place goes by its name.
TEST(KeyMap, KeysGoByTheirPlaceOrElseByTheirName) {
    const auto codeOf = [](int key, int place, Qt::KeyboardModifiers modifiers = {}) {
        // Scan codes as the X server and Wayland count.
        const int scanCode = place ? place + 8 : 0;
        return keyCodeOf(QKeyEvent(QEvent::KeyPress, key, modifiers, scanCode, 0, 0));
    };
    std::map<int, KeyCode> places;
    const int single[] = {KEY_ESC,   KEY_BACKSPACE, KEY_ENTER,     KEY_KPENTER,
                          KEY_SPACE, KEY_COMMA,     KEY_DOT,       KEY_RIGHTBRACE,
                          KEY_SLASH, KEY_LEFT,      KEY_UP,        KEY_RIGHT,
                          KEY_DOWN,  KEY_EQUAL,     KEY_LEFTBRACE, KEY_SEMICOLON};
    const KeyCode codes[] = {
        kKeyEscape,  kKeyBackspace, kKeyEnter, kKeyEnter,           kKeySpace,
        kKeyComma,   kKeyFullStop,  kKeyPlus,  kKeyMinus,           kKeyLeft,
        kKeyUp,      kKeyRight,     kKeyDown,  kKeyLeftOfBackspace, kKeyRightOfP,
        kKeyRightOfL};
    for (std::size_t i = 0; i < std::size(single); ++i)
        places[single[i]] = codes[i];
    const std::pair<int, const char*> inOrder[] = {
        {KEY_1, "1234567890"}, {KEY_Q, "QWERTYUIOP"}, {KEY_A, "ASDFGHJKL"}, {KEY_Z, "ZXCVBNM"}};
    for (const auto& [first, keys] : inOrder) {
        for (int i = 0; keys[i]; ++i) {
            const int key = static_cast<unsigned char>(keys[i]);
            places[first + i] = key;
            EXPECT_EQ(codeOf(key, 0), key);
        }
    }
    for (int i = 0; i < 10; ++i) {
        places[KEY_F1 + i] = kKeyF1 + i;
        EXPECT_EQ(codeOf(Qt::Key_F1 + i, 0), kKeyF1 + i);
        const int keypad[] = {KEY_KP1, KEY_KP4, KEY_KP7, KEY_KP0};
        places[keypad[i / 3] + i % 3] = kKeyNumpad0 + (i + 1) % 10;
        EXPECT_EQ(codeOf(Qt::Key_0 + i, 0, Qt::KeypadModifier), kKeyNumpad0 + i);
    }
    for (int place = 1; place < 128; ++place)
        EXPECT_EQ(codeOf(Qt::Key_Z, place), places[place]) << place;
    EXPECT_EQ(codeOf(Qt::Key_Minus, 0), kKeyMinus);
    EXPECT_EQ(codeOf(Qt::Key_Egrave, 0), 0);
}
#endif
