#include "reading/reading_staff.h"

#include "reading/regolo.h"
#include "reading/ruler.h"
#include "support/window_driver.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

constexpr auto kSteps = staff_step::all();

struct ReadingStaffTest : testing::Test {
    ReadingStaff staff;
    Regolo& ruler = staff.ruler();
    QImage empty;
    std::vector<std::optional<int>> pressed;

    void open(QSize size) {
        staff.resize(size);
        staff.show();
        QObject::connect(&ruler, &Regolo::pressed,
                         [this](double twips) { pressed.push_back(ruler::stepAt(twips)); });
        QCoreApplication::processEvents();
        ruler.clearFocus();
        empty = picture();
    }
    QImage picture() { return staff.grab().toImage().convertToFormat(QImage::Format_RGB32); }

    /// Where this part of the staff looks different from the empty one.
    QRect ink(QRect part) {
        const QImage now = picture().copy(part);
        const QImage then = empty.copy(part);
        QRect changed;
        for (int y = 0; y < now.height(); ++y) {
            const auto* a = reinterpret_cast<const QRgb*>(now.constScanLine(y));
            const auto* b = reinterpret_cast<const QRgb*>(then.constScanLine(y));
            for (int x = 0; x < now.width(); ++x) {
                if (a[x] != b[x])
                    changed |= QRect(part.x() + x, part.y() + y, 1, 1);
            }
        }
        return changed;
    }
    QWidget& marker(int step) {
        return *ruler.findChild<QWidget*>(QStringLiteral("m%1").arg(step));
    }
    double y(int step) { return QRectF(marker(step).geometry()).center().y(); }
    double halfSpace() { return (y(40) - y(64)) / 24; }
};

}  // namespace

TEST_F(ReadingStaffTest, DrawsTheStavesAndEachNoteAtItsMarker) {
    for (const QSize size : {QSize(300, 300), QSize(560, 480), QSize(360, 600)}) {
        open(size);
        const double half = halfSpace();
        EXPECT_NEAR(y(11) - y(31), 20 * half, 2);
        EXPECT_NEAR(y(31) - y(40), 5 * half, 2);
        EXPECT_NEAR(y(64) + y(11), size.height(), 2);
        const QColor card = empty.pixelColor(size.width() / 2, int((y(31) + y(40)) / 2));
        EXPECT_EQ(card, staff.palette().color(QPalette::Base));
        std::vector<double> lines;
        const int column = ruler.x() - 4;
        for (int row = 1; row < size.height(); ++row) {
            const auto dark = [&](int at) { return qGray(empty.pixel(column, at)) < 128; };
            if (dark(row) && !dark(row - 1))
                lines.push_back(row);
        }
        ASSERT_EQ(lines.size(), 10U);
        for (std::size_t i = 0; i < 10; ++i)
            EXPECT_NEAR(lines[i], y(i < 5 ? 54 - 2 * int(i) : 36 - 2 * int(i)), 2) << i;
        for (const int step : kSteps) {
            staff.hideNotes();
            staff.showNote(step);
            const QRect drawn = ink(staff.rect());
            const QString words = staff_step::placeInWords(step);
            EXPECT_EQ(staff.accessibleDescription(), words);
            EXPECT_EQ(staff.findChild<QWidget*>(QStringLiteral("n%1").arg(step))->accessibleName(),
                      words);
            EXPECT_EQ(marker(step).accessibleName(), words);
            const bool stemUp = staff_layout::positionOnStave(step) < 4;
            EXPECT_NEAR(stemUp ? drawn.bottom() : drawn.top(), y(step) + (stemUp ? half : -half),
                        2.5)
                << step;
            EXPECT_GT(drawn.height(), 6 * half) << step;
            EXPECT_TRUE(drawn.right() < ruler.x() && drawn.left() > size.width() / 3) << step;
        }
        staff.showNote(35);
        staff.hideNotes();
        EXPECT_TRUE(ink(staff.rect()).isEmpty());
    }
}

