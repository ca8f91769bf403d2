// How well the metronome keeps time on this machine: the intervals between clicks as the output
// gets them, against the instants at which the clicks' own waits are over, and the processor's
// share while it beats with its lamps on show.

#include "busy_cores.h"
#include "core/blocking_wait.h"
#include "figures.h"
#include "metronome/frmMetro.h"
#include "metronome/metronome_host.h"
#include "shell/application.h"
#include "silent_machine.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QScrollBar>
#include <QVBoxLayout>

#include <cmath>
#include <cstdio>
#include <numeric>
#include <vector>

namespace {

constexpr double kDarkSeconds = 0.1;
constexpr double kClockNoise = 1e-6;  ///< far below the grain of the waits

/// The desktop's runtime, which keeps the clock reading from which a wait was worked out.
class TracingRuntime : public QtRuntime {
public:
    double secondsSinceMidnight() const override {
        lastReading_ = QtRuntime::secondsSinceMidnight();
        return lastReading_;
    }
    double lastReading() const { return lastReading_; }

private:
    mutable double lastReading_ = 0;
};

struct Click {
    double arrival;    ///< seconds of the steady clock
    double waitBegan;  ///< seconds since midnight, of the wait of 0.1 s before the click
};

class Host : public QWidget, public MetronomeHost {
public:
    void setMetronomeRunning(bool) override {}
    void focusStart() override {}
    const QWidget& startColourSource() const override { return *this; }
    const QWidget& stopColourSource() const override { return *this; }
};

/// All in seconds.
struct Intervals {
    std::vector<double> measured;
    std::vector<double> byWaits;     ///< between the instants at which the clicks' own waits end
    std::vector<double> unhindered;  ///< what the rule gives if nothing but the waits takes time
};

double dueInstant(const Click& click) {
    return blocking_wait::endOf(click.waitBegan, kDarkSeconds);
}

Intervals intervalsOf(const std::vector<Click>& clicks, double period) {
    Intervals intervals;
    for (std::size_t i = 1; i < clicks.size(); ++i) {
        const double due = dueInstant(clicks[i - 1]);
        const double dark = blocking_wait::endOf(due, period - kDarkSeconds);
        intervals.measured.push_back(clicks[i].arrival - clicks[i - 1].arrival);
        intervals.byWaits.push_back(dueInstant(clicks[i]) - due);
        intervals.unhindered.push_back(blocking_wait::endOf(dark, kDarkSeconds) - due);
    }
    return intervals;
}

double sum(const std::vector<double>& values) {
    return std::accumulate(values.begin(), values.end(), 0.0);
}

void reportDrift(const char* against, double drift, double whole) {
    std::printf("  drift against %-10s %+.3f ms = %+.5f %%\n", against, drift * 1e3,
                100 * drift / whole);
}

void report(const Intervals& intervals, double period, double processorShare) {
    const std::size_t count = intervals.measured.size();
    std::vector<double> sizes;
    std::size_t prolonged = 0;
    for (std::size_t i = 0; i < count; ++i) {
        sizes.push_back(std::abs(intervals.measured[i] - intervals.byWaits[i]) * 1e3);
        if (std::abs(intervals.byWaits[i] - intervals.unhindered[i]) > kClockNoise)
            ++prolonged;
    }
    std::printf("  period set %.3f ms, interval by the rule %.3f ms, measured median %.3f ms\n",
                period * 1e3, figures::quantile(intervals.unhindered, 0.5) * 1e3,
                figures::quantile(intervals.measured, 0.5) * 1e3);
    std::printf("  measured against its own waits: median %.4f ms, p99 %.4f ms, largest %.4f ms\n",
                figures::quantile(sizes, 0.5), figures::quantile(sizes, 0.99),
                figures::quantile(sizes, 1));
    std::printf("  intervals that a late start put a grain of the clock off: %zu of %zu\n",
                prolonged, count);
    const double measured = sum(intervals.measured);
    reportDrift("its waits", measured - sum(intervals.byWaits), measured);
    reportDrift("the rule", measured - sum(intervals.unhindered), measured);
    std::printf("  processor %.2f %% of one core\n", 100 * processorShare);
}

void run(int tempo, bool doubled, std::size_t pulses) {
    SilentMachine<TracingRuntime> machine;
    auto& [runtime, output, media, dialogs, funzioniMM] = machine;
    funzioniMM.MidiOpen(kMidiMapper);

    MetronomeState state;
    Host host;
    frmMetro frame(runtime, funzioniMM, state, host, &host);
    (new QVBoxLayout(&host))->addWidget(&frame);
    host.show();
    frame.mnuMetro_Click();
    frame.findChild<QScrollBar*>(QStringLiteral("MetroTempoS"))->setValue(tempo);
    if (doubled)
        frame.lblX12_Click();
    std::vector<Click> clicks;
    clicks.reserve(pulses + 2);
    const TracingRuntime& clock = machine.runtime;
    output.onArrival = [&](const ArrivalRecorder::Arrival& arrival) {
        if (!isNoteOn(arrival.message))
            return;
        clicks.push_back({figures::seconds(arrival.when.time_since_epoch()), clock.lastReading()});
        if (clicks.size() == pulses + 1)
            QMetaObject::invokeMethod(&frame, &frmMetro::cmdSSmetro_Click, Qt::QueuedConnection);
    };
    QCoreApplication::processEvents();

    std::printf("tempo %d x%d, %zu pulses\n", tempo, doubled ? 2 : 1, pulses);
    std::fflush(stdout);
    const figures::ProcessorShare share;
    frame.cmdSSmetro_Click();
    const double used = share.share();
    report(intervalsOf(clicks, state.MetroPeriod), state.MetroPeriod, used);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && !qEnvironmentVariableIsSet("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QtRuntime::chooseEventQueue();
    QApplication app(argc, argv);
    application::prepare(app);

    QCommandLineParser options;
    options.addHelpOption();
    const QCommandLineOption pulses({"n", "pulses"}, "Pulses at each tempo.", "count", "500");
    const QCommandLineOption quick({"q", "quick"}, "20 pulses at each tempo.");
    const QCommandLineOption fast({"f", "fast"}, "Only the fast tempo.");
    const QCommandLineOption busy({"b", "busy"}, "Keeps one core busy meanwhile.");
    options.addOptions({pulses, quick, fast, busy});
    options.process(app);

    const int count = options.isSet(quick) ? 20 : options.value(pulses).toInt();
    if (count < 1) {
        std::fputs("the count must be at least 1\n", stderr);
        return 1;
    }
    const BusyCores load(options.isSet(busy) ? 1 : 0);
    if (!options.isSet(fast))
        run(60, false, static_cast<std::size_t>(count));
    run(200, true, static_cast<std::size_t>(count));
    return 0;
}
