#include "reading/reading_staff.h"

#include "ink.h"
#include "reading/regolo.h"
#include "reading/ruler.h"
#include "support/window_driver.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>
#include <QtMath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr auto kSteps = staff_step::all();

struct ReadingStaffTest : testing::Test {
    QWidget window;
    ReadingStaff staff{&window};
    Regolo& ruler = staff.ruler();
    std::vector<double> presses;

    ReadingStaffTest() {
        QObject::connect(&ruler, &Regolo::pressed,
                         [this](double twips) { presses.push_back(twips); });
        QPalette palette;
        palette.setColor(QPalette::Base, Qt::white);
        palette.setColor(QPalette::Text, Qt::black);
        window.setPalette(palette);
        resize(560, 480);
        window.show();
    }

    void resize(int width, int height) {
        staff.setGeometry(11, 7, width, height);
        window.resize(width + 20, height + 20);
        QCoreApplication::processEvents();
    }

    QWidget& picture(int step) {
        return *staff.findChild<QWidget*>(QStringLiteral("n%1").arg(step));
    }

    double pictureY(int step) { return QRectF(picture(step).geometry()).center().y(); }

    std::vector<int> visibleNotes() {
        std::vector<int> steps;
        for (const int step : kSteps) {
            if (picture(step).isVisible())
                steps.push_back(step);
        }
        return steps;
    }

    /// The ten staff lines inside the card, in device pixels of the window.
    std::vector<InkRun> lines() {
        const QImage image = window.grab().toImage();
        const double ratio = image.devicePixelRatio();
        const int border = qCeil((staff.y() + 3) * ratio);
        const int height = qFloor((staff.height() - 6) * ratio);
        const int x = qRound((staff.x() + ruler.x() - 10) * ratio);
        auto runs = inkRuns(image.copy(x, border, 1, height), 0);
        for (InkRun& run : runs)
            run.top += border;
        return runs;
    }

    void mouse(QEvent::Type type, double y, Qt::MouseButton button = Qt::LeftButton) {
        sendMouse(ruler, type, {ruler.width() / 2.0, y}, button);
    }

    void key(int key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&ruler, &event);
    }

    /// The step chosen by a press at a height of the staff, 0 for none.
    int stepPressedAt(double y) {
        presses.clear();
        mouse(QEvent::MouseButtonPress, y - ruler.y());
        return presses.size() == 1 ? ruler::stepAt(presses[0]).value_or(0) : -1;
    }
};

}  // namespace

TEST(StaffLayout, PlacesAndTwipsFollowEachOtherSteadily) {
    for (const int step : kSteps) {
        const double centre = ruler::bandOf(step)->centre();
        EXPECT_DOUBLE_EQ(staff_layout::twipsAt(staff_layout::placeOf(step)), centre) << step;
    }
    double before = staff_layout::twipsAt(-21);
    for (int place = -20; place < staff_layout::kHeight + 20; ++place) {
        const double twips = staff_layout::twipsAt(place);
        EXPECT_GT(twips, before) << place;
        before = twips;
    }
    EXPECT_DOUBLE_EQ(staff_layout::twipsAt(staff_layout::kHeight), ruler::kLength);
}

TEST_F(ReadingStaffTest, BothStavesAreCrispAndEvenAndThePicturesStandOnThem) {
    for (const QSize size : {QSize(560, 480), QSize(300, 300), QSize(500, 391), QSize(900, 700)}) {
        resize(size.width(), size.height());
        const double ratio = window.devicePixelRatioF();
        const auto runs = lines();
        ASSERT_THAT(runs, SizeIs(10)) << size.width();
        for (std::size_t i = 1; i < runs.size(); ++i) {
            EXPECT_EQ(runs[i].thickness, runs[0].thickness);
            const bool sameStave = i != 5;
            EXPECT_EQ(runs[i].top - runs[i - 1].top == runs[1].top - runs[0].top, sameStave) << i;
        }
        const auto lineY = [&](std::size_t i) {
            return (runs[i].top + runs[i].thickness / 2.0) / ratio - staff.y();
        };
        EXPECT_NEAR(pictureY(54), lineY(0), 1);
        EXPECT_NEAR(pictureY(46), lineY(4), 1);
        EXPECT_NEAR(pictureY(26), lineY(5), 1);
        EXPECT_NEAR(pictureY(18), lineY(9), 1);
        EXPECT_NEAR(pictureY(49), (lineY(2) + lineY(3)) / 2, 1) << "a space";
        EXPECT_NEAR(pictureY(64), lineY(0) - 5 * (lineY(1) - lineY(0)), 1);
    }
}

