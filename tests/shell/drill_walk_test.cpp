#include "reading/difficulty.h"
#include "reading/regolo.h"
#include "reading/staff_step.h"
#include "shell/main_window_fixture.h"
#include "support/heard.h"
#include "widgets/verdict_badge.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QSlider>
#include <QStatusBar>

#include <gtest/gtest.h>

#include <random>

using namespace std::chrono_literals;

namespace {

const QStringList kAnswers{"pdo", "pre", "pmi", "pfa", "psol", "pla", "psi"};

/// What the drill is to show after each act of its user, kept in the plainest way.
struct DrillWalk : MainWindowFixture {
    std::mt19937 random{1};
    bool automatic = false, session = false, answers = false, letters = false, withNote = false;
    bool plugged = false, exact = false;  ///< a MIDI keyboard, and that its octave matters
    int right = 0, wrong = 0, speed = 30, lower = 43, upper = 53;
    int hiddenNote = 0, answeredNote = 0;  ///< by its number in an automatic session
    int asked = 0, lowest = 43;            ///< the step that is asked for, the lowest of the draw
    QList<int> clicks;
    Instant began{0};
    QStringList summary;  ///< the lines of the statistics
    Heard heard;
    QString keyboards;  ///< as the status line names them
    QString judged;     ///< the last answer's button and verdict, as "pdo +"
    Instant judgedAt{};

    int draw(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
    int degree(int step) const { return (step < 40 ? step : step - 16) % 7; }
    QString name(int step) const {
        return letters ? QString("CDEFGAB"[degree(step)])
                       : kAnswers.at(degree(step)).mid(1).toUpper();
    }
    /// The MIDI note of a step.
    int keyOf(int step) const {
        const int place = step < 40 ? step : step - 16;
        return place / 7 * 12 + 12 + "024579;"[place % 7] - '0';
    }
    /// The number of the note of an automatic session.
    int number() const { return static_cast<int>((world.runtime.now() - began) * speed / 60s) + 1; }

    void judge(int given, bool isRight) {
        judged = kAnswers.value(given) + (isRight ? " +" : " -");
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

    void check() {
        const bool moment = !judged.isEmpty() && world.runtime.now() < judgedAt + 800ms;
        QStringList judgement{judged, "staff" + judged.right(2)};
        judgement.removeAll(" -");  // a black key has no button
        EXPECT_EQ(badges(), moment ? judgement : QStringList());
        EXPECT_EQ(user.shown("ckOttava"), plugged);
        EXPECT_TRUE(
            user.find<QStatusBar>("statusBar").findChild<QLabel*>()->text().endsWith(keyboards));
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
        const bool takes = session && !automatic && (byButton || QApplication::focusWidget());
        answerBy(takes, given, given == degree(asked), [&] {
            byButton ? user.click(kAnswers.at(given))
                     : user.type(Qt::Key_unknown, QStringLiteral("d1f2g3h").at(given));
        });
    }
    void answerBy(bool takes, int given, bool isRight, const std::function<void()>& press) {
        isRight = takes && isRight;
        if (takes)
            judge(given, isRight);
        if (isRight)
            drawNote();
        (isRight ? right : wrong) += takes ? 1 : 0;
        world.midi.take();
        world.media.lines.clear();
        heard.take();
        press();
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
        judgeHeld(given, given == degree(noteOnShow()));
        const bool byPad = given % 2 == 1 || draw(2) == 0;
        world.runtime.press(
            byPad ? kKeyNumpad0 + "4162738"[given] - '0' : letterKey("D-F-G-H"[given]),
            world.runtime.now(), world.runtime.now() + 10ms);
    }
    void judgeHeld(int given, bool isRight) {
        if (!automatic || answeredNote == number())
            return;
        ++(isRight ? right : wrong);
        judge(given, isRight);
        answeredNote = isRight ? number() : answeredNote;
    }
    /// A key of the MIDI keyboard answers in both modes.
    void play(int key) {
        const int shown = noteOnShow() == 0 ? 0 : keyOf(noteOnShow());
        if (!plugged || (automatic && shown == 0))
            return;
        const int given = static_cast<int>(QString("024579;").indexOf(QChar('0' + key % 12)));
        const bool isRight = exact ? key == shown : (key - shown) % 12 == 0;
        if (automatic) {
            judgeHeld(given, isRight);
            world.key(key, true);
        } else {
            answerBy(session, given, isRight, [&] { world.key(key, true); });
        }
        world.runtime.at(world.runtime.now() + 10ms, [this, key] { world.key(key, false); });
    }
    void plug() {
        plugged = !plugged;
        keyboards = plugged ? "Tastiera MIDI: Prova" : "Tastiera MIDI: nessuna (scollegata: Prova)";
        heard.take();
        world.midiIn.plug(plugged ? std::vector<MidiInput>{{1, "Prova"}}
                                  : std::vector<MidiInput>());
        EXPECT_EQ(heard.take(), QStringList(keyboards));
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
    /// A choice by key is told; one that no item shows is not.
    void choose(const char* item) {
        heard.take();
        MainWindowFixture::choose(item);
        const QString text = user.find<QAction>(item).text();
        EXPECT_EQ(heard.take().contains(text), item != QLatin1String("Suono2"));
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
            [&] { play(draw(128)); },
            [&] { play(noteOnShow() == 0 ? 60 : keyOf(noteOnShow()) + 12 * (draw(3) - 1)); },
            [&] { draw(3) == 0 ? plug() : void(); },
            [&] {
                if (plugged) {
                    exact = !exact;
                    user.find<QAbstractButton>("ckOttava").click();
                }
            },
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
