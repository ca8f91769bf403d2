#include "composer/composer_window.h"

#include "widgets/piano_keyboard.h"
#include "widgets/picture_button.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QScrollBar>
#include <QToolButton>
#include <QWindow>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <utility>

using namespace std::chrono_literals;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// How many more note-ons than note-offs every note had.
std::map<std::string, int> hanging(const std::vector<std::string>& untimed) {
    std::map<std::string, int> notes;
    for (const std::string& line : untimed) {
        if (line.rfind("on ", 0) != 0)
            continue;
        const std::string note = line.substr(0, line.rfind(' '));
        notes[note] = line.substr(line.rfind(' ')) == " 0" ? 0 : notes[note] + 1;
    }
    std::erase_if(notes, [](const auto& note) { return note.second == 0; });
    return notes;
}

}  // namespace

TEST_F(ComposerWindowTest, AMelodyEnteredByMouseAndKeysIsPlayedOnTime) {
    at(100ms, [this] { EXPECT_EQ(window.focusWidget(), &user.find<QWidget>("cmdInsNota")); });
    clickAt(100ms, "lb_24");
    clickAt(100ms, "cmdInsNota");
    clickAt(200ms, "cmdSimbNote_3");
    clickAt(200ms, "cmdAttrNota_1");
    world.runtime.press('C', 300ms, 350ms);
    clickAt(400ms, "cmdInsNota");
    clickAt(500ms, "cmdInsPausa");
    at(500ms, [this] { EXPECT_EQ(user.text("lblActNote"), QStringLiteral("P")); });
    clickAt(600ms, "cmdAttrNota_4");
    world.runtime.press(kKeyComma, 650ms, 680ms);
    clickAt(700ms, "cmdInsNota");
    at(800ms, [this] {
        EXPECT_EQ(user.text("lblNoteString"), QStringLiteral("Do;Mi;P;Do;"));
        EXPECT_EQ(user.text("lblNt"), QStringLiteral("4"));
        EXPECT_EQ(user.text("lblNini") + user.text("lblNfine"), QStringLiteral("14"));
        EXPECT_THAT(world.midi.take(),
                    ElementsAre("0.100 on 1 60 90", "0.100 on 1 60 0", "0.300 on 1 52 90",
                                "0.350 on 1 52 0", "0.650 on 1 60 90", "0.680 on 1 60 0"));
    });
    clickAt(1000ms, "cmdPlay");
    at(1100ms, [this] {
        EXPECT_EQ(user.text("cmdPlay"), QStringLiteral("Stop"));
        EXPECT_FALSE(user.enabled("cmdCanc"));
        EXPECT_FALSE(user.enabled("mnuAnnulla")) << "not while a melody plays";
    });
    runUntil(5s);
    EXPECT_THAT(world.midi.take(),
                ElementsAre("1.000 on 1 60 100", "1.970 on 1 60 0", "2.000 on 1 52 120",
                            "2.125 on 1 52 0", "3.000 on 1 60 100", "3.250 on 1 60 0"));
    EXPECT_EQ(user.text("cmdPlay"), QStringLiteral("Play"));
    EXPECT_TRUE(user.enabled("cmdCanc"));
}

TEST_F(ComposerWindowTest, PlayingIsStoppedByAClickAndHearsTheKeys) {
    enterAt(100ms, {60, 62, 64});
    clickAt(200ms, "chekLoop");
    clickAt(1000ms, "cmdPlay");
    world.runtime.press('Z', 1500ms, 2500ms);
    at(4500ms, [this] { EXPECT_EQ(user.text("lblNe"), QStringLiteral("1")) << "played again"; });
    clickAt(4600ms, "cmdPlay");
    runUntil(9s);
    EXPECT_THAT(
        world.midi.take(),
        ElementsAre("1.000 on 1 60 100", "1.970 on 1 60 0", "2.000 on 1 48 90", "2.000 on 1 62 100",
                    "2.970 on 1 62 0", "3.000 on 1 48 0", "3.000 on 1 64 100", "3.970 on 1 64 0",
                    "3.970 on 1 60 100", "4.940 on 1 60 0"));
}

