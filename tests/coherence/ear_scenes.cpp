#include "coherence/stage.h"
#include "eartraining/ear_training_state.h"
#include "eartraining/frmInto.h"

#include <QDateTime>
#include <QMenu>

namespace {

/// The ear-training window on an exercise.
struct Ear {
    TestWorld world;
    EarTrainingState state;
    std::unique_ptr<frmInto> window;

    explicit Ear(ExerciseCode exercise) {
        world.runtime.setWallClock(QDateTime(QDate(2004, 10, 1), QTime(0, 0)));
        world.openOutput();
        world.random.numbers = {0.3F};
        state.request(exercise);
        window = std::make_unique<frmInto>(world.services(), state, nullptr);
    }

    WindowDriver user() const { return WindowDriver(*window); }

    void click(std::initializer_list<const char*> controls) const {
        for (const char* control : controls)
            user().click(QLatin1String(control));
    }

    /// Looks after these clicks; a running exercise is then stopped with its button.
    void look(std::initializer_list<const char*> clicks, const Look& look, const char* stop = {}) {
        lookWhileOpen(
            world, *window, [this, clicks] { click(clicks); }, look,
            [this, stop] {
                if (stop)
                    user().click(QLatin1String(stop));
            });
    }
};

}  // namespace

void showPitches(const Look& look) {
    Ear ear(ExerciseCode::Pitch);
    ear.look({"lb_24", "lb_36", "lb_24", "IntoStart", "lb_27", "lb_27", "lb_29", "lb_27", "lb_27"},
             look, "IntoStart");
}

/// An exercise that has been stopped can be given another range.
void showPitchesStopped(const Look& look) {
    Ear ear(ExerciseCode::Pitch);
    ear.look({"lb_24", "lb_36", "lb_24", "IntoStart", "lb_27", "IntoStart"}, look);
}

/// The state in which the window cannot be left: the range's reference is being chosen.
void showPitchReference(const Look& look) {
    Ear ear(ExerciseCode::Pitch);
    lookWhileOpen(
        ear.world, *ear.window,
        [&ear] {
            ear.click({"lb_24", "lb_36"});
        },
        look,
        [&ear] {
            ear.click({"lb_24", "IntoStart", "IntoStart"});
        });
}

void showIntervals(const Look& look) {
    Ear ear(ExerciseCode::Interval);
    ear.look({"Il_1", "Il_6", "Label7", "CmdIntStart", "LblSemi_4", "LblSemi_7", "LblSemi_4"}, look,
             "CmdIntStart");
}

void showChords(const Look& look) {
    Ear ear(ExerciseCode::Chord);
    ear.look({"lb_24", "lb_36", "EsclTa_3", "ComdRacStart", "TipoAcc_0", "TipoAcc_1", "TipoAcc_1"},
             look, "ComdRacStart");
}

void showChordsStopped(const Look& look) {
    Ear ear(ExerciseCode::Chord);
    ear.look({"lb_24", "lb_36", "ComdRacStart", "TipoAcc_0", "ComdRacStart"}, look);
}

/// Every exercise as the window's menu lists it, so that a new one is walked without a scene of its
/// own.
void showEachExercise(const Look& look) {
    const Ear list(ExerciseCode::Pitch);
    for (const QAction* item : list.user().find<QMenu>("Esercizio").actions()) {
        Ear ear(ExerciseCode::Pitch);
        const QString name = item->objectName();
        lookWhileOpen(
            ear.world, *ear.window, [&ear, name] { ear.user().trigger(name); }, look);
    }
}

void showEarInstrument(const Look& look) {
    Ear ear(ExerciseCode::Pitch);
    lookWhileOpen(
        ear.world, *ear.window, [&ear] { ear.user().trigger("mnuSs"); }, look);
}
