#include "eartraining/frmInto.h"

#include "eartraining/ear_training_state.h"
#include "eartraining/plain_ear_training.h"
#include "support/heard.h"
#include "support/same_lines.h"
#include "support/window_driver.h"
#include "widgets/colour_button.h"
#include "widgets/piano_keyboard.h"
#include "widgets/verdict_badge.h"

#include <QSlider>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

/// What the user does, after some time from what he did before, and what is seen then.
struct Act {
    Instant delay;
    bool throughWaits = false;
    QString control = {};
    std::string seen = {};  ///< empty if it happened within another act
    QString focus = {};     ///< where it is known
};

/// The texts of the controls; a hidden one has none.
using Texts = std::map<QString, QString>;
constexpr const char* kHidden = "hidden";

Texts textsOf(const PlainEarTraining& ear) {
    const PlainEarTraining::Window& w = ear.w;
    const auto when = [](bool shown, const char* text) { return shown ? text : kHidden; };
    const auto button = [&](bool shown, const auto& exercise) {
        return when(shown, exercise.running ? "Stop" : "Start");
    };
    const int answers = w.right + w.wrong;
    const double percent = answers == 0 ? 0 : std::floor(10000.0 * w.right / answers + 0.5) / 100;
    const bool pitches = w.chosen == 3 || w.pitch.start || w.pitch.reset, chords = w.chosen == 7;
    const bool reference = ear.sound.autoSilence();
    const char* modes[] = {":", "/", "/ :"};
    return {{"lblStep", w.prompt},
            {"lblSpiegaStep", ear.hint()},
            {"txtResatte", QString::number(w.right)},
            {"txtRerrate", QString::number(w.wrong)},
            {"lblPerc", answers == 0 ? "0" : QString::number(percent, 'f', 2) + '%'},
            {"lblOk", when(w.verdict == '+', "")},
            {"lblKo", when(w.verdict == '-', "")},
            {"cmdEsci", when(w.closeButton, "Chiudi")},
            {"IntoStart", button(w.pitch.start, w.pitch)},
            {"CmdIntStart", button(w.chosen == 5, w.interval)},
            {"ComdRacStart", button(chords && w.chord.start, w.chord)},
            {"cmdReimposta", when(w.pitch.reset, "Reimposta")},
            {"cmdRes", when(chords && w.chord.reset, "Reim")},
            {"lblMod", when(pitches, reference ? "/" : "o")},
            {"lblModo", when(w.chosen == 5, modes[w.mode])},
            {"lblVt", when(chords, w.showsKeys ? "VT" : "NT")}};
}

std::string look(const PlainEarTraining& ear) {
    const PlainEarTraining::Window& w = ear.w;
    return testing::PrintToString(std::tuple(
        textsOf(ear), ear.badge(), ear.canHearAgain(), ear.menuEnabled(), w.chosen, ear.lower(),
        ear.upper(), ear.notes, w.marks, w.keys, w.interval.excluded, w.chord.excluded));
}

std::string look(frmInto& window, const FunzioniMM& sound, const EarTrainingState& state,
                 Texts texts) {
    const WindowDriver user(window);
    for (auto& [name, text] : texts)
        text = user.shown(name) ? user.text(name) : kHidden;
    const auto all = [](int count, const auto& holds) {
        std::set<int> elements;
        for (int i = 0; i < count; ++i) {
            if (holds(i))
                elements.insert(i);
        }
        return elements;
    };
    const auto excluded = [&](const char* name) {
        return [&user, name](int i) {
            return user.find<ColourButton>(QString(name).arg(i)).background().rgb() == 0xFFFF0000;
        };
    };
    const auto& keyboard = user.find<PianoKeyboard>("keyboard");
    const VerdictBadge& badge = *window.findChild<VerdictBadge*>();
    QString judged = badge.isHidden() ? "" : badge.parentWidget()->objectName();
    for (int key = 0; key < 60 && judged == "keyboard"; ++key) {
        if (badge.geometry() == keyboard.keyFace(key))
            judged = QString("lb_%1").arg(key);
    }
    if (!judged.isEmpty())
        judged += badge.accessibleName() == "Risposta esatta" ? " +" : " -";
    return testing::PrintToString(
        std::tuple(texts, judged, user.enabled("cmdRiascoltaNota"), user.enabled("Esercizio"),
                   window.property("contextNumber").toInt(), sound.rangeLower(), sound.rangeUpper(),
                   state.chord, all(60, [&](int key) { return keyboard.rangeMark(key); }),
                   all(60, [&](int key) { return keyboard.marked(key); }),
                   all(14, excluded("Il_%1")), all(4, excluded("EsclTa_%1"))));
}

