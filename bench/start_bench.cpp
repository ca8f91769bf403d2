// The whole program's start, memory and idle cost.
//
//   start_bench [--quick] [starts, 10]
//
// It starts itself again and again; each child is the program with all its real parts and tells
// when its main window was first painted. The last child lives on to tell its memory and what it
// costs to do nothing.
//
// Then the program itself and, where they are installed, other musical programs are started in turn
// and watched from outside: when a window is on the screen that shows something, and the memory
// three seconds later.

#include "core/funzioni_mm.h"
#include "core/services.h"
#include "figures.h"
#include "platform/desktop/desktop_folders.h"
#include "platform/desktop/qt_runtime.h"
#include "platform/linux/linux_sound.h"
#include "shell/application.h"
#include "shell/main_window.h"
#include "silent_machine.h"
#include "window_watch.h"

#include <QApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr auto kSettled = 12s;
constexpr auto kIdle = 10s;
constexpr auto kSettledInAHurry = 7s;
constexpr auto kIdleInAHurry = 3s;
constexpr auto kMemoryAfter = 3s;
constexpr const char* kHurried = "START_BENCH_HURRIED";  ///< set for the children

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

double proportionalMebibytes(const std::string& process = "self") {
    std::ifstream rollup("/proc/" + process + "/smaps_rollup");
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
    const bool hurried = qEnvironmentVariableIsSet(kHurried);
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
        QTimer::singleShot(hurried ? kSettledInAHurry : kSettled, &app, [&app, hurried] {
            const auto share = std::make_shared<figures::ProcessorShare>();
            QTimer::singleShot(hurried ? kIdleInAHurry : kIdle, &app, [share] {
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

struct Watched {
    QString program;
    std::vector<double> times;
    double mebibytes = 0;
};

/// Starts a program with settings of its own and ends it. Its memory is measured if it is asked
/// for.
void watch(Watched& watched, bool memory) {
    const QTemporaryDir home;
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home.path());
    environment.insert(QStringLiteral("CANTAVISTA_HOME"), home.path());
    program.setProcessEnvironment(environment);
    WindowWatch watch;
    if (!watch.works())
        return;
    const double begin = figures::seconds(figures::Clock::now().time_since_epoch());
    program.start(watched.program, QStringList());
    if (const auto painted = watch.painted())
        watched.times.push_back(*painted - begin);
    if (memory) {
        std::this_thread::sleep_for(kMemoryAfter);
        watched.mebibytes = proportionalMebibytes(std::to_string(program.processId()));
    }
    program.kill();
    program.waitForFinished();
}

void watchAll(int starts) {
    std::vector<Watched> all{{QCoreApplication::applicationDirPath() + "/cantavista", {}, 0}};
    for (const char* name : {"vmpk", "kmetronome", "gtick"})
        if (const QString path = QStandardPaths::findExecutable(QLatin1String(name));
            !path.isEmpty())
            all.push_back({path, {}, 0});
    for (int i = 0; i <= starts; ++i) {
        for (Watched& watched : all) {
            watch(watched, i == starts);
            if (i == 0)
                watched.times.clear();  // from now on its files are in memory
        }
    }
    for (const Watched& watched : all) {
        const std::string what =
            "start of " + watched.program.section('/', -1).toStdString() + " as seen on the screen";
        figures::print(what.c_str(), watched.times, 1e-3, "ms");
        std::printf("%-44s %.1f MiB proportional\n", "", watched.mebibytes);
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc > 3 && std::string(argv[1]) == "--child") {
        QtRuntime::chooseEventQueue();
        QApplication app(argc, argv);
        return runChild(app, std::atoll(argv[2]), argv[3][0] == '1');
    }
    const QCoreApplication app(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.removeAll(QStringLiteral("--quick")) > 0)
        qputenv(kHurried, "1");
    const int starts = arguments.isEmpty() ? 10 : arguments.front().toInt();
    std::vector<double> times;
    start(false);
    for (int i = 0; i < starts; ++i)
        times.push_back(std::atof(start(false).c_str()));
    figures::print("start of the process to first painted window", times, 1e-3, "ms");
    std::printf("%s", start(true).c_str());
    watchAll(starts);
    return EXIT_SUCCESS;
}
