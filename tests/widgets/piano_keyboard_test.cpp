#include "widgets/piano_keyboard.h"

#include "support/window_driver.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QWindow>

#include <gtest/gtest.h>

#include <random>

namespace {

struct PianoKeyboardTest : testing::Test {
    QWidget window;
    PianoKeyboard keyboard{&window};
    std::string acts;  ///< "down24 up24 click24 "

    PianoKeyboardTest() {
        const auto log = [this](const char* what) {
            return [this, what](int index) { acts += what + std::to_string(index) + ' '; };
        };
        QObject::connect(&keyboard, &PianoKeyboard::keyDown, log("down"));
        QObject::connect(&keyboard, &PianoKeyboard::keyUp, log("up"));
        QObject::connect(&keyboard, &PianoKeyboard::keyClick, log("click"));
        QObject::connect(&keyboard, &PianoKeyboard::keyDoubleClick, log("double"));
        QObject::connect(&keyboard, &PianoKeyboard::keyEntered, log("entered"));
        window.resize(1180, 150);
        keyboard.resize(1180, 150);
        window.show();
        window.activateWindow();
        QCoreApplication::processEvents();
    }

    QWidget& key(int index) {
        return *keyboard.findChild<QWidget*>(QStringLiteral("lb_%1").arg(index));
    }
    static bool sharp(int index) { return QByteArray("010100101010")[index % 12] == '1'; }

    /// A place of a key that no other covers.
    QPoint front(int index) {
        const QRect rect = key(index).geometry();
        return sharp(index) ? rect.center() : QPoint(rect.center().x(), rect.bottom() - 4);
    }

