#pragma once

#include "shell/main_window.h"
#include "support/test_world.h"
#include "support/window_driver.h"

#include <QAction>

#include <gtest/gtest.h>

/// The main window on virtual time.
struct MainWindowFixture : testing::Test {
    TestWorld world;
    std::unique_ptr<MainWindow> window = std::make_unique<MainWindow>(world.services());
    WindowDriver user{*window};

    /// Shows the window and lets its first activation run, which waits for the first painting.
    void activate() {
        window->show();
        while (world.runtime.now() == Instant{0})
            QCoreApplication::processEvents();
    }

    /// By its shortcut where it has one.
    void choose(const QString& item) {
        window->activateWindow();
        QCoreApplication::processEvents();
        const QKeySequence keys = user.find<QAction>(item).shortcut();
        if (keys.isEmpty())
            return user.trigger(item);
        user.type(keys[0].key(), {}, keys[0].keyboardModifiers());
    }
};
