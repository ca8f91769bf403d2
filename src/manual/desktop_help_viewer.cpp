#include "manual/desktop_help_viewer.h"

#include "manual/help_files.h"
#include "manual/help_window.h"
#include "platform/dialogs.h"
#include "platform/folders.h"
#include "platform/user_text.h"

#include <QApplication>
#include <QVariant>

#include <utility>

namespace {

/// The page about what has the focus: the innermost frame or window that has one. A window with
/// several topics says which by its context number.
QString pageInContext(const HelpPages& pages) {
    const QWidget* widget = QApplication::focusWidget();
    if (!widget)
        widget = QApplication::activeWindow();
    if (!widget)
        widget = QApplication::activeModalWidget();
    for (; widget; widget = widget->parentWidget()) {
        const QString name = widget->objectName();
        const QVariant number = widget->property("contextNumber");
        QString page;
        if (number.isValid())
            page = pages.pageOf(QStringLiteral("%1-%2").arg(name).arg(number.toInt()));
        if (page.isEmpty())
            page = pages.pageOf(name);
        if (!page.isEmpty())
            return page;
    }
    return {};
}

}  // namespace

DesktopHelpViewer::DesktopHelpViewer(const Folders& folders, Dialogs& dialogs,
                                     SystemViewer systemViewer, QStringList otherFolders)
    : folders_(folders),
      dialogs_(dialogs),
      systemViewer_(std::move(systemViewer)),
      otherFolders_(std::move(otherFolders)) {}

DesktopHelpViewer::~DesktopHelpViewer() = default;

void DesktopHelpViewer::show(const QString& helpFile) {
    const QString wanted = folders_.nativePath(helpFile);
    const HelpFiles found = findHelp(wanted, otherFolders_);
    if (!found.compiled.isEmpty() && systemViewer_(found.compiled))
        return;
    if (!found.pages.isEmpty())
        showPages(found.pages);
    else if (found.compiled.isEmpty())
        dialogs_.message(UserText::tr("File della guida non trovato !!!\n%1").arg(wanted));
    else
        dialogs_.message(
            UserText::tr("Nessun programma può aprire la guida !!!\n%1").arg(found.compiled));
}

void DesktopHelpViewer::showPages(const QString& folder) {
    if (!window_)
        window_ = std::make_unique<HelpWindow>(folder);
    const bool readsIt = window_->isActiveWindow();
    window_->showPage(readsIt ? QString() : pageInContext(window_->pages()));
}
