#pragma once

#include "platform/help_viewer.h"

class Dialogs;
class Folders;

/// Hands the help file to the desktop's viewer for such files.
class DesktopHelpViewer : public HelpViewer {
public:
    DesktopHelpViewer(const Folders& folders, Dialogs& dialogs)
        : folders_(folders), dialogs_(dialogs) {}

    void show(const QString& helpFile) override;

private:
    const Folders& folders_;
    Dialogs& dialogs_;
};
