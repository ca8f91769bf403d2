#include "shell/main_window.h"

#include "reading/difficulty.h"
#include "reading/regolo.h"
#include "reading/staff_step.h"
#include "support/heard.h"
#include "support/test_world.h"
#include "support/window_driver.h"
#include "widgets/verdict_badge.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QSlider>
#include <QStatusBar>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QStringList kAnswers{"pdo", "pre", "pmi", "pfa", "psol", "pla", "psi"};

struct MainWindowTest : testing::Test {
    TestWorld world;
    std::unique_ptr<MainWindow> window = std::make_unique<MainWindow>(world.services());
    WindowDriver user{*window};

    /// Shows the window and lets its first activation run, which waits for the first painting.
    void activate() {
        window->show();
        while (world.runtime.now() == Instant{0})
            QCoreApplication::processEvents();
    }

    /// The step of the one note that is to be seen; 0 without any.
    int noteOnShow() const {
        int shown = 0;
        for (const int step : staff_step::all()) {
            if (user.shown(QStringLiteral("n%1").arg(step))) {
                EXPECT_EQ(std::exchange(shown, step), 0);
            }
        }
        return shown;
    }

    /// By its shortcut where it has one.
    void choose(const QString& item) {
        window->activateWindow();
        QCoreApplication::processEvents();
        const QKeySequence keys = user.find<QAction>(item).shortcut();
        if (keys.isEmpty())
            return user.trigger(item);
        user.type(keys[0].key(), {}, keys[0].keyboardModifiers());
    }

    QString status() const {
        return user.find<QStatusBar>("statusBar").findChild<QLabel*>()->text();
    }

    QStringList disabled() const {
        QStringList names;
        for (const QObject* object : window->findChildren<QObject*>()) {
            if (object->property("enabled") == QVariant(false))
                names << object->objectName();
        }
        names.sort();
        return names;
    }
};

/// What the drill is to show after each act of its user, kept in the plainest way.
struct DrillWalk : MainWindowTest {
    std::mt19937 random{1};
    bool automatic = false, session = false, answers = false, letters = false, withNote = false;
    int right = 0, wrong = 0, speed = 30, lower = 43, upper = 53;
    int hiddenNote = 0, answeredNote = 0;  ///< by its number in an automatic session
    int asked = 0, lowest = 43;            ///< the step that is asked for, the lowest of the draw
    QList<int> clicks;
    Instant began{0};
    QStringList summary;  ///< the lines of the statistics
    Heard heard;
    QString judged;  ///< the last answer's button and verdict, as "pdo +"
    Instant judgedAt{};

