#pragma once

#include <QString>

#include <filesystem>
#include <system_error>

/// What the systems do each in their own way with files. Paths are the system's, with slashes.
/// Each system's folder implements it.
namespace system_files {

/// Makes `lastError` no error until a call of this thread fails again.
void clearError();

/// Why the last call to the system failed.
std::error_code lastError();

/// The number (see `file_error`) of an error that only this system tells apart; 0 for others.
int ownErrorNumber(const std::error_code& error);

/// Waits until the disk has what was written to an open file; it may be full only now.
bool reachesTheDisk(int file);

/// The folder of the exchange medium, without a slash at its end; empty if there is none.
QString mediumFolder();

/// Whether a path is fit for a file or folder that is yet to be made.
bool isPossible(const QString& path);

/// What links, "." and ".." make of a path that need not exist; empty if that cannot be told.
std::filesystem::path followed(const QString& path);

/// Whether the user has a trash, or can be given one. The toolkit's own answer cannot be relied on
/// where there is none.
bool hasTrash();

}  // namespace system_files
