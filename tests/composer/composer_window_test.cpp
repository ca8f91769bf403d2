#include "composer/composer_window.h"

#include "widgets/piano_keyboard.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>

#include <gmock/gmock.h>

#include <set>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// The notes that were begun and not ended.
std::set<std::string> sounding(const std::vector<std::string>& untimed) {
    std::set<std::string> notes;
    for (const std::string& line : untimed) {
        const std::string note = line.substr(0, line.rfind(' '));
        if (line.ends_with(" 0"))
            notes.erase(note);
        else if (line.starts_with("on "))
            notes.insert(note);
    }
    return notes;
}

}  // namespace

/// Each section of `composer_wiring.txt` is a window, each row some steps, "->", and all that they
/// change; of "> lblStep_1" 100 ms after a click on "Play".
TEST(ComposerWiring, EveryStepHasItsOwnEffect) {
    QFile file(QStringLiteral(COMPOSER_WIRING));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    for (const QString& section : QString::fromUtf8(file.readAll()).split("\n\n")) {
        QStringList rows = section.split(u'\n', Qt::SkipEmptyParts);
        const bool opens = rows.takeFirst().endsWith(QStringLiteral("Due.mel"));
        OpenComposer composer(opens ? "C:\\Cantavista\\Melodie\\Due.mel" : "");
        composer.putMelodies();
        composer.at(10ms, [&] {
            for (const QString& row : rows) {
                QString steps = row.section(QStringLiteral(" ->"), 0, 0);
                std::string effect;
                if (steps.startsWith(QStringLiteral("> "))) {
                    composer.at(composer.world.runtime.now() + 100ms,
                                [&] { effect = composer.effectOf(steps.mid(2)); });
                    composer.step(QStringLiteral("cmdPlay"));
                } else {
                    effect = composer.effectOf(steps);
                }
                EXPECT_EQ(QString::fromStdString(effect).simplified().toStdString(),
                          row.section(QStringLiteral(" ->"), 1).simplified().toStdString())
                    << steps.toStdString();
            }
        });
        composer.runUntil(10h);
    }
}

TEST_F(ComposerWindowTest, AnInstrumentIsFoundByNumberNameAndFamily) {
    at(100ms, [this] {
        const auto choose = [this](const QString& words) {
            user.click("cmdStrumento");
            auto& line = user.find<QLineEdit>("txtCerca");
            line.setText(words);
            QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
            QCoreApplication::sendEvent(&line, &enter);
            return user.text("InstrS").toInt();
        };
        for (int program = 127; program >= 0; --program)
            EXPECT_EQ(choose(QString("%1-").arg(program)), program);
        for (const auto& [words, program] : {std::pair{"flauti", 72},
                                             {"rock ORGAN", 18},
                                             {"organi", 18},
                                             {"archi harp", 46},
                                             {"VIOLONCELLO", 42},
                                             {"no such", 42}})
            EXPECT_EQ(choose(words), program);
    });
    runUntil(1s);
}

/// Bars and key change the picture of the staff alone, and without them it is what it was.
TEST_F(ComposerWindowTest, TheStaffShowsBarsAndAKeyForThisRun) {
    at(100ms, [this] {
        enter({60, 63, 67, 70, 72});
        const auto picture = [this] { return user.find<QWidget>("Regolo").grab().toImage(); };
        const auto choose = [this](int metre, int key) {
            QTimer::singleShot(0, &window, [this, metre, key] {
                user.find<QComboBox>("cmbTempoBattuta").setCurrentIndex(metre);
                user.find<QComboBox>("cmbTonalita").setCurrentIndex(key);
                user.click("cmdOK");
            });
            user.trigger("mnuBattute");
        };
        const QString notes = user.text("lblNoteString");
        const QImage before = picture();
        choose(3, 0);
        const QImage bars = picture();
        EXPECT_NE(bars, before);
        EXPECT_EQ(state.staff, (score::Notation{score::Metre{4, 4}, {}}));
        choose(1, 10);
        EXPECT_NE(picture(), bars);
        QTimer::singleShot(0, &window, [this] {
            EXPECT_EQ(user.find<QComboBox>("cmbTempoBattuta").currentText(), "2/4");
            user.click("cmdAnnulla");
        });
        user.trigger("mnuEsportaPdf");
        EXPECT_EQ(user.text("lblNoteString"), notes);
        choose(0, 0);
        EXPECT_EQ(picture(), before);
    });
    runUntil(1s);
}

