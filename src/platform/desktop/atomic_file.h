#pragma once

class QByteArray;
class QString;

/// Writing a file so that at every instant the old one stands there, or the new one.
namespace atomic_file {

/// What stopped a write; 0 in `systemError` if the system gave no reason.
struct Outcome {
    bool written = false;
    int systemError = 0;     ///< an `errno`
    bool disturbed = false;  ///< the bytes on the disk are not those that were written
};

/// Writes to a new file beside the old one and puts it in its place when it is whole and on the
/// disk. Only where the folder takes no new file but the old one may be written, it is written
/// over, and put back as it was if that fails.
Outcome write(const QString& path, const QByteArray& bytes);

}  // namespace atomic_file
