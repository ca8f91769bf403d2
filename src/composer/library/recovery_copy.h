#pragma once

#include "platform/folders.h"

#include <QByteArray>
#include <QString>

#include <future>
#include <memory>
#include <optional>
#include <vector>

/// A file beside the tree of melodies that holds one melody which is not saved. It belongs to this
/// object, and so to this program; other programs leave it alone until the object or the program is
/// gone, even if it was killed.
class RecoveryCopy {
public:
    /// A file that is not there yet; nothing if none can be had.
    static std::optional<RecoveryCopy> make(Folders& folders);

    /// The files that belong to no running program, the one written last first.
    static std::vector<RecoveryCopy> left(Folders& folders);

    const QString& path() const { return path_; }

    /// Writes the whole melody, in the background: `retry` is to be called until it answers true.
    void write(const QByteArray& bytes);

    /// Whether the last melody is on the disk. If it could not be written it is tried again.
    bool retry();

    /// The same, with the time that it takes.
    bool finish();

    /// Takes the file away for good.
    void remove();

private:
    RecoveryCopy(Folders& folders, QString path, std::unique_ptr<FileClaim> claim);

    bool resting() const;
    void wait() const;

    Folders* folders_;
    QString path_;
    std::unique_ptr<FileClaim> claim_;
    QByteArray bytes_;    ///< the last melody
    bool stale_ = false;  ///< it is not being written and not on the disk
    std::future<FileError> writing_;
};
