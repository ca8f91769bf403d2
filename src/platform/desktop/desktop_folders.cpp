#include "platform/desktop/desktop_folders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

const QLatin1String kNoteFolder("/note");

/// Copies what is missing; a file that cannot be copied is met later as a missing file.
void fillFrom(const QString& installed, const QString& own) {
    if (!QDir().mkpath(own))
        return;
    const QStringList files = QDir(installed).entryList(QDir::Files);
    for (const QString& file : files) {
        const QString target = own + QLatin1Char('/') + file;
        if (!QFile::exists(target))
            QFile::copy(installed + QLatin1Char('/') + file, target);
    }
}

QString findProgramFolder() {
    const QString named = qEnvironmentVariable("CANTAVISTA_HOME");
    if (!named.isEmpty())
        return QDir(named).absolutePath();

    const QString executable = QCoreApplication::applicationDirPath();
    if (QFileInfo(executable + kNoteFolder).isDir())
        return executable;

    const QString own = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    fillFrom(executable + QLatin1String("/../share/cantavista") + kNoteFolder, own + kNoteFolder);
    return own;
}

}  // namespace

DesktopFolders::DesktopFolders()
    : programFolder_(findProgramFolder().replace(QLatin1Char('/'), QLatin1Char('\\'))) {}

bool DesktopFolders::fileExists(const QString& path) const {
    return QFileInfo(nativePath(path)).isFile();
}

QString DesktopFolders::nativePath(const QString& path) const {
    return QString(path).replace(QLatin1Char('\\'), QLatin1Char('/'));
}
