#pragma once

#include "platform/folders.h"

/// The program's folder and the user's files on a system with slashes in its paths.
///
/// The program folder is the one named by the environment variable CANTAVISTA_HOME, else the
/// executable's own if the note folder stands beside it (portable use), else the user's data
/// folder, filled at the first start from the installed read-only data.
class DesktopFolders : public Folders {
public:
    DesktopFolders();

    QString programFolder() const override { return programFolder_; }
    bool fileExists(const QString& path) const override;
    QString nativePath(const QString& path) const override;

private:
    QString programFolder_;
};