/// A key to be moved: one that is too many, one of the chord that sounds, in any octave, or one
/// that may answer another exercise.
template <typename Draw>
int midiKey(const PlainEarTraining& ear, const Draw& draw) {
    const std::set<int>& played = ear.w.played;
    if (played.size() >= 3 || (!played.empty() && draw(8) == 0))
        return *std::next(played.begin(), draw(static_cast<int>(played.size())));
    if (ear.w.chosen == 7 && ear.w.hasRange && draw(8) > 0)
        return 36 + (ear.notes[played.size()] + 12 * draw(5)) % 60;
    const int right = ear.w.chosen == 5 ? ear.w.interval.target : ear.sound.drawnIndex() - 24;
    return draw(2) ? 36 + draw(60) : 60 + std::max(right, -24);
}

/// A user who knows the answers now and then; stops and closes at the end.
QString nextControl(const PlainEarTraining& ear, std::mt19937& random, bool atTheEnd) {
    const PlainEarTraining::Window& w = ear.w;
    const auto draw = [&random](int count) { return static_cast<int>(random() % count); };
    const auto numbered = [](const char* name, int i) { return QString("%1_%2").arg(name).arg(i); };
    if (atTheEnd) {
        const bool starts = w.pitch.start && ear.complete() && !w.stopped;
        return w.interval.running             ? "CmdIntStart"
               : w.chord.running              ? "ComdRacStart"
               : w.pitch.running || starts    ? "IntoStart"
               : ear.complete() && !w.started ? numbered("lb", ear.upper())
                                              : "close";
    }
    const bool knows = draw(2) == 0;
    const int key = !knows ? draw(60) : w.started ? ear.sound.drawnIndex() : 18 + draw(12);
    const QString numberedControls[] = {numbered("LblSemi", knows ? w.interval.target : draw(14)),
                                        numbered("TipoAcc", knows ? w.chord.target : draw(4)),
                                        numbered("Il", knows ? 0 : draw(14)),
                                        numbered("EsclTa", draw(4)), numbered("lb", key)};
    if (draw(12) == 0)
        return "Ctrl+Return";
    const QStringList others{"IntoStart",    "CmdIntStart", "ComdRacStart", "Label6",
                             "lblMod",       "Label7",      "lblModo",      "lblVt",
                             "lblModoVt",    "mnuNota",     "mnuRint",      "mnuRicTa",
                             "cmdReimposta", "cmdRes",      "cmdEsci",      "close"};
    const QString again[] = {"F4", "cmdRiascoltaNota", "cmdRiascoltaIntervallo",
                             "cmdRiascoltaAccordo"};
    if (draw(6) == 0)
        return again[draw(4)];
    if (draw(4) == 0)
        return numbered("midi", midiKey(ear, draw));
    return draw(3) ? numberedControls[std::min(draw(7), 4)]
                   : others[draw(2) ? draw(3) : draw(knows ? 14 : 16)];
}

struct Users {
    TestWorld world;
    EarTrainingState state;
    PlainEarTraining plain;
    std::mt19937 random;
    std::vector<Act> acts;
    std::size_t next = 0;
    int depth = 0;
    std::set<int> played;
    std::vector<std::unique_ptr<Alarm>> alarms;

    explicit Users(unsigned seed) : random(seed) {
        world.openOutput();
        plain.world.openOutput();
    }

