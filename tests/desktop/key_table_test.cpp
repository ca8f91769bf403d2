#include "platform/desktop/key_table.h"

#include "platform/desktop/key_map.h"
#include "platform/desktop/qt_runtime.h"
#include "support/window_driver.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QPushButton>

#include <gtest/gtest.h>

#include <deque>
#include <random>
#if __has_include(<linux/input-event-codes.h>)
#include <linux/input-event-codes.h>
#endif

namespace {

/// A window that counts the presses that reach it.
struct Typed : QWidget {
    int presses = 0;

    Typed() { setFocusPolicy(Qt::StrongFocus); }
    void keyPressEvent(QKeyEvent* /*event*/) override { ++presses; }
    void activate() {
        show();
        activateWindow();
        QCoreApplication::processEvents();
    }
};

/// The table in its plainest form.
struct PlainKey {
    int key;
    KeyCode code;
    QString text;
    int window = -1;    ///< where it was pressed; -1: it is up as far as is known
    bool plays = true;  ///< pressed in a window that does not keep its keys
    bool held = false;
    bool repeated = false;
    std::deque<QEvent::Type> waiting{};  ///< `KeyPress`, `KeyRelease`, or `None` for a repeat

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
    PlainKey keys[] = {{Qt::Key_D, 'D', "d"},
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
    std::string acts;                           ///< since all keys were up last
    windows[active].activate();

    for (int step = 0; step < 6000; ++step) {
        PlainKey& one = keys[random() % std::size(keys)];
        Typed& window = windows[active];
        const auto send = [&](QEvent::Type type, bool marked) {
            events.emplace_back([&window, &one, type, marked] {
                sendSystemKey(window, type, one.key, {}, one.text, marked);
            });
        };
        const auto take = [&one](QEvent::Type change) {
            if (one.plays)
                one.waiting.push_back(change);
        };
        const int act = static_cast<int>(random() % 16);
        acts += " " + std::to_string(act) + one.text.toStdString();
        if (act < 5 && one.window < 0) {
            one.window = active;
            one.plays = !keeps[active];
            ++expected[active];
            send(QEvent::KeyPress, false);
            take(QEvent::KeyPress);
        } else if (act < 7 && one.window >= 0) {
            const bool movesOrWrites =
                one.text.isEmpty() || one.text[0] < u' ' || writes || keeps[active];
            const bool goesOn = movesOrWrites && one.window == active && one.key != Qt::Key_F3 &&
                                one.key != Qt::Key_Return && one.key != Qt::Key_Escape;
            expected[active] += goesOn;
            if (GetParam())
                send(QEvent::KeyRelease, true);
            send(QEvent::KeyPress, GetParam());
            take(QEvent::None);
        } else if (act < 10 && one.window >= 0) {
            one.window = -1;
            send(QEvent::KeyRelease, false);
            take(QEvent::KeyRelease);
        } else if (act >= 10) {
            const bool came = !events.empty();
            for (auto& event : std::exchange(events, {}))
                QMetaObject::invokeMethod(qApp, event, Qt::QueuedConnection);
            const bool polled = act < 14;
            if (polled)
                runtime.yield();
            else
                QCoreApplication::processEvents();
            for (PlainKey& key : keys) {
                key.repeated = !polled && key.repeated;
                while (!key.waiting.empty() && (polled || came)) {
                    key.apply(key.waiting.front());
                    key.waiting.pop_front();
                    if (polled)
                        break;
                }
                ASSERT_EQ(runtime.held(key.code), key.held) << key.code << acts;
                ASSERT_EQ(runtime.repeated(key.code), key.repeated) << key.code << acts;
            }
            for (int i : {0, 1})
                ASSERT_EQ(windows[i].presses, expected[i]) << i << acts;
            // Between the passes the user goes to another window, or from text to a button.
            if (act == 10)
                windows[active ^= 1].activate();
            writes = act == 11 ? !writes : writes;
            for (Typed& each : windows)
                each.setAttribute(Qt::WA_InputMethodEnabled, writes);
            if (act == 12)
                window.windowHandle()->setProperty(kKeepsKeys, keeps[&window - windows] ^= true);
            if (act == 14 && random() % 4 == 0) {
                QEvent lost(QEvent::ApplicationDeactivate);
                QCoreApplication::sendEvent(qApp, &lost);
                for (PlainKey& key : keys) {
                    key.window = -1;
                    key.held = false;
                    key.waiting.clear();
                }
                acts.clear();
            }
        }
    }
}

TEST_P(KeyTableModel, AHeldShortcutPressesNothingInTheWindowThatItOpened) {
    QtRuntime runtime;
    Typed first;
    QDialog second;
    int acts = 0;
    QAction opens;
    QAction saves;
    for (auto [action, window] : {std::pair{&opens, static_cast<QWidget*>(&first)},
                                  {&saves, static_cast<QWidget*>(&second)}}) {
        action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
        window->addAction(action);
    }
    const auto activate = [&](QWidget& window) {
        window.show();
        window.activateWindow();
        runtime.yield();
    };
    QObject::connect(&opens, &QAction::triggered, [&] { activate(second); });
    QObject::connect(&saves, &QAction::triggered, [&] { ++acts; });
    activate(first);
    sendSystemKey(first, QEvent::KeyPress, Qt::Key_S, Qt::ControlModifier, "\x13");
    ASSERT_TRUE(second.isActiveWindow());
    EXPECT_FALSE(runtime.held('S')) << "a shortcut is not played";
    for (const auto modifiers : {Qt::ControlModifier, Qt::NoModifier})
        sendSystemKey(second, QEvent::KeyPress, Qt::Key_S, modifiers, "s", GetParam());
    EXPECT_EQ(acts, 0);
    sendSystemKey(second, QEvent::KeyRelease, Qt::Key_S);
    sendSystemKey(second, QEvent::KeyPress, Qt::Key_S, Qt::ControlModifier, "\x13");
    EXPECT_EQ(acts, 1);
}

/// The toolkit drops a release that comes to a window behind a modal one; the test sends none.
TEST(KeyTable, AsksTheSystemWhichKeysAreStillDownWhenTheFocusGoes) {
    std::optional<bool> isDown = true;
    KeyTable keys([&](std::uint32_t) { return isDown; });
    Typed windows[2];
    const auto press = [](Typed& window, int key, quint32 scanCode) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, scanCode, 0, 0);
        QCoreApplication::sendEvent(window.windowHandle(), &event);
    };
    const auto pressAgain = [&] {
        windows[0].activate();
        windows[1].activate();
        press(windows[1], Qt::Key_Return, 36);
        return std::exchange(windows[1].presses, 0);
    };
    windows[0].activate();
    press(windows[0], Qt::Key_Q, 24);
    press(windows[0], Qt::Key_Return, 36);
    press(windows[0], Qt::Key_W, 0);
    EXPECT_EQ(pressAgain(), 0) << "it is down";
    isDown.reset();
    EXPECT_EQ(pressAgain(), 0) << "nobody knows";
    EXPECT_TRUE(keys.held('Q'));
    isDown = false;
    EXPECT_EQ(pressAgain(), 1);
    EXPECT_FALSE(keys.held('Q'));
    EXPECT_TRUE(keys.held('W')) << "a key without a scan code cannot be asked for";

