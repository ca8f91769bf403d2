#include "eartraining/ear_training_state.h"
#include "eartraining/frmInto.h"
#include "eartraining/plain_ear_training.h"
#include "support/same_lines.h"
#include "support/window_driver.h"
#include "widgets/colour_button.h"
#include "widgets/piano_keyboard.h"

#include <QLabel>

#include <gtest/gtest.h>

#include <random>

using namespace std::chrono_literals;

namespace {

/// What the user does, after some time from what he did before, and what is seen then.
struct Act {
    Instant delay;
    QString control = {};
    std::string seen = {};  ///< empty if it happened within another act
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
            {"lblVt", when(chords, w.showsKeys ? "VT" : "NT")},
            {"lblSpiegaVt",
             when(chords, w.showsKeys ? "Mostra tasti suonati" : "Nascondi tasti suonati")}};
}

std::string look(const PlainEarTraining& ear) {
    const PlainEarTraining::Window& w = ear.w;
    const QRgb right[] = {0, 0xFF00BF0B, 0xFFC0F700};
    const QRgb wrong[] = {0, 0xFFF7CAE9, 0xFFF16BC9};
    const auto colour = [](int changes) { return changes == 0 ? 0 : 2 - changes % 2; };
    return testing::PrintToString(
        std::tuple(textsOf(ear), ear.menuEnabled(), w.chosen, w.pitch.lower, w.pitch.upper,
                   ear.notes, right[colour(w.rightChanges)], wrong[colour(w.wrongChanges)], w.marks,
                   w.keys, w.interval.excluded, w.chord.excluded));
}

std::string look(frmInto& window, const FunzioniMM& sound, const EarTrainingState& state,
                 Texts texts) {
    const WindowDriver user(window);
    for (auto& [name, text] : texts)
        text = user.shown(name) ? user.text(name) : kHidden;
    const auto colour = [&](const char* name) {
        const auto& counter = user.find<QLabel>(name);
        return counter.backgroundRole() == QPalette::Window
                   ? counter.palette().color(QPalette::Window).rgb()
                   : QRgb(0);
    };
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
            const auto& marker = user.find<ColourButton>(QString(name).arg(i));
            EXPECT_EQ(marker.background().rgb() == 0xFFFF0000,
                      marker.toolTip().endsWith("escluso"));
            return marker.background().rgb() != 0xFF80FF80;
        };
    };
    const auto& keyboard = user.find<PianoKeyboard>("keyboard");
    return testing::PrintToString(
        std::tuple(texts, user.enabled("Esercizio"), window.property("contextNumber").toInt(),
                   sound.rangeLower(), sound.rangeUpper(), state.chord, colour("txtResatte"),
                   colour("txtRerrate"), all(60, [&](int key) { return keyboard.rangeMark(key); }),
                   all(60, [&](int key) { return keyboard.marked(key); }),
                   all(14, excluded("Il_%1")), all(4, excluded("EsclTa_%1"))));
}

/// A user who knows the answers now and then; stops and closes at the end.
QString nextControl(const PlainEarTraining& ear, std::mt19937& random, bool atTheEnd) {
    const PlainEarTraining::Window& w = ear.w;
    const auto draw = [&random](int count) { return static_cast<int>(random() % count); };
    const auto numbered = [](const char* name, int i) { return QString("%1_%2").arg(name).arg(i); };
    if (atTheEnd) {
        const bool starts = w.pitch.start && w.pitch.complete && !w.stopped;
        return w.interval.running               ? "CmdIntStart"
               : w.chord.running                ? "ComdRacStart"
               : w.pitch.running || starts      ? "IntoStart"
               : w.pitch.complete && !w.started ? numbered("lb", w.pitch.upper)
                                                : "close";
    }
    const bool knows = draw(2) == 0;
    switch (draw(9)) {
        case 0:
            return numbered("LblSemi", knows ? w.interval.target : draw(14));
        case 1:
            return numbered("TipoAcc", knows ? w.chord.target : draw(4));
        case 2:
            return draw(2) ? numbered("Il", knows ? 0 : draw(14)) : numbered("EsclTa", draw(4));
        case 3:
            return QStringList{"IntoStart", "CmdIntStart", "ComdRacStart"}[draw(3)];
        case 4:
            return QStringList{
                "Label6", "lblMod", "Label7", "lblModo", "lblVt", "lblModoVt"}[draw(6)];
        case 5:
            return QStringList{"cmdReimposta", "cmdRes",  "mnuNota", "mnuRint",
                               "mnuRicTa",     "cmdEsci", "close"}[draw(knows ? 5 : 7)];
        default:
            return numbered("lb", w.started && knows ? ear.sound.drawnIndex()
                                  : knows            ? 18 + draw(12)
                                                     : draw(60));
    }
}

struct Users {
    TestWorld world;
    EarTrainingState state;
    PlainEarTraining plain;
    std::mt19937 random;
    std::vector<Act> acts;
    std::size_t next = 0;
    int depth = 0;

    explicit Users(unsigned seed) : random(seed) {
        world.openOutput();
        plain.world.openOutput();
    }

    /// Each act is due some time after the begin of the one before, or happens in the next pass.
    void schedulePlain() {
        const QStringList first{"lb_20", "lb_30", "lb_25", "Label6", "IntoStart", "lb_22"};
        const std::size_t act = acts.size();
        const bool begins = !plain.sound.noteDrawn() && act < 6;
        acts.push_back({begins ? Instant{0} : Instant{random() % 4 * (random() % 700) * 1ms}});
        plain.world.runtime.at(plain.world.runtime.now() + acts.back().delay, [=, this] {
            if (!plain.w.open)
                return;
            acts[act].control = begins ? first[act] : nextControl(plain, random, act > 60);
            schedulePlain();
            ++depth;
            plain.click(acts[act].control);
            if (--depth == 0)
                acts[act].seen = look(plain);
        });
    }
    void schedule(frmInto& window) {
        world.runtime.at(world.runtime.now() + acts[next].delay, [this, &window] {
            if (!window.isVisible())
                return;
            const Act& act = acts[next++];
            schedule(window);
            const WindowDriver user(window);
            if (act.control == "close")
                window.close();
            else if (act.control == "Il_0" && user.shown(act.control))
                user.doubleClick(act.control);
            else if (!act.control.startsWith("mnu"))
                user.click(act.control);
            else if (user.enabled("Esercizio"))
                user.trigger(act.control);
            if (act.seen.empty() || testing::Test::HasFailure())
                return;
            EXPECT_EQ(look(window, world.funzioniMM, state, textsOf(plain)), act.seen) << trace();
        });
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
        next = 0;
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

}  // namespace

TEST(EarTrainingWindow, FollowsThePlainRulesUnderRandomActs) {
    for (unsigned seed = 0; seed < 12 && !testing::Test::HasFailure(); ++seed) {
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
