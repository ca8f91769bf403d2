#include "platform/desktop/leftovers.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryFile>

namespace leftovers {
namespace {

const QLatin1String kRecordPrefix("Esportazione-");
const QLatin1String kMelodyFolder("/Melodie");
constexpr qint64 kLongestPath = 32 * 1024;

bool isOld(const QFileInfo& file) {
    return file.lastModified() < QDateTime::currentDateTime().addDays(-1);
}

/// Six letters, as the toolkit chooses them.
bool isTemporary(const QString& name, const QString& target) {
    static const QRegularExpression letters(QStringLiteral("^\\.[A-Za-z]{6}$"));
    return name.startsWith(target) && letters.match(name.mid(target.size())).hasMatch();
}

bool isTemporaryMelody(const QString& name) {
    static const QRegularExpression pattern(QStringLiteral("\\.mel\\.[A-Za-z]{6}$"),
                                            QRegularExpression::CaseInsensitiveOption);
    return pattern.match(name).hasMatch();
}

QFileInfoList filesOf(const QString& folder) {
    return QDir(folder).entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks);
}

}  // namespace

bool removeOf(const QString& target) {
    const QFileInfo written(target);
    bool noneLeft = true;
    for (const QFileInfo& file : filesOf(written.path())) {
        if (isTemporary(file.fileName(), written.fileName()))
            noneLeft = isOld(file) && QFile::remove(file.filePath()) && noneLeft;
    }
    return noneLeft;
}

void removeMelodiesOf(const QString& folder) {
    for (const QFileInfo& file : filesOf(folder)) {
        if (isTemporaryMelody(file.fileName()))
            QFile::remove(file.filePath());
    }
}

void removeMelodiesBelow(const QString& programFolder) {
    QFileInfoList found = filesOf(programFolder);
    QDirIterator below(programFolder + kMelodyFolder, QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                       QDirIterator::Subdirectories);
    while (below.hasNext()) {
        below.next();
        if (isTemporaryMelody(below.fileName()))
            found << below.fileInfo();
    }
    for (const QFileInfo& file : found) {
        if (isTemporaryMelody(file.fileName()) && isOld(file))
            QFile::remove(file.filePath());
    }
    const QFileInfoList unfinished =
        QDir(programFolder)
            .entryInfoList({QStringLiteral("Melodie-??????")}, QDir::Dirs | QDir::NoSymLinks);
    for (const QFileInfo& folder : unfinished) {
        if (isOld(folder))
            QDir(folder.filePath()).removeRecursively();
    }
}

WriteRecord::WriteRecord(const QString& programFolder, const QString& target) {
    if (programFolder.isEmpty())
        return;
    QTemporaryFile file(programFolder + QLatin1Char('/') + kRecordPrefix + QLatin1String("XXXXXX"));
    if (!file.open() || file.write(target.toUtf8()) < 0)
        return;
    file.setAutoRemove(false);
    file_ = file.fileName();
}

WriteRecord::~WriteRecord() {
    if (!file_.isEmpty())
        QFile::remove(file_);
}

/// A recent record may be that of an export that another program is writing now.
void removeRecorded(const QString& programFolder) {
    if (programFolder.isEmpty())
        return;
    const QFileInfoList records = QDir(programFolder)
                                      .entryInfoList({kRecordPrefix + QLatin1String("??????")},
                                                     QDir::Files | QDir::NoSymLinks);
    for (const QFileInfo& record : records) {
        QFile file(record.filePath());
        if (!isOld(record) || !file.open(QIODevice::ReadOnly))
            continue;
        if (removeOf(QString::fromUtf8(file.read(kLongestPath))))
            file.remove();
    }
}

}  // namespace leftovers