    int draw(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
    int degree(int step) const { return (step < 40 ? step : step - 16) % 7; }
    QString name(int step) const {
        return letters ? QString("CDEFGAB"[degree(step)])
                       : kAnswers.at(degree(step)).mid(1).toUpper();
    }
    /// The number of the note of an automatic session.
    int number() const { return static_cast<int>((world.runtime.now() - began) * speed / 60s) + 1; }

    void judge(int given, bool isRight) {
        judged = kAnswers.at(given) + (isRight ? " +" : " -");
        judgedAt = world.runtime.now();
    }
    /// The places that a verdict is shown at, each with its verdict.
    QStringList badges() const {
        QStringList places;
        for (const VerdictBadge* badge : window->findChildren<VerdictBadge*>()) {
            const char* sign = badge->accessibleName() == "Risposta esatta" ? " +" : " -";
            if (!badge->isHidden())
                places << badge->parentWidget()->objectName() + sign;
        }
        places.sort();
        return places;
    }

    void check() {
        const bool moment = !judged.isEmpty() && world.runtime.now() < judgedAt + 800ms;
        EXPECT_EQ(badges(),
                  moment ? QStringList({judged, "staff" + judged.right(2)}) : QStringList());
        EXPECT_EQ(user.text("Start"), session ? "Stop" : "Start");
        EXPECT_EQ(user.enabled("Start"), clicks.size() != 1);
        EXPECT_EQ(user.enabled("Regolo"), !session);
        EXPECT_EQ(noteOnShow() != 0, session && !(automatic && hiddenNote == number()));
        EXPECT_TRUE(noteOnShow() == 0 || automatic || noteOnShow() == asked);
        if (session) {
            EXPECT_EQ(user.text("conta").toInt(), automatic ? number() : right);
            EXPECT_EQ(user.text("er").toInt(), wrong);
        }
        const QString polled[] = {"d / Num 4", "Num 1", "f / Num 6", "Num 2",
                                  "g / Num 7", "Num 3", "h / Num 8"};
        for (int i = 0; i < 7; ++i) {
            EXPECT_EQ(user.text("key_" + kAnswers.at(i)),
                      automatic ? polled[i] : QString("d1f2g3h"[i]));
            EXPECT_EQ(user.enabled(kAnswers.at(i)), answers);
            EXPECT_EQ(user.text(kAnswers.at(i)), name(14 + i));
        }
        for (const char* control : {"Slider1", "lblVelocita", "lblAuto1", "lblAuto2"})
            EXPECT_EQ(user.shown(control), automatic) << control;
        EXPECT_EQ(user.text("lblVelocita"), QStringLiteral("Velocità: %1").arg(speed));
        EXPECT_EQ(user.find<QAction>("mnuAutomatico").isChecked(), automatic);
        EXPECT_EQ(user.find<QAction>("mnuNormale").isChecked(), !automatic);
        EXPECT_EQ(user.find<QAction>("Nominote2").isChecked(), letters);
        EXPECT_EQ(user.find<QAction>("Nominote1").isChecked(), !letters);
        EXPECT_EQ(user.find<QAction>("Suono1").isChecked(), !withNote);
        EXPECT_EQ(user.text("lblIntervallo"),
                  clicks.size() == 1 ? "Prima nota: " + name(clicks[0]) + ". Ora clicca la seconda"
                                     : "Note da " + name(lower) + " a " + name(upper));
        for (const int step : {11, 20, 31, 40, 50, 64})
            EXPECT_EQ(user.shown(QStringLiteral("m%1").arg(step)), !clicks.contains(step)) << step;
        QStringList lines;
        for (const char* label :
             {"Lresatte", "Lrerrate", "Ridate", "Lnmostrate", "Lpercento", "Tempoimp"})
            lines << (user.shown(label) ? QStringList(user.text(label)) : QStringList());
        EXPECT_EQ(lines, summary);
    }

    void drawNote() {
        auto number = world.random.numbers.begin();
        do
            asked = lowest + static_cast<int>(static_cast<float>(upper - lowest + 1) * *number++);
        while (asked < 11 || (asked > 31 && asked < 40));
    }
    void start() {
        session = true;
        answers = !automatic;
        right = wrong = hiddenNote = answeredNote = 0;
        clicks.clear();
        summary.clear();
        began = world.runtime.now();
        drawNote();
        heard.take();
        user.click("Start");
        EXPECT_TRUE(automatic || heard.take() == QStringList(staff_step::placeInWords(asked)));
    }
    void stop() {
        session = answers = false;
        judged.clear();
        const auto seconds = (world.runtime.now() - began) / 1s;
        const int notes = automatic ? number() : right + wrong;
        if (right + wrong > 0)
            summary = {
                QStringLiteral(" Risposte esatte: %1").arg(right),
                QStringLiteral(" Risposte errate: %1").arg(wrong),
                QString(automatic ? " Note mostrate: %1" : " Risposte date: %1").arg(notes),
                (automatic ? "  R. Esatte: " : " R. Esatte: ") +
                    QString::number(100.0 * right / notes, 'f', 2) + u'%',
                QStringLiteral("Tempo Impiegato: %1:%2 mm:ss").arg(seconds / 60).arg(seconds % 60)};
        if (automatic && draw(2) == 0)
            world.runtime.press(kKeyEscape, world.runtime.now(), world.runtime.now() + 10ms);
        else
            user.click("Start");
    }
    void answer(int given, bool byButton) {
        const QWidget* focus = QApplication::focusWidget();
        const bool takes = session && !automatic && (byButton || focus);
        const bool isRight = takes && given == degree(asked);
        if (takes)
            judge(given, isRight);
        if (isRight)
            drawNote();
        (isRight ? right : wrong) += takes ? 1 : 0;
        world.midi.take();
        world.media.lines.clear();
        heard.take();
        if (byButton)
            user.click(kAnswers.at(given));
        else
            user.type(Qt::Key_unknown, QStringLiteral("d1f2g3h").at(given));
        const QString place = staff_step::placeInWords(asked);
        const QString words = isRight ? "Giusto, " + place : QStringLiteral("Sbagliato");
        EXPECT_TRUE(automatic || heard.take().join(", ") == (takes ? words : QString()));
        const bool byNote = isRight && withNote;
        EXPECT_EQ(world.midi.take().size(), byNote ? 2U : 0U);
        EXPECT_EQ(world.media.lines.size(), takes && !byNote ? 1U : 0U);
        for (const std::string& line : world.media.lines)
            EXPECT_EQ(line, isRight ? "sound rok.wav 20003" : "sound rko.wav 20001");
    }
    /// Letters and the keypad answer in the automatic mode alone.
    void hold(int given) {
        if (noteOnShow() == 0)
            return;
        if (automatic && answeredNote != number()) {
            const bool isRight = given == degree(noteOnShow());
            ++(isRight ? right : wrong);
            judge(given, isRight);
            answeredNote = isRight ? number() : answeredNote;
        }
        const bool byPad = given % 2 == 1 || draw(2) == 0;
        world.runtime.press(
            byPad ? kKeyNumpad0 + "4162738"[given] - '0' : letterKey("D-F-G-H"[given]),
            world.runtime.now(), world.runtime.now() + 10ms);
    }
    void chooseDifficulty(int item) {
        const auto range = difficulty::kItems[std::size_t(item)].range;
        lower = lowest = range ? range->lower : 43;
        upper = range ? range->upper : 53;
        drawNote();
        hiddenNote = number();
        clicks.clear();
        auto& list = user.find<QComboBox>("difficolt");
        list.setCurrentIndex(item);
        Q_EMIT list.activated(item);
        EXPECT_EQ(list.currentIndex(), range ? item : 0);
    }
    void clickRuler(int step) {
        if (!session && clicks.size() < 2) {
            clicks << step;
            const int other = clicks.size() == 1 ? 11 : clicks[0];
            if (step != other || clicks.size() == 1)
                std::tie(lower, upper) = std::minmax(step, other);
            if (clicks.size() == 1 || clicks[0] != clicks[1])
                lowest = clicks.size() == 1 ? 0 : lower;
        }
        user.find<Regolo>("Regolo").pressStep(step);
    }
    void chooseMode() {
        answers = automatic;
        automatic = !automatic;
        choose(automatic ? "mnuAutomatico" : "mnuNormale");
    }
    void act() {
        const int steps[] = {11, 20, 31, 40, 50, 64};
        const char* const focusable[] = {"Start", "conta", "pmi", "difficolt", "cmdEsci"};
        auto& bar = user.find<QSlider>("Slider1");
        const int item = draw(11), given = draw(7);
        const std::function<void()> acts[] = {
            [&] { session              ? stop()
                  : clicks.size() == 1 ? user.click("Start")
                                       : start(); },
            [&] { answer(given, true); },
            [&] { answer(given, false); },
            [&] { answer(session ? degree(noteOnShow()) : 0, draw(2) == 0); },
            [&] { user.find<QWidget>(focusable[draw(5)]).setFocus(); },
            [&] { hold(given); },
            [&] { hold(degree(noteOnShow())); },
            [&] { chooseDifficulty(item); },
            [&] { clickRuler(steps[draw(6)]); },
            [&] { clickRuler(steps[draw(6)]); },
            [&] { session ? void() : chooseMode(); },
            [&] { choose((letters = draw(2) == 0) ? "Nominote2" : "Nominote1"); },
            [&] { choose((withNote = draw(2) == 0) ? "Suono2" : "Suono1"); },
            [&] { session ? void() : bar.setValue(speed = draw(100) + 20); },
        };
        acts[draw(std::size(acts))]();
    }
};

}  // namespace

