#pragma once

#include <QString>

/// Files and folders. Paths are written with backslashes everywhere in the program and are joined
/// by plain concatenation; only the platform turns them into the system's own.
class Folders {
public:
    virtual ~Folders() = default;

    /// The folder in which the program's files stand, without a backslash at its end.
    virtual QString programFolder() const = 0;

    /// Whether a plain file stands there.
    virtual bool fileExists(const QString& path) const = 0;

    /// The system's own form of a path, for the platform's libraries.
    virtual QString nativePath(const QString& path) const = 0;
};
