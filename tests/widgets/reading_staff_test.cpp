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
        ruler.clearFocus();
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
    void mouse(QEvent::Type type, double y, Qt::MouseButton button = Qt::LeftButton) {
        sendMouse(ruler, type, {ruler.width() / 2.0, y - ruler.y()}, button);
    }
    void leave() {
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent(&ruler, &event);
    }
    QAccessibleInterface* item(int step) {
        const QString name = QStringLiteral("m%1").arg(step);
        return QAccessible::queryAccessibleInterface(ruler.findChild<QWidget*>(name));
    }
    void pressAsReader(int step) {
        item(step)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
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
        const int rulerLeft = qRound(ruler.x() * ratio);
        const auto lines = inkRuns(
            plain.copy(rulerLeft - qRound(10 * ratio), card, 1, plain.height() - 2 * card), 0);
        ASSERT_THAT(lines, SizeIs(10)) << size.width();
        const int space = lines[1].top - lines[0].top;
        for (int i = 0; i < 9; ++i) {
            EXPECT_EQ(lines[i].thickness, lines[9].thickness);
            EXPECT_TRUE(i == 4 || lines[i + 1].top - lines[i].top == space) << i;
        }
        for (const int step : kSteps) {
            if (step % 5 != 0 && size.width() == 300)
                continue;
            // Two steps from a line to the next.
            const InkRun& bottom = lines[step >= 40 ? 4 : 9];
            const int position = step - (step >= 40 ? 46 : 18);
            const double y = bottom.top + card + bottom.thickness / 2.0 - position * space / 2.0;
            EXPECT_NEAR(noteY(step) * ratio, y, 1.5 * ratio) << step;
            staff.hideNotes();
            staff.showNote(step);
            const QRect note = changeBetween(plain, picture());
            const double head =
                position < 4 ? note.bottom() - space / 2.0 : note.top() + space / 2.0;
            EXPECT_NEAR(head, y, 2.5 * ratio) << step;
            EXPECT_TRUE(note.height() > 3 * space && note.height() < 8 * space) << "one note";
            EXPECT_TRUE(note.left() > plain.width() / 3 && note.right() < rulerLeft) << step;
            EXPECT_EQ(QAccessible::queryAccessibleInterface(&staff)->text(QAccessible::Description),
                      staff_step::placeInWords(step));

            // Pointed at and taken: a preview, and a sign in the marker's place.
            staff.hideNotes();
            mouse(QEvent::MouseMove, noteY(step), Qt::NoButton);
            ruler.hideMarker(step);
            const QImage taken = picture();
            EXPECT_TRUE(changeBetween(plain, taken).contains(note.adjusted(3, 3, -3, -3))) << step;
            const QRect right(rulerLeft, 0, plain.width() - rulerLeft, plain.height());
            const QRectF sign = changeBetween(plain.copy(right), taken.copy(right));
            EXPECT_NEAR(sign.center().y(), y, 2 * ratio) << step;
            EXPECT_TRUE(item(step)->state().selected && !item(step)->state().invisible);
            EXPECT_EQ(item(step)->text(QAccessible::Name), staff_step::placeInWords(step));
            leave();
            ruler.showAllMarkers();
            EXPECT_FALSE(item(step)->state().selected);
            EXPECT_EQ(picture(), plain);

            for (const auto button : {Qt::LeftButton, Qt::RightButton})
                mouse(QEvent::MouseButtonPress, noteY(step), button);
            pressAsReader(step);
            EXPECT_THAT(std::exchange(presses, {}), ElementsAre(step, step));
        }
        mouse(QEvent::MouseButtonPress, (noteY(31) + noteY(40)) / 2);
        EXPECT_THAT(std::exchange(presses, {}), ElementsAre(0));
    }
    ruler.setEnabled(false);
    pressAsReader(50);
    EXPECT_THAT(presses, SizeIs(0));
}

/// The mouse has precedence over the cursor, which moves along the steps.
TEST_F(ReadingStaffTest, TheStepOfTheMouseOrTheCursorIsReportedAndSeen) {
    std::mt19937 random(15);
    std::optional<int> told;
    QObject::connect(&ruler, &Regolo::pointed, [&](std::optional<int> step) { told = step; });
    const QImage plain = picture();
    ruler.setFocus();
    EXPECT_TRUE(changeBetween(plain, picture()).isValid());
    auto cursor = std::ranges::find(kSteps, ruler.cursorStep()) - kSteps.begin();
    std::optional<int> under;
    const auto last = std::ssize(kSteps) - 1;
    for (int act = 0; act < 500; ++act) {
        const int keys[] = {Qt::Key_Up,   Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown,
                            Qt::Key_Home, Qt::Key_End,  Qt::Key_A};
        const std::ptrdiff_t targets[] = {cursor + 1, cursor - 1, cursor + 7, cursor - 7,
                                          last,       0,          cursor};
        const auto move = random() % 7;
        const int step = kSteps[random() % kSteps.size()];
        const auto what = random() % 4;
        if (what == 0) {
            WindowDriver(window).type(keys[move]);
            cursor = std::clamp<std::ptrdiff_t>(targets[move], 0, last);
        } else if (what == 1) {
            mouse(QEvent::MouseMove, noteY(step));
            under = step;
        } else if (what == 2) {
            leave();
            under.reset();
        } else {
            WindowDriver(window).type(random() % 2 ? Qt::Key_Space : Qt::Key_Return);
            EXPECT_THAT(std::exchange(presses, {}), ElementsAre(kSteps[cursor]));
        }
        ASSERT_EQ(ruler.cursorStep(), kSteps[cursor]) << act;
        ASSERT_TRUE(item(kSteps[cursor])->state().focused) << act;
        ASSERT_TRUE(told == under.value_or(kSteps[cursor])) << act;
    }
}
