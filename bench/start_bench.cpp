// The whole program's start, memory and idle cost.
//
//   start_bench [starts, 10]
//
// It starts itself again and again; each child is the program with all its real parts and tells
// when its main window was first painted. The last child lives on to tell its memory and what it
// costs to do nothing.

#include "core/funzioni_mm.h"
#include "core/services.h"
#include "figures.h"
#include "platform/desktop/desktop_folders.h"
#include "platform/desktop/qt_runtime.h"
#include "platform/linux/linux_sound.h"
#include "shell/application.h"
#include "shell/main_window.h"
#include "silent_machine.h"

#include <QApplication>
#include <QProcess>
#include <QTimer>

#include <cstdlib>
#include <fstream>
#include <string>

namespace {

using namespace std::chrono_literals;

constexpr auto kSettled = 12s;
constexpr auto kIdle = 10s;

/// Prints the time since the parent started this process when the window is first painted.
class FirstPaint : public QObject {
public:
    FirstPaint(QWidget& window, std::int64_t startedAt, bool thenQuit)
        : window_(window), startedAt_(startedAt), thenQuit_(thenQuit) {
        window.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* target, QEvent* event) override {
        if (target == &window_ && event->type() == QEvent::Paint && !painted_) {
            painted_ = true;
            QTimer::singleShot(0, this, [this] { report(); });
        }
        return false;
    }

private:
    void report() {
        const auto now = figures::Clock::now().time_since_epoch();
        std::printf("%.6f\n", static_cast<double>(now.count() - startedAt_) * 1e-9);
        std::fflush(stdout);
        if (thenQuit_)
            std::_Exit(EXIT_SUCCESS);
    }

    QWidget& window_;
    std::int64_t startedAt_;
    bool thenQuit_;
    bool painted_ = false;
};

double proportionalMebibytes() {
    std::ifstream rollup("/proc/self/smaps_rollup");
    std::string field;
    while (rollup >> field) {
        if (field == "Pss:") {
            double kibibytes = 0;
            rollup >> kibibytes;
            return kibibytes / 1024;
        }
    }
    return 0;
}

int runChild(QApplication& app, std::int64_t startedAt, bool last) {
    application::prepare(app);
    DesktopFolders folders;
    LinuxSound sound(folders);
    QtRuntime runtime;
    NoDialogs dialogs;
    NoHelp help;
    FunzioniMM funzioniMM(runtime, sound.midiOut(), sound.media(), dialogs, [] { return 0.0F; });
    MainWindow window({runtime, sound.midiOut(), dialogs, folders, help, funzioniMM});
    const FirstPaint firstPaint(window, startedAt, !last);
    window.show();
    if (last) {
        QTimer::singleShot(kSettled, &app, [&app] {
            const auto share = std::make_shared<figures::ProcessorShare>();
            QTimer::singleShot(kIdle, &app, [share] {
                std::printf("idle %.3f\nmemory %.1f\n", 100 * share->share(),
                            proportionalMebibytes());
                std::fflush(stdout);
                std::_Exit(EXIT_SUCCESS);
            });
        });
    }
    return QApplication::exec();
}

std::string start(bool last) {
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const auto now = figures::Clock::now().time_since_epoch().count();
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--child"), QString::number(now), QString::number(last ? 1 : 0)});
    child.waitForFinished(60000);
    return child.readAllStandardOutput().toStdString();
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc > 3 && std::string(argv[1]) == "--child") {
        QtRuntime::chooseEventQueue();
        QApplication app(argc, argv);
        return runChild(app, std::atoll(argv[2]), argv[3][0] == '1');
    }
    const QCoreApplication app(argc, argv);
    const int starts = argc > 1 ? std::atoi(argv[1]) : 10;
    std::vector<double> times;
    start(false);
    for (int i = 0; i < starts; ++i)
        times.push_back(std::atof(start(false).c_str()));
    figures::print("start of the process to first painted window", times, 1e-3, "ms");
    std::printf("%s", start(true).c_str());
    return EXIT_SUCCESS;
}
