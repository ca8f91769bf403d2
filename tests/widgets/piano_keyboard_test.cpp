#include "widgets/piano_keyboard.h"

#include "ink.h"
#include "support/window_driver.h"
#include "widgets/piano_key_layout.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QWindow>

#include <gmock/gmock.h>

#include <random>

namespace {

using testing::ElementsAre;

/// The keyboard, and the rectangles it paints.
class WatchedKeyboard : public PianoKeyboard {
public:
    std::vector<QRect> painted;

protected:
    void paintEvent(QPaintEvent* event) override {
        painted.push_back(event->rect());
        PianoKeyboard::paintEvent(event);
    }
};

/// A window that counts the keys that come to it.
struct Window : QWidget {
    int keys = 0;

    void keyPressEvent(QKeyEvent* /*event*/) override { ++keys; }
};

struct PianoKeyboardTest : testing::Test {
    Window window;
    WatchedKeyboard keyboard;
    std::string acts;  ///< "down24 up24 click24 "

    PianoKeyboardTest() {
        const auto log = [this](const char* what) {
            return [this, what](int index) { acts += what + std::to_string(index) + ' '; };
        };
        QObject::connect(&keyboard, &PianoKeyboard::keyDown, log("down"));
        QObject::connect(&keyboard, &PianoKeyboard::keyUp, log("up"));
        QObject::connect(&keyboard, &PianoKeyboard::keyClick, log("click"));
        QObject::connect(&keyboard, &PianoKeyboard::keyDoubleClick, log("double"));
        keyboard.setParent(&window);
        show({1180, 150});
    }

    void show(QSize size) {
        window.resize(size);
        keyboard.resize(size);
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

/// The naturals share the width evenly from left to right; each sharp is narrower and shorter and
/// lies over the border between two of them. The key that looks marked is the one that is hit.
TEST_F(PianoKeyboardTest, EveryKeyIsHitWhereItIsSeen) {
    std::mt19937 random(60);
    for (const bool marks : {false, true}) {
        const QSize size = marks ? QSize(1180, 150) : QSize(701, 97);
        keyboard.showRangeMarks(marks);
        show(size);
        const double ratio = keyboard.devicePixelRatio();
        double border = 1;
        for (int i = 0; i < PianoKeyboard::kKeys; ++i) {
            keyboard.painted.clear();
            keyboard.setMarked(i, true);
            keyboard.setMarked(i, true);
            EXPECT_THAT(keyboard.painted, ElementsAre(key(i).geometry()));
            const QImage marked = keyboard.grab().toImage();
            keyboard.setMarked(i, false);
            const double natural = (size.width() - 2) / 35.0;
            const QRectF rect =
                piano_key_layout::keyRect(i, QRectF(keyboard.rect()).adjusted(1, 0, -1, 0));
            if (sharp(i)) {
                EXPECT_LT(rect.left(), border - 0.15 * natural);
                EXPECT_GT(rect.right(), border + 0.15 * natural);
                EXPECT_LT(rect.width(), 0.7 * natural);
            } else {
                EXPECT_NEAR(rect.left(), border, 0.01);
                border += natural;
            }
            int hits = 0;
            for (int tries = 0; hits < 6 && tries < 3000; ++tries) {
                const QRect place = key(i).geometry();
                const QPointF at(place.left() + random() % place.width() + 0.5,
                                 place.top() + random() % place.height() + 0.5);
                const auto isMarked = [&](double aside) {
                    const QPointF pixel = QPointF(at.x() + aside, at.y()) * ratio;
                    return marked.pixelColor(static_cast<int>(pixel.x()),
                                             static_cast<int>(pixel.y())) == QColor(192, 192, 255);
                };
                if (!isMarked(-1) || !isMarked(1))
                    continue;
                ++hits;
                click(at);
                const std::string name = std::to_string(i) + ' ';
                ASSERT_EQ(taken(), "down" + name + "up" + name + "click" + name) << at.x();
            }
            EXPECT_EQ(hits, 6) << i << " is nowhere seen";
        }
    }
    for (const int none : {-1, 60}) {
        keyboard.setMarked(none, true);
        EXPECT_FALSE(keyboard.marked(none));
    }
}

/// Random presses by mouse, keyboard and screen reader: one key is held at a time.
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
            begin(Keyboard, cursor, index == 24 ? "double" : "down");
            type(QEvent::KeyPress, index == 24 ? Qt::Key_Return : Qt::Key_Space);
        } else if (act == 8) {
            end(false, true);
            type(QEvent::KeyRelease, Qt::Key_Space);
            const std::pair<int, int> moves[] = {{Qt::Key_Left, cursor - 1},
                                                 {Qt::Key_Right, cursor + 1},
                                                 {Qt::Key_PageUp, cursor + 12},
                                                 {Qt::Key_PageDown, cursor - 12},
                                                 {Qt::Key_Home, 0},
                                                 {Qt::Key_End, 59}};
            const auto [code, target] = moves[random() % 6];
            cursor = std::clamp(target, 0, 59);
            type(QEvent::KeyPress, code);
        } else {
            // Where the release of what is held cannot come.
            const auto lost = random() % 4;
            end(false, false);
            if (lost < 3)
                end(true, false);
            QEvent blocked(QEvent::WindowBlocked);
            if (lost == 0)
                QCoreApplication::sendEvent(&window, &blocked);
            keyboard.setEnabled(lost != 1);
            keyboard.setVisible(lost != 2);
            keyboard.clearFocus();
            keyboard.setEnabled(true);
            keyboard.show();
            keyboard.setFocus();
        }
        ASSERT_EQ(taken(), std::exchange(expected, {})) << sequence;
        ASSERT_EQ(keyboard.cursorKey(), cursor) << sequence;
    }
    mouse(QEvent::MouseButtonPress, front(24), Qt::RightButton);
    EXPECT_EQ(taken(), "");
    QObject::disconnect(&keyboard, &PianoKeyboard::keyDoubleClick, nullptr, nullptr);
    click(front(24));
    click(front(24), QEvent::MouseButtonDblClick);
    EXPECT_THAT(taken(), testing::EndsWith("click24 down24 up24 click24 "));
    type(QEvent::KeyPress, Qt::Key_Z);
    EXPECT_EQ(window.keys, 1);
}

