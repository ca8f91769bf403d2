// From the click on a right answer to the first note-on of the next test, in the real window and
// without the waits that belong to the exercises: the runtime's blocking waits return at once.

#include "click.h"
#include "core/services.h"
#include "eartraining/ear_training_state.h"
#include "eartraining/frmInto.h"
#include "figures.h"
#include "silent_machine.h"

#include <QApplication>
#include <QDateTime>
#include <QTimer>

#include <random>

namespace {

constexpr int kAnswers = 300;

/// The real machine, without blocking.
class ImpatientRuntime : public Runtime {
public:
    Instant now() const override { return real_.now(); }
    double secondsSinceMidnight() const override { return real_.secondsSinceMidnight(); }
    QDateTime dateTime() const override { return real_.dateTime(); }
    bool pump(Instant wakeBy) override { return real_.pump(wakeBy); }
    void blockUntil(Instant /*end*/) override {}
    void deliver(Instant at, std::function<void()> work) override {
        real_.deliver(at, std::move(work));
    }
    std::unique_ptr<Alarm> makeAlarm(std::function<void()> work) override {
        return real_.makeAlarm(std::move(work));
    }
    bool held(KeyCode key) const override { return real_.held(key); }
    bool repeated(KeyCode key) const override { return real_.repeated(key); }
    void end() override { real_.end(); }
    bool ending() const override { return real_.ending(); }

private:
    QtRuntime real_;
};

/// Works the window and takes the times.
class Bench {
public:
    explicit Bench(EarTrainingState& state) : window_(services_, state, nullptr) {
        machine_.funzioniMM.MidiOpen(kMidiMapper);
    }

    /// Runs the work once the window's loop runs, then closes the window.
    void run(const std::function<void()>& work) {
        QTimer::singleShot(500, &window_, [this, work] {
            work();
            window_.close();
        });
        window_.exec();
    }

    void click(const QString& name) { ::click(window_, name); }

    /// Clicks on the right answer and waits for the screen to settle.
    void answer(const QString& name) {
        arrivals_.clear();
        const auto begin = figures::Clock::now();
        click(name);
        for (const ArrivalRecorder::Arrival& arrival : arrivals_) {
            if (isNoteOn(arrival.message)) {
                times.push_back(figures::seconds(arrival.when - begin));
                break;
            }
        }
        QCoreApplication::processEvents();
    }

    /// The note numbers that the last click let sound.
    std::vector<int> sounded() const {
        std::vector<int> notes;
        for (const ArrivalRecorder::Arrival& arrival : arrivals_) {
            if (isNoteOn(arrival.message))
                notes.push_back(static_cast<int>(arrival.message >> 8 & 0x7F));
        }
        return notes;
    }

    std::vector<double> times;

private:
    NoFolders folders_;
    NoHelp help_;
    std::mt19937 engine_{1};
    SilentMachine<ImpatientRuntime> machine_{
        [this] { return static_cast<float>(engine_() >> 8) * 0x1p-24F; }};
    std::vector<ArrivalRecorder::Arrival>& arrivals_ = machine_.midi.arrivals;
    Services services_{machine_.runtime, machine_.midi, machine_.dialogs,
                       folders_,         help_,         machine_.funzioniMM};
    frmInto window_;
};

std::vector<double> noteTimes() {
    EarTrainingState state;
    Bench bench(state);
    bench.run([&bench] {
        for (const char* name : {"lb_12", "lb_36", "lb_24", "IntoStart"})
            bench.click(QLatin1String(name));
        for (int i = 0; i < kAnswers; ++i)
            bench.answer(QStringLiteral("lb_%1").arg(bench.sounded().back() - 36));
        bench.click(QStringLiteral("IntoStart"));
    });
    return bench.times;
}

std::vector<double> intervalTimes() {
    EarTrainingState state;
    state.request(ExerciseCode::Interval);
    Bench bench(state);
    bench.run([&bench] {
        bench.click(QStringLiteral("CmdIntStart"));
        for (int i = 0; i < kAnswers; ++i)
            bench.answer(QStringLiteral("LblSemi_%1").arg(bench.sounded().back() - 60));
        bench.click(QStringLiteral("CmdIntStart"));
    });
    return bench.times;
}

std::vector<double> chordTimes() {
    EarTrainingState state;
    state.request(ExerciseCode::Chord);
    Bench bench(state);
    bench.run([&bench] {
        for (const char* name : {"lb_12", "lb_36", "ComdRacStart"})
            bench.click(QLatin1String(name));
        for (int i = 0; i < kAnswers; ++i) {
            const std::vector<int> chord = bench.sounded();
            const int middle = chord[chord.size() - 2] - chord[chord.size() - 3];
            const int top = chord.back() - chord[chord.size() - 3];
            const int type = top == 6 ? 2 : top == 8 ? 3 : middle == 3 ? 0 : 1;
            bench.answer(QStringLiteral("TipoAcc_%1").arg(type));
        }
        bench.click(QStringLiteral("ComdRacStart"));
    });
    return bench.times;
}

}  // namespace

int main(int argc, char* argv[]) {
    QtRuntime::chooseEventQueue();
    QApplication app(argc, argv);
    figures::print("Answer to next note", noteTimes(), 1e-3, "ms");
    figures::print("Answer to next interval", intervalTimes(), 1e-3, "ms");
    figures::print("Answer to next chord", chordTimes(), 1e-3, "ms");
    return 0;
}
