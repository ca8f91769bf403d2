#include "eartraining/frmInto.h"

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
using testing::IsEmpty;

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

    static QRgb background(const WindowDriver& user, const QString& name) {
        return user.find<QLabel>(name).palette().color(QPalette::Window).rgb();
    }
};

}  // namespace

TEST_F(FrmIntoTest, APitchExerciseFromTheFirstClickToClosing) {
    use([this](frmInto& window, const WindowDriver& user) {
        EXPECT_FALSE(user.shown("FrmIntervalli") || user.shown("frmRacc") || user.shown("Fr1"));
        EXPECT_FALSE(user.shown("lblOk") || user.shown("lblKo") || user.shown("IntoStart"));
        for (const char* key : {"lb_10", "lb_20", "lb_15"})
            user.click(key);
        EXPECT_TRUE(user.shown("lbr_10") && user.shown("lbr_15") && user.shown("lbr_20"));
        EXPECT_EQ(window.focusWidget(), &user.find<QWidget>("IntoStart"));
        EXPECT_FALSE(user.shown("cmdEsci"));
        window.close();
        EXPECT_TRUE(window.isVisible()) << "the reference is being chosen";

        world.random.numbers = {0.0F};
        user.type(Qt::Key_Space);
        EXPECT_EQ(user.text("IntoStart"), "Stop");
        EXPECT_FALSE(user.enabled("Esercizio"));
        user.type(Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible()) << "an exercise runs";
        std::vector<QRgb> backgrounds;
        user.doubleClick("lb_13");
        EXPECT_EQ(user.text("txtRerrate"), "2") << "each quick click counts";
        for (const QString key : {"lb_10", "lb_11", "lb_12", "lb_10", "lb_10"}) {
            user.click(key);
            backgrounds.push_back(background(user, key == "lb_10" ? "txtResatte" : "txtRerrate"));
        }
        EXPECT_THAT(backgrounds,
                    ElementsAre(0xFF00BF0B, 0xFFF7CAE9, 0xFFF16BC9, 0xFFC0F700, 0xFF00BF0B));
        EXPECT_EQ(user.text("txtResatte"), "3");
        EXPECT_TRUE(user.shown("lblOk") && !user.shown("lblKo"));
        EXPECT_EQ(user.find<QWidget>("lblOk").accessibleName(), "Risposta esatta, 42.86%");
        user.click("IntoStart");
        EXPECT_EQ(user.text("lblStep"), "Reimposta l'intervallo");
        EXPECT_TRUE(user.enabled("Esercizio"));
        user.click("cmdEsci");
    });
}

TEST_F(FrmIntoTest, TheIntervalChartIsAlignedAndItsMarkersExclude) {
    state.request(ExerciseCode::Interval);
    use([this](frmInto& window, const WindowDriver& user) {
        EXPECT_TRUE(user.shown("FrmIntervalli"));
        EXPECT_FALSE(user.shown("pitchPanel"));
        for (const auto& [label, semitones] :
             {std::pair{"Label4_0", 7}, {"Label4_6", 13}, {"Label4_19", 0}, {"Label4_23", 5}}) {
            const QRect button =
                user.find<QWidget>(QStringLiteral("LblSemi_%1").arg(semitones)).geometry();
            const QRect name = user.find<QWidget>(label).geometry();
            EXPECT_EQ(name.left(), button.left()) << label;
            EXPECT_EQ(name.width(), button.width()) << label;
        }
        const auto background = [&user](const char* name) {
            return user.find<ColourButton>(name).background().rgb();
        };
        EXPECT_EQ(background("LblSemi_9"), 0xFFC0FFFF);
        EXPECT_EQ(background("LblSemi_11"), 0xFFFFFFC0);

        user.click("Il_13");
        user.click("Il_0");
        EXPECT_EQ(background("Il_13"), 0xFFFF0000);
        EXPECT_EQ(background("Il_0"), 0xFF80FF80);
        user.doubleClick("Il_5");
        EXPECT_EQ(background("Il_5"), 0xFFFF0000)
            << "the second click of a double click does not count";
        user.doubleClick("Il_0");
        EXPECT_EQ(user.find<QWidget>("Il_1").toolTip(), "Intervallo escluso");
        user.find<QWidget>("Il_0").setFocus();
        user.type(Qt::Key_Return);
        EXPECT_EQ(user.find<QWidget>("Il_13").toolTip(), "Intervallo disponibile");

        user.click("Label7");
        user.click("lblModo");
        EXPECT_EQ(user.text("lblModo"), "/ :");
        user.click("lblModo");
        world.midi.take();
        user.click("LblSemi_4");
        EXPECT_EQ(world.midi.takeUntimed().back(), "on 1 64 90");
        window.close();
    });
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 60 0", "on 1 64 0"));
    EXPECT_EQ(state.requested(), ExerciseCode::Pitch);
}

