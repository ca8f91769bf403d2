#include "reading/regolo.h"

#include "reading/reading_staff.h"
#include "reading/ruler.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct RegoloTest : testing::Test {
    ReadingStaff staff;
    Regolo& ruler = staff.ruler();
    std::vector<double> presses;
    std::vector<std::optional<int>> pointed;

    RegoloTest() {
        ruler.onPressed([this](double twips) { presses.push_back(twips); });
        staff.resize(560, 480);
        staff.show();
        QCoreApplication::processEvents();
    }

    void mouse(QEvent::Type type, double y, Qt::MouseButton button = Qt::LeftButton) {
        const QPointF at(ruler.width() / 2.0, y);
        QMouseEvent event(type, at, ruler.mapToGlobal(at), button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(&ruler, &event);
    }

    void key(int key, bool repeated = false) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, {}, repeated);
        QCoreApplication::sendEvent(&ruler, &event);
    }

    /// The step chosen by a press at a height of the staff, 0 for none.
    int stepPressedAt(double y) {
        presses.clear();
        mouse(QEvent::MouseButtonPress, y - ruler.y());
        return presses.size() == 1 ? ruler::stepAt(presses[0]).value_or(0) : -1;
    }

    double pictureY(int step) {
        const auto* picture = staff.findChild<QWidget*>(QStringLiteral("n%1").arg(step));
        return QRectF(picture->geometry()).center().y();
    }
};

}  // namespace

TEST_F(RegoloTest, APressBesideANoteChoosesItsStep) {
    for (const QSize size : {QSize(560, 480), QSize(420, 400), QSize(900, 800)}) {
        staff.resize(size);
        QCoreApplication::processEvents();
        for (const int step : staff_step::all()) {
            const auto* marker = ruler.findChild<QWidget*>(QStringLiteral("m%1").arg(step));
            EXPECT_NEAR(QRectF(marker->geometry()).center().y(), pictureY(step), 1.5) << step;
            for (const double beside : {-1.0, 0.0, 1.0})
                EXPECT_EQ(stepPressedAt(pictureY(step) + beside), step) << beside;
        }
        EXPECT_EQ(stepPressedAt((pictureY(31) + pictureY(40)) / 2), 0);
        EXPECT_EQ(stepPressedAt(0), 0);
        EXPECT_EQ(stepPressedAt(staff.height() - 1), 0);
        EXPECT_EQ(stepPressedAt((pictureY(50) + pictureY(51)) / 2), 0) << "between two bands";
    }
    presses.clear();
    mouse(QEvent::MouseButtonPress, pictureY(50), Qt::RightButton);
    ruler.setEnabled(false);
    mouse(QEvent::MouseButtonPress, pictureY(50));
    EXPECT_THAT(presses, IsEmpty());
}

TEST_F(RegoloTest, TheStepUnderTheMouseIsReportedWhileItIsThere) {
    ruler.clearFocus();
    ruler.onPointed([this](std::optional<int> step) { pointed.push_back(step); });
    mouse(QEvent::MouseMove, pictureY(50), Qt::NoButton);
    mouse(QEvent::MouseMove, pictureY(50) + 1, Qt::NoButton);
    mouse(QEvent::MouseMove, pictureY(20), Qt::NoButton);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&ruler, &leave);
    mouse(QEvent::MouseMove, pictureY(20), Qt::NoButton);
    ruler.setEnabled(false);
    EXPECT_THAT(pointed, ElementsAre(50, 20, std::nullopt, 20, std::nullopt));
}

TEST_F(RegoloTest, TheKeyboardMovesACursorAndPresses) {
    struct Row {
        int key, step;
    };
    ruler.moveCursor(44);
    for (const auto& [pressed, step] : {Row{Qt::Key_Up, 45},
                                        {Qt::Key_PageDown, 30},
                                        {Qt::Key_Up, 31},
                                        {Qt::Key_Up, 40},
                                        {Qt::Key_Down, 31},
                                        {Qt::Key_Home, 64},
                                        {Qt::Key_Up, 64},
                                        {Qt::Key_PageDown, 57},
                                        {Qt::Key_End, 11},
                                        {Qt::Key_Down, 11},
                                        {Qt::Key_PageUp, 18}}) {
        key(pressed);
        EXPECT_EQ(ruler.cursorStep(), step);
    }
    key(Qt::Key_Space);
    key(Qt::Key_Space, true);
    key(Qt::Key_Home);
    key(Qt::Key_Return);
    EXPECT_THAT(presses, ElementsAre(ruler::bandOf(18)->centre(), ruler::bandOf(64)->centre()));
    EXPECT_TRUE(ruler.focusPolicy() & Qt::TabFocus);
}

TEST_F(RegoloTest, HiddenMarkersComeBackAndStayInReachOfScreenReaders) {
    const auto* marker = ruler.findChild<QWidget*>(QStringLiteral("m50"));
    ruler.hideMarker(50);
    ruler.hideMarker(35);
    EXPECT_FALSE(marker->isVisible());
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&ruler);
    ruler.moveCursor(46);
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->text(QAccessible::Name), QStringLiteral("Righello dell'intervallo"));
    EXPECT_EQ(list->text(QAccessible::Value), QStringLiteral("Chiave di Sol, prima linea"));

    QAccessibleInterface* item =
        QAccessible::queryAccessibleInterface(const_cast<QWidget*>(marker));
    EXPECT_EQ(item->text(QAccessible::Name), QStringLiteral("Chiave di Sol, terza linea"));
    EXPECT_FALSE(item->state().invisible);
    ASSERT_TRUE(item->actionInterface());
    item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(presses, ElementsAre(DoubleNear(ruler::bandOf(50)->centre(), 0.01)));
    ruler.showAllMarkers();
    EXPECT_TRUE(marker->isVisible());
}