TEST_F(PianoKeyboardTest, RangeMarksTakeRoomOnlyWhenShown) {
    const QRect before = key(0).geometry();
    for (const int i : {0, 1, 59})
        keyboard.setRangeMark(i, true);
    for (const bool shown : {false, true, false}) {
        keyboard.showRangeMarks(shown);
        const QImage image = keyboard.grab().toImage();
        EXPECT_EQ(key(0).height() < before.height(), shown);
        for (int i = 0; i < PianoKeyboard::kKeys; ++i) {
            const QRect bar =
                keyboard.findChild<QWidget*>(QStringLiteral("lbr_%1").arg(i))->geometry();
            const bool marked = i < 2 || i == 59;
            EXPECT_EQ(keyboard.rangeMark(i), marked);
            const QPoint middle = (QPointF(bar.center()) * image.devicePixelRatio()).toPoint();
            EXPECT_EQ(shown && image.pixelColor(middle) == QColor(0, 255, 0), shown && marked) << i;
            EXPECT_TRUE(!shown || (sharp(i) ? bar.bottom() < key(i).y()
                                            : bar.top() > key(i).geometry().bottom()));
            EXPECT_NEAR(bar.center().x(), key(i).geometry().center().x(), 1);
        }
    }
}

TEST_F(PianoKeyboardTest, AScreenReaderFindsAndPressesTheKeys) {
    auto& reader = *QAccessible::queryAccessibleInterface(&key(24));
    EXPECT_EQ(reader.role(), QAccessible::Button);
    EXPECT_EQ(reader.text(QAccessible::Name), "Do centrale");
    EXPECT_EQ(key(0).accessibleName(), "Do 2");
    EXPECT_EQ(key(25).accessibleName(), "Do diesis 4");
    EXPECT_FALSE(reader.state().pressed);
    keyboard.setMarked(24, true);
    keyboard.setFocus();
    EXPECT_TRUE(reader.state().pressed && reader.state().focused);

    reader.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(taken(), "down24 ");
    for (int i = 0; i < 100 && acts.empty(); ++i)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(taken(), "up24 click24 ");
}

}  // namespace
