// From a key press in the reading drill to the note-on that confirms the answer.
//
//   key_bench [presses, 500]

#include "core/funzioni_mm.h"
#include "core/services.h"
#include "figures.h"
#include "platform/desktop/desktop_folders.h"
#include "platform/desktop/qt_runtime.h"
#include "shell/application.h"
#include "shell/main_window.h"
#include "silent_machine.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QWindow>

#include <cstdlib>

int main(int argc, char* argv[]) {
    QtRuntime::chooseEventQueue();
    QApplication app(argc, argv);
    application::prepare(app);
    const int presses = argc > 1 ? std::atoi(argv[1]) : 500;

    DesktopFolders folders;
    // The first step of the first difficulty item, a Si, again and again.
    SilentMachine machine;
    auto& [runtime, midi, media, dialogs, funzioniMM] = machine;
    NoHelp help;
    MainWindow window({runtime, midi, dialogs, folders, help, funzioniMM});
    window.show();
    const Instant started = runtime.now() + std::chrono::seconds(3);
    while (runtime.now() < started)
        runtime.pump(started);
    window.findChild<QAction*>(QStringLiteral("Suono2"))->trigger();
    window.findChild<QPushButton*>(QStringLiteral("Start"))->click();

    std::vector<double> latency;
    for (int i = 0; i < presses; ++i) {
        const Instant next = runtime.now() + std::chrono::milliseconds(5);
        while (runtime.now() < next)
            runtime.pump(next);
        midi.arrivals.clear();
        const auto pressed = figures::Clock::now();
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
            QCoreApplication::postEvent(
                window.windowHandle(),
                new QKeyEvent(type, Qt::Key_H, Qt::NoModifier, QStringLiteral("h")));
        runtime.pump(kForever);
        if (midi.arrivals.size() < 2)
            return EXIT_FAILURE;
        latency.push_back(figures::seconds(midi.arrivals[1].when - pressed));
    }
    figures::print("key press to note-on", latency, 1e-3, "ms");
    return EXIT_SUCCESS;
}
