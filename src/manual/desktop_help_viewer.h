#pragma once

#include "platform/help_viewer.h"

#include <QStringList>

#include <functional>
#include <memory>

class Dialogs;
class Folders;
class HelpPages;
class HelpWindow;

/// Shows the manual: the compiled help file in the system's viewer for such files, or, where either
/// is missing, its pages in a window of the program's own, open at what the user is looking at.
class DesktopHelpViewer : public HelpViewer {
public:
    /// Opens a compiled help file; whether the system has a viewer for it.
    using SystemViewer = std::function<bool(const QString& file)>;

    /// The manual may stand in other folders than where the program expects its help file.
    DesktopHelpViewer(const Folders& folders, Dialogs& dialogs, SystemViewer systemViewer,
                      QStringList otherFolders);
    ~DesktopHelpViewer() override;

    void show(const QString& helpFile) override;

private:
    void showPages(const QString& folder);

    const Folders& folders_;
    Dialogs& dialogs_;
    SystemViewer systemViewer_;
    QStringList otherFolders_;
    std::unique_ptr<HelpWindow> window_;  ///< made when it is first asked for
};
