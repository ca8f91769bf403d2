#include "platform/desktop/qt_runtime.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <QWindow>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

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
              Qt::KeyboardModifiers modifiers = Qt::NoModifier, bool repeat = false) {
        QCoreApplication::postEvent(
            window.windowHandle(),
            new QKeyEvent(type, key, modifiers, scanCode, 0, 0, QString(), repeat));
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
    QEvent lost(QEvent::ApplicationDeactivate);
    QCoreApplication::sendEvent(qApp, &lost);
    EXPECT_FALSE(runtime.held('F')) << "a key let go elsewhere is never reported";
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

TEST_F(QtRuntimeTest, KeysGoByTheirPlaceAndRepeatsAreDropped) {
    struct Row {
        int qtKey;
        quint32 scanCode;
        Qt::KeyboardModifiers modifiers;
        KeyCode code;
    };
    const Row rows[] = {
        {Qt::Key_A, 24, Qt::NoModifier, 'Q'},  // a French keyboard's A lies where Q does
        {Qt::Key_Ograve, 47, Qt::NoModifier, kKeyRightOfL},
        {Qt::Key_Egrave, 34, Qt::NoModifier, kKeyRightOfP},
        {Qt::Key_Igrave, 21, Qt::NoModifier, kKeyLeftOfBackspace},
        {Qt::Key_End, 87, Qt::KeypadModifier, kKeyNumpad0 + 1},
        {Qt::Key_F6, 72, Qt::NoModifier, kKeyF1 + 5},
        {Qt::Key_4, 0, Qt::KeypadModifier, kKeyNumpad0 + 4},
        {Qt::Key_4, 0, Qt::NoModifier, '4'},
        {Qt::Key_Escape, 9, Qt::NoModifier, kKeyEscape},
    };
    for (const Row& row : rows) {
        post(QEvent::KeyPress, row.qtKey, row.scanCode, row.modifiers);
        runtime.pump(kForever);
        EXPECT_TRUE(runtime.held(row.code)) << row.qtKey;
        post(QEvent::KeyRelease, row.qtKey, row.scanCode, row.modifiers);
        post(QEvent::KeyPress, row.qtKey, row.scanCode, row.modifiers, true);
        runtime.pump(kForever);
        EXPECT_FALSE(runtime.held(row.code)) << row.qtKey;
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
