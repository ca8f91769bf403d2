#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <future>
#include <memory>

/// Why a file operation failed: a number that the user may look up, and the platform's description
/// of it in the user's language. 0 is success.
struct FileError {
    int number = 0;
    QString text;

    bool failed() const { return number != 0; }
};

/// The numbers of the errors, which are the same on every platform.
namespace file_error {

constexpr int kBadName = 52;        ///< the file system cannot carry the name
constexpr int kNotFound = 53;       ///< no such file
constexpr int kDeviceFault = 57;    ///< reading or writing broke off, or gave back something else
constexpr int kAlreadyExists = 58;  ///< a file or folder of that name stands there
constexpr int kDiskFull = 61;
constexpr int kTooManyFiles = 67;    ///< the process has no file left to open
constexpr int kWriteProtected = 70;  ///< the medium can only be read
constexpr int kNotReady = 71;        ///< no medium in the drive
constexpr int kNoAccess = 75;        ///< this user may not, or a folder stands in the file's place
constexpr int kPathNotFound = 76;    ///< no such folder

}  // namespace file_error

/// A file in the making, too large to be held in memory. It stands in its place whole, once it is
/// finished, or never: destroying it earlier leaves there what stood there before.
class FileDraft {
public:
    virtual ~FileDraft() = default;

    virtual FileError append(const QByteArray& bytes) = 0;

    /// Writes over bytes that were appended.
    virtual FileError amend(qint64 position, const QByteArray& bytes) = 0;

    virtual FileError finish() = 0;
};

/// A file that one running program at a time has to itself. Destroying it gives the file free, and
/// so does the end of the program, even if it is killed.
class FileClaim {
public:
    virtual ~FileClaim() = default;
};

/// Files and folders. Paths are written with backslashes everywhere in the program and are joined
/// by plain concatenation; only the platform turns them into the system's own. The drive of the
/// exchange medium is written "a:\", in either case.
///
/// A platform implements what it has. Where it has no files of the user's, listings are empty and
/// operations end with `kPathNotFound`.
class Folders {
public:
    virtual ~Folders() = default;

    /// What a file holds, or why it cannot be told.
    struct Content {
        FileError error;
        QByteArray bytes;
    };

    /// A file that was begun, or why it could not be.
    struct Draft {
        FileError error;
        std::unique_ptr<FileDraft> file;
    };

    /// The folder in which the program's files stand, without a backslash at its end.
    virtual QString programFolder() const = 0;

    /// Whether a plain file stands there.
    virtual bool fileExists(const QString& path) const = 0;

    /// The system's own form of a path, for the platform's libraries.
    virtual QString nativePath(const QString& path) const = 0;

    virtual bool folderExists(const QString& /*path*/) const { return false; }

    /// The names of the sub-folders as the system enumerates them, with its own "." and "..".
    virtual QStringList subFolders(const QString& /*folder*/) const { return {}; }

    /// The names of the plain files that match a pattern such as "*.mel", in either case, as the
    /// system enumerates them. An unreadable folder has none.
    virtual QStringList files(const QString& /*folder*/, const QString& /*pattern*/) const {
        return {};
    }

    /// Whether a path lies in the tree below a folder once "..", "." and links are followed. The
    /// path itself need not exist.
    virtual bool isInside(const QString& /*root*/, const QString& /*path*/) const { return false; }

    /// When a file was written last.
    virtual QDateTime lastChanged(const QString& /*path*/) const { return {}; }

    /// Reads at most the given number of bytes.
    virtual Content readFile(const QString& /*path*/, qint64 /*atMost*/) const {
        return {noFiles(), {}};
    }

    /// Writes a file whole: whatever happens, the old file stands there or the new one.
    virtual FileError writeFile(const QString& /*path*/, const QByteArray& /*bytes*/) {
        return noFiles();
    }

    /// The same while the program goes on: the disk keeps no note waiting. The result comes when
    /// the file is written; destroying it waits for that.
    virtual std::future<FileError> writeInBackground(const QString& path, const QByteArray& bytes) {
        std::promise<FileError> result;
        result.set_value(writeFile(path, bytes));
        return result.get_future();
    }

    /// Writes a file like `writeFile`. Another content that stood there goes to the desktop's
    /// trash, where there is one.
    virtual FileError replaceFile(const QString& path, const QByteArray& bytes) {
        return writeFile(path, bytes);
    }

    virtual Draft draftFile(const QString& /*path*/) { return {noFiles(), nullptr}; }

    /// Never replaces a file.
    virtual FileError renameFile(const QString& /*from*/, const QString& /*to*/) {
        return noFiles();
    }

    virtual FileError removeFile(const QString& /*path*/) { return noFiles(); }

    /// Puts a file into the desktop's trash, or removes it where there is none.
    virtual FileError discardFile(const QString& path) { return removeFile(path); }

    virtual FileError createFolder(const QString& /*path*/) { return noFiles(); }

    /// Only an empty folder can be removed.
    virtual FileError removeFolder(const QString& /*path*/) { return noFiles(); }

    /// The same with the trash, as `discardFile`.
    virtual FileError discardFolder(const QString& path) { return removeFolder(path); }

    /// Null if another running program has the file. Where no claim can be made, as on a medium
    /// that can only be read, anyone gets one.
    virtual std::unique_ptr<FileClaim> claim(const QString& /*path*/) {
        return std::make_unique<FileClaim>();
    }

private:
    static FileError noFiles() { return {file_error::kPathNotFound, {}}; }
};
