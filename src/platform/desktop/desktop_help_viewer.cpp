#include "platform/desktop/desktop_help_viewer.h"

#include "platform/dialogs.h"
#include "platform/folders.h"

#include <QDesktopServices>
#include <QUrl>

void DesktopHelpViewer::show(const QString& helpFile) {
    if (!folders_.fileExists(helpFile)) {
        dialogs_.message(QStringLiteral("File della guida non trovato !!!\n%1")
                             .arg(folders_.nativePath(helpFile)));
        return;
    }
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folders_.nativePath(helpFile))))
        dialogs_.message(
            QStringLiteral("Nessun programma può aprire la guida !!!\n%1").arg(helpFile));
}
