#include "platform/desktop/qt_runtime.h"

#include "platform/desktop/qt_dialogs.h"
#include "platform/key_places.h"

#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <gtest/gtest.h>

#include <csignal>

using namespace std::chrono_literals;

namespace {

/// What this system's key events carry for a place; 0 for none.
std::uint32_t scanCodeOf(std::uint32_t place) {
    std::uint32_t code = 0;
    while (keyPlaceOf(code) != place)
        ++code;
    return code;
}

struct QtRuntimeTest : testing::Test {
    QtRuntime runtime;
    QWidget window;

    void SetUp() override {
        window.show();
        while (!window.windowHandle()->isExposed())
            runtime.pump(runtime.now() + 10ms);
        runtime.yield();
    }

    void post(QEvent::Type type, int key, quint32 scanCode = 0,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QCoreApplication::postEvent(window.windowHandle(),
                                    new QKeyEvent(type, key, modifiers, scanCode, 0, 0));
    }
};

}  // namespace

TEST_F(QtRuntimeTest, ATapBetweenTwoPassesIsDownForOneOfThem) {
    post(QEvent::KeyPress, Qt::Key_D);
    post(QEvent::KeyRelease, Qt::Key_D);
    post(QEvent::KeyPress, Qt::Key_F);
    runtime.pump(kForever);
    EXPECT_TRUE(runtime.held('D'));
    EXPECT_TRUE(runtime.held('F'));
    runtime.pump(kForever);
    EXPECT_FALSE(runtime.held('D'));
    EXPECT_TRUE(runtime.held('F'));
}

TEST_F(QtRuntimeTest, WhatWasTypedBeforeALoopPolledIsNotPlayedInIt) {
    for (const int key : {Qt::Key_D, Qt::Key_F, Qt::Key_G}) {
        post(QEvent::KeyPress, key);
        post(QEvent::KeyRelease, key);
    }
    post(QEvent::KeyPress, Qt::Key_H);
    QCoreApplication::processEvents();
    runtime.yield();
    EXPECT_FALSE(runtime.held('D') || runtime.held('F') || runtime.held('G'));
    EXPECT_TRUE(runtime.held('H')) << "a key that is still down is down";
}

TEST_F(QtRuntimeTest, KeysGoByTheirPlaceAndLettersByTheLayoutToo) {
    struct Row {
        int qtKey;
        std::uint32_t place;
        Qt::KeyboardModifiers modifiers;
        KeyCode code;
    };
    const Row rows[] = {
        {Qt::Key_A, 16, Qt::NoModifier, 'Q'},  // a French keyboard's A lies where Q does
        {Qt::Key_Ograve, 39, Qt::NoModifier, kKeyRightOfL},
        {Qt::Key_Egrave, 26, Qt::NoModifier, kKeyRightOfP},
        {Qt::Key_Igrave, 13, Qt::NoModifier, kKeyLeftOfBackspace},
        {Qt::Key_End, 79, Qt::KeypadModifier, kKeyNumpad0 + 1},
        {Qt::Key_F6, 64, Qt::NoModifier, kKeyF1 + 5},
        {Qt::Key_4, 0, Qt::KeypadModifier, kKeyNumpad0 + 4},
        {Qt::Key_4, 0, Qt::NoModifier, '4'},
        {Qt::Key_Escape, 1, Qt::NoModifier, kKeyEscape},
    };
    for (const Row& row : rows) {
        const std::uint32_t scanCode = scanCodeOf(row.place);
        post(QEvent::KeyPress, row.qtKey, scanCode, row.modifiers);
        runtime.pump(kForever);
        EXPECT_TRUE(runtime.held(row.code)) << row.qtKey;
        const bool letter = row.qtKey == Qt::Key_A;
        EXPECT_EQ(runtime.held(letterKey('A')), letter) << row.qtKey;
        EXPECT_FALSE(runtime.held('A') || runtime.held(letterKey('Q')));
        post(QEvent::KeyRelease, row.qtKey, scanCode, row.modifiers);
        runtime.pump(kForever);
        EXPECT_FALSE(runtime.held(row.code) || runtime.held(letterKey('A'))) << row.qtKey;
    }
    EXPECT_FALSE(runtime.held(-1));
    EXPECT_FALSE(runtime.held(1000));
}

TEST_F(QtRuntimeTest, WaitsAndPassesEndAtTheirInstant) {
    const Instant end = runtime.now() + 1ms;
    runtime.blockUntil(end);
    EXPECT_GE(runtime.now(), end);
    runtime.blockUntil(kForever * -1);

    const Instant soon = runtime.now() + 1ms;
    while (runtime.now() < soon)
        runtime.pump(soon);
    EXPECT_FALSE(runtime.ending());
}

TEST_F(QtRuntimeTest, AnAlarmGoesOffInEveryLoop) {
    int rung = 0;
    const auto alarm = runtime.makeAlarm([&rung] { ++rung; });
    alarm->set(runtime.now());
    runtime.blockUntil(runtime.now() + 100ms);
    EXPECT_EQ(rung, 1) << "in a wait";
    QEventLoop box;
    const auto end = runtime.makeAlarm([&box] { box.quit(); });
    alarm->set(runtime.now());
    end->set(runtime.now() + 1ms);
    box.exec();
    EXPECT_EQ(rung, 2) << "in a loop of the toolkit's own";
}

struct EndOfTheProgram : QtRuntimeTest, testing::WithParamInterface<int> {
    static constexpr int kQuit = 0;

    /// Asks for it in the middle of what follows.
    static void ask() {
        QTimer::singleShot(0, [] {
            if (GetParam() == kQuit)
                QCoreApplication::quit();
            else
                std::raise(GetParam());
        });
    }
};

TEST_P(EndOfTheProgram, CutsWaitsAndBoxesShortAndSavesTheWork) {
    bool saved = false;
    const SavedAtEnd work(runtime, [&saved] { saved = true; });
    QtDialogs dialogs(runtime);
    bool offered = false;
    QTimer::singleShot(0, [&] {
        ask();
        runtime.blockUntil(runtime.now() + 1h);
        window.hide();
        offered = dialogs.offer(QStringLiteral("?"));
    });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(runtime.ending());
    EXPECT_TRUE(offered) << "nothing is given up without an answer";
    EXPECT_TRUE(saved);
}

TEST_P(EndOfTheProgram, ClosesABoxWithoutAnAnswer) {
    QtDialogs dialogs(runtime);
    bool offered = false;
    QTimer::singleShot(0, [&] {
        ask();
        offered = dialogs.offer(QStringLiteral("?"));
    });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(offered);
}

INSTANTIATE_TEST_SUITE_P(Asked, EndOfTheProgram,
                         testing::Values(EndOfTheProgram::kQuit, SIGTERM, SIGINT, SIGHUP));
