#include "platform/system_files.h"

#include "platform/folders.h"
#include "platform/windows/paths.h"

#include <QDir>

#include <algorithm>
#include <array>
#include <cerrno>
#include <io.h>
#include <windows.h>

namespace system_files {
namespace {

struct OwnError {
    int system;
    int number;
};
constexpr std::array<OwnError, 7> kOwnErrors{{{ERROR_WRITE_PROTECT, file_error::kWriteProtected},
                                              {ERROR_NOT_READY, file_error::kNotReady},
                                              {ERROR_INVALID_DRIVE, file_error::kNotReady},
                                              {ERROR_UNRECOGNIZED_VOLUME, file_error::kNotReady},
                                              {ERROR_NO_MEDIA_IN_DRIVE, file_error::kNotReady},
                                              {ERROR_SHARING_VIOLATION, file_error::kNoAccess},
                                              {ERROR_CRC, file_error::kDeviceFault}}};

std::wstring toSystem(const QString& path) {
    return QDir::toNativeSeparators(path).toStdWString();
}

}  // namespace

void clearError() {
    errno = 0;
    SetLastError(ERROR_SUCCESS);
}

std::error_code lastError() {
    const DWORD error = GetLastError();
    return error == ERROR_SUCCESS
               ? std::error_code(errno, std::generic_category())
               : std::error_code(static_cast<int>(error), std::system_category());
}

int ownErrorNumber(const std::error_code& error) {
    const auto* const row =
        std::find_if(kOwnErrors.begin(), kOwnErrors.end(), [&error](const OwnError& e) {
            return error.category() == std::system_category() && e.system == error.value();
        });
    return row == kOwnErrors.end() ? 0 : row->number;
}

bool reachesTheDisk(int file) {
    return _commit(file) == 0;
}

QString mediumFolder() {
    return paths::isReady(L"A:\\") ? QStringLiteral("A:") : QString();
}

bool isPossible(const QString& path) {
    return paths::isPossible(toSystem(path));
}

std::filesystem::path followed(const QString& path) {
    return paths::followed(toSystem(path));
}

bool hasTrash() {
    return true;
}

}  // namespace system_files
