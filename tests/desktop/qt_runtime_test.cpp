#include "platform/desktop/qt_runtime.h"

#include "platform/desktop/qt_dialogs.h"
#include "support/test_world.h"
#include "support/window_driver.h"
#include "widgets/in_front.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QShortcut>
#include <QTemporaryDir>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include <csignal>
#include <random>
#include <thread>

/// Exported by the toolkit for its test library: input as it comes from the system, at once.
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                                      Qt::MouseButtons state, Qt::MouseButton button,
                                      QEvent::Type type, Qt::KeyboardModifiers modifiers,
                                      int timestamp);

using namespace std::chrono_literals;

namespace {

struct QtRuntimeTest : testing::Test {
    QtRuntime runtime;
    QtDialogs dialogs{runtime, runtime.heldInput()};

    /// Works in the next box that comes up.
    static void inBox(const std::function<void(QDialog&)>& act) {
        QTimer::singleShot(1, [act] {
            auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            box ? act(*box) : inBox(act);
        });
    }
};

}  // namespace

TEST_F(QtRuntimeTest, APassTellsWhetherTheUserActed) {
    QWidget window;
    window.show();
    while (runtime.pump(runtime.now()) || !window.isVisible()) {
    }
    const auto passWith = [&](QEvent* event) {
        QCoreApplication::postEvent(window.windowHandle(), event);
        return runtime.pump(runtime.now());
    };
    EXPECT_FALSE(passWith(new QEvent(QEvent::UpdateRequest)));
    EXPECT_FALSE(
        passWith(new QMouseEvent(QEvent::MouseMove, {1, 1}, {1, 1}, Qt::NoButton, {}, {})));
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease, QEvent::ShortcutOverride})
        EXPECT_TRUE(passWith(new QKeyEvent(type, Qt::Key_A, {})));
    EXPECT_TRUE(passWith(
        new QMouseEvent(QEvent::MouseButtonPress, {1, 1}, {1, 1}, Qt::LeftButton, {}, {})));
    EXPECT_FALSE(runtime.pump(runtime.now()));
}

TEST_F(QtRuntimeTest, WaitsPassesAndAlarmsEndAtTheirInstant) {
    int rung = 0;
    const auto alarm = runtime.makeAlarm([&rung] { ++rung; });
    alarm->set(runtime.now());
    const Instant end = runtime.now() + 60ms;
    runtime.blockUntil(end);
    EXPECT_GE(runtime.now(), end);
    EXPECT_EQ(rung, 1) << "in a wait";
    const Instant soon = runtime.now() + 1ms;
    while (runtime.now() < soon)
        runtime.pump(soon);
    QTimer::singleShot(1, [&rung] { ++rung; });
    while (rung < 2)
        runtime.pump(kForever);

    QEventLoop box;
    const auto last = runtime.makeAlarm([&box] { box.quit(); });
    alarm->set(runtime.now());
    last->set(runtime.now() + 1ms);
    box.exec();
    EXPECT_EQ(rung, 3) << "in a loop of the toolkit's own";
    alarm->set(runtime.now() + 1ms);
    alarm->cancel();
    last->set(runtime.now() + 5ms);
    box.exec();
    EXPECT_EQ(rung, 3);
    constexpr int kDay = 24 * 60 * 60;
    const int now = QTime::currentTime().msecsSinceStartOfDay() / 1000;
    const auto second = static_cast<int>(runtime.secondsSinceMidnight());
    EXPECT_LE((second - now + kDay) % kDay, 60) << "of the local time";
}

TEST_F(QtRuntimeTest, WhatThreadsDeliverTakesItsTurnAmongTheClicks) {
    struct : QWidget {
        void mousePressEvent(QMouseEvent* event) override { log << int(event->timestamp()); }
        QList<int> log;
    } window;
    window.show();
    while (!window.windowHandle()->isExposed())
        runtime.pump(runtime.now() + 10ms);
    const auto click = [&](int millisecond) {
        auto* press =
            new QMouseEvent(QEvent::MouseButtonPress, {1, 1}, {1, 1}, Qt::LeftButton, {}, {});
        press->setTimestamp(static_cast<quint64>(millisecond));
        QCoreApplication::postEvent(window.windowHandle(), press);
    };
    const auto deliver = [&](Instant at, int number) {
        std::thread([&, at] { runtime.deliver(at, [&, number] { window.log << number; }); }).join();
    };
    // The system counts from another time. Input that arrives in its own millisecond tells which.
    const auto zero = std::chrono::floor<std::chrono::milliseconds>(runtime.now()) - 1000ms;
    const auto sinceZero = [&] { return static_cast<int>((runtime.now() - zero) / 1ms); };
    for (int clicked = -1; sinceZero() != clicked;) {
        clicked = sinceZero();
        click(clicked);
        runtime.yield();
    }
    std::mt19937 random(1);
    for (int round = 0; round < 20; ++round) {
        window.log.clear();
        QList<int> expected, clicks;
        const Instant begin = runtime.now();
        runtime.blockUntil(begin + 12ms);
        for (int at = static_cast<int>((begin - zero) / 1ms) + 1, i = 0; i < 8; ++i, ++at) {
            expected << at;
            if (random() % 2)
                clicks << at;
            else
                deliver(zero + at * 1ms, at);
        }
        runtime.blockUntil(begin + 20ms);
        EXPECT_TRUE(window.log.isEmpty()) << "a wait lets nothing through";
        for (const int at : clicks)
            click(at);
        while (window.log.size() < 8)
            runtime.pump(kForever);
        EXPECT_EQ(window.log, expected);
    }
    int passes = 0;
    for (const Instant end = runtime.now() + 20ms; runtime.now() < end; ++passes)
        runtime.pump(end);
    EXPECT_LT(passes, 10) << "it sleeps when all is done";
}

