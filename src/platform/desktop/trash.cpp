#include "platform/desktop/trash.h"

#include "platform/system_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace trash {

std::optional<QString> take(const QString& path) {
    QString inTrash;
    if (system_files::hasTrash() && QFile::moveToTrash(path, &inTrash))
        return inTrash;
    return std::nullopt;
}

/// Beside what lies in the trash there may be a note of where it came from.
bool giveBack(const QString& inTrash, const QString& path) {
    if (inTrash.isEmpty() || !QDir().rename(inTrash, path))
        return false;
    const QFileInfo place(inTrash);
    const QString note = QStringLiteral("/../info/%1.trashinfo").arg(place.fileName());
    QFile::remove(place.path() + note);
    return true;
}

}  // namespace trash