    /// Each act is due some time after the begin of the one before, or happens in the next pass. A
    /// screen reader's presses come through the waits.
    void schedule(VirtualRuntime& runtime, const Act& act, const std::function<void()>& work) {
        const Instant due = runtime.now() + act.delay;
        if (!act.throughWaits)
            return runtime.at(due, work);
        runtime.at(due, [] {});
        alarms.push_back(runtime.makeAlarm(work));
        alarms.back()->set(due);
    }
    void schedulePlain() {
        const QStringList first{"lb_20", "lb_30", "lb_25", "Label6", "IntoStart", "lb_22"};
        const std::size_t act = acts.size();
        const bool begins = !plain.sound.noteDrawn() && act < 6;
        const bool pitches = plain.w.chosen == 3 || plain.w.pitch.running;
        const bool through = act > 6 && !pitches && random() % 3 == 0;
        const auto ms = random() % 4 * (random() % (through ? 100 : 700));
        acts.push_back({begins ? Instant{0} : Instant{ms * 1ms}, through});
        schedule(plain.world.runtime, acts.back(), [=, this] {
            if (!plain.w.open)
                return;
            acts[act].control = begins ? first[act] : nextControl(plain, random, act > 60);
            const bool active = act >= 4 && !acts[act].throughWaits;
            if (!active &&
                (acts[act].control.startsWith("midi") || acts[act].control.contains("+")))
                acts[act].control = "lblVt";
            schedulePlain();
            ++depth;
            plain.click(acts[act].control);
            if (--depth > 0)
                return;
            acts[act].seen = look(plain);
            acts[act].focus = plain.w.focus;
        });
    }
    void schedule(frmInto& window) {
        schedule(world.runtime, acts[next], [this, &window] {
            if (!window.isVisible())
                return;
            const WindowDriver user(window);
            const Act& act = acts[next++];
            schedule(window);
            ++depth;
            if (act.control.startsWith("cmdRia") && user.enabled(act.control))
                user.find<QWidget>(act.control).setFocus();
            if (act.control == "close")
                window.close();
            else if (act.control == "Ctrl+Return")
                user.type(Qt::Key_Return, {}, Qt::ControlModifier);
            else if (act.control == "F4")
                user.type(Qt::Key_F4);
            else if (act.control.startsWith("midi"))
                moveKey(act.control.section('_', 1).toInt());
            else if (act.control == "Il_0" && user.shown(act.control))
                user.doubleClick(act.control);
            else if (!act.control.startsWith("mnu"))
                user.click(act.control);
            else if (user.enabled("Esercizio"))
                user.trigger(act.control);
            if (--depth > 0 || testing::Test::HasFailure())
                return;
            EXPECT_TRUE(act.focus.isEmpty() || window.focusWidget()->objectName() == act.focus)
                << trace();
            EXPECT_EQ(look(window, world.funzioniMM, state, textsOf(plain)), act.seen) << trace();
        });
    }
    void moveKey(int note) {
        const bool down = played.insert(note).second;
        if (!down)
            played.erase(note);
        world.key(note, down);
    }
    std::string trace() const {
        QStringList controls;
        for (std::size_t i = next - std::min<std::size_t>(next, 20); i < next; ++i)
            controls << acts[i].control;
        return controls.join(' ').toStdString();
    }

    void openAndClose() {
        world.random.numbers.clear();
        for (int i = 0; i < 300; ++i)
            world.random.numbers.push_back(static_cast<float>(random() % 1024) / 1024);
        world.random.numbers.push_back(0);
        plain.world.random.numbers = world.random.numbers;
        acts.clear();
        alarms.clear();
        next = 0;
        played.clear();
        world.plugKeyboard();
        plain.open();
        schedulePlain();
        while (plain.w.open)
            plain.world.runtime.pump(kForever);
        plain.world.runtime.runActs();

        frmInto window(world.services(), state, nullptr);
        schedule(window);
        window.exec();
        world.runtime.runActs();
        EXPECT_TRUE(sameLines(world.midi.take(), plain.world.midi.take())) << trace();
        EXPECT_TRUE(sameLines(world.dialogs.lines, plain.world.dialogs.lines)) << trace();
    }
};

/// What is sent when each exercise plays, on a machine that wakes late from every wait.
std::vector<std::string> playedLate(Instant latest) {
    TestWorld world;
    world.openOutput();
    EarTrainingState state;
    frmInto window(world.services(), state, nullptr);
    const WindowDriver user(window);
    Instant when{0};
    for (const char* control :
         {"lb_10", "lb_20", "lb_15", "lblMod", "IntoStart", "lb_10", "IntoStart", "mnuRint",
          "Label7", "LblSemi_4", "Label7", "LblSemi_7", "mnuRicTa", "lb_10", "lb_12",
          "ComdRacStart", "TipoAcc_0", "ComdRacStart"})
        world.runtime.at(when += 4s, [&user, control] {
            *control == 'm' ? user.trigger(control) : user.click(control);
        });
    world.runtime.at(when += 4s, [&] { world.runtime.end(); });
    world.runtime.at(when, [&] { window.hide(); });
    world.runtime.wakeLate([latest] { return latest; });
    window.exec();
    return world.midi.take();
}

}  // namespace