TEST_F(ReadingStaffTest, EveryNoteIsDrawnInTheMiddleOfItsPictureAndInsideTheCard) {
    for (const int step : kSteps) {
        staff.hideNotes();
        staff.showNote(step);
        EXPECT_THAT(visibleNotes(), ElementsAre(step));
        const QRect place = picture(step).geometry();
        const QImage image = staff.grab().toImage();
        const QPointF head = QRectF(place).center() * image.devicePixelRatio();
        const auto runs = inkRuns(image, qRound(head.x()));
        const auto run = std::find_if(runs.begin(), runs.end(), [&](const InkRun& r) {
            return r.top <= head.y() && r.top + r.thickness >= head.y();
        });
        ASSERT_NE(run, runs.end()) << step;
        EXPECT_NEAR(run->top + run->thickness / 2.0, head.y(), 2 * image.devicePixelRatio())
            << step;
        EXPECT_TRUE(staff.rect().contains(place.center())) << step;
    }
    staff.showNote(35);
    staff.showNote(40);
    EXPECT_THAT(visibleNotes(), ElementsAre(40, 64)) << "showing a note hides none";
}

TEST_F(ReadingStaffTest, ScreenReadersReadThePlaceOfTheNote) {
    const QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&staff);
    const auto description = [reader] { return reader->text(QAccessible::Description); };
    EXPECT_EQ(reader->role(), QAccessible::Graphic);
    staff.showNote(48);
    EXPECT_EQ(description(), "Chiave di Sol, seconda linea");
    staff.hideNotes();
    EXPECT_EQ(description(), "Nessuna nota");
}

TEST_F(ReadingStaffTest, APressBesideANoteChoosesItsStep) {
    for (const QSize size : {QSize(560, 480), QSize(420, 400), QSize(900, 800)}) {
        resize(size.width(), size.height());
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

TEST_F(ReadingStaffTest, ReportsTheStepUnderTheMouse) {
    std::vector<std::optional<int>> pointed;
    ruler.clearFocus();
    QObject::connect(&ruler, &Regolo::pointed,
                     [&](std::optional<int> step) { pointed.push_back(step); });
    mouse(QEvent::MouseMove, pictureY(50), Qt::NoButton);
    mouse(QEvent::MouseMove, pictureY(50) + 1, Qt::NoButton);
    mouse(QEvent::MouseMove, pictureY(20), Qt::NoButton);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&ruler, &leave);
    mouse(QEvent::MouseMove, pictureY(20), Qt::NoButton);
    ruler.setEnabled(false);
    EXPECT_THAT(pointed, ElementsAre(50, 20, std::nullopt, 20, std::nullopt));
}

TEST_F(ReadingStaffTest, TheKeyboardMovesACursorAndPresses) {
    const std::pair<int, int> moves[] = {
        {Qt::Key_Up, 45},   {Qt::Key_PageDown, 30}, {Qt::Key_Up, 31},       {Qt::Key_Up, 40},
        {Qt::Key_Home, 64}, {Qt::Key_Up, 64},       {Qt::Key_PageDown, 57}, {Qt::Key_End, 11},
        {Qt::Key_Down, 11}, {Qt::Key_PageUp, 18}};
    ruler.moveCursor(44);
    for (const auto& [pressed, step] : moves) {
        key(pressed);
        EXPECT_EQ(ruler.cursorStep(), step);
    }
    key(Qt::Key_Space);
    key(Qt::Key_Home);
    key(Qt::Key_Return);
    EXPECT_THAT(presses, ElementsAre(ruler::bandOf(18)->centre(), ruler::bandOf(64)->centre()));
}

TEST_F(ReadingStaffTest, HiddenMarkersComeBackAndStayInReachOfScreenReaders) {
    const auto* marker = ruler.findChild<QWidget*>("m50");
    ruler.hideMarker(50);
    ruler.hideMarker(35);
    EXPECT_FALSE(marker->isVisible());
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&ruler);
    ruler.moveCursor(46);
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->text(QAccessible::Value), "Chiave di Sol, prima linea");

    QAccessibleInterface* item =
        QAccessible::queryAccessibleInterface(const_cast<QWidget*>(marker));
    EXPECT_EQ(item->text(QAccessible::Name), "Chiave di Sol, terza linea");
    EXPECT_FALSE(item->state().invisible);
    ASSERT_TRUE(item->actionInterface());
    item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(presses, ElementsAre(DoubleNear(ruler::bandOf(50)->centre(), 0.01)));
    ruler.showAllMarkers();
    EXPECT_TRUE(marker->isVisible());
}