/// Else the second of two clicks would miss the arrow.
TEST_F(ComposerWindowTest, TheHintMovesNoArrowOfTheTransposition) {
    at(100ms, [this] {
        const QSize wanted = user.find<QWidget>("range").sizeHint();
        enter({60});
        user.click("lblIDs_1");
        QCoreApplication::sendPostedEvents();
        EXPECT_EQ(user.find<QWidget>("range").sizeHint(), wanted);
    });
    runUntil(1s);
}

TEST_F(ComposerWindowTest, TheFocusDecidesWhatAKeyMeans) {
    at(100ms, [this] {
        enter(std::vector<int>(99, 60));
        step("mnuApri");
        step("lblStep_1");
    });
    // "z" plays, "u" goes a semitone up, "r" steps, "e" is Enter and inserts; the others are the
    // control's own.
    const std::vector<std::pair<const char*, const char*>> meanings{
        {"cmdInsNota", "zure"}, {"lblStep_0", "zure"}, {"lb", "zue"},
        {"Slider1", "ze"},      {"List1", "z"},        {"lblNini", ""},
        {"cmbDurata", ""},      {"chekLoop", "zure"},  {"menu", ""}};
    Instant time = 3s;
    for (const auto& [control, meaning] : meanings) {
        at(time, [this, control = control] {
            user.find<QWidget>(control).setFocus();
            world.midi.take();
        });
        world.runtime.press('Z', time + 100ms, time + 200ms);
        world.runtime.press(kKeyUp, time + 300ms, time + 400ms);
        world.runtime.press(kKeyRight, time + 500ms, time + 600ms);
        at(time + 700ms, [] {});
        at(time + 2500ms, [this, control = control, meaning = meaning] {
            std::string meant;
            for (const std::string& line : world.midi.takeUntimed()) {
                if (!line.ends_with(" 0"))
                    meant += line.ends_with(" 100") ? 'r' : line == "on 1 48 90" ? 'z' : 'u';
            }
            const QWidget* focused = window.focusWidget();
            user.type(Qt::Key_Right);
            EXPECT_EQ(window.focusWidget(), focused) << "an arrow moves no focus";
            auto& page = *user.find<QWidget>("Regolo").findChild<QScrollBar*>();
            page.setValue(0);
            user.type(Qt::Key_PageDown);
            const bool scrolls = std::string(meaning).find('r') != std::string::npos;
            EXPECT_TRUE(!scrolls || page.value() > 0) << control;
            const int count = user.text("lblNt").toInt();
            user.find<QWidget>(control).setFocus();
            user.type(Qt::Key_Return);
            meant += user.text("lblNt").toInt() > count ? "e" : "";
            EXPECT_EQ(meant, meaning) << control;
        });
        time += 3s;
    }
    at(time, [this] { user.find<QWidget>("cmdInsNota").setFocus(); });
    // An act of its own before them lets the next two fall into one pass, as a key's event and its
    // state do.
    at(time + 100ms, [] {});
    at(time + 100ms,
       [this] { sendSystemKey(window, QEvent::KeyPress, Qt::Key_X, Qt::ControlModifier); });
    world.runtime.press('X', time + 100ms, time + 200ms);
    at(time + 300ms, [this] {
        auto& menu = user.find<QMenu>("mnuContestuale");
        menu.popup({30, 30});
        at(world.runtime.now() + 100ms, [&menu] { menu.close(); });
    });
    world.runtime.press('Z', time + 310ms, time + 350ms);
    runUntil(time + 1s);
    EXPECT_THAT(world.midi.takeUntimed(), IsEmpty()) << "a shortcut, and a key of an open menu";
}

TEST_F(ComposerWindowTest, SilenceAndDirectInsertionLastForTheRun) {
    at(10ms, [this] {
        step("mnuSilenzio");
        step("mnuInsDiretto");
    });
    runUntil(1s);
    heard.take();
    frmComposer next(world.services(), state, nullptr);
    for (const char* name : {"mnuSilenzio", "mnuInsDiretto"})
        EXPECT_TRUE(next.findChild<QAction*>(name)->isChecked());
    next.findChild<QPushButton*>("cmdInsPausa")->click();
    EXPECT_TRUE(heard.take().isEmpty());
}

