#include "widgets/announcer.h"

#include "widgets/accessible_updates.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QStringList>
#include <QWidget>

#include <gtest/gtest.h>

#include <random>

TEST(Announcer, SaysEachTextOnceInOrderAndNotBeforeItsDelay) {
    std::mt19937 random{1};
    QElapsedTimer clock;
    clock.start();
    QStringList given, said;
    QList<qint64> earliest;
    Announcer announcer([&](const QString& text) {
        EXPECT_GE(clock.elapsed(), earliest.at(said.size()));
        said << text;
    });
    for (int i = 0; i < 40; ++i) {
        const int delay = static_cast<int>(random() % 4);
        given << QString::number(i);
        earliest << clock.elapsed() + delay - 1;
        announcer.say(given.back(), std::chrono::milliseconds(delay));
        if (random() % 4 == 0)
            QCoreApplication::processEvents();
    }
    for (int pass = 0; pass < 1000 && said.size() < given.size(); ++pass)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(said, given);
}

TEST(AccessibleUpdates, TellOfWindowsAndOfPartsOnTheScreen) {
    QWidget window;
    QWidget part(&window);
    const auto tells = [](QWidget& widget, QAccessible::Event type) {
        return accessible_updates::concernsScreen(QAccessibleEvent(&widget, type));
    };
    for (const bool shown : {false, true, false}) {
        window.setVisible(shown);
        EXPECT_TRUE(tells(part, QAccessible::Focus));
        for (const auto type : {QAccessible::ObjectShow, QAccessible::ObjectHide,
                                QAccessible::NameChanged, QAccessible::DescriptionChanged})
            EXPECT_TRUE(tells(part, type) == shown && tells(window, type)) << type;
    }
}
