#include "platform/desktop/key_table.h"

#include "platform/desktop/qt_runtime.h"
#include "support/window_driver.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>
#include <QWindow>

#include <gtest/gtest.h>

#include <random>

namespace {

/// How a system sends a key that is held.
enum class System {
    PressesAlone,  ///< unmarked presses and no release, as from the X server
    MarkedPairs    ///< a release and a press, both marked
};

struct KeyTableTest : testing::TestWithParam<System> {
    QtRuntime runtime;
    QDialog window;
    QPushButton button{QStringLiteral("Uno"), &window};
    QLineEdit line{&window};
    QSlider slider{Qt::Horizontal, &window};
    int clicks = 0;

    KeyTableTest() {
        QObject::connect(&button, &QPushButton::clicked, &window, [this] { ++clicks; });
        open(window);
    }

    void open(QWidget& opened) {
        opened.show();
        opened.activateWindow();
        runtime.yield();
        runtime.yield();
    }

    /// Comes with the next pass, to the window that is active then.
    static void post(QEvent::Type type, int key, const QString& text = {},
                     Qt::KeyboardModifiers modifiers = {}, bool marked = false) {
        QMetaObject::invokeMethod(
            qApp,
            [=] {
                sendSystemKey(*QApplication::activeWindow(), type, key, modifiers, text, marked);
            },
            Qt::QueuedConnection);
    }

    static void postRepeat(int key, const QString& text = {},
                           Qt::KeyboardModifiers modifiers = {}) {
        const bool marked = GetParam() == System::MarkedPairs;
        if (marked)
            post(QEvent::KeyRelease, key, text, modifiers, true);
        post(QEvent::KeyPress, key, text, modifiers, marked);
    }

    void down(int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = {}) {
        post(QEvent::KeyPress, key, text, modifiers);
        runtime.yield();
    }

    void repeat(int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = {}) {
        postRepeat(key, text, modifiers);
        runtime.yield();
    }

    void up(int key) {
        post(QEvent::KeyRelease, key);
        runtime.yield();
    }

