#pragma once

#include "platform/desktop/atomic_file.h"
#include "platform/folders.h"

/// The program's folder and the user's files.
///
/// The program folder is the one named by the environment variable CANTAVISTA_HOME, else the
/// executable's own if the note folder stands beside it (portable use), else the user's data
/// folder. The first and the last are filled at the first start from what comes with the program. A
/// program folder without a folder of melodies gets one, with the examples; whoever deletes the
/// examples is rid of them.
///
/// Drive A: is the folder named by CANTAVISTA_DRIVE_A, else the system's exchange medium. It is
/// looked for at every use.
class DesktopFolders : public Folders {
public:
    /// Work on other files alone leaves no traces in the program folder, which then is empty.
    enum class ProgramFolder { Prepared, Unused };

    explicit DesktopFolders(ProgramFolder use = ProgramFolder::Prepared);

    QString programFolder() const override { return programFolder_; }
    bool fileExists(const QString& path) const override;
    /// The empty text if the path is on a drive without a medium.
    QString nativePath(const QString& path) const override;

    bool folderExists(const QString& path) const override;
    /// "." and ".." first, then by name.
    QStringList subFolders(const QString& folder) const override;
    QStringList files(const QString& folder, const QString& pattern) const override;
    bool isInside(const QString& root, const QString& path) const override;

    QDateTime lastChanged(const QString& path) const override;
    Content readFile(const QString& path, qint64 atMost) const override;
    FileError writeFile(const QString& path, const QByteArray& bytes) override;
    std::future<FileError> writeInBackground(const QString& path, const QByteArray& bytes) override;
    FileError replaceFile(const QString& path, const QByteArray& bytes) override;
    Draft draftFile(const QString& path) override;
    FileError renameFile(const QString& from, const QString& to) override;
    FileError removeFile(const QString& path) override;
    FileError discardFile(const QString& path) override;
    FileError createFolder(const QString& path) override;
    FileError removeFolder(const QString& path) override;
    FileError discardFolder(const QString& path) override;
    std::unique_ptr<FileClaim> claim(const QString& path) override;

private:
    FileError write(const QString& path, const QByteArray& bytes, atomic_file::Old old) const;

    QString programFolder_;
};