TEST_F(ComposerWindowTest, ClosingWhilePlayingOrHoldingLeavesNoNote) {
    enterAt(100ms, {60, 62, 64});
    clickAt(1000ms, "cmdPlay");
    world.runtime.press('Z', 1100ms, 20s);
    at(1200ms, [this] { press("lblid_3", true); });
    at(2100ms, [this] {
        world.dialogs.confirmations.push_back(false);
        window.reject();
        EXPECT_TRUE(window.isVisible()) << "the answer was no";
    });
    world.runtime.press(kKeyUp, 5s, 20s);
    // An entry too short leaves "Stop" on the button.
    at(5500ms, [this] {
        user.click("cmdReset");
        user.find<QScrollBar>("Slider1").setValue(250);
        user.click("cmdSimbNote_6");
        enter(60);
        user.click("cmdPlay");
        EXPECT_EQ(user.text("cmdPlay"), QStringLiteral("Stop"));
        world.dialogs.confirmations.push_back(false);
        window.reject();
        EXPECT_EQ(user.text("cmdPlay") + user.text("lblNe"), QStringLiteral("Play"));
        EXPECT_TRUE(user.enabled("cmdCanc"));
        user.click("cmdSimbNote_0");
        user.click("cmdCanc");
        enter(62);
    });
    clickAt(6s, "cmdPlay");
    runUntil(7s);
    EXPECT_THAT(hanging(world.midi.takeUntimed()), IsEmpty());
    EXPECT_THAT(world.dialogs.lines,
                Each("confirm: La melodia non è stata salvata. Chiudere comunque ?"));
    world.runtime.runActs();
}

TEST_F(ComposerWindowTest, AStepOpensTheFrameAndItsEntryIsModified) {
    enterAt(100ms, {60, 62, 64});
    const auto staff = [this] { return user.find<QWidget>("Regolo").geometry(); };
    QRect before;
    at(200ms, [this, staff, &before] {
        EXPECT_FALSE(user.shown("frmModifica"));
        before = staff();
    });
    world.runtime.press(kKeyRight, 1s, 1500ms);
    at(2500ms, [this, staff, &before] {
        EXPECT_TRUE(user.shown("frmModifica"));
        EXPECT_EQ(staff(), before) << "the frame moves nothing";
        EXPECT_EQ(user.text("lblNe"), QStringLiteral("1"));
        EXPECT_EQ(user.text("cmbDurata"), QStringLiteral("1/4"));
        EXPECT_EQ(window.focusWidget(), &user.find<QWidget>("cmdInsNota"));
    });
    clickAt(3s, "lblStep_0");
    at(4500ms, [this] {
        EXPECT_EQ(user.text("lblActualNote"), QStringLiteral("Mi")) << "around the range's start";
        world.midi.take();
        user.click("lb_30");
        user.find<QComboBox>("cmbDurata").setCurrentText(QStringLiteral("2/4"));
        chooseLetter("t");
    });
    clickAt(5s, "cmdModifica_0");
    at(8s, [this] {
        EXPECT_EQ(user.text("lblNoteString"), QStringLiteral("Do;Re;Fa#;"));
        chooseLetter("p");
        user.click("cmdInsertNote");
        EXPECT_EQ(user.text("lblNoteString"), QStringLiteral("Do;Re;Fa#;P;"));
        EXPECT_EQ(user.text("lblActualNote"), QStringLiteral("P"));
        user.click("cmdCancNota");
        EXPECT_EQ(user.text("lblActualNote"), QStringLiteral("Fa#"));
        user.find<QComboBox>("cmbDurata").setCurrentText(QStringLiteral("na"));
        EXPECT_FALSE(user.enabled("cmdModifica_0"));
    });
    runUntil(9s);
    EXPECT_THAT(world.midi.take(), ElementsAre("4.500 on 1 66 90", "4.500 on 1 66 0",
                                               "5.000 on 1 66 100", "6.000 on 1 66 0"));
}

TEST_F(ComposerWindowTest, TransposingShowsItsAmountAndWhatItRefuses) {
    enterAt(100ms, {90});
    at(200ms, [this] {
        for (int click = 0; click < 6; ++click)
            user.click("lblIDs_1");
        EXPECT_EQ(user.text("lblSemitoni"), QStringLiteral("6"));
        user.click("lblSemitoni");
        EXPECT_EQ(world.dialogs.lines.size(), 1U);
        EXPECT_EQ(user.text("lblSemitoni"), QStringLiteral("0"));
        user.click("lblIDs_0");
        user.click("lblSemitoni");
        EXPECT_EQ(user.text("lblNoteString"), QStringLiteral("Fa;"));
    });
    runUntil(1s);
}

