#pragma once

#include <string>

/// Paths as the system sees them.
namespace paths {

/// Whether a path is fit for a file or folder that is yet to be made: the system would take some
/// names for a device, a stream of another file, or a pattern, and drop blanks and full stops at
/// a name's end.
bool isPossible(const std::wstring& path);

/// What links, "." and ".." make of a path that need not exist, in the letters of the folders'
/// own names; empty if that cannot be told.
std::wstring followed(const std::wstring& path);

/// Whether a drive such as "A:\" has a medium. Never asks the user to insert one.
bool isReady(const std::wstring& root);

}  // namespace paths
