#include "platform/desktop/desktop_folders.h"

#include "platform/desktop/leftovers.h"
#include "platform/desktop/program_folder.h"
#include "platform/desktop/trash.h"
#include "platform/system_files.h"
#include "platform/user_text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <utility>

namespace {

namespace fs = std::filesystem;

constexpr QDir::SortFlags kByName = QDir::Name | QDir::IgnoreCase;

struct Text {
    int number;
    const char* text;
};
constexpr std::array<Text, 10> kTexts{
    {{file_error::kBadName,
      QT_TRANSLATE_NOOP("UserText", "Il nome non è valido per questo disco !!!")},
     {file_error::kNotFound, QT_TRANSLATE_NOOP("UserText", "File non trovato !!!")},
     {file_error::kDeviceFault,
      QT_TRANSLATE_NOOP("UserText", "Errore di lettura o di scrittura del disco !!!")},
     {file_error::kAlreadyExists,
      QT_TRANSLATE_NOOP("UserText", "Il file o la cartella esiste già !!!")},
     {file_error::kDiskFull, QT_TRANSLATE_NOOP("UserText", "Disco pieno !!!")},
     {file_error::kTooManyFiles, QT_TRANSLATE_NOOP("UserText", "Troppi file aperti !!!")},
     {file_error::kWriteProtected,
      QT_TRANSLATE_NOOP("UserText", "Il disco è protetto da scrittura !!!")},
     {file_error::kNotReady, QT_TRANSLATE_NOOP("UserText", "Disco non pronto !!!")},
     {file_error::kNoAccess,
      QT_TRANSLATE_NOOP("UserText", "Accesso al file o alla cartella negato !!!")},
     {file_error::kPathNotFound, QT_TRANSLATE_NOOP("UserText", "Cartella non trovata !!!")}}};

struct SystemError {
    int system;
    int number;
};
constexpr std::array<SystemError, 16> kSystemErrors{{{ENOSPC, file_error::kDiskFull},
                                                     {EFBIG, file_error::kDiskFull},
                                                     {EROFS, file_error::kWriteProtected},
                                                     {EACCES, file_error::kNoAccess},
                                                     {EPERM, file_error::kNoAccess},
                                                     {EISDIR, file_error::kNoAccess},
                                                     {ENOENT, file_error::kPathNotFound},
                                                     {ENOTDIR, file_error::kPathNotFound},
                                                     {ELOOP, file_error::kPathNotFound},
                                                     {ENAMETOOLONG, file_error::kBadName},
                                                     {EINVAL, file_error::kBadName},
                                                     {EILSEQ, file_error::kBadName},
                                                     {EEXIST, file_error::kAlreadyExists},
                                                     {EMFILE, file_error::kTooManyFiles},
                                                     {ENODEV, file_error::kNotReady},
                                                     {ENXIO, file_error::kNotReady}}};

FileError errorOf(int number) {
    const auto* const row = std::find_if(kTexts.begin(), kTexts.end(),
                                         [number](const Text& t) { return t.number == number; });
    return {number, UserText::tr(row->text)};
}

FileError errorOfSystem(const std::error_code& error) {
    if (const int own = system_files::ownErrorNumber(error); own != 0)
        return errorOf(own);
    const int general = error.default_error_condition().value();
    const auto* const row =
        std::find_if(kSystemErrors.begin(), kSystemErrors.end(),
                     [general](const SystemError& e) { return e.system == general; });
    return errorOf(row == kSystemErrors.end() ? file_error::kNoAccess : row->number);
}

bool isOnDriveA(const QString& path) {
    return path.startsWith(QLatin1String("a:\\"), Qt::CaseInsensitive);
}

/// Without a slash at its end; the empty text if there is no medium.
QString driveA() {
    const QString named = qEnvironmentVariable("CANTAVISTA_DRIVE_A");
    if (!named.isEmpty())
        return QFileInfo(named).isDir() ? QDir(named).absolutePath() : QString();
    return system_files::mediumFolder();
}

FileError checkMedium(const QString& nativePath) {
    return nativePath.isEmpty() ? errorOf(file_error::kNotReady) : FileError{};
}

FileError checkNew(const QString& nativePath) {
    if (nativePath.isEmpty() || system_files::isPossible(nativePath))
        return checkMedium(nativePath);
    return errorOf(file_error::kBadName);
}

FileError errorOfWriting(const atomic_file::Outcome& outcome) {
    if (outcome.written)
        return {};
    if (outcome.disturbed)
        return errorOf(file_error::kDeviceFault);
    return errorOfSystem(outcome.error);
}

/// A folder, or a device, which a new file would replace.
bool isNoPlainFile(const QString& nativePath) {
    const QFileInfo there(nativePath);
    return there.exists() && !there.isFile();
}

class DesktopDraft : public FileDraft {
public:
    DesktopDraft(const QString& programFolder, const QString& nativePath)
        : record_(programFolder, nativePath), draft_(nativePath) {}

