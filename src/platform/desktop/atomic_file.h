#pragma once

#include <QSaveFile>

#include <system_error>

class QByteArray;
class QString;

/// Writing a file so that at every instant the old one stands there, or the new one.
namespace atomic_file {

/// What stopped a write; no `error` if the system gave no reason.
struct Outcome {
    bool written = false;
    std::error_code error{};
    bool disturbed = false;  ///< the bytes on the disk are not those that were written
};

/// Writes to a new file beside the old one and puts it in its place when it is whole and on the
/// disk. Only where the folder takes no new file but the old one may be written, it is written
/// over, and put back as it was if that fails.
///
/// The old file can be put into the desktop's trash, where there is one, just before the new one,
/// which is then whole and on the disk, takes its place.
enum class Old { Replaced, Discarded };
Outcome write(const QString& path, const QByteArray& bytes, Old old = Old::Replaced);

/// A file that is written a stretch at a time, beside the old one. Unless it is finished, it leaves
/// nothing behind.
class Draft {
public:
    explicit Draft(const QString& path) : file_(path) {}

    Outcome open();
    Outcome append(const QByteArray& bytes);
    Outcome amend(qint64 position, const QByteArray& bytes);
    Outcome finish();

private:
    QSaveFile file_;
    qint64 size_ = 0;
};

}  // namespace atomic_file