TEST_F(FrmIntoTest, ChordsAndTheOtherExercisesOfTheMenu) {
    state.request(ExerciseCode::Chord);
    state.request(ExerciseCode::Pitch);
    use([this](frmInto& window, const WindowDriver& user) {
        EXPECT_FALSE(user.shown("cmdEsci") || user.shown("ComdRacStart"));
        EXPECT_EQ(window.property("contextNumber"), 7)
            << "though 3, pitches, has been requested since";
        user.doubleClick("lb_24");
        EXPECT_TRUE(user.shown("ComdRacStart")) << "two quick clicks are a range of one key";
        user.click("lblModoVt");
        EXPECT_EQ(user.text("lblVt"), "NT");
        EXPECT_EQ(user.find<QWidget>("lblVt").toolTip(), "Nascondi tasti suonati");
        EXPECT_EQ(user.find<QWidget>("EsclTa_3").toolTip(), "Accordo disponibile");
        user.click("EsclTa_3");
        EXPECT_EQ(user.find<QWidget>("EsclTa_3").toolTip(), "Tipo accordo escluso");
        world.random.numbers = {0.3F};
        user.click("ComdRacStart");
        user.click("TipoAcc_0");
        user.click("TipoAcc_1");
        EXPECT_EQ(user.text("lblPerc"), "50.00%");
        EXPECT_NE(background(user, "txtResatte"), 0xFF00BF0B)
            << "the colours alternate in the pitch exercise only";
        EXPECT_FALSE(user.enabled("Esercizio"));
        user.click("ComdRacStart");
        EXPECT_TRUE(user.shown("cmdRes"));
        user.trigger("mnuRint");
        EXPECT_TRUE(user.shown("FrmIntervalli") && !user.shown("frmRacc"));
        user.trigger("mnuNota");
        EXPECT_TRUE(user.shown("lblMod") && !user.shown("FrmIntervalli"));
        window.close();
    });
    EXPECT_EQ(state.requested(), ExerciseCode::Chord) << "a request for chords stays";
}

TEST_F(FrmIntoTest, InstrumentsAndTheOctaveOfTheComputerKeyboard) {
    world.runtime.press('Z', 2s, 2100ms);
    world.runtime.press('Z', 3s, 3100ms);
    world.runtime.press('Z', 3500ms, 3600ms);
    use([this](frmInto& window, const WindowDriver& user) {
        world.runtime.at(2500ms, [user] { user.doubleClick("lblPerc"); });
        world.runtime.at(2600ms, [user] {
            user.doubleClick("Lbdoc");
            EXPECT_FALSE(user.shown("lbr_24")) << "the square lies over the key";
            const auto& keyboard = user.find<PianoKeyboard>("keyboard");
            EXPECT_EQ(user.find<QWidget>("Lbdoc").geometry(), keyboard.middleCSquare());
        });
        world.runtime.at(3200ms, [user] {
            user.find<QWidget>("keyboard").setFocus();
            user.type(Qt::Key_Return);
            EXPECT_TRUE(user.shown("lbr_24")) << "Enter presses the key, and changes no octave";
            user.click("lblPerc");
            user.find<QWidget>("lblPerc").setFocus();
            user.type(Qt::Key_Return);
            user.type(Qt::Key_Space);
        });
        world.runtime.at(4s, [&window] { window.close(); });
        user.trigger("mnuPiano");
        user.trigger("mnuSs");
        EXPECT_EQ(user.text("lblInstr"), "0-Acoustic Grand Piano");
        auto& slider = user.find<QSlider>("InstrS");
        slider.setSliderDown(true);
        slider.setSliderPosition(40);
        EXPECT_EQ(user.text("lblInstr"), "0-Acoustic Grand Piano");
        slider.setSliderDown(false);
        EXPECT_EQ(user.text("lblInstr"), "40-Violin");
        user.trigger("mnuOrgano");
        EXPECT_EQ(slider.value(), 16);
        user.click("cmdOk");
        EXPECT_FALSE(user.shown("Fr1"));
        EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("program 0", "program 40", "program 16"));
    });
    EXPECT_THAT(world.midi.take(), ElementsAre("2.000 on 1 48 90", "2.100 on 1 48 0",  //
                                               "3.000 on 1 36 90", "3.100 on 1 36 0",  //
                                               "3.500 on 1 60 90", "3.600 on 1 60 0"));
}
