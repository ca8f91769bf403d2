#pragma once

#include <QString>

#include <optional>

/// The desktop's trash. Paths are the system's.
namespace trash {

/// Moves a file or folder there. Nothing if there is no trash for it, which then stays where it is;
/// otherwise where it lies now, or the empty text where the system does not tell.
std::optional<QString> take(const QString& path);

/// Moves what was just taken back to where it stood. False if it cannot be.
bool giveBack(const QString& inTrash, const QString& path);

}  // namespace trash