    QEvent lost(QEvent::ApplicationStateChange);
    QCoreApplication::sendEvent(qApp, &lost);
    EXPECT_FALSE(keys.held('W') || keys.held(kKeyEnter));
    press(windows[1], Qt::Key_W, 0);
    isDown = true;
    press(windows[1], Qt::Key_Return, 36);
    QCoreApplication::sendEvent(qApp, &lost);
    press(windows[1], Qt::Key_Return, 36);
    EXPECT_EQ(windows[1].presses, 2) << "one that is really down goes on to repeat itself";
}

#ifdef KEY_Q
/// The system's own list of places is the measure; a key without a place goes by its name.
TEST(KeyMap, KeysGoByTheirPlaceAndLettersByTheLayoutToo) {
    using Row = std::array<int, 3>;  // place, code, and the toolkit's name of the key
    constexpr int kNone = Qt::Key_Egrave;
    std::vector<Row> rows{{KEY_ESC, kKeyEscape, Qt::Key_Escape},
                          {KEY_BACKSPACE, kKeyBackspace, Qt::Key_Backspace},
                          {KEY_ENTER, kKeyEnter, Qt::Key_Return},
                          {KEY_KPENTER, kKeyEnter, Qt::Key_Enter},
                          {KEY_SPACE, kKeySpace, Qt::Key_Space},
                          {KEY_COMMA, kKeyComma, Qt::Key_Comma},
                          {KEY_DOT, kKeyFullStop, Qt::Key_Period},
                          {KEY_RIGHTBRACE, kKeyPlus, Qt::Key_Plus},
                          {KEY_SLASH, kKeyMinus, Qt::Key_Minus},
                          {KEY_LEFT, kKeyLeft, Qt::Key_Left},
                          {KEY_UP, kKeyUp, Qt::Key_Up},
                          {KEY_RIGHT, kKeyRight, Qt::Key_Right},
                          {KEY_DOWN, kKeyDown, Qt::Key_Down},
                          {KEY_EQUAL, kKeyLeftOfBackspace, kNone},
                          {KEY_LEFTBRACE, kKeyRightOfP, kNone},
                          {KEY_SEMICOLON, kKeyRightOfL, kNone},
                          {KEY_KP0, kKeyNumpad0, kNone},
                          {KEY_TAB, 0, kNone}};
    const std::pair<int, const char*> inOrder[] = {
        {KEY_1, "1234567890"}, {KEY_Q, "QWERTYUIOP"}, {KEY_A, "ASDFGHJKL"}, {KEY_Z, "ZXCVBNM"}};
    for (const auto& [first, keys] : inOrder) {
        for (int i = 0; keys[i]; ++i)
            rows.push_back({first + i, keys[i], keys[i]});
    }
    for (int i = 0; i < 10; ++i)
        rows.push_back({KEY_F1 + i, kKeyF1 + i, Qt::Key_F1 + i});
    for (int i = 0; i < 9; ++i) {
        const int lowest[] = {KEY_KP1, KEY_KP4, KEY_KP7};
        rows.push_back({lowest[i / 3] + i % 3, kKeyNumpad0 + 1 + i, kNone});
    }
    const auto event = [](int key, int scanCode, Qt::KeyboardModifiers modifiers = {}) {
        return QKeyEvent(QEvent::KeyPress, key, modifiers, scanCode, 0, 0);
    };
    for (const auto& [place, code, key] : rows) {
        // Scan codes as the X server and Wayland count.
        EXPECT_EQ(keyCodeOf(event(Qt::Key_Z, place + 8)), code) << place;
        EXPECT_EQ(keyCodeOf(event(key, 0)), key == kNone ? 0 : code) << key;
        const bool letter = key >= 'A' && key <= 'Z';
        EXPECT_EQ(letterKeyOf(event(key, 24)), letter ? letterKey(static_cast<char>(key)) : 0);
        if (key >= '0' && key <= '9') {
            EXPECT_EQ(keyCodeOf(event(key, 0, Qt::KeypadModifier)), kKeyNumpad0 + key - '0');
        }
    }
}
#endif
