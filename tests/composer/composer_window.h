#pragma once

#include "composer/frmComposer.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QToolButton>
#include <QWindow>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

/// The composer, open on virtual time. Acts are scheduled before `run` opens it.
struct ComposerWindowTest : testing::Test {
    TestWorld world;
    frmComposer window{world.services(), nullptr};
    WindowDriver user{window};

    /// The window's opening takes the first act and the next one in a single pass.
    ComposerWindowTest() {
        world.openOutput();
        at(std::chrono::milliseconds(1), [] {});
    }

    void at(Instant instant, std::function<void()> act) {
        world.runtime.at(instant, std::move(act));
    }

    void clickAt(Instant instant, const char* control) {
        at(instant, [this, control] { user.click(control); });
    }

    /// Opens the window and closes it at an instant, saying yes if it asks.
    void runUntil(Instant end) {
        at(end, [this] {
            world.dialogs.confirmations.push_back(true);
            window.reject();
        });
        window.exec();
        EXPECT_FALSE(window.isVisible());
    }

    /// Clicks a key and inserts its note.
    void enter(int noteNumber) {
        user.click(QStringLiteral("lb_%1").arg(noteNumber - 36));
        user.click("cmdInsNota");
    }

    void enterAt(Instant instant, std::vector<int> notes) {
        at(instant, [this, notes = std::move(notes)] {
            for (const int note : notes)
                enter(note);
            world.midi.take();
        });
    }

    void sendKey(int key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QCoreApplication::sendEvent(window.windowHandle(), &event);
    }

    void chooseLetter(const char* letter) {
        user.find<QComboBox>("cmbAttributi").setCurrentText(QLatin1String(letter));
    }

    void press(const char* control, bool down) {
        auto& button = user.find<QToolButton>(control);
        const QPointF place = button.rect().center();
        QMouseEvent event(down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, place,
                          button.mapToGlobal(place), Qt::LeftButton,
                          down ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&button, &event);
    }
};