TEST(EarTrainingWindow, FollowsThePlainRulesUnderRandomActs) {
    for (unsigned seed = 0; seed < 9 && !testing::Test::HasFailure(); ++seed) {
        Users users(seed);
        for (int opening = 0; opening < 6 && !testing::Test::HasFailure(); ++opening) {
            const int request = static_cast<int>(users.random() % 4);
            const int exercise = request == 0 ? 3 : request == 1 ? 5 : seed % 3 == 0 ? 7 : 0;
            if (exercise != 0) {
                users.plain.request(exercise);
                users.state.request(static_cast<ExerciseCode>(exercise));
            }
            users.openAndClose();
        }
    }
}

TEST(EarTrainingWindow, SoundsAtItsInstantsWhenTheThreadWakesLate) {
    const std::vector<std::string> inTime = playedLate(0ms);
    EXPECT_GT(inTime.size(), 30U);
    EXPECT_EQ(playedLate(7ms), inTime);
}

TEST(EarTrainingWindow, ColoursTheScoreAndTakesInstrumentsAndOctaves) {
    TestWorld world;
    world.openOutput();
    EarTrainingState state;
    Heard heard;
    frmInto window(world.services(), state, nullptr);
    const std::pair<KeyCode, Instant> presses[] = {
        {'Z', 0s}, {'Z', 2s}, {'Z', 3s}, {'Z', 3500ms}, {kKeyBackspace, 3600ms}};
    for (const auto& [key, from] : presses)
        world.runtime.press(key, from, from + 90ms);
    const auto open = [&] { window.exec(); };
    workInModal(world.runtime, open, [&](const WindowDriver& user) {
        const auto& keyboard = user.find<PianoKeyboard>("keyboard");
        world.runtime.at(2050ms, [&] { EXPECT_TRUE(keyboard.marked(12)); });
        world.runtime.at(2500ms, [user] { user.doubleClick("lblPerc"); });
        world.runtime.at(2600ms, [user] { user.doubleClick("Lbdoc"); });
        world.runtime.at(3200ms, [user] { user.doubleClick("lblPerc"); });
        world.runtime.at(3650ms, [&] { world.runtime.end(); });
        world.runtime.at(3660ms, [&] { window.hide(); });
        for (const char* key : {"lb_10", "lb_20", "lb_15", "IntoStart", "lb_10", "lb_11"})
            user.click(key);
        // The second lines are said between them.
        EXPECT_THAT(heard.take(),
                    testing::IsSupersetOf({"Scegli la nota superiore dell'intervallo",
                                           "Scegli la nota di riferimento e premi Start",
                                           "Riconosci la nota suonata", "Giusto", "Sbagliato"}));
        EXPECT_EQ(user.text("Label4_24"), "4 Ecc");
        EXPECT_NE(user.find<ColourButton>("LblSemi_6").background(),
                  user.find<ColourButton>("LblSemi_7").background());
        for (const auto& [name, colour] :
             {std::pair{"txtResatte", 0xFF00BF0B}, {"txtRerrate", 0xFFF7CAE9}})
            EXPECT_EQ(user.find<QWidget>(name).palette().color(QPalette::Window).rgb(), colour);
        world.midi.take();
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

        window.resize(window.width() + 300, window.height());
        QCoreApplication::processEvents();
        EXPECT_EQ(user.find<QWidget>("Lbdoc").geometry(), keyboard.middleCSquare());
    });
    EXPECT_THAT(world.midi.take(),
                ElementsAre("2.000 on 1 48 90", "2.090 on 1 48 0",  //
                            "3.000 on 1 36 90", "3.090 on 1 36 0",  //
                            "3.500 on 1 48 90", "3.590 on 1 48 0",  //
                            "3.600 on 1 80 90", "3.650 on 1 46 0", "3.650 on 1 80 0"))
        << "the end of the program ends every note";
    EXPECT_LT(world.runtime.passes(), 30) << "a pass is taken when something happened";
    world.runtime.runActs();
}
