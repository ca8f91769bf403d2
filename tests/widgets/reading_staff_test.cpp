#include "reading/reading_staff.h"

#include "ink.h"
#include "reading/regolo.h"
#include "reading/ruler.h"
#include "support/window_driver.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QtMath>

#include <gmock/gmock.h>

#include <random>

using testing::ElementsAre;
using testing::SizeIs;

namespace {

constexpr auto kSteps = staff_step::all();

struct ReadingStaffTest : testing::Test {
    QWidget window;
    ReadingStaff staff{&window};
    Regolo& ruler = staff.ruler();
    std::vector<int> presses;  ///< the steps; 0 for none

    ReadingStaffTest() {
        QObject::connect(&ruler, &Regolo::pressed, [this](double twips) {
            presses.push_back(ruler::stepAt(twips).value_or(0));
        });
        QPalette palette;
        palette.setColor(QPalette::Base, Qt::white);
        palette.setColor(QPalette::Text, Qt::black);
        window.setPalette(palette);
        resize({560, 480});
        window.show();
        window.activateWindow();
        QCoreApplication::processEvents();
    }

    void resize(QSize size) {
        staff.setGeometry({{11, 7}, size});
        window.resize(size + QSize(20, 20));
        QCoreApplication::processEvents();
    }

    QImage picture() { return window.grab(staff.geometry()).toImage(); }
    double noteY(int step) {
        return QRectF(staff.findChild<QWidget*>(QStringLiteral("n%1").arg(step))->geometry())
            .center()
            .y();
    }
    void mouse(QEvent::Type type, double y) {
        sendMouse(ruler, type, {ruler.width() / 2.0, y - ruler.y()});
    }
};

}  // namespace

TEST_F(ReadingStaffTest, ItsLinesAreCrispAndEveryNoteIsDrawnWhereARulersPressChoosesIt) {
    for (const QSize size : {QSize(560, 480), QSize(300, 300)}) {
        resize(size);
        staff.hideNotes();
        const QImage plain = picture();
        const double ratio = plain.devicePixelRatio();
        const int card = qCeil(3 * ratio);
        const int column = qRound((ruler.x() - 10) * ratio);
        const auto lines = inkRuns(plain.copy(column, card, 1, plain.height() - 2 * card), 0);
        ASSERT_THAT(lines, SizeIs(10)) << size.width();
        const int space = lines[1].top - lines[0].top;
        for (int i = 0; i < 9; ++i) {
            EXPECT_EQ(lines[i].thickness, lines[9].thickness);
            EXPECT_TRUE(i == 4 || lines[i + 1].top - lines[i].top == space) << i;
        }
        for (const int step : kSteps) {
            // Two steps from a line to the next.
            const InkRun& bottom = lines[step >= 40 ? 4 : 9];
            const double position = step - (step >= 40 ? 46 : 18);
            const double y = bottom.top + card + bottom.thickness / 2.0 - position * space / 2.0;
            EXPECT_NEAR(noteY(step) * ratio, y, 1.5 * ratio) << step;
            staff.hideNotes();
            staff.showNote(step);
            const QRect ink = changeBetween(plain, picture());
            EXPECT_TRUE(ink.contains(ink.center().x(), qRound(y))) << step;
            EXPECT_LT(ink.height(), 8 * space) << "one note";
            mouse(QEvent::MouseButtonPress, noteY(step));
            EXPECT_THAT(std::exchange(presses, {}), ElementsAre(step));
        }
        mouse(QEvent::MouseButtonPress, (noteY(31) + noteY(40)) / 2);
        EXPECT_THAT(std::exchange(presses, {}), ElementsAre(0));
    }
}

/// The mouse has precedence over the cursor, which moves along the steps.
TEST_F(ReadingStaffTest, TheStepOfTheMouseOrTheCursorIsReportedAndSeen) {
    std::mt19937 random(15);
    std::optional<int> told;
    ruler.clearFocus();
    QObject::connect(&ruler, &Regolo::pointed, [&](std::optional<int> step) { told = step; });
    ruler.setFocus();
    int cursor = static_cast<int>(std::ranges::find(kSteps, ruler.cursorStep()) - kSteps.begin());
    std::optional<int> under;
    std::string sequence;
    const int last = static_cast<int>(kSteps.size()) - 1;
    const QImage plain = picture();
    for (int act = 0; act < 500; ++act) {
        const int keys[] = {Qt::Key_Up,       Qt::Key_Down, Qt::Key_PageUp,
                            Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};
        const int targets[] = {cursor + 1, cursor - 1, cursor + 7, cursor - 7, last, 0};
        const auto move = random() % 6;
        const int step = kSteps[random() % kSteps.size()];
        QEvent leave(QEvent::Leave);
        switch (random() % 4) {
            case 0:
                WindowDriver(window).type(keys[move]);
                cursor = std::clamp(targets[move], 0, last);
                break;
            case 1:
                mouse(QEvent::MouseMove, noteY(step));
                under = step;
                break;
            case 2:
                QCoreApplication::sendEvent(&ruler, &leave);
                under.reset();
                break;
            default:
                WindowDriver(window).type(random() % 2 ? Qt::Key_Space : Qt::Key_Return);
                EXPECT_THAT(std::exchange(presses, {}), ElementsAre(kSteps[cursor]));
        }
        ASSERT_EQ(ruler.cursorStep(), kSteps[cursor]) << act;
        ASSERT_TRUE(told == under.value_or(kSteps[cursor])) << act;
    }
    mouse(QEvent::MouseMove, noteY(50));
    EXPECT_TRUE(changeBetween(plain, picture()).isValid());
}

TEST_F(ReadingStaffTest, HiddenMarkersAndThePlaceOfTheNoteAreReadToThoseWhoCannotSee) {
    const QImage plain = picture();
    ruler.hideMarker(50);
    EXPECT_TRUE(changeBetween(plain, picture()).isValid()) << "a sign stands in its place";
    auto* item = QAccessible::queryAccessibleInterface(ruler.findChild<QWidget*>("m50"));
    EXPECT_EQ(item->text(QAccessible::Name), "Chiave di Sol, terza linea");
    item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(presses, ElementsAre(50));
    staff.showNote(48);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&staff)->text(QAccessible::Description),
              "Chiave di Sol, seconda linea");
}
