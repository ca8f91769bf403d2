#include "composer/library/melody_names.h"

#include "platform/folders.h"
#include "platform/user_text.h"

#include <algorithm>

namespace melody_names {
namespace {

const QLatin1String kFolder("\\Melodie\\");
const QLatin1String kFolderInAnyCase("melodie");
const QLatin1String kExtension(".mel");
/// In any name. A bookmark may have a "-", a melody or a folder may not.
constexpr QStringView kForbidden(u",.;:|\\/!%&()='^+*°§<>");
constexpr QLatin1Char kForbiddenInFiles('-');

}  // namespace

QString rootOf(const QString& programFolder) {
    return programFolder + kFolder;
}

QString pathLabel(const QString& folder) {
    const qsizetype from = folder.indexOf(kFolderInAnyCase, 0, Qt::CaseInsensitive);
    return QLatin1String("..\\") + folder.mid(std::max<qsizetype>(from, 0));
}

QString fileName(const QString& melody) {
    return melody + kExtension;
}

QString melodyName(const QString& fileName) {
    return fileName.left(fileName.lastIndexOf(QLatin1Char('.')));
}

QString lastPart(const QString& name) {
    return name.mid(std::max(name.lastIndexOf(kBackslash), name.lastIndexOf(QLatin1Char('/'))) + 1);
}

bool isForbiddenForFile(QStringView name) {
    return name.contains(kForbiddenInFiles) || isForbiddenForBookmark(name);
}

bool isForbiddenForBookmark(QStringView name) {
    return std::any_of(name.begin(), name.end(), [](QChar c) { return kForbidden.contains(c); });
}

QString composed(const QString& name) {
    return name.normalized(QString::NormalizationForm_C);
}

QString failureText(const FileError& error) {
    return UserText::tr("Errore: %1\n\n").arg(error.number) + error.text;
}

QString invalidName() {
    return UserText::tr("Nome non valido !!!");
}

QString unknownCharacter() {
    return UserText::tr("Nome con carattere non consentito !!!");
}

}  // namespace melody_names
