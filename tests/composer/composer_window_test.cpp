#include "composer/frmComposer.h"
#include "composer/melody/rhythm.h"
#include "support/test_world.h"
#include "support/window_driver.h"
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
#include <random>
#include <utility>

using namespace std::chrono_literals;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// The composer, open on virtual time. Acts are scheduled before `run` opens it.
struct ComposerWindowTest : testing::Test {
    TestWorld world;
    frmComposer window{world.services(), nullptr};
    WindowDriver user{window};

    /// The window's opening takes the first act and the next one in a single pass.
    ComposerWindowTest() {
        world.openOutput();
        at(1ms, [] {});
    }

    void at(Instant instant, std::function<void()> act) {
        world.runtime.at(instant, std::move(act));
    }

    void clickAt(Instant instant, const char* control) {
        at(instant, [this, control] { user.click(control); });
    }

    /// Opens the window and closes it at an instant, saying yes if it asks.
    void runUntil(Instant end) {
        at(end, [this] {
            world.dialogs.confirmations.push_back(true);
            window.reject();
        });
        window.exec();
        EXPECT_FALSE(window.isVisible());
    }

    /// Clicks a key and inserts its note.
    void enter(int noteNumber) {
        user.click(QStringLiteral("lb_%1").arg(noteNumber - 36));
        user.click("cmdInsNota");
    }

    void enterAt(Instant instant, std::vector<int> notes) {
        at(instant, [this, notes = std::move(notes)] {
            for (const int note : notes)
                enter(note);
            world.midi.take();
        });
    }

    void sendKey(int key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QCoreApplication::sendEvent(window.windowHandle(), &event);
    }

    void chooseLetter(const char* letter) {
        user.find<QComboBox>("cmbAttributi").setCurrentText(QLatin1String(letter));
    }

    void press(const char* control, bool down) {
        auto& button = user.find<QToolButton>(control);
        const QPointF place = button.rect().center();
        QMouseEvent event(down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, place,
                          button.mapToGlobal(place), Qt::LeftButton,
                          down ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&button, &event);
    }
};

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

/// The melody, its undo and step mode in their plainest form: whole copies, entries with a name.
struct StepModel {
    struct Entry {
        int id;
        QString note;
        double quarters;

        bool operator==(const Entry&) const = default;
    };
    struct State {
        std::vector<Entry> entries;
        int place = 0;
    };

    std::vector<Entry> entries;
    int place = 0;  ///< of the edit frame
    bool framed = false;
    bool stepping = false;  ///< not after a number was typed: the frame stays
    bool entryGone = false;
    std::vector<std::pair<State, State>> done;
    std::vector<std::pair<State, State>> undone;

    void change(std::vector<Entry> to, int toPlace) {
        done.push_back({{entries, place}, {to, toPlace}});
        undone.clear();
        entries = std::move(to);
        place = toPlace;
    }

    void append(const QString& note, bool tie) {
        auto to = entries;
        if (tie && !to.empty())
            to.back() = {to.back().id, note, to.back().quarters + 1};
        else
            to.push_back({++lastId, note, 1});
        change(to, place);
    }

    /// Where the frame's entry is among these; if it is not there, the one before it.
    int follow(const std::vector<Entry>& to) {
        if (place < 0)
            return place;
        const int id = entries[static_cast<std::size_t>(place)].id;
        const auto found =
            std::find_if(to.begin(), to.end(), [id](const Entry& e) { return e.id == id; });
        entryGone = found == to.end();
        return entryGone ? place - 1 : static_cast<int>(found - to.begin());
    }

    void travel(bool back) {
        auto& from = back ? done : undone;
        if (from.empty())
            return;
        const auto [before, after] = from.back();
        (back ? undone : done).push_back(from.back());
        from.pop_back();
        const State& left = back ? after : before;
        const State& reached = back ? before : after;
        int next = framed ? follow(reached.entries) : 0;
        if (framed && place == left.place && left.place != reached.place)
            next = reached.place;
        entries = reached.entries;
        place = std::max(0, std::min(next, static_cast<int>(entries.size()) - 1));
        framed = framed && !entries.empty();
        stepping = stepping && framed;
    }

    int lastId = 0;
};

