#include "platform/desktop/program_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace program_folder {
namespace {

const QLatin1String kNoteFolder("/note");
const QLatin1String kMelodyFolder("/Melodie");
const QLatin1String kInstalledData("/../share/cantavista");

/// Copies what is missing; a file that cannot be copied is met later as a missing file.
void fillFrom(const QString& installed, const QString& own) {
    if (!QDir().mkpath(own))
        return;
    QDirIterator files(installed, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString source = files.next();
        const QString target = own + source.mid(installed.size());
        if (QFile::exists(target) || !QDir().mkpath(QFileInfo(target).path()))
            continue;
        if (QFile::copy(source, target)) {
            // What was installed may be read-only; the copy is the user's.
            QFile(target).setPermissions(QFile(target).permissions() | QFileDevice::WriteOwner);
        }
    }
}

/// A folder that came with the program: beside the executable, or installed.
QString ofTheProgram(QLatin1String folder) {
    const QString executable = QCoreApplication::applicationDirPath();
    const QString beside = executable + folder;
    return QFileInfo(beside).isDir() ? beside : executable + kInstalledData + folder;
}

}  // namespace

QString find() {
    const QString named = qEnvironmentVariable("CANTAVISTA_HOME");
    if (!named.isEmpty()) {
        QString own = QDir(named).absolutePath();
        if (!QFileInfo::exists(own + kNoteFolder))
            fillFrom(ofTheProgram(kNoteFolder), own + kNoteFolder);
        return own;
    }

    QString executable = QCoreApplication::applicationDirPath();
    if (QFileInfo(executable + kNoteFolder).isDir())
        return executable;

    QString own = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    fillFrom(executable + kInstalledData + kNoteFolder, own + kNoteFolder);
    return own;
}

void prepareMelodies(const QString& programFolder) {
    const QString folder = programFolder + kMelodyFolder;
    if (QFileInfo::exists(folder) || !QDir().mkpath(programFolder))
        return;
    const QTemporaryDir unfinished(programFolder + QLatin1String("/Melodie-"));
    if (!unfinished.isValid())
        return;
    const QString made = unfinished.filePath(QStringLiteral("Melodie"));
    fillFrom(ofTheProgram(kMelodyFolder), made);
    QDir().rename(made, folder);
}

}  // namespace program_folder
