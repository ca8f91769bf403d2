#include "reading/reading_staff.h"

#include "ink.h"
#include "reading/regolo.h"
#include "reading/ruler.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QWidget>
#include <QtMath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using testing::ElementsAre;
using testing::SizeIs;

namespace {

constexpr auto kSteps = staff_step::all();

struct ReadingStaffTest : testing::Test {
    QWidget window;
    ReadingStaff staff{&window};

    ReadingStaffTest() {
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
        const int x = qRound((staff.x() + staff.ruler().x() - 10) * ratio);
        auto runs = inkRuns(image.copy(x, border, 1, height), 0);
        for (InkRun& run : runs)
            run.top += border;
        return runs;
    }
};

}  // namespace

TEST(StaffLayout, PlacesAndTwipsFollowEachOtherSteadily) {
    for (const int step : kSteps) {
        const double centre = ruler::bandOf(step)->centre();
        EXPECT_DOUBLE_EQ(staff_layout::twipsAt(staff_layout::placeOf(step)), centre) << step;
        EXPECT_DOUBLE_EQ(staff_layout::placeAt(centre), staff_layout::placeOf(step)) << step;
    }
    double before = staff_layout::twipsAt(-20);
    for (int tenths = -199; tenths < (staff_layout::kHeight + 20) * 10; ++tenths) {
        const double place = tenths / 10.0;
        const double twips = staff_layout::twipsAt(place);
        EXPECT_GT(twips, before) << place;
        EXPECT_NEAR(staff_layout::placeAt(twips), place, 1e-9);
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
        const auto pictureY = [this](int step) {
            return QRectF(picture(step).geometry()).center().y();
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
    staff.hideNotes();
    EXPECT_THAT(visibleNotes(), ElementsAre());
}

TEST_F(ReadingStaffTest, ScreenReadersReadThePlaceOfTheNote) {
    const QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&staff);
    const auto description = [reader] { return reader->text(QAccessible::Description); };
    EXPECT_EQ(reader->text(QAccessible::Name), QStringLiteral("Pentagramma"));
    EXPECT_EQ(reader->role(), QAccessible::Graphic);
    EXPECT_EQ(description(), QStringLiteral("Nessuna nota"));
    staff.showNote(48);
    EXPECT_EQ(description(), QStringLiteral("Chiave di Sol, seconda linea"));
    staff.hideNotes();
    EXPECT_EQ(description(), QStringLiteral("Nessuna nota"));
}