TEST_F(DrillWalk, ShowsWhatThePlainAccountSays) {
    activate();
    world.random.numbers.resize(20);
    Instant when = world.runtime.now();
    for (int i = 0; i < 1000; ++i) {
        when += std::chrono::milliseconds(101 + 2 * draw(900));
        world.runtime.at(when, [this] {
            check();
            for (float& number : world.random.numbers)
                number = static_cast<float>(draw(1000)) / 1000;
            world.random.numbers.back() = 0.999F;
            act();
        });
    }
    world.runtime.at(when + 1s, [this] { world.runtime.end(); });
    world.runtime.runActs();
}

TEST_F(MainWindowTest, FourControlsRestDuringTheTuneAndInputWaits) {
    QStringList before = disabled(), during;
    auto alarm = world.runtime.makeAlarm([&] {
        during = disabled();
        EXPECT_EQ(status(), "Uscita: in preparazione   ·   Strumento: 16-Hammond Organ");
        EXPECT_THAT(world.media.lines,
                    ElementsAre("OPEN C:\\Cantavista\\note\\ap.mid ALIAS jepa ", "PLAY jepa"));
        EXPECT_THAT(world.midi.take(), IsEmpty());
    });
    alarm->set(2199ms);
    world.runtime.at(1s, [&] {
        EXPECT_GE(world.runtime.now(), 2200ms - 1us);
        user.click("Start");
    });
    activate();
    for (const QString& name : before)
        during.removeAll(name);
    EXPECT_THAT(during, ElementsAre("Intonazione", "Start", "cmdEsci", "guida_Intonazione",
                                    "guida_mnuRint", "mnuRint"));
    EXPECT_EQ(disabled(), before);
    EXPECT_EQ(QApplication::focusWidget(), &user.find<QWidget>("Start"));
    EXPECT_EQ(world.media.lines.back(), "CLOSE jepa");
    EXPECT_THAT(world.midi.take(), ElementsAre("2.200 open -1", "2.200 program 16"));
    world.runtime.runActs();
    EXPECT_EQ(user.text("Start"), "Stop");
}

