#include "platform/desktop/desktop_folders.h"

#include "platform/desktop/atomic_file.h"
#include "platform/desktop/program_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

constexpr QDir::SortFlags kByName = QDir::Name | QDir::IgnoreCase;

/// The longest name, in bytes, that leaves room for that of a temporary file beside it.
constexpr qsizetype kLongestName = 240;

/// Where desktops mount the media that a user plugs in.
constexpr std::array<QLatin1String, 2> kMediaFolders{QLatin1String("/media/"),
                                                     QLatin1String("/run/media/")};

struct Text {
    int number;
    const char16_t* text;
};
constexpr std::array<Text, 10> kTexts{
    {{file_error::kBadName, u"Il nome non è valido per questo disco !!!"},
     {file_error::kNotFound, u"File non trovato !!!"},
     {file_error::kDeviceFault, u"Errore di lettura o di scrittura del disco !!!"},
     {file_error::kAlreadyExists, u"Il file o la cartella esiste già !!!"},
     {file_error::kDiskFull, u"Disco pieno !!!"},
     {file_error::kTooManyFiles, u"Troppi file aperti !!!"},
     {file_error::kWriteProtected, u"Il disco è protetto da scrittura !!!"},
     {file_error::kNotReady, u"Disco non pronto !!!"},
     {file_error::kNoAccess, u"Accesso al file o alla cartella negato !!!"},
     {file_error::kPathNotFound, u"Cartella non trovata !!!"}}};

struct SystemError {
    int system;
    int number;
};
constexpr std::array<SystemError, 17> kSystemErrors{{{ENOSPC, file_error::kDiskFull},
                                                     {EFBIG, file_error::kDiskFull},
#ifdef EDQUOT
                                                     {EDQUOT, file_error::kDiskFull},
#endif
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
    return {number, QString::fromUtf16(row->text)};
}

FileError errorOfSystem(int system, int otherwise) {
    const auto* const row =
        std::find_if(kSystemErrors.begin(), kSystemErrors.end(),
                     [system](const SystemError& e) { return e.system == system; });
    return errorOf(row == kSystemErrors.end() ? otherwise : row->number);
}

bool isOnDriveA(const QString& path) {
    return path.startsWith(QLatin1String("a:\\"), Qt::CaseInsensitive);
}

/// Without a slash at its end; the empty text if there is no medium.
QString driveA() {
    const QString named = qEnvironmentVariable("CANTAVISTA_DRIVE_A");
    if (!named.isEmpty())
        return QFileInfo(named).isDir() ? QDir(named).absolutePath() : QString();
#ifdef Q_OS_WIN
    return QFileInfo(QStringLiteral("A:/")).isDir() ? QStringLiteral("A:") : QString();
#else
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        const bool isMedium = std::any_of(
            kMediaFolders.begin(), kMediaFolders.end(),
            [&volume](QLatin1String folder) { return volume.rootPath().startsWith(folder); });
        if (isMedium && volume.isReady())
            return volume.rootPath();
    }
    return {};
#endif
}

/// Whether a path is fit for a file or folder that is yet to be made.
bool isPossible(const QString& nativePath) {
    const QStringList names = nativePath.split(QLatin1Char('/'));
    return std::all_of(names.begin(), names.end(), [](const QString& name) {
        return name.toUtf8().size() <= kLongestName &&
               std::none_of(name.begin(), name.end(), [](QChar c) { return c < u' '; });
    });
}

FileError checkMedium(const QString& nativePath) {
    return nativePath.isEmpty() ? errorOf(file_error::kNotReady) : FileError{};
}

FileError checkNew(const QString& nativePath) {
    if (nativePath.isEmpty() || isPossible(nativePath))
        return checkMedium(nativePath);
    return errorOf(file_error::kBadName);
}

/// What links, "." and ".." make of a path that need not exist; empty if that cannot be told.
fs::path followed(const QString& nativePath) {
    std::error_code error;
    const fs::path path = QFileInfo(nativePath).filesystemFilePath();
    const bool leadsNowhere =
        fs::is_symlink(fs::symlink_status(path, error)) && !fs::exists(path, error);
    if (leadsNowhere)
        return {};
    fs::path whole = fs::weakly_canonical(path, error);
    if (error)
        return {};
    return whole.has_filename() ? whole : whole.parent_path();
}

/// What a killed save left in a folder: a melody's name and six letters more.
void removeLeftovers(const QString& folder) {
    const QStringList names = QDir(folder).entryList({QStringLiteral("*.mel.??????")}, QDir::Files);
    for (const QString& name : names)
        QFile::remove(folder + QLatin1Char('/') + name);
}

}  // namespace

DesktopFolders::DesktopFolders() : programFolder_(program_folder::find()) {
    program_folder::prepareMelodies(programFolder_);
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
    const fs::path above = followed(nativeRoot);
    const fs::path below = followed(native);
    if (above.empty() || below.empty() || above == below)
        return false;
    const auto [end, unused] =
        std::mismatch(above.begin(), above.end(), below.begin(), below.end());
    return end == above.end();
}

Folders::Content DesktopFolders::readFile(const QString& path, qint64 atMost) const {
    const QString native = nativePath(path);
    if (FileError error = checkMedium(native); error.failed())
        return {error, {}};
    QFile file(native);
    errno = 0;
    if (!QFileInfo(native).isFile())
        return {errorOf(file_error::kNotFound), {}};
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {errorOfSystem(errno, file_error::kNoAccess), {}};
    QByteArray bytes = file.read(atMost);
    if (file.error() != QFileDevice::NoError)
        return {errorOf(file_error::kDeviceFault), {}};
    return {{}, std::move(bytes)};
}

FileError DesktopFolders::writeFile(const QString& path, const QByteArray& bytes) {
    const QString native = nativePath(path);
    if (FileError error = checkNew(native); error.failed())
        return error;
    if (QFileInfo(native).isDir())
        return errorOf(file_error::kNoAccess);
    const atomic_file::Outcome outcome = atomic_file::write(native, bytes);
    if (outcome.written)
        return {};
    if (isOnDriveA(path) && driveA().isEmpty())
        return errorOf(file_error::kNotReady);
    if (outcome.disturbed)
        return errorOf(file_error::kDeviceFault);
    return errorOfSystem(outcome.systemError, file_error::kNoAccess);
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
    return error ? errorOfSystem(error.value(), file_error::kNoAccess) : FileError{};
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
        return errorOfSystem(error.value(), file_error::kNoAccess);
    return removed ? FileError{} : errorOf(file_error::kNotFound);
}

FileError DesktopFolders::createFolder(const QString& path) {
    const QString native = nativePath(path);
    if (FileError error = checkNew(native); error.failed())
        return error;
    std::error_code error;
    const bool created = fs::create_directory(QFileInfo(native).filesystemFilePath(), error);
    if (error)
        return errorOfSystem(error.value(), file_error::kNoAccess);
    return created ? FileError{} : errorOf(file_error::kAlreadyExists);
}

FileError DesktopFolders::removeFolder(const QString& path) {
    const QString native = nativePath(path);
    if (FileError error = checkMedium(native); error.failed())
        return error;
    if (!QFileInfo(native).isDir())
        return errorOf(file_error::kPathNotFound);
    removeLeftovers(native);
    return QDir().rmdir(native) ? FileError{} : errorOf(file_error::kNoAccess);
}
