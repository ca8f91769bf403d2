#include "reading/reading_staff.h"

#include "reading/regolo.h"
#include "reading/ruler.h"
#include "support/window_driver.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>

#include <gtest/gtest.h>

#include <random>

namespace {

constexpr auto kSteps = staff_step::all();

struct ReadingStaffTest : testing::Test {
    ReadingStaff staff;
    Regolo& ruler = staff.ruler();
    QImage empty;
    std::vector<std::optional<int>> pressed;  ///< the steps

    void SetUp() override {
        staff.resize(400, 400);
        staff.show();
        QObject::connect(&ruler, &Regolo::pressed,
                         [this](double twips) { pressed.push_back(ruler::stepAt(twips)); });
        QCoreApplication::processEvents();
        ruler.clearFocus();
        empty = staff.grab().toImage();
    }
    /// Where this part of the staff looks different from the empty one.
    QRect ink(QRect part) {
        const QImage now = staff.grab().toImage();
        QRect changed;
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x) {
                if (now.pixel(x, y) != empty.pixel(x, y))
                    changed |= QRect(x, y, 1, 1);
            }
        }
        return changed;
    }
    QWidget& marker(int step) {
        return *ruler.findChild<QWidget*>(QStringLiteral("m%1").arg(step));
    }
    double y(int step) { return QRectF(marker(step).geometry()).center().y(); }
    double halfSpace() { return (y(40) - y(64)) / 24; }
    QAccessibleInterface* item(int step) {
        return QAccessible::queryAccessibleInterface(&marker(step));
    }
};

}  // namespace

TEST_F(ReadingStaffTest, DrawsTheStavesAndEachNoteAtItsMarker) {
    const double half = halfSpace();
    EXPECT_NEAR(y(31) - y(40), 5 * half, 2);
    int line = 54;
    for (int row = 1; row < staff.height(); ++row) {
        const auto dark = [&](int at) { return qGray(empty.pixel(ruler.x() - 4, at)) < 128; };
        if (dark(row) && !dark(row - 1)) {
            EXPECT_NEAR(row, y(line), 2);
            line -= line == 46 ? 20 : 2;
        }
    }
    EXPECT_EQ(line, 16) << "five lines each";
    for (const int step : kSteps) {
        staff.hideNotes();
        staff.showNote(step);
        const QRect drawn = ink(staff.rect());
        const bool stemUp = staff_layout::positionOnStave(step) < 4;
        EXPECT_NEAR(stemUp ? drawn.bottom() - half : drawn.top() + half, y(step), 2.5) << step;
        EXPECT_GT(drawn.height(), 6 * half) << step;
        EXPECT_TRUE(drawn.right() < ruler.x() && drawn.left() > staff.width() / 3) << step;
        EXPECT_EQ(staff.accessibleDescription(), staff_step::placeInWords(step));
    }
    staff.hideNotes();
    EXPECT_TRUE(ink(staff.rect()).isEmpty());
}

TEST_F(ReadingStaffTest, TheRulerIsPressedByMouseAndReaderAndShowsWhatIsPointedAtAndTaken) {
    const QRect area = ruler.geometry();
    for (const int step : kSteps) {
        sendMouse(ruler, QEvent::MouseMove, {20, y(step)}, Qt::NoButton);
        EXPECT_NEAR(QRectF(ink(area)).center().y(), y(step), 2) << step;
        EXPECT_GT(ink(staff.rect().adjusted(0, 0, -area.width(), 0)).height(), 6 * halfSpace());
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton})
            sendMouse(ruler, QEvent::MouseButtonPress, {20, y(step)}, button);
        item(step)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(std::exchange(pressed, {}), (std::vector<std::optional<int>>{step, step}));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&ruler, &leave);
        EXPECT_TRUE(ink(staff.rect()).isEmpty() && !item(step)->state().selected);
        ruler.hideMarker(step);
        EXPECT_NEAR(QRectF(ink(area)).center().y(), y(step), 2) << step;
        EXPECT_TRUE(item(step)->state().selected && !item(step)->state().invisible);
        ruler.showAllMarkers();
    }
    ruler.setEnabled(false);
    item(50)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(pressed.empty());
}

TEST_F(ReadingStaffTest, TheRulersCursorGoesWhereItsKeysLead) {
    QApplication::setActiveWindow(&staff);
    ruler.setFocus();
    std::mt19937 engine(1);
    const auto size = static_cast<int>(kSteps.size());
    const std::pair<Qt::Key, int> ways[] = {
        {Qt::Key_Up, 1},      {Qt::Key_Down, -1},   {Qt::Key_PageUp, 7}, {Qt::Key_PageDown, -7},
        {Qt::Key_Home, size}, {Qt::Key_End, -size}, {Qt::Key_A, 0},      {Qt::Key_Space, 0},
        {Qt::Key_Return, 0},  {Qt::Key_Enter, 0}};
    int at = 25;  // middle C
    for (int i = 0; i < 1000; ++i) {
        const int step = kSteps[static_cast<std::size_t>(at)];
        EXPECT_EQ(ruler.cursorStep(), step);
        EXPECT_TRUE(item(step)->state().focused);
        const auto& [key, way] = ways[engine() % 10];
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&ruler, &event);
        EXPECT_EQ(std::exchange(pressed, {}).size(), way == 0 && key != Qt::Key_A ? 1U : 0U);
        at = std::clamp(at + way, 0, size - 1);
    }
}