TEST_F(ReadingStaffTest, TheRulerIsPressedByMouseAndReaderAndShowsWhatIsPointedAtAndTaken) {
    open({560, 480});
    const QRect area = ruler.geometry();
    for (const int step : kSteps) {
        // A line's tick is longer than those beside it, one of the stave longer than one outside.
        const int position = staff_layout::positionOnStave(step);
        const double length = marker(step).width() / double(area.width());
        EXPECT_NEAR(length,
                    position % 2 != 0              ? 0.28
                    : position < 0 || position > 8 ? 0.41
                                                   : 0.56,
                    0.04);
        const QPoint tick = ruler.mapTo(&staff, marker(step).geometry().center());
        EXPECT_EQ(empty.pixelColor(tick), staff.palette().color(QPalette::Highlight)) << step;
        if (step % 3 != 0)
            continue;
        sendMouse(ruler, QEvent::MouseMove, {20, y(step)}, Qt::NoButton);
        EXPECT_NEAR(ink(area).top(), y(step) - halfSpace(), 2) << step;
        EXPECT_NEAR(ink(area).bottom(), y(step) + halfSpace(), 2) << step;
        EXPECT_GT(ink(area.adjusted(-area.x(), 0, -area.width(), 0)).height(), 6 * halfSpace());
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton})
            sendMouse(ruler, QEvent::MouseButtonPress, {20, y(step)}, button);
        QAccessibleInterface* item = QAccessible::queryAccessibleInterface(&marker(step));
        item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(std::exchange(pressed, {}), (std::vector<std::optional<int>>{step, step}));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&ruler, &leave);
        EXPECT_TRUE(ink(staff.rect()).isEmpty() && !item->state().selected);
        ruler.hideMarker(step);
        EXPECT_NEAR(QRectF(ink(area)).center().y(), y(step), 2) << step;
        EXPECT_GT(ink(area).height(), halfSpace());
        EXPECT_TRUE(item->state().selected && !item->state().invisible);
        ruler.showAllMarkers();
        EXPECT_TRUE(ink(staff.rect()).isEmpty());
    }
    sendMouse(ruler, QEvent::MouseMove, {20, y(50)}, Qt::NoButton);
    ruler.setEnabled(false);
    EXPECT_GT(ink(area).height(), 46 * halfSpace()) << "all of it is paler";
    EXPECT_TRUE(ink(staff.rect().adjusted(0, 0, -area.width() - 8, 0)).isEmpty());
    QAccessible::queryAccessibleInterface(&marker(50))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(pressed.empty());
}

TEST_F(ReadingStaffTest, TheRulersCursorGoesWhereItsKeysLead) {
    open({560, 480});
    QApplication::setActiveWindow(&staff);
    ruler.setFocus();
    std::mt19937 engine(1);
    const auto size = static_cast<int>(kSteps.size());
    const std::map<int, int> ways{
        {Qt::Key_Up, 1},      {Qt::Key_Down, -1},   {Qt::Key_PageUp, 7}, {Qt::Key_PageDown, -7},
        {Qt::Key_Home, size}, {Qt::Key_End, -size}, {Qt::Key_A, 0},      {Qt::Key_Space, 0},
        {Qt::Key_Return, 0},  {Qt::Key_Enter, 0}};
    std::size_t at = 25;  // middle C
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&ruler);
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(ruler.cursorStep(), kSteps[at]);
        EXPECT_EQ(list->text(QAccessible::Value), staff_step::placeInWords(kSteps[at]));
        const auto* item = QAccessible::queryAccessibleInterface(&marker(kSteps[at]));
        EXPECT_TRUE(item->state().focused && list->state().focused);
        if (i % 50 == 0) {
            EXPECT_NEAR(QRectF(ink(ruler.geometry())).center().y(), y(kSteps[at]), 2);
        }
        const auto way = std::next(ways.begin(), engine() % 10);
        QKeyEvent key(QEvent::KeyPress, way->first, Qt::NoModifier);
        QCoreApplication::sendEvent(&ruler, &key);
        EXPECT_EQ(key.isAccepted(), way->first != Qt::Key_A);
        at = static_cast<std::size_t>(std::clamp(int(at) + way->second, 0, size - 1));
        const bool presses = way->second == 0 && way->first != Qt::Key_A;
        EXPECT_EQ(std::exchange(pressed, {}).size(), presses ? 1U : 0U);
    }
}