    void hold(QWidget& focus, int key, const QString& text) {
        focus.setFocus();
        down(key, text);
        for (int i = 0; i < 4; ++i)
            repeat(key, text);
        up(key);
    }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(, KeyTableTest,
                         testing::Values(System::PressesAlone, System::MarkedPairs));

/// A plain second table: what a key does is known here and only sent there.
TEST_P(KeyTableTest, RandomKeysGoDownOnceForEachPressAndRepeatOnceForEachRepeat) {
    std::mt19937 random(20);
    const int keys[] = {Qt::Key_D, Qt::Key_F, Qt::Key_Backspace};
    const KeyCode codes[] = {'D', letterKey('F'), kKeyBackspace};
    bool isDown[3] = {};
    int presses[3] = {};
    int repeats[3] = {};
    int seenPresses[3] = {};
    int seenRepeats[3] = {};
    bool seen[3] = {};
    const auto look = [&] {
        for (int i = 0; i < 3; ++i) {
            const bool now = runtime.held(codes[i]);
            seenPresses[i] += now && !seen[i];
            seenRepeats[i] += runtime.repeated(codes[i]);
            seen[i] = now;
        }
    };
    for (int step = 0; step < 3000; ++step) {
        const unsigned i = random() % 3;
        if (!isDown[i]) {
            ++presses[i];
            isDown[i] = true;
            post(QEvent::KeyPress, keys[i]);
        } else if (random() % 4 != 0) {
            ++repeats[i];
            postRepeat(keys[i]);
        } else {
            isDown[i] = false;
            post(QEvent::KeyRelease, keys[i]);
        }
        if (random() % 2 == 0) {
            runtime.yield();
            look();
        }
    }
    for (int pass = 0; pass < 100; ++pass) {
        runtime.yield();
        look();
    }
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(seen[i], isDown[i]) << i;
        EXPECT_EQ(seenPresses[i], presses[i]) << i;
        EXPECT_EQ(seenRepeats[i], repeats[i]) << i;
    }
}

TEST_P(KeyTableTest, ARepeatMovesAndWritesButPressesNothing) {
    hold(button, Qt::Key_Space, QStringLiteral(" "));
    hold(button, Qt::Key_Return, QStringLiteral("\r"));
    EXPECT_EQ(clicks, 2);
    hold(line, Qt::Key_A, QStringLiteral("a"));
    EXPECT_EQ(line.text(), QStringLiteral("aaaaa"));
    hold(line, Qt::Key_Backspace, QStringLiteral("\b"));
    EXPECT_EQ(line.text(), QString());
    hold(slider, Qt::Key_Right, QString());
    EXPECT_GT(slider.value(), slider.singleStep());

    down(Qt::Key_Z, QStringLiteral("z"));
    QEvent lost(QEvent::ApplicationDeactivate);
    QCoreApplication::sendEvent(qApp, &lost);
    EXPECT_FALSE(runtime.held('Z')) << "a key let go elsewhere is never reported";
    down(Qt::Key_Z, QStringLiteral("z"));
    EXPECT_TRUE(runtime.held('Z')) << "and its next press is a new one";
}

TEST_P(KeyTableTest, AHeldKeyPressesNothingInTheWindowThatItOpened) {
    QDialog second;
    QPushButton standard(QStringLiteral("Due"), &second);
    int pressed = 0;
    QObject::connect(&standard, &QPushButton::clicked, &second, [&pressed] { ++pressed; });
    QAction save;
    save.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    second.addAction(&save);
    QObject::connect(&save, &QAction::triggered, &second, [&pressed] { ++pressed; });
    QAction opens;
    opens.setShortcut(save.shortcut());
    window.addAction(&opens);
    QObject::connect(&opens, &QAction::triggered, &second, [&] { open(second); });
    const QString text = QStringLiteral("\x13");

    down(Qt::Key_S, text, Qt::ControlModifier);
    ASSERT_TRUE(second.isActiveWindow());
    repeat(Qt::Key_S, text, Qt::ControlModifier);
    repeat(Qt::Key_S, QStringLiteral("s"));
    EXPECT_EQ(pressed, 0);
    EXPECT_FALSE(runtime.held('S')) << "a shortcut is not played";
    up(Qt::Key_S);
    down(Qt::Key_S, text, Qt::ControlModifier);
    EXPECT_EQ(pressed, 1);
    up(Qt::Key_S);

    open(window);
    QObject::connect(&button, &QPushButton::clicked, &second, [&] { open(second); });
    button.setFocus();
    standard.setFocus();
    down(Qt::Key_Return, QStringLiteral("\r"));
    ASSERT_TRUE(second.isActiveWindow());
    repeat(Qt::Key_Return, QStringLiteral("\r"));
    up(Qt::Key_Return);
    EXPECT_EQ(pressed, 1);
    down(Qt::Key_Return, QStringLiteral("\r"));
    EXPECT_EQ(pressed, 2);
}

/// The toolkit drops a release that comes to a window behind a modal one; the test sends none.
TEST(KeyTableFocus, AReleaseLostBetweenTwoWindowsEndsThePress) {
    bool isDown = true;
    KeyTable keys([&](std::uint32_t) { return isDown; });
    QDialog first;
    QDialog second;
    QPushButton standard(QStringLiteral("Due"), &second);
    int clicks = 0;
    QObject::connect(&standard, &QPushButton::clicked, &second, [&] { ++clicks; });
    const auto activate = [](QWidget& window) {
        window.show();
        window.activateWindow();
        QCoreApplication::processEvents();
        ASSERT_TRUE(window.isActiveWindow());
    };
    const auto press = [](QWidget& window, int key, quint32 scanCode, const QString& text) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, scanCode, 0, 0, text);
        QCoreApplication::sendEvent(window.windowHandle(), &event);
    };
    activate(first);
    press(first, Qt::Key_Q, 24, QStringLiteral("q"));
    press(first, Qt::Key_Return, 36, QStringLiteral("\r"));
    activate(second);
    press(second, Qt::Key_Return, 36, QStringLiteral("\r"));
    EXPECT_TRUE(keys.held('Q'));
    EXPECT_EQ(clicks, 0) << "the key is still down";
    isDown = false;
    activate(first);
    activate(second);
    EXPECT_FALSE(keys.held('Q'));
    press(second, Qt::Key_Return, 36, QStringLiteral("\r"));
    EXPECT_EQ(clicks, 1);
}
