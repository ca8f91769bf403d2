#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

/// Zip archives of a few small files: of the format's methods only "stored" and "deflated", no
/// encryption, no archive above 4 GiB. zlib does the compression; the container around it is small
/// enough to need no library, and Windows' build has no other.
namespace zip_archive {

struct File {
    QString name;
    QByteArray bytes;
};

QByteArray write(const std::vector<File>& files);

/// The files whose names end so, in either case, or nothing if the archive is damaged, encrypted or
/// packed by another method. Together they must not take more than `atMost` bytes.
std::optional<std::vector<File>> read(const QByteArray& archive,
                                      const std::vector<QString>& endings, qint64 atMost);

/// Whether bytes begin as an archive does.
bool isArchive(const QByteArray& bytes);

}  // namespace zip_archive
