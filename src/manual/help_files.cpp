#include "manual/help_files.h"

#include <QCoreApplication>
#include <QFileInfo>

HelpFiles findHelp(const QString& helpFile, const QStringList& otherFolders) {
    const QFileInfo wanted(helpFile);
    HelpFiles found;
    for (const QString& folder : QStringList(wanted.path()) + otherFolders) {
        const QString compiled = folder + QLatin1Char('/') + wanted.fileName();
        if (found.compiled.isEmpty() && QFileInfo(compiled).isFile())
            found.compiled = QFileInfo(compiled).canonicalFilePath();
        const QString pages = folder + QLatin1String("/aiuto");
        if (found.pages.isEmpty() && QFileInfo(pages + QLatin1String("/contenuti.txt")).isFile())
            found.pages = QFileInfo(pages).canonicalFilePath();
    }
    return found;
}

QStringList installedHelpFolders() {
    const QString executable = QCoreApplication::applicationDirPath();
    return {executable, executable + QLatin1String("/../share/cantavista")};
}
