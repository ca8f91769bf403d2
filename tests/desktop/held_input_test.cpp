#include "platform/desktop/qt_dialogs.h"
#include "platform/desktop/qt_runtime.h"
#include "support/window_driver.h"

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

/// Exported by the toolkit for its test library: input as it comes from the system, at once.
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                                      Qt::MouseButtons state, Qt::MouseButton button,
                                      QEvent::Type type, Qt::KeyboardModifiers modifiers,
                                      int timestamp);

using namespace std::chrono_literals;

namespace {

struct HeldInputTest : testing::Test {
    QtRuntime runtime;
    QtDialogs dialogs{runtime};
    QPushButton window;
    QShortcut shortcut{Qt::CTRL | Qt::Key_B, &window};
    int clicks = 0;
    int shortcuts = 0;

    void SetUp() override {
        window.resize(200, 100);
        QObject::connect(&window, &QPushButton::clicked, [this] { ++clicks; });
        QObject::connect(&shortcut, &QShortcut::activated, [this] { ++shortcuts; });
        shortcut.setContext(Qt::ApplicationShortcut);
        QApplication::setDoubleClickInterval(0);
        window.show();
        window.activateWindow();
        while (!window.windowHandle()->isExposed())
            runtime.pump(runtime.now() + 10ms);
    }

    void mouse(QEvent::Type type) {
        const bool down = type == QEvent::MouseButtonPress;
        qt_handleMouseEvent(window.windowHandle(), {100, 50}, window.mapToGlobal(QPoint(100, 50)),
                            down ? Qt::LeftButton : Qt::NoButton, Qt::LeftButton, type,
                            Qt::NoModifier, 0);
    }
    void click() {
        mouse(QEvent::MouseButtonPress);
        mouse(QEvent::MouseButtonRelease);
    }

    /// Input that comes with the next look into the queue.
    void waiting(std::function<void()> input) {
        QMetaObject::invokeMethod(&window, std::move(input), Qt::QueuedConnection);
    }

    /// Shows a box that is answered at once.
    template <typename Show>
    void answered(Show show) {
        bool seen = false;
        QTimer answer;
        answer.callOnTimeout([&] {
            auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!box || std::exchange(seen, true))
                return;
            EXPECT_EQ(clicks + shortcuts, 0) << "input has to wait for the box";
            click();  // past the box
            QCoreApplication::processEvents();
            box->reject();
        });
        answer.start(1);
        show();
        EXPECT_TRUE(seen);
    }

    void pass() {
        for (int i = 0; i < 5; ++i)
            runtime.yield();
    }
};

}  // namespace

TEST_F(HeldInputTest, NoBoxTakesTheInputThatWaitedBeforeIt) {
    const std::function<void()> boxes[] = {
        [this] { dialogs.message("a"); },
        [this] { dialogs.input("a", {}, {}); },
        [this] {
            dialogs.saveFile("a", "a", {"a", "b"});
        },
    };
    for (const auto& show : boxes) {
        clicks = shortcuts = 0;
        waiting([this] {
            for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
                sendSystemKey(window, type, Qt::Key_B, Qt::ControlModifier);
            click();
            mouse(QEvent::MouseButtonPress);  // let go while the box is on show
        });
        answered(show);
        window.activateWindow();
        runtime.blockUntil(runtime.now() + 30ms);
        EXPECT_EQ(clicks, 0) << "a wait lets no input through";
        for (int i = 0; i < 100 && (clicks < 1 || shortcuts < 1); ++i)
            runtime.pump(runtime.now() + 5ms);
        EXPECT_GE(clicks, 1);
        EXPECT_EQ(shortcuts, 1);
        EXPECT_FALSE(window.isDown());
    }
}

TEST_F(HeldInputTest, ItWaitsForTheLastOfSeveralBoxes) {
    waiting([this] { click(); });
    answered([this] { dialogs.message("a"); });
    answered([this] { dialogs.message("b"); });
    pass();
    EXPECT_EQ(clicks, 1);
    QObject::connect(&window, &QPushButton::clicked, [this] {
        if (clicks == 2)  // the click after this one is meant for the loop inside
            while (clicks < 3)
                runtime.pump(kForever);
    });
    waiting([this] {
        click();
        click();
    });
    answered([this] { clicks = 0, dialogs.message("c"), clicks = 1; });
    pass();
    EXPECT_EQ(clicks, 3);
}