TEST_F(ComposerWindowTest, TextAndShortcutsAreNotMusic) {
    enterAt(100ms, {60, 62});
    at(200ms, [this] { user.find<QWidget>("lblNini").setFocus(); });
    world.runtime.press('2', 300ms, 700ms);
    world.runtime.press(kKeyComma, 300ms, 700ms);
    world.runtime.press(kKeyLeft, 300ms, 700ms);
    at(400ms, [this] { user.find<QWidget>("cmdInsNota").setFocus(); });
    // An act of its own before them lets the next two fall into one pass, as a key's event and its
    // state do.
    at(800ms, [] {});
    at(800ms, [this] { sendKey(Qt::Key_Z, Qt::ControlModifier); });
    world.runtime.press('Z', 800ms, 900ms);
    runUntil(1s);
    EXPECT_THAT(world.midi.take(), IsEmpty());
    EXPECT_FALSE(user.shown("frmModifica"));
}

TEST_F(ComposerWindowTest, ArrowsBackspaceAndOctavesOfTheComputerKeyboard) {
    world.runtime.press(kKeyDown, 100ms, 150ms);
    world.runtime.press(kKeyUp, 200ms, 250ms);
    at(300ms, [this] { EXPECT_EQ(user.text("lblActNote"), QStringLiteral("Do#")); });
    world.runtime.press(kKeyBackspace, 400ms, 500ms);
    world.runtime.repeat(kKeyBackspace, 450ms);
    at(600ms, [this] { user.doubleClick("lblActNote"); });
    world.runtime.press('P', 700ms, 750ms);
    runUntil(1s);
    EXPECT_THAT(world.midi.take(),
                ElementsAre("0.100 on 1 60 90", "0.150 on 1 60 0", "0.200 on 1 61 90",
                            "0.250 on 1 61 0", "0.400 on 1 80 90", "0.450 on 1 80 90",
                            "0.500 on 1 80 0", "0.700 on 1 88 90", "0.750 on 1 88 0"));
}

TEST_F(ComposerWindowTest, ATieKeepsTheActiveNoteAndADoubleClickInserts) {
    at(100ms, [this] {
        user.click("lb_24");
        user.click("cmdInsNota");
        user.click("cmdAttrNota_2");
        user.doubleClick("lb_26");
        EXPECT_EQ(user.text("lblNoteString"), QStringLiteral("Do;")) << "tied, not Re";
        user.doubleClick("lb_26");
        EXPECT_EQ(user.text("lblNoteString"), QStringLiteral("Do;Re;"));
        EXPECT_EQ(window.focusWidget(), &user.find<QWidget>("cmdPlay"));
        user.find<PianoKeyboard>("lb").setFocus();
        user.find<PianoKeyboard>("lb").moveCursor(31);
        user.type(Qt::Key_Return);
        EXPECT_EQ(user.text("lblNoteString"), QStringLiteral("Do;Re;Sol;")) << "the cursor's note";
    });
    runUntil(1s);
    EXPECT_THAT(hanging(world.midi.takeUntimed()), IsEmpty());
}

TEST_F(ComposerWindowTest, EachActivationBeginsAtTheFirstOctaveAndAtTheInsertion) {
    enterAt(100ms, {95});
    const auto focused = [this] { return window.focusWidget()->objectName(); };
    world.dialogs.duringMessage = [this] {
        at(world.runtime.now() + 10ms,
           [] { static_cast<QDialog*>(QApplication::activeModalWidget())->accept(); });
        QMessageBox(&window).exec();
    };
    at(200ms, [this] {
        user.doubleClick("lblActNote");
        user.find<QWidget>("cmdReset").setFocus();
        world.dialogs.duringMessage();
        window.activateWindow();
    });
    at(250ms, [focused] { EXPECT_EQ(focused(), QStringLiteral("cmdInsNota")); });
    world.runtime.press('Z', 300ms, 350ms);
    at(400ms, [this] {
        user.click("lblIDs_1");
        user.click("lblSemitoni");
        window.activateWindow();
    });
    at(500ms,
       [focused] { EXPECT_EQ(focused(), QStringLiteral("cmdPlay")) << "chosen after the box"; });
    runUntil(1s);
    EXPECT_THAT(world.midi.take(), ElementsAre("0.300 on 1 48 90", "0.350 on 1 48 0"));
}

