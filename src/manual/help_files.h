#pragma once

#include <QString>
#include <QStringList>

/// Where the manual stands, in the system's own paths; what is not there is empty.
struct HelpFiles {
    QString compiled;  ///< the compiled help file
    QString pages;     ///< the folder of its pages
};

/// Looks where the help file should stand, then in the other folders, in their order.
HelpFiles findHelp(const QString& helpFile, const QStringList& otherFolders);

/// Beside the executable, and in the data that was installed with it. The manual is read where it
/// is: a copy in the user's folder would become outdated.
QStringList installedHelpFolders();
