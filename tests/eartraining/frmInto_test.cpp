#include "eartraining/frmInto.h"

#include "core/intervals.h"
#include "eartraining/ear_training_state.h"
#include "support/test_world.h"
#include "support/window_driver.h"
#include "widgets/colour_button.h"
#include "widgets/piano_keyboard.h"

#include <QLabel>
#include <QSlider>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

struct FrmIntoTest : testing::Test {
    TestWorld world;
    EarTrainingState state;

    FrmIntoTest() { world.openOutput(); }

    /// Opens the window and works in it once its loop runs; the work has to close it.
    void use(const std::function<void(frmInto&, const WindowDriver&)>& work) {
        frmInto window(world.services(), state, nullptr);
        workInModal(
            world.runtime, [&window] { window.exec(); },
            [&](const WindowDriver& user) { work(window, user); });
    }
};

}  // namespace

TEST_F(FrmIntoTest, TheKeyboardAloneRunsAnExercise) {
    use([](frmInto& window, const WindowDriver& user) {
        for (const char* key : {"lb_10", "lb_20", "lb_15"})
            user.click(key);
        EXPECT_EQ(window.focusWidget(), &user.find<QWidget>("IntoStart"));
        user.type(Qt::Key_Space);
        EXPECT_EQ(user.text("IntoStart"), "Stop");
        EXPECT_NE(user.find<QWidget>("IntoStart").palette().color(QPalette::Button),
                  window.palette().color(QPalette::Button));
        user.click("lb_10");
        EXPECT_EQ(user.find<QWidget>("lblOk").accessibleName(), "Risposta esatta, 100.00%");
        user.click("lb_11");
        EXPECT_EQ(user.find<QWidget>("lblKo").accessibleName(), "Risposta errata, 50.00%");
        user.type(Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible()) << "an exercise runs";
        user.click("IntoStart");
        user.type(Qt::Key_Escape);
        EXPECT_FALSE(window.isVisible());
    });
}

/// A name stands where the chart has its number of semitones: in the button's column, and one of a
/// pair above the button, the other below. A consonance colours its button.
TEST_F(FrmIntoTest, TheChartShowsEachIntervalAtItsSize) {
    state.request(ExerciseCode::Interval);
    use([](frmInto& window, const WindowDriver& user) {
        std::set<std::pair<int, bool>> places;
        for (int i = 0; i < 25; ++i) {
            const auto& name = user.find<QLabel>(QStringLiteral("Label4_%1").arg(i));
            const auto interval =
                std::ranges::find(intervals::kAll, name.text(), intervals::nameOf);
            ASSERT_NE(interval, intervals::kAll.end());
            const auto& button =
                user.find<ColourButton>(QStringLiteral("LblSemi_%1").arg(interval->semitones));
            EXPECT_EQ(name.x(), button.x());
            EXPECT_EQ(name.width(), button.width());
            EXPECT_TRUE(places.emplace(button.x(), name.y() > button.y()).second) << i;
            const bool consonant = intervals::soundsConsonant(*interval);
            EXPECT_EQ(name.font().bold(), consonant);
            EXPECT_TRUE(!consonant || button.background().rgb() == 0xFFC0FFFF);
        }
        EXPECT_EQ(user.find<ColourButton>("LblSemi_11").background().rgb(), 0xFFFFFFC0);
        window.close();
    });
}

TEST_F(FrmIntoTest, InstrumentsAndTheOctaveOfTheComputerKeyboard) {
    const std::pair<KeyCode, Instant> presses[] = {
        {'Z', 0s}, {'Z', 2s}, {'Z', 3s}, {'Z', 3500ms}, {kKeyBackspace, 3600ms}};
    for (const auto& [key, from] : presses)
        world.runtime.press(key, from, from + 90ms);
    use([this](frmInto& window, const WindowDriver& user) {
        const auto& keyboard = user.find<PianoKeyboard>("keyboard");
        world.runtime.at(2050ms, [&] { EXPECT_TRUE(keyboard.marked(12)); });
        world.runtime.at(2500ms, [user] { user.doubleClick("lblPerc"); });
        world.runtime.at(2600ms, [user] { user.doubleClick("Lbdoc"); });
        world.runtime.at(3200ms, [user] { user.doubleClick("lblPerc"); });
        world.runtime.at(3650ms, [&window] { window.close(); });
        user.trigger("mnuPiano");
        user.trigger("mnuSs");
        EXPECT_EQ(user.text("lblInstr"), "0-Acoustic Grand Piano");
        auto& slider = user.find<QSlider>("InstrS");
        EXPECT_TRUE(user.shown("Fr1") && slider.hasFocus());
        slider.setSliderDown(true);
        slider.setSliderPosition(40);
        slider.setSliderDown(false);
        EXPECT_EQ(user.text("lblInstr"), "40-Violin");
        user.trigger("mnuOrgano");
        EXPECT_EQ(slider.value(), 16);
        user.click("cmdOk");
        EXPECT_FALSE(user.shown("Fr1"));
        EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("program 0", "program 40", "program 16"));
    });
    EXPECT_THAT(world.midi.take(), ElementsAre("2.000 on 1 48 90", "2.090 on 1 48 0",  //
                                               "3.000 on 1 36 90", "3.090 on 1 36 0",  //
                                               "3.500 on 1 48 90", "3.590 on 1 48 0",  //
                                               "3.600 on 1 80 90", "3.650 on 1 80 0"));
    EXPECT_LT(world.runtime.passes(), 30) << "a pass is taken when something happened";
    world.runtime.runActs();
}

TEST_F(FrmIntoTest, TheEndOfTheProgramEndsEveryNote) {
    world.runtime.press('Z', 1s, 9s);
    frmInto window(world.services(), state, nullptr);
    world.runtime.at(2s, [&] {
        for (const char* key : {"lb_10", "lb_20", "lb_15"})
            WindowDriver(window).click(key);
    });
    world.runtime.at(3s, [this] { world.runtime.end(); });
    window.show();
    QCoreApplication::processEvents();
    EXPECT_THAT(world.midi.take(),
                ElementsAre("1.000 on 1 48 90", "2.000 on 1 36 0", "2.000 on 1 51 100",
                            "3.000 on 1 51 0", "3.000 on 1 48 0"));
    world.runtime.forgetActs();
}