TEST_F(QtRuntimeTest, NoKeyIsPlayedBehindABoxNorAfterIt) {
    struct : MidiKeysListener {
        void keyDown(int note) override { log << note; }
        void keyUp(int note) override { log << -note; }
        QList<int> log;
    } played;
    QWidget window;
    window.show();
    for (window.activateWindow(); !window.isActiveWindow();)
        runtime.pump(runtime.now() + 10ms);
    MidiInFake input;
    MidiKeyboard keyboard(runtime, input);
    keyboard.listen();
    const MidiKeyboard::Window keys(&keyboard, played, [&] { return isInFront(window); });
    const auto move = [&](int note, bool down) {
        const auto message = (down ? 0x400090u : 0x400080u) | static_cast<unsigned>(note) << 8;
        const Instant at = runtime.now();
        std::thread([&, at] {
            runtime.deliver(at, [=, &input] { input.send(1, message, at); });
        }).join();
    };
    move(60, true);
    while (played.log.isEmpty())
        runtime.pump(kForever);
    move(61, true);  // waits when the box opens
    inBox([&](QDialog& box) {
        for (const int note : {62, 60, 61})
            move(note, note == 62);
        for (const Instant end = runtime.now() + 30ms; runtime.now() < end;)
            QCoreApplication::processEvents();
        EXPECT_EQ(played.log, (QList<int>{60, -60})) << "a key ends though a box is on show";
        box.reject();
    });
    dialogs.message("a");
    for (window.activateWindow(); !window.isActiveWindow();)
        runtime.pump(runtime.now() + 10ms);
    move(63, true);
    while (played.log.size() < 3)
        runtime.pump(kForever);
    EXPECT_EQ(played.log, (QList<int>{60, -60, 63}));
}

TEST_F(QtRuntimeTest, BoxesProposeWhatLosesNothingAndTellWhatTheUserChose) {
    QStringList seen;
    const auto chosen = [&](auto show, const QString& button) {
        inBox([&](QDialog& shown) {
            auto* box = qobject_cast<QMessageBox*>(&shown);
            seen << box->windowTitle() + " " + box->text() + " " + box->defaultButton()->text();
            for (QAbstractButton* one : box->buttons()) {
                if (one->text() == button)
                    return one->click();
            }
            box->close();
        });
        return (dialogs.*show)("a\r\n<b>");
    };
    EXPECT_TRUE(chosen(&Dialogs::confirm, "&Sì"));
    EXPECT_FALSE(chosen(&Dialogs::confirm, {}));
    EXPECT_FALSE(chosen(&Dialogs::offer, "&No"));
    EXPECT_TRUE(chosen(&Dialogs::offer, {}));
    const QString no = "Cantavista a\n<b> &No";
    const QString yes = "Cantavista a\n<b> &Sì";
    EXPECT_EQ(chosen(&Dialogs::confirmClosing, "Sal&va"), Closing::Save);
    EXPECT_EQ(chosen(&Dialogs::confirmClosing, "&Sì"), Closing::Discard);
    EXPECT_EQ(chosen(&Dialogs::confirmClosing, {}), Closing::Stay);
    EXPECT_EQ(seen, (QStringList{no, no, yes, yes, no, no, no}));
    for (const bool accepted : {true, false}) {
        inBox([&](QDialog& box) { box.done(accepted); });
        EXPECT_EQ(dialogs.input("?", {}, "proposta"), accepted ? "proposta" : QString());
    }

    const QTemporaryDir folder;
    const auto save = [&](const QString& name) {
        inBox([&](QDialog& shown) {
            auto* box = qobject_cast<QFileDialog*>(&shown);
            seen << box->directory().path() + "/" + box->selectedFiles().value(0).section('/', -1);
            box->findChild<QLineEdit*>("fileNameEdit")->setText(name);
            shown.done(name.isEmpty() ? QDialog::Rejected : QDialog::Accepted);
        });
        return dialogs.saveFile("?", "Mia", {"File MIDI", "mid"});
    };
    EXPECT_EQ(save(folder.filePath("b")), folder.filePath("b.mid").replace(u'/', u'\\'));
    EXPECT_EQ(save({}), QString());
    EXPECT_TRUE(seen[7].endsWith("/Mia.mid"));
    EXPECT_EQ(seen[8], folder.path() + "/Mia.mid") << "where the last file was saved";
}

