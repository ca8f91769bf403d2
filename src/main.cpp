#include "command/command_line.h"
#include "command/commands.h"
#include "composer/export/sheet_request.h"
#include "composer/melody_sheet.h"
#include "core/funzioni_mm.h"
#include "core/midi_keyboard.h"
#include "core/services.h"
#include "manual/desktop_help_viewer.h"
#include "manual/help_files.h"
#include "platform/chm_viewer.h"
#include "platform/desktop/desktop_folders.h"
#include "platform/desktop/qt_dialogs.h"
#include "platform/desktop/qt_printing.h"
#include "platform/desktop/qt_runtime.h"
#include "platform/sound.h"
#include "platform/user_text.h"
#include "shell/application.h"
#include "shell/main_window.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>

namespace {

/// Uniform numbers in [0, 1) with the 24 bits that single precision holds.
Random randomNumbers() {
    return [engine = std::mt19937(std::random_device{}())]() mutable {
        return static_cast<float>(engine() >> 8) * 0x1p-24F;
    };
}

QStringList argumentsOf(int argc, char* argv[]) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

/// What a command needs of the toolkit: sheet music has fonts, but no display.
std::unique_ptr<QCoreApplication> commandApplication(int& argc, char* argv[]) {
    const CommandLine::Action action = CommandLine::parse(argumentsOf(argc, argv)).action;
    if (action != CommandLine::Action::ExportPdf && action != CommandLine::Action::ExportSystem)
        return std::make_unique<QCoreApplication>(argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen;windows");
    return std::make_unique<QGuiApplication>(argc, argv);
}

/// Without a window, a display or the program's own folder.
int runCommand(int argc, char* argv[]) {
    // A command's messages are its own: the toolkit may find fault with a plain terminal's locale.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const std::unique_ptr<QCoreApplication> app = commandApplication(argc, argv);
    application::translate(*app);
    DesktopFolders folders(DesktopFolders::ProgramFolder::Unused);
    const std::unique_ptr<Sound> sound = openSound(folders);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return commands::run(CommandLine::parse(QCoreApplication::arguments()),
                         {folders, *sound, out, err, sheetFileOf});
}

/// Where no display answers the toolkit gives up: the last word is the program's own.
void tellFatal(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    std::fprintf(stderr, "%s\n", qPrintable(text));
    if (type == QtFatalMsg) {
        std::fprintf(
            stderr, "%s\n",
            qPrintable(UserText::tr("Cantavista non trova uno schermo su cui aprirsi !!!")));
        std::_Exit(EXIT_FAILURE);
    }
}

/// The melody that the program was opened with, as the program writes paths.
QString melodyAtStart() {
    QStringList files = QCoreApplication::arguments().mid(1);
    files.removeAll(QStringLiteral("--"));
    if (files.isEmpty())
        return {};
    const QString path = QDir::cleanPath(QFileInfo(files.front()).absoluteFilePath());
    return QString(path).replace(u'/', u'\\');
}

}  // namespace

int main(int argc, char* argv[]) {
    if (CommandLine::isCommand(argumentsOf(argc, argv)))
        return runCommand(argc, argv);
    QtRuntime::chooseEventQueue();
    const QtMessageHandler usual = qInstallMessageHandler(tellFatal);
    QApplication app(argc, argv);
    qInstallMessageHandler(usual);
    application::prepare(app);

    DesktopFolders folders;
    QtRuntime runtime;
    const std::unique_ptr<Sound> sound = openSound(folders, &runtime);
    QtDialogs dialogs(runtime, runtime.heldInput());
    DesktopHelpViewer help(folders, dialogs, openChm, installedHelpFolders());
    FunzioniMM funzioniMM(runtime, sound->midiOut(), sound->media(), dialogs, randomNumbers());

    MidiKeyboard midiKeyboard(runtime, sound->midiIn());

    QtPrinting printing(runtime, runtime.heldInput());
    MainWindow window({runtime, sound->midiOut(), dialogs, folders, help, funzioniMM,
                       sound->waveRenderer(), &midiKeyboard, &printing});
    window.openMelodyAtStart(melodyAtStart());
    window.show();
    return QApplication::exec();
}