    FileError open() { return errorOfWriting(draft_.open()); }
    FileError append(const QByteArray& bytes) override {
        return errorOfWriting(draft_.append(bytes));
    }
    FileError amend(qint64 position, const QByteArray& bytes) override {
        return errorOfWriting(draft_.amend(position, bytes));
    }
    FileError finish() override { return errorOfWriting(draft_.finish()); }

private:
    leftovers::WriteRecord record_;
    atomic_file::Draft draft_;
};

/// A lock file beside the claimed one. Its age says nothing: what counts is whether the program
/// that made it still holds it open.
class DesktopClaim : public FileClaim {
public:
    explicit DesktopClaim(const QString& nativePath) : lock_(nativePath + QLatin1String(".lock")) {
        lock_.setStaleLockTime(1);
        lock_.tryLock(0);
    }

    bool isAnothers() const { return lock_.error() == QLockFile::LockFailedError; }

private:
    QLockFile lock_;
};

}  // namespace

DesktopFolders::DesktopFolders(ProgramFolder use) {
    if (use == ProgramFolder::Unused)
        return;
    programFolder_ = program_folder::find();
    program_folder::prepareMelodies(programFolder_);
    leftovers::removeRecorded(programFolder_);
    leftovers::removeMelodiesBelow(programFolder_);
    programFolder_.replace(QLatin1Char('/'), QLatin1Char('\\'));
}