TEST(EndOfTheProgram, CutsWaitsAndBoxesShortAndSavesTheWork) {
    for (const int signal : {0, SIGTERM, SIGINT, SIGHUP}) {
        QtRuntime runtime;
        QtDialogs dialogs(runtime, runtime.heldInput());
        int saved = 0;
        const SavedAtEnd work(runtime, [&saved] { ++saved; });
        for (const bool inBox : {false, true}) {
            bool offered = false;
            QTimer::singleShot(0, [&] {
                QTimer::singleShot(0, [&] { signal ? raise(signal) : (qApp->quit(), 0); });
                if (!inBox)
                    runtime.blockUntil(runtime.now() + 1h);
                offered = dialogs.offer("?");
                EXPECT_EQ(dialogs.input("?", {}, "a") + dialogs.saveFile("?", "a", {}), QString());
            });
            EXPECT_EQ(QApplication::exec(), 0);
            EXPECT_TRUE(runtime.ending() && saved > 0);
            EXPECT_TRUE(offered) << "nothing is given up without an answer";
        }
    }
}

TEST_F(QtRuntimeTest, NoBoxTakesTheInputThatWaitedBeforeIt) {
    QPushButton window;
    QShortcut shortcut(Qt::CTRL | Qt::Key_B, &window);
    int clicks = 0;
    int shortcuts = 0;
    QObject::connect(&window, &QPushButton::clicked, [&] { ++clicks; });
    QObject::connect(&shortcut, &QShortcut::activated, [&] { ++shortcuts; });
    shortcut.setContext(Qt::ApplicationShortcut);
    QApplication::setDoubleClickInterval(0);
    window.resize(200, 100);
    window.show();
    window.activateWindow();
    while (!window.windowHandle()->isExposed())
        runtime.pump(runtime.now() + 10ms);
    const auto mouse = [&](QEvent::Type type) {
        const bool down = type == QEvent::MouseButtonPress;
        qt_handleMouseEvent(window.windowHandle(), {100, 50}, window.mapToGlobal(QPoint(100, 50)),
                            down ? Qt::LeftButton : Qt::NoButton, Qt::LeftButton, type,
                            Qt::NoModifier, 0);
    };
    const auto click = [&] {
        mouse(QEvent::MouseButtonPress);
        mouse(QEvent::MouseButtonRelease);
    };
    const std::function<void()> boxes[] = {
        [&] { dialogs.message("a"); },
        [&] {
            runtime.blockUnless(runtime.now() + 70ms, [](const QEvent&) { return true; });
            dialogs.input("a", {}, {});
        },
        [&] {
            dialogs.saveFile("a", "a", {"a", "b"});
        },
    };
    for (const auto& show : boxes) {
        clicks = shortcuts = 0;
        const auto wait = [&] {
            WindowDriver(window).type(Qt::Key_B, {}, Qt::ControlModifier);
            click();
            mouse(QEvent::MouseButtonPress);  // let go while the box is on show
        };
        QMetaObject::invokeMethod(&window, wait, Qt::QueuedConnection);
        const auto answer = [&](QDialog& box) {
            EXPECT_EQ(clicks + shortcuts, 0) << "input has to wait for the box";
            click();  // past the box
            QCoreApplication::processEvents();
            box.reject();
        };
        for (const auto& next : {show, boxes[0]}) {  // it waits for the last of them
            inBox(answer);
            next();
        }
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

TEST_F(QtRuntimeTest, AWaitEndsForTheInputThatItIsToEndForAndLosesNone) {
    QPushButton window;
    QStringList done;
    QObject::connect(&window, &QPushButton::clicked, [&] { done << "click"; });
    QShortcut shortcut(Qt::Key_B, &window);
    QObject::connect(&shortcut, &QShortcut::activated, [&] { done << "key"; });
    window.resize(200, 100);
    window.show();
    window.activateWindow();
    while (!window.windowHandle()->isExposed())
        runtime.pump(runtime.now() + 10ms);
    const auto use = [&] {
        for (const bool down : {true, false}) {
            qt_handleMouseEvent(
                window.windowHandle(), {100, 50}, window.mapToGlobal(QPoint(100, 50)),
                down ? Qt::LeftButton : Qt::NoButton, Qt::LeftButton,
                down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, Qt::NoModifier, 0);
        }
        sendSystemKey(window, QEvent::KeyPress, Qt::Key_B);
        sendSystemKey(window, QEvent::KeyRelease, Qt::Key_B);
    };
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::MouseButtonPress, QEvent::None}) {
        const auto ends = [type](const QEvent& input) { return input.type() == type; };
        QTimer::singleShot(0, use);
        const bool waits = type == QEvent::None;
        EXPECT_EQ(runtime.blockUnless(runtime.now() + (waits ? Instant(200ms) : 1h), ends), !waits);
        EXPECT_EQ(done, QStringList()) << "nothing came through";
        for (int i = 0; i < 100 && done.size() < 2; ++i)
            runtime.pump(runtime.now() + 5ms);
        EXPECT_EQ(std::exchange(done, {}), QStringList({"click", "key"}));
    }
}