TEST_F(ComposerWindowTest, EveryControlNamesTheEntryOfTheEditFrame) {
    StepModel model;
    std::mt19937 random(2);
    const auto draw = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    const auto step = [&](bool forward) {
        const int count = static_cast<int>(model.entries.size());
        if (count == 0)
            return;
        if (!std::exchange(model.stepping, true))
            model.place = -1;
        if (forward)
            model.place = model.place == count - 1 ? 0 : model.place + 1;
        else
            model.place = model.place > 0 ? model.place - 1 : count - 1;
        model.framed = true;
    };
    // Whether the operation leaves the frame's choices as they were.
    const auto operate = [&](int operation) {
        const bool tie = operation == 1;
        auto to = model.entries;
        switch (operation) {
            case 0:
            case 1: {
                // Undo may have brought the tie's button back.
                if (user.find<PictureButton>("cmdAttrNota_2").isChecked() != tie)
                    user.click("cmdAttrNota_2");
                user.click(QStringLiteral("lb_%1").arg(12 + draw(12)));
                const QString note = user.text("lblActNote");
                user.click("cmdInsNota");
                if (!note.isEmpty() && note != QStringLiteral("P"))
                    model.append(note, tie);
                return true;
            }
            case 2:
            case 3:
            case 4:
                user.click(operation == 4 ? "lblStep_0" : "lblStep_1");
                step(operation != 4);
                return false;
            case 5: {
                if (!model.framed)
                    return true;
                user.click("cmdCancNota");
                if (model.entries.size() == 1) {
                    model.change({}, model.place);
                    model.framed = model.stepping = false;
                } else if (model.place >= 0) {
                    to.erase(to.begin() + model.place);
                    model.change(to, model.place - 1);
                }
                return true;
            }
            case 6:
                if (!model.framed || user.text("cmbDurata") == QStringLiteral("na"))
                    return true;
                user.click("cmdInsertNote");
                to.insert(to.begin() + model.place + 1,
                          {++model.lastId, user.text("lblActualNote"),
                           rhythm::ValueNameToDuration(user.text("cmbDurata"), u"1")});
                model.change(to, model.place + 1);
                return true;
            case 7:
                if (!user.enabled("cmdCanc") || model.entries.size() < 2)
                    return true;
                user.click("cmdCanc");
                to.pop_back();
                model.entryGone = false;
                model.change(to, model.framed ? model.follow(to) : model.place);
                return !model.entryGone;
            case 8:
                user.click("cmdPlay");
                model.framed = model.stepping = false;
                return true;
            case 16:
                if (!model.framed)
                    return true;
                user.find<QLineEdit>("lblNini").setFocus();
                user.find<QLineEdit>("lblNini").setText(QStringLiteral("1"));
                user.type(Qt::Key_Return);
                if (std::exchange(model.stepping, false))
                    model.place = 0;
                return true;
            default: {
                const bool back = operation < 13;
                if (!user.enabled(back ? "mnuAnnulla" : "mnuRipeti"))
                    return true;
                const bool disabled = !user.enabled("cmdCanc");
                model.entryGone = false;
                user.trigger(back ? "mnuAnnulla" : "mnuRipeti");
                model.travel(back);
                EXPECT_EQ(!user.enabled("cmdCanc"), disabled && model.framed && !model.entryGone);
                return !model.framed;
            }
        }
    };
    at(100ms, [&] {
        for (int i = 0; i < 1500 && !HasFailure(); ++i) {
            const int operation = draw(17);
            const bool keepsChoices = operate(operation);
            QString names;
            for (const StepModel::Entry& entry : model.entries)
                names += entry.note + QLatin1Char(';');
            EXPECT_EQ(user.text("lblNoteString"), names.right(40)) << i << ": " << operation;
            EXPECT_EQ(user.shown("frmModifica"), model.framed) << i << ": " << operation;
            EXPECT_EQ(user.text("lblNe"),
                      model.framed ? QString::number(model.place + 1) : QString())
                << i << ": " << operation;
            if (!model.framed || model.place < 0)
                continue;
            const auto& [id, note, quarters] = model.entries[static_cast<std::size_t>(model.place)];
            const QString value = rhythm::DurationToValueName(quarters);
            const QString staff = user.find<QWidget>("Regolo").accessibleDescription();
            EXPECT_TRUE(staff.contains(QStringLiteral("voce %1:").arg(model.place + 1))) << i;
            EXPECT_EQ(user.text("lblPnn"), note) << i << ": " << operation;
            if (keepsChoices)
                continue;
            EXPECT_EQ(user.text("lblActNote"), note) << i << ": " << operation;
            EXPECT_EQ(user.text("lblActualNote"), note) << i << ": " << operation;
            EXPECT_EQ(user.text("cmbDurata"), value) << i << ": " << operation;
            EXPECT_EQ(user.enabled("cmdModifica_0"), value != QStringLiteral("na")) << i;
        }
    });
    runUntil(10h);
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