QString DesktopFolders::nativePath(const QString& path) const {
    QString native = path;
    if (isOnDriveA(path)) {
        const QString drive = driveA();
        if (drive.isEmpty())
            return {};
        native.replace(0, 2, drive);
    }
    return native.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

bool DesktopFolders::fileExists(const QString& path) const {
    return QFileInfo(nativePath(path)).isFile();
}

bool DesktopFolders::folderExists(const QString& path) const {
    return QFileInfo(nativePath(path)).isDir();
}

QStringList DesktopFolders::subFolders(const QString& folder) const {
    const QString native = nativePath(folder);
    if (native.isEmpty() || !QFileInfo(native).isDir())
        return {};
    return QStringList{QStringLiteral("."), QStringLiteral("..")} +
           QDir(native).entryList(QDir::Dirs | QDir::NoDotAndDotDot, kByName);
}

QStringList DesktopFolders::files(const QString& folder, const QString& pattern) const {
    const QString native = nativePath(folder);
    return native.isEmpty()
               ? QStringList()
               : QDir(native).entryList({pattern}, QDir::Files | QDir::Hidden, kByName);
}

bool DesktopFolders::isInside(const QString& root, const QString& path) const {
    const QString nativeRoot = nativePath(root);
    const QString native = nativePath(path);
    if (nativeRoot.isEmpty() || native.isEmpty())
        return false;
    const fs::path above = system_files::followed(nativeRoot);
    const fs::path below = system_files::followed(native);
    if (above.empty() || below.empty() || above == below)
        return false;
    const auto [end, unused] =
        std::mismatch(above.begin(), above.end(), below.begin(), below.end());
    return end == above.end();
}

QDateTime DesktopFolders::lastChanged(const QString& path) const {
    return QFileInfo(nativePath(path)).lastModified();
}

Folders::Content DesktopFolders::readFile(const QString& path, qint64 atMost) const {
    const QString native = nativePath(path);
    if (FileError error = checkMedium(native); error.failed())
        return {error, {}};
    QFile file(native);
    if (!QFileInfo(native).isFile())
        return {errorOf(file_error::kNotFound), {}};
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {errorOf(file.error() == QFileDevice::ResourceError ? file_error::kTooManyFiles
                                                                   : file_error::kNoAccess),
                {}};
    QByteArray bytes = file.read(atMost);
    if (file.error() != QFileDevice::NoError)
        return {errorOf(file_error::kDeviceFault), {}};
    return {{}, std::move(bytes)};
}

FileError DesktopFolders::write(const QString& path, const QByteArray& bytes,
                                atomic_file::Old old) const {
    const QString native = nativePath(path);
    if (FileError error = checkNew(native); error.failed())
        return error;
    if (isNoPlainFile(native))
        return errorOf(file_error::kNoAccess);
    leftovers::removeOf(native);
    const atomic_file::Outcome outcome = atomic_file::write(native, bytes, old);
    if (!outcome.written && isOnDriveA(path) && driveA().isEmpty())
        return errorOf(file_error::kNotReady);
    return errorOfWriting(outcome);
}

FileError DesktopFolders::writeFile(const QString& path, const QByteArray& bytes) {
    return write(path, bytes, atomic_file::Old::Replaced);
}

std::future<FileError> DesktopFolders::writeInBackground(const QString& path,
                                                         const QByteArray& bytes) {
    try {
        return std::async(std::launch::async, [this, path, bytes] {
            return write(path, bytes, atomic_file::Old::Replaced);
        });
    } catch (const std::system_error&) {
        return Folders::writeInBackground(path, bytes);  // no thread is left
    }
}

FileError DesktopFolders::replaceFile(const QString& path, const QByteArray& bytes) {
    const Content old = readFile(path, bytes.size() + 1);
    const bool same = !old.error.failed() && old.bytes == bytes;
    return write(path, bytes, same ? atomic_file::Old::Replaced : atomic_file::Old::Discarded);
}

Folders::Draft DesktopFolders::draftFile(const QString& path) {
    const QString native = nativePath(path);
    if (FileError error = checkNew(native); error.failed())
        return {error, nullptr};
    if (isNoPlainFile(native))
        return {errorOf(file_error::kNoAccess), nullptr};
    const QString home = nativePath(programFolder_);
    leftovers::removeRecorded(home);
    leftovers::removeOf(native);
    auto draft = std::make_unique<DesktopDraft>(home, native);
    if (FileError error = draft->open(); error.failed())
        return {error, nullptr};
    return {{}, std::move(draft)};
}

FileError DesktopFolders::renameFile(const QString& from, const QString& to) {
    const QString source = nativePath(from);
    const QString target = nativePath(to);
    if (FileError error = checkNew(target); error.failed())
        return error;
    if (!QFileInfo(source).isFile())
        return errorOf(file_error::kNotFound);
    if (QFileInfo::exists(target))
        return errorOf(file_error::kAlreadyExists);
    std::error_code error;
    fs::rename(QFileInfo(source).filesystemFilePath(), QFileInfo(target).filesystemFilePath(),
               error);
    return error ? errorOfSystem(error) : FileError{};
}

FileError DesktopFolders::removeFile(const QString& path) {
    const QString native = nativePath(path);
    if (FileError error = checkMedium(native); error.failed())
        return error;
    std::error_code error;
    if (fs::is_directory(QFileInfo(native).filesystemFilePath(), error))
        return errorOf(file_error::kNoAccess);
    const bool removed = fs::remove(QFileInfo(native).filesystemFilePath(), error);
    if (error)
        return errorOfSystem(error);
    return removed ? FileError{} : errorOf(file_error::kNotFound);
}

FileError DesktopFolders::discardFile(const QString& path) {
    const QString native = nativePath(path);
    if (QFileInfo(native).isFile() && trash::take(native))
        return {};
    return removeFile(path);
}

FileError DesktopFolders::createFolder(const QString& path) {
    const QString native = nativePath(path);
    if (FileError error = checkNew(native); error.failed())
        return error;
    std::error_code error;
    const bool created = fs::create_directory(QFileInfo(native).filesystemFilePath(), error);
    if (error)
        return errorOfSystem(error);
    return created ? FileError{} : errorOf(file_error::kAlreadyExists);
}

FileError DesktopFolders::removeFolder(const QString& path) {
    const QString native = nativePath(path);
    if (FileError error = checkMedium(native); error.failed())
        return error;
    if (!QFileInfo(native).isDir())
        return errorOf(file_error::kPathNotFound);
    leftovers::removeMelodiesOf(native);
    return QDir().rmdir(native) ? FileError{} : errorOf(file_error::kNoAccess);
}

/// A link to a folder is none of its own.
FileError DesktopFolders::discardFolder(const QString& path) {
    const QString native = nativePath(path);
    if (native.isEmpty() || !QFileInfo(native).isDir() || QFileInfo(native).isSymLink())
        return removeFolder(path);
    leftovers::removeMelodiesOf(native);
    const QDir::Filters everything = QDir::AllEntries | QDir::Hidden | QDir::System;
    if (QDir(native).isEmpty(everything | QDir::NoDotAndDotDot) && trash::take(native))
        return {};
    return removeFolder(path);
}

std::unique_ptr<FileClaim> DesktopFolders::claim(const QString& path) {
    auto claim = std::make_unique<DesktopClaim>(nativePath(path));
    return claim->isAnothers() ? nullptr : std::move(claim);
}