TEST_F(ComposerWindowTest, TheRangeByBoxesAndHeldArrows) {
    enterAt(100ms, {60, 62, 64, 65, 67});
    at(200ms, [this] { press("lblid_1", true); });
    at(350ms, [this] { press("lblid_1", false); });
    at(1s, [this] {
        EXPECT_EQ(user.text("lblNini"), QStringLiteral("3"));
        EXPECT_EQ(window.focusWidget(), &user.find<QWidget>("cmdPlay"));
        auto& box = user.find<QLineEdit>("lblNini");
        box.setFocus();
        box.selectAll();
        user.type(Qt::Key_X, QStringLiteral("x"));
        user.type(Qt::Key_Return, QStringLiteral("\r"));
        EXPECT_EQ(box.text(), QStringLiteral("2")) << "an entry earlier";
        EXPECT_EQ(window.focusWidget(), &user.find<QWidget>("cmdPlay"));
        auto& end = user.find<QLineEdit>("lblNfine");
        end.setFocus();
        end.selectAll();
        user.type(Qt::Key_3, QStringLiteral("3"));
        user.find<QScrollBar>("Slider1").setValue(120);
        EXPECT_EQ(window.focusWidget(), &user.find<QWidget>("cmdPlay"));
    });
    clickAt(2s, "cmdPlay");
    at(4s, [this] {
        auto& arrow = user.find<QToolButton>("lblid_3");
        QAccessible::queryAccessibleInterface(&arrow)->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
        EXPECT_EQ(user.text("lblNfine"), QStringLiteral("4")) << "a screen reader holds nothing";
    });
    runUntil(5s);
    EXPECT_EQ(world.runtime.now(), Instant(5s)) << "and no loop waits for its release";
    EXPECT_EQ(user.text("lblNfine"), QStringLiteral("4"));
    EXPECT_THAT(world.midi.take(), ElementsAre("2.000 on 1 62 100", "2.470 on 1 62 0",
                                               "2.500 on 1 64 100", "2.970 on 1 64 0"));
}

TEST_F(ComposerWindowTest, ResetStopsSilencesAndCanBeTakenBack) {
    enterAt(100ms, {60, 62});
    clickAt(200ms, "cmdPlay");
    clickAt(300ms, "cmdReset");
    at(3s, [this] {
        EXPECT_EQ(user.text("cmdPlay"), QStringLiteral("Play"));
        for (const char* emptied : {"lblNoteString", "lblNt", "lblNini", "lblNfine", "lblNe"})
            EXPECT_EQ(user.text(emptied), QString()) << emptied;
        EXPECT_TRUE(user.enabled("cmdCanc"));
        user.trigger("mnuAnnulla");
        EXPECT_EQ(user.text("lblNoteString"), QStringLiteral("Do;Re;"));
        user.click("cmdCanc");
        user.click("cmdCanc");
        EXPECT_EQ(user.text("lblNini"), QString());
        user.trigger("mnuPiano");
        EXPECT_EQ(user.text("lblInstr"), QStringLiteral("0-Acoustic Grand Piano"));
        EXPECT_EQ(user.text("InstrS"), QStringLiteral("0"));
    });
    runUntil(4s);
    EXPECT_THAT(world.midi.takeUntimed(), Contains("program 0"));
}

TEST_F(ComposerWindowTest, TheChosenSymbolIsHighlightedExactly) {
    const auto colourOf = [this](const char* name) {
        return user.find<PictureButton>(name).grab().toImage().pixel(4, 4);
    };
    clickAt(100ms, "cmdSimbNote_0");
    clickAt(100ms, "cmdAttrNota_3");
    at(200ms, [this, colourOf] {
        EXPECT_EQ(colourOf("cmdSimbNote_0"), qRgb(10, 254, 10));
        EXPECT_NE(colourOf("cmdSimbNote_2"), qRgb(10, 254, 10));
        EXPECT_EQ(colourOf("cmdAttrNota_3"), qRgb(10, 254, 10));
    });
    clickAt(300ms, "cmdAttrNota_3");
    at(400ms, [colourOf] { EXPECT_NE(colourOf("cmdAttrNota_3"), qRgb(10, 254, 10)); });
    at(500ms, [this] { window.reject(); });
    window.exec();
}

TEST_F(ComposerWindowTest, APressBehindTheOneThatClosesItPlaysNothing) {
    enterAt(100ms, {60, 62});
    clickAt(200ms, "chekLoop");
    clickAt(1000ms, "cmdPlay");
    at(5400ms, [this] {
        world.dialogs.confirmations.push_back(true);
        world.midi.take();
        for (const int key : {Qt::Key_Escape, Qt::Key_Space})
            queueKey(window, key);
    });
    bool playsOn = false;
    at(30s, [&] {
        playsOn = true;
        window.reject();
    });
    window.exec();
    EXPECT_FALSE(playsOn);
    world.runtime.forgetActs();
    EXPECT_THAT(world.midi.takeUntimed(), IsEmpty());
}

TEST_F(ComposerWindowTest, TheEndOfTheProgramKeepsTheMelody) {
    enterAt(100ms, {60, 62});
    at(200ms, [this] {
        world.runtime.end();
        EXPECT_THAT(world.folders.files("C:\\Cantavista", "*.mel"), SizeIs(1))
            << "before any loop returns";
        window.QDialog::done(0);
    });
    window.exec();
}