TEST_F(ComposerWindowTest, KeysPlayAndGoThroughNotesAndEntries) {
    world.runtime.press(kKeyDown, 100ms, 150ms);
    world.runtime.press(kKeyDown, 300ms, 500ms);
    world.runtime.press(kKeyUp, 400ms, 450ms);
    world.runtime.press(kKeyBackspace, 600ms, 700ms);
    world.runtime.repeat(kKeyBackspace, 650ms);
    at(550ms, [this] { step("mnuInsDiretto"); });
    at(720ms, [this] {
        EXPECT_EQ(user.text("lblNt"), "1") << "a repeat inserts nothing";
        step("mnuInsDiretto");
        step("mnuAnnulla");
    });
    at(750ms, [this] { step("lb_0"); });
    world.runtime.press(kKeyDown, 800ms, 850ms);
    at(860ms, [this] { user.doubleClick("lblActNote"); });
    world.runtime.press('Z', 870ms, 890ms);
    at(880ms, [this] { EXPECT_TRUE(user.find<PianoKeyboard>("lb").marked(24)); });
    world.runtime.press(187, 900ms, 920ms);
    at(950ms, [this] {
        EXPECT_THAT(world.midi.takeUntimed(),
                    ElementsAre("on 1 60 90", "on 1 60 0", "on 1 59 90", "on 1 59 0", "on 1 60 90",
                                "on 1 60 0", "on 1 80 90", "on 1 80 90", "on 1 80 0", "on 1 36 90",
                                "on 1 36 0", "on 1 36 90", "on 1 36 0", "on 1 60 90", "on 1 60 0",
                                "on 1 91 90", "on 1 91 0"));
        EXPECT_FALSE(user.find<PianoKeyboard>("lb").marked(24));
        enter({60, 62, 64});
    });
    const std::vector<std::pair<KeyCode, const char*>> steps{
        {kKeyRight, "1"}, {kKeyF1 + 5, "2"}, {kKeyLeft, "1"}, {kKeyF1 + 4, "3"}};
    Instant time = 1s;
    for (const auto& [key, entry] : steps) {
        world.runtime.press(key, time, time + 100ms);
        at(time += 2s, [this, entry = entry] {
            EXPECT_EQ(user.text("lblNe"), QLatin1String(entry));
            EXPECT_EQ(window.focusWidget(), &user.find<QWidget>("cmdInsNota"));
        });
        time += 1s;
    }
    runUntil(time);
}

TEST_F(ComposerWindowTest, ClosingWhilePlayingOrHoldingLeavesNoNote) {
    at(100ms, [this] {
        EXPECT_TRUE(world.runtime.keysInOrder());
        enter({60, 62, 64});
    });
    clickAt(1000ms, "cmdPlay");
    world.runtime.press('Z', 1100ms, 20s);
    at(1200ms, [this] {
        EXPECT_FALSE(world.runtime.keysInOrder()) << "the notes played along would come too late";
        sendMouse(user.find<QWidget>("lblid_3"), QEvent::MouseButtonPress, {3, 3});
    });
    at(2100ms, [this] {
        step("no");
        window.reject();
        EXPECT_TRUE(window.isVisible()) << "the answer was no";
        EXPECT_EQ(user.text("cmdPlay") + user.text("lblNe"), QStringLiteral("Play"));
        EXPECT_THAT(sounding(world.midi.takeUntimed()), IsEmpty());
    });
    world.runtime.press(kKeyUp, 5s, 20s);
    clickAt(6s, "cmdPlay");
    runUntil(7s);
    EXPECT_FALSE(world.runtime.keysInOrder()) << "as before the window";
    EXPECT_THAT(sounding(world.midi.takeUntimed()), IsEmpty());
    world.runtime.runActs();
}

TEST_F(ComposerWindowTest, EachActivationBeginsAtTheFirstOctaveAndAtTheInsertion) {
    const auto& insert = user.find<QWidget>("cmdInsNota");
    at(200ms, [&] {
        EXPECT_EQ(window.focusWidget(), &insert);
        user.doubleClick("lblActNote");
        user.find<QWidget>("cmdReset").setFocus();
        at(world.runtime.now() + 10ms,
           [] { static_cast<QDialog*>(QApplication::activeModalWidget())->accept(); });
        QMessageBox(&window).exec();
        window.activateWindow();
    });
    at(250ms, [&] { EXPECT_EQ(window.focusWidget(), &insert); });
    world.runtime.press('Z', 300ms, 350ms);
    runUntil(1s);
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 48 90", "on 1 48 0"));
}
