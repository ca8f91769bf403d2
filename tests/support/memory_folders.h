#pragma once

#include "platform/folders.h"

#include <QSet>

#include <map>
#include <memory>

/// Files and folders in memory, which do what those of the desktop do. Names differ in case;
/// sub-folders are enumerated in the order in which they were made, after "." and "..", files by
/// their code points. Links do not exist.
class MemoryFolders : public Folders {
public:
    FileError writeFailure;   ///< what every further write ends with, unless it is 0
    FileError readFailure;    ///< the same for reading
    QList<QByteArray> trash;  ///< what the files held that were discarded or replaced

    /// Puts a file there, with the folders above it.
    void put(const QString& path, const QByteArray& bytes = {});
    /// What the file holds, or a null array if there is none.
    QByteArray at(const QString& path) const;
    /// Has from now on the files of another object, as if that had written them here.
    void takeFiles(const MemoryFolders& other) { files_ = other.files_; }
    /// What stands there when the program is killed, without any claims.
    MemoryFolders afterCrash() const;
    /// Takes a folder away with everything in it, as another program would.
    void loseFolder(const QString& path);

    QString programFolder() const override { return QStringLiteral("C:\\Cantavista"); }
    bool fileExists(const QString& path) const override;
    QString nativePath(const QString& path) const override { return path; }
    bool folderExists(const QString& path) const override;
    QStringList subFolders(const QString& folder) const override;
    QStringList files(const QString& folder, const QString& pattern) const override;
    bool isInside(const QString& root, const QString& path) const override;
    QDateTime lastChanged(const QString& path) const override;
    Content readFile(const QString& path, qint64 atMost) const override;
    FileError writeFile(const QString& path, const QByteArray& bytes) override;
    FileError replaceFile(const QString& path, const QByteArray& bytes) override;
    Draft draftFile(const QString& path) override;
    FileError renameFile(const QString& from, const QString& to) override;
    FileError removeFile(const QString& path) override;
    FileError discardFile(const QString& path) override;
    FileError createFolder(const QString& path) override;
    FileError removeFolder(const QString& path) override;
    std::unique_ptr<FileClaim> claim(const QString& path) override;

private:
    struct File {
        QByteArray bytes;
        int changed = 0;  ///< the number of the write
    };

    FileError checkNew(const QString& key) const;

    std::map<QString, File> files_;  ///< by their path without "." and ".."
    QStringList folders_{QStringLiteral("A:"), QStringLiteral("C:/Cantavista")};
    std::shared_ptr<QSet<QString>> claimed_ = std::make_shared<QSet<QString>>();
};
