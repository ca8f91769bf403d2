// How late a blocking wait ends, against the instant that its own rule names, and what it costs.
//
//   wait_bench [waits of each length, 200]

#include "figures.h"
#include "silent_machine.h"

#include <QApplication>

#include <cstdlib>

namespace {

/// A runtime that remembers the instant at which its last wait should have ended.
class ObservedRuntime : public QtRuntime {
public:
    Instant intendedEnd{};

    void blockUntil(Instant end) override {
        intendedEnd = end;
        QtRuntime::blockUntil(end);
    }
};

}  // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QtRuntime::chooseEventQueue();
    QApplication app(argc, argv);
    const int waits = argc > 1 ? std::atoi(argv[1]) : 200;

    SilentMachine<ObservedRuntime> machine;
    const ObservedRuntime& runtime = machine.runtime;
    for (const double length : {0.05, 0.1, 0.9}) {
        std::vector<double> lateness;
        const figures::ProcessorShare share;
        for (int i = 0; i < waits; ++i) {
            machine.funzioniMM.WaitSeconds(length);
            lateness.push_back(
                std::chrono::duration<double>(runtime.now() - runtime.intendedEnd).count());
        }
        const double used = share.share();
        char what[64];
        std::snprintf(what, sizeof what, "wait of %.2f s, %.2f %% of a core", length, 100 * used);
        figures::print(what, lateness, 1e-3, "ms late");
    }
    return 0;
}