TEST_F(MainWindowTest, StartsWithoutTuneOrOutput) {
    world.media.codes = {{"OPEN", 275}};
    world.midi.openCode = 2;
    window->openMelodyAtStart("C:\\x.mel");
    world.runtime.at(5s, [] { QApplication::activeModalWidget()->close(); });
    activate();
    EXPECT_EQ(world.media.lines.size(), 1U);
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("open -1"));
    EXPECT_THAT(world.dialogs.lines, ElementsAre("message: Operation:Open\r\nErrore di sistema 2",
                                                 testing::StartsWith("message: Errore: 53")));
    workInModal(
        world.runtime, [this] { user.click("cmdUscita"); },
        [](const WindowDriver& opened) { opened.click("cmdChiudi"); });
}

TEST_F(MainWindowTest, EachMenuItemDoesItsWork) {
    activate();
    const std::tuple<const char*, const char*, const char*> windows[] = {
        {"Intonazione", "frmInto", "pitchPanel"},  {"mnuRint", "frmInto", "FrmIntervalli"},
        {"mnuRac", "frmInto", "frmRacc"},          {"Intonazione", "frmInto", "frmRacc"},
        {"mnuComposer", "frmComposer", "lblNome"}, {"mnuPromemoria", "frmOptions", "cmdOk"},
        {"mnuMidiTest", "frmMidiTest", "cmdTest"}, {"mnuVersione", "frmAbout", "cmdOK"}};
    for (const auto& [item, name, part] : windows) {
        world.runtime.at(world.runtime.now() + 2s, [] {});
        workInModal(
            world.runtime, [this, item = item] { choose(item); },
            [&, name = name, part = part](const WindowDriver& opened) {
                EXPECT_EQ(QApplication::activeModalWidget()->objectName(), name) << item;
                EXPECT_TRUE(opened.shown(part)) << item;
                part == std::string("cmdOK") ? opened.click(part) : opened.close();
            });
    }
    world.midi.take();
    EXPECT_EQ(status(), "Uscita: Mapper   ·   Strumento: 16-Hammond Organ");
    choose("mnuPiano");
    EXPECT_EQ(status(), "Uscita: Mapper   ·   Strumento: 0-Acoustic Grand Piano");
    choose("mnuOrgano");
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("program 0", "program 16"));
    EXPECT_FALSE(user.shown("cmdUscita")) << "there is an output";
    user.click("guida_mnuAiuto");
    QCoreApplication::processEvents();
    EXPECT_EQ(world.help.shown.size(), 1);
    user.click("Start");
    user.click("pdo");
    EXPECT_TRUE(user.shown("guida"));
    user.click("Start");
    EXPECT_FALSE(user.shown("guida")) << "its place is the statistics'";
    choose("mnuLettura");
    EXPECT_EQ(QApplication::focusWidget(), &user.find<QWidget>("Start"));
    EXPECT_FALSE(user.shown("cmdSSmetro"));
    choose("mnuMetro");
    EXPECT_EQ(QApplication::focusWidget(), &user.find<QWidget>("cmdSSmetro"));
    world.runtime.runActs();
    world.midi.take();
    choose("Esci");
    EXPECT_TRUE(world.runtime.ending() && !window->isVisible());
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("close"));
    EXPECT_EQ(status(), "Uscita: nessuna   ·   Strumento: 16-Hammond Organ");
}

TEST_F(MainWindowTest, F1OpensHelpFromAnywhereOnce) {
    activate();
    user.trigger("mnuAiuto");
    QCoreApplication::processEvents();
    user.find<QMenu>("es").popup({});
    user.type(Qt::Key_F1);
    EXPECT_FALSE(QApplication::activePopupWidget()) << "an open menu would hold the mouse";
    user.type(Qt::Key_F1, {}, Qt::ShiftModifier);
    EXPECT_EQ(world.help.shown, QStringList(2, "C:\\Cantavista\\cantavista.chm"));
}
