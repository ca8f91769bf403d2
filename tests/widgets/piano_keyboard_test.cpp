#include "widgets/piano_keyboard.h"

#include "support/window_driver.h"

#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QWindow>

#include <gmock/gmock.h>

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
class Window : public QWidget {
public:
    int keys = 0;

protected:
    void keyPressEvent(QKeyEvent* /*event*/) override { ++keys; }
};

class PianoKeyboardTest : public testing::Test {
protected:
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
    QWidget& mark(int index) {
        return *keyboard.findChild<QWidget*>(QStringLiteral("lbr_%1").arg(index));
    }
    static bool sharp(int index) { return QByteArray("010100101010")[index % 12] == '1'; }

    /// A place of a key that no other covers.
    QPoint front(int index) {
        const QRect rect = key(index).geometry();
        return sharp(index) ? rect.center() : QPoint(rect.center().x(), rect.bottom() - 4);
    }

    QColor colourAt(QPoint at) {
        const QImage image = keyboard.grab(QRect(at, QSize(1, 1))).toImage();
        return image.pixelColor(image.rect().center());
    }

    void mouse(QEvent::Type type, QPoint at, Qt::MouseButton button = Qt::LeftButton) {
        QMouseEvent event(type, at, window.mapToGlobal(at), button,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : button,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(window.windowHandle(), &event);
    }
    void press(QPoint at) { mouse(QEvent::MouseButtonPress, at); }
    void release(QPoint at) { mouse(QEvent::MouseButtonRelease, at); }

    void click(QPoint at) {
        press(at);
        release(at);
    }

    /// The second half of a double click, as it comes to the widget under the mouse.
    void secondPress(int index) {
        const QPointF at = key(index).mapFrom(&window, front(index));
        for (const QEvent::Type type : {QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease})
            sendMouse(key(index), type, at);
    }

    void type(QEvent::Type type, int keyCode) {
        QKeyEvent event(type, keyCode, Qt::NoModifier);
        QCoreApplication::sendEvent(window.windowHandle(), &event);
    }

    std::string taken() { return std::exchange(acts, {}); }

    Window window;
    WatchedKeyboard keyboard;
    std::string acts;  ///< "down24 up24 click24 "
};

TEST_F(PianoKeyboardTest, EveryKeyIsHitWhereItIsSeen) {
    for (const bool marks : {false, true}) {
        keyboard.showRangeMarks(marks);
        for (const QSize size : {QSize(1180, 150), QSize(701, 97), QSize(2003, 301)}) {
            show(size);
            for (int i = 0; i < PianoKeyboard::kKeys; ++i) {
                const QRect rect = key(i).geometry();
                const int low = rect.bottom() - 4;
                for (const QPoint at : {front(i), QPoint(rect.left() + 2, low),
                                        QPoint(rect.right() - 2, low), rect.center()}) {
                    click(at);
                    const std::string name = std::to_string(i) + ' ';
                    ASSERT_EQ(taken(), "down" + name + "up" + name + "click" + name) << at.x();
                }
            }
        }
    }
}

TEST_F(PianoKeyboardTest, MouseActsComeInTheOrderOfALabel) {
    const QPoint at = front(24);
    click(at);
    secondPress(24);
    EXPECT_EQ(taken(), "down24 up24 click24 double24 up24 ");

    click(at);
    secondPress(26);
    EXPECT_EQ(taken(), "down24 up24 click24 down26 up26 click26 ") << "a trill";

    press(at);
    release(front(30));
    press(at);
    release(QPoint(-20, 500));
    EXPECT_EQ(taken(), "down24 up24 down24 up24 ") << "dragged off";

    mouse(QEvent::MouseButtonPress, at, Qt::RightButton);
    mouse(QEvent::MouseButtonRelease, at, Qt::RightButton);
    EXPECT_EQ(taken(), "");

    QObject::disconnect(&keyboard, &PianoKeyboard::keyDoubleClick, nullptr, nullptr);
    click(at);
    secondPress(24);
    EXPECT_EQ(taken(), "down24 up24 click24 down24 up24 click24 ")
        << "nobody listens for double clicks";
}

TEST_F(PianoKeyboardTest, NoKeyStaysDownWhenItsReleaseCannotCome) {
    QEvent blocked(QEvent::WindowBlocked);
    const std::function<void()> interruptions[] = {
        [&] { QCoreApplication::sendEvent(&window, &blocked); },
        [&] { keyboard.setEnabled(false); },
        [&] { keyboard.hide(); },
    };
    for (const auto& interrupt : interruptions) {
        press(front(7));
        interrupt();
        EXPECT_EQ(taken(), "down7 up7 ");
        keyboard.setEnabled(true);
        keyboard.show();
        release(front(7));
        EXPECT_EQ(taken(), "");
    }
}

TEST_F(PianoKeyboardTest, MarkingPaintsOneKeyAtOnce) {
    for (int i = 0; i < PianoKeyboard::kKeys; ++i) {
        keyboard.painted.clear();
        keyboard.setMarked(i, true);
        keyboard.setMarked(i, true);
        EXPECT_THAT(keyboard.painted, ElementsAre(key(i).geometry()));
        const QColor pressed(192, 192, 255);
        EXPECT_EQ(colourAt(front(i)), pressed) << i;
        keyboard.setMarked(i, false);
        EXPECT_NE(colourAt(front(i)), pressed) << i;
    }
    for (const int none : {-1, 60}) {
        keyboard.setMarked(none, true);
        EXPECT_FALSE(keyboard.marked(none));
    }
}

TEST_F(PianoKeyboardTest, RangeMarksTakeRoomOnlyWhenShown) {
    const int length = key(0).height();
    for (int i = 0; i < PianoKeyboard::kKeys; ++i)
        keyboard.setRangeMark(i, i != 5);
    EXPECT_FALSE(mark(0).isVisible());

    keyboard.showRangeMarks(true);
    EXPECT_LT(key(0).height(), length);
    for (int i = 0; i < PianoKeyboard::kKeys; ++i) {
        const QRect bar = mark(i).geometry();
        EXPECT_EQ(mark(i).isVisible(), i != 5) << i;
        EXPECT_TRUE(keyboard.rect().contains(bar));
        EXPECT_TRUE(sharp(i) ? bar.bottom() < key(i).geometry().top()
                             : bar.top() > key(i).geometry().bottom());
        EXPECT_EQ(colourAt(bar.center()) == QColor(0, 255, 0), i != 5) << i;
    }
    keyboard.showRangeMarks(false);
    EXPECT_FALSE(mark(0).isVisible());
    EXPECT_EQ(key(0).height(), length);
}

TEST_F(PianoKeyboardTest, TheKeyboardWorksWithoutAMouse) {
    type(QEvent::KeyPress, Qt::Key_Tab);
    ASSERT_TRUE(keyboard.hasFocus());
    const std::vector<std::pair<int, int>> moves{
        {Qt::Key_Right, 25}, {Qt::Key_PageUp, 37},  {Qt::Key_Left, 36}, {Qt::Key_Home, 0},
        {Qt::Key_Left, 0},   {Qt::Key_PageDown, 0}, {Qt::Key_End, 59},  {Qt::Key_PageDown, 47}};
    for (const auto& [code, cursor] : moves) {
        type(QEvent::KeyPress, code);
        EXPECT_EQ(keyboard.cursorKey(), cursor);
    }
    type(QEvent::KeyPress, Qt::Key_Space);
    EXPECT_EQ(taken(), "down47 ");
    type(QEvent::KeyRelease, Qt::Key_Space);
    EXPECT_EQ(taken(), "up47 click47 ");
    type(QEvent::KeyPress, Qt::Key_Return);
    EXPECT_EQ(taken(), "down47 double47 ");
    type(QEvent::KeyRelease, Qt::Key_Return);
    EXPECT_EQ(taken(), "up47 click47 ");
    type(QEvent::KeyPress, Qt::Key_Space);
    keyboard.clearFocus();
    EXPECT_EQ(taken(), "down47 up47 ");

    keyboard.setFocus();
    window.keys = 0;
    for (const int code : {Qt::Key_Z, Qt::Key_Comma})
        type(QEvent::KeyPress, code);
    EXPECT_EQ(window.keys, 2);
    EXPECT_EQ(keyboard.cursorKey(), 47);
    EXPECT_EQ(taken(), "");
}

TEST_F(PianoKeyboardTest, AScreenReaderFindsAndPressesTheKeys) {
    auto& reader = *QAccessible::queryAccessibleInterface(&key(24));
    EXPECT_EQ(reader.role(), QAccessible::Button);
    EXPECT_EQ(reader.text(QAccessible::Name), "Do centrale");
    EXPECT_EQ(key(24).toolTip(), "Do Centrale");
    EXPECT_EQ(key(0).accessibleName(), "Do 2");
    EXPECT_EQ(key(25).accessibleName(), "Do diesis 4");
    EXPECT_FALSE(reader.state().pressed);
    keyboard.setMarked(24, true);
    EXPECT_TRUE(reader.state().pressed);
    keyboard.setFocus();
    EXPECT_TRUE(reader.state().focused);

    reader.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(taken(), "down24 ");
    QElapsedTimer waited;
    waited.start();
    while (acts.empty() && waited.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    EXPECT_EQ(taken(), "up24 click24 ");
}

}  // namespace
