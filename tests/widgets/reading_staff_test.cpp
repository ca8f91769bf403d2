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
        const auto lines =
            inkRuns(plain.copy(column, card, 1, qFloor((size.height() - 6) * ratio)), 0);
        ASSERT_THAT(lines, SizeIs(10)) << size.width();
        const int space = lines[1].top - lines[0].top;
        for (const int step : kSteps) {
            // Two steps from a line to the next.
            const bool treble = step >= 40;
            const InkRun& bottom = lines[treble ? 4 : 9];
            const double position = step - (treble ? 46 : 18);
            const double y = bottom.top + card + bottom.thickness / 2.0 - position * space / 2.0;
            EXPECT_NEAR(noteY(step) * ratio, y, 1.5 * ratio) << step;
            staff.hideNotes();
            staff.showNote(step);
            const QRect ink = changeBetween(plain, picture());
            EXPECT_TRUE(ink.contains(ink.center().x(), qRound(y))) << step;
            EXPECT_LT(ink.height(), 8 * space) << "one note";
            const auto* marker = ruler.findChild<QWidget*>(QStringLiteral("m%1").arg(step));
            EXPECT_NEAR(QRectF(marker->geometry()).center().y(), noteY(step), 1.5) << step;
            mouse(QEvent::MouseButtonPress, noteY(step));
            EXPECT_THAT(std::exchange(presses, {}), ElementsAre(step));
        }
        for (const double none : {(noteY(31) + noteY(40)) / 2, 0.0, size.height() - 1.0})
            mouse(QEvent::MouseButtonPress, none);
        EXPECT_THAT(std::exchange(presses, {}), ElementsAre(0, 0, 0));
    }
    sendMouse(ruler, QEvent::MouseButtonPress, {5, noteY(50)}, Qt::RightButton);
    ruler.setEnabled(false);
    mouse(QEvent::MouseButtonPress, noteY(50));
    EXPECT_THAT(presses, SizeIs(0));
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
        const std::pair<int, int> moves[] = {
            {Qt::Key_Up, cursor + 1},     {Qt::Key_Down, cursor - 1},
            {Qt::Key_PageUp, cursor + 7}, {Qt::Key_PageDown, cursor - 7},
            {Qt::Key_Home, last},         {Qt::Key_End, 0}};
        const auto [key, target] = moves[random() % 6];
        const int step = kSteps[random() % kSteps.size()];
        QEvent leave(QEvent::Leave);
        switch (random() % 4) {
            case 0:
                WindowDriver(window).type(key);
                cursor = std::clamp(target, 0, last);
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
    ruler.setEnabled(false);
    EXPECT_EQ(told, std::nullopt);
}

TEST_F(ReadingStaffTest, HiddenMarkersAndThePlaceOfTheNoteAreReadToThoseWhoCannotSee) {
    auto& marker = *ruler.findChild<QWidget*>("m50");
    const QImage plain = picture();
    ruler.hideMarker(50);
    EXPECT_TRUE(changeBetween(plain, picture()).isValid()) << "a sign stands in its place";
    EXPECT_FALSE(marker.isVisible());
    QAccessibleInterface* item = QAccessible::queryAccessibleInterface(&marker);
    EXPECT_EQ(item->text(QAccessible::Name), "Chiave di Sol, terza linea");
    EXPECT_FALSE(item->state().invisible);
    item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(presses, ElementsAre(50));
    ruler.showAllMarkers();
    EXPECT_TRUE(marker.isVisible());
    ruler.moveCursor(46);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&ruler)->text(QAccessible::Value),
              "Chiave di Sol, prima linea");

    const QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&staff);
    staff.showNote(48);
    EXPECT_EQ(reader->text(QAccessible::Description), "Chiave di Sol, seconda linea");
    staff.hideNotes();
    EXPECT_EQ(reader->text(QAccessible::Description), "Nessuna nota");
}
