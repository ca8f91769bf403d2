#include "core/funzioni_mm.h"
#include "core/services.h"
#include "platform/desktop/desktop_folders.h"
#include "platform/desktop/desktop_help_viewer.h"
#include "platform/desktop/qt_dialogs.h"
#include "platform/desktop/qt_runtime.h"
#include "platform/sound.h"
#include "shell/application.h"
#include "shell/main_window.h"

#include <QApplication>

#include <memory>
#include <random>

namespace {

/// Uniform numbers in [0, 1) with the 24 bits that single precision holds.
Random randomNumbers() {
    return [engine = std::mt19937(std::random_device{}())]() mutable {
        return static_cast<float>(engine() >> 8) * 0x1p-24F;
    };
}

}  // namespace

int main(int argc, char* argv[]) {
    QtRuntime::chooseEventQueue();
    QApplication app(argc, argv);
    application::prepare(app);

    DesktopFolders folders;
    const std::unique_ptr<Sound> sound = openSound(folders);
    QtRuntime runtime;
    QtDialogs dialogs;
    DesktopHelpViewer help(folders, dialogs);
    FunzioniMM funzioniMM(runtime, sound->midiOut(), sound->media(), dialogs, randomNumbers());

    MainWindow window({runtime, sound->midiOut(), dialogs, folders, help, funzioniMM});
    window.show();
    return QApplication::exec();
}
