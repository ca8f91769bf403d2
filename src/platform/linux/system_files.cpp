#include "platform/system_files.h"

#include "platform/folders.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cerrno>
#include <unistd.h>

namespace system_files {
namespace {

namespace fs = std::filesystem;

/// The longest name, in bytes, that leaves room for that of a temporary file beside it.
constexpr qsizetype kLongestName = 240;

/// Where desktops mount the media that a user plugs in.
constexpr std::array<QLatin1String, 2> kMediaFolders{QLatin1String("/media/"),
                                                     QLatin1String("/run/media/")};

}  // namespace

void clearError() {
    errno = 0;
}

std::error_code lastError() {
    return {errno, std::generic_category()};
}

int ownErrorNumber(const std::error_code& error) {
    return error.value() == EDQUOT ? file_error::kDiskFull : 0;
}

bool reachesTheDisk(int file) {
    return ::fsync(file) == 0 || errno == EINVAL;
}

QString mediumFolder() {
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        const bool isMedium = std::any_of(
            kMediaFolders.begin(), kMediaFolders.end(),
            [&volume](QLatin1String folder) { return volume.rootPath().startsWith(folder); });
        if (isMedium && volume.isReady())
            return volume.rootPath();
    }
    return {};
}

bool isPossible(const QString& path) {
    const QStringList names = path.split(QLatin1Char('/'));
    return std::all_of(names.begin(), names.end(), [](const QString& name) {
        return name.toUtf8().size() <= kLongestName &&
               std::none_of(name.begin(), name.end(), [](QChar c) { return c < u' '; });
    });
}

fs::path followed(const QString& path) {
    std::error_code error;
    const fs::path native = QFileInfo(path).filesystemFilePath();
    const bool leadsNowhere =
        fs::is_symlink(fs::symlink_status(native, error)) && !fs::exists(native, error);
    if (leadsNowhere)
        return {};
    fs::path whole = fs::weakly_canonical(native, error);
    if (error)
        return {};
    return whole.has_filename() ? whole : whole.parent_path();
}

/// Without this folder the toolkit would take the current one for the trash.
bool hasTrash() {
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString trash = data + QLatin1String("/Trash");
    if (data.isEmpty() || !QDir().mkpath(data))
        return false;
    if (!QFileInfo::exists(trash))
        QDir().mkdir(trash,
                     QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    const auto takesFiles = [&trash](const char* name) {
        const QFileInfo folder(trash + QString::fromUtf8(name));
        return QDir().mkpath(folder.filePath()) && folder.isWritable();
    };
    return takesFiles("/files") && takesFiles("/info");
}

}  // namespace system_files