    void mouse(QEvent::Type type, QPointF at, Qt::MouseButton button = Qt::LeftButton) {
        sendMouse(keyboard, type, at, button);
    }
    void click(QPointF at, QEvent::Type press = QEvent::MouseButtonPress) {
        mouse(press, at);
        mouse(QEvent::MouseButtonRelease, at);
    }
    void type(QEvent::Type type, int keyCode) {
        QKeyEvent event(type, keyCode, Qt::NoModifier);
        QCoreApplication::sendEvent(window.windowHandle(), &event);
    }
    std::string taken() { return std::exchange(acts, {}); }
};

/// The naturals share the width evenly from left to right; each sharp is narrower and lies over the
/// border between two of them. The key that looks marked is the one that is hit.
TEST_F(PianoKeyboardTest, EveryKeyIsHitWhereItIsSeen) {
    std::mt19937 random(60);
    const int height = key(0).height();
    for (const bool marks : {true, false}) {
        keyboard.showRangeMarks(marks);
        EXPECT_EQ(key(0).height() < height, marks);
        const double ratio = keyboard.devicePixelRatio();
        const double natural = (keyboard.width() - 2) / 35.0;
        double border = 1;
        for (int i = 0; i < PianoKeyboard::kKeys; ++i) {
            keyboard.setMarked(i, true);
            keyboard.setRangeMark(i, i % 2 == 0);
            const QImage marked = keyboard.grab().toImage();
            keyboard.setMarked(i, false);
            const auto looks = [&](QPointF at, QColor colour) {
                const QPointF pixel = at * ratio;
                return marked.pixelColor(int(pixel.x()), int(pixel.y())) == colour;
            };
            const auto& bar = *keyboard.findChild<QWidget*>(QStringLiteral("lbr_%1").arg(i));
            EXPECT_EQ(marks && looks(bar.geometry().center(), {0, 255, 0}), marks && i % 2 == 0);
            const QRect place = key(i).geometry();
            EXPECT_NEAR(QRectF(place).center().x(), border + (sharp(i) ? 0 : natural / 2),
                        0.2 * natural);
            EXPECT_NEAR(place.width(), sharp(i) ? 0.6 * natural : natural, 0.15 * natural);
            border += sharp(i) ? 0 : natural;
            int hits = 0;
            for (int tries = 0; hits < 6 && tries < 3000; ++tries) {
                const QPointF at(place.left() + random() % place.width() + 0.5,
                                 place.top() + random() % place.height() + 0.5);
                const QColor blue(192, 192, 255);
                if (!looks(at - QPointF(1, 0), blue) || !looks(at + QPointF(1, 0), blue))
                    continue;
                ++hits;
                click(at);
                const QString all = QStringLiteral("down%1 up%1 click%1 ").arg(i);
                ASSERT_EQ(taken(), all.toStdString()) << at.x();
            }
            EXPECT_EQ(hits, 6) << i << " is nowhere seen";
        }
    }
}

/// Random presses by mouse and keyboard: one key is held at a time.
TEST_F(PianoKeyboardTest, RandomActsOfAllKindsPressAsThePlainKeyboard) {
    std::mt19937 random(35);
    enum { Nobody, Mouse, Second, Keyboard } holder = Nobody;
    int held = 0;
    int cursor = keyboard.cursorKey();
    int last = -1;  ///< clicked last by the mouse
    std::string expected;
    std::string sequence;
    const auto add = [&](const char* what, int index) {
        expected += what + std::to_string(index) + ' ';
    };
    const auto begin = [&](auto by, int index, const char* what) {
        if (holder != Nobody)
            return;
        holder = by;
        held = index;
        add(what, index);
    };
    const auto end = [&](bool ofMouse, bool click) {
        if (holder == Nobody || (holder != Keyboard) != ofMouse)
            return;
        holder = Nobody;
        add("up", held);
        if (click)
            add("click", held);
    };
    for (int step = 0; step < 4000; ++step) {
        const int index = static_cast<int>(random() % 3) + 24;
        const auto act = random() % 10;
        sequence += std::to_string(act) + ':' + std::to_string(index) + ' ';
        if (act < 4) {
            const bool second = act >= 2 && holder == Nobody && last == index;
            if (!second)
                end(true, false);
            begin(second ? Second : Mouse, index, second ? "double" : "down");
            mouse(act < 2 ? QEvent::MouseButtonPress : QEvent::MouseButtonDblClick, front(index));
        } else if (act < 7) {
            const bool click = act < 6 && held == index && holder == Mouse;
            if (holder == Mouse || holder == Second)
                last = click ? held : -1;
            end(true, click);
            mouse(QEvent::MouseButtonRelease, act < 6 ? front(index) : QPoint(-20, 500));
        } else if (act == 7) {
            if (holder == Nobody && index == 24)
                add("down", cursor);
            begin(Keyboard, cursor, index == 24 ? "entered" : "down");
            type(QEvent::KeyPress, index == 24 ? Qt::Key_Return : Qt::Key_Space);
        } else if (act == 8) {
            end(false, true);
            type(QEvent::KeyRelease, Qt::Key_Space);
            const int codes[] = {Qt::Key_Left,     Qt::Key_Right, Qt::Key_PageUp,
                                 Qt::Key_PageDown, Qt::Key_Home,  Qt::Key_End};
            const int targets[] = {cursor - 1, cursor + 1, cursor + 12, cursor - 12, 0, 59};
            const auto move = random() % 6;
            cursor = std::clamp(targets[move], 0, 59);
            type(QEvent::KeyPress, codes[move]);
        } else {
            // Where the release of what is held cannot come.
            QEvent blocked(QEvent::WindowBlocked);
            end(holder != Keyboard, false);
            QCoreApplication::sendEvent(&window, &blocked);
        }
        ASSERT_EQ(taken(), std::exchange(expected, {})) << sequence;
        ASSERT_EQ(keyboard.cursorKey(), cursor) << sequence;
    }
    keyboard.hide();
    acts.clear();
    for (const bool hidden : {true, false}) {
        keyboard.show();
        click(front(24));
        mouse(QEvent::MouseButtonPress, front(25));
        hidden ? keyboard.hide() : keyboard.setEnabled(false);
        EXPECT_EQ(taken(), "down24 up24 click24 down25 up25 ");
    }
}

TEST_F(PianoKeyboardTest, AScreenReaderFindsAndPressesTheKeys) {
    auto& reader = *QAccessible::queryAccessibleInterface(&key(25));
    EXPECT_EQ(reader.text(QAccessible::Name), "Do diesis 4");
    reader.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(taken(), "down25 ");
    for (int i = 0; i < 100 && acts.empty(); ++i)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(taken(), "up25 click25 ");
}

}  // namespace
