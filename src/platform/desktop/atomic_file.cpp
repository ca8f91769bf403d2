#include "platform/desktop/atomic_file.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace atomic_file {
namespace {

Outcome failure() {
    return {false, errno, false};
}

/// The system may notice only here that the disk is full.
bool reachesTheDisk(const QFileDevice& file) {
#ifdef Q_OS_UNIX
    return ::fsync(file.handle()) == 0 || errno == EINVAL;
#else
    Q_UNUSED(file)
    return true;
#endif
}

/// A full disk can swallow bytes without a word, so every step is looked at.
bool put(QFileDevice& file, const QByteArray& bytes) {
    errno = 0;
    if (file.write(bytes) != bytes.size())
        return false;
    return file.flush() && file.size() == bytes.size() && reachesTheDisk(file);
}

Outcome readBack(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    const bool same = file.open(QIODevice::ReadOnly) && file.readAll() == bytes;
    return {same, 0, !same};
}

/// Without emptying the file first, so that on a full disk its own blocks remain.
bool putOver(QFile& file, const QByteArray& bytes) {
    errno = 0;
    return file.seek(0) && file.write(bytes) == bytes.size() && file.resize(bytes.size()) &&
           reachesTheDisk(file);
}

Outcome writeOver(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered))
        return failure();
    const QByteArray old = file.readAll();
    if (!putOver(file, bytes)) {
        const Outcome outcome = failure();
        putOver(file, old);
        return outcome;
    }
    file.close();
    return readBack(path, bytes);
}

}  // namespace

Outcome write(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        const Outcome outcome = failure();
        const bool folderRefuses = outcome.systemError == EACCES || outcome.systemError == EPERM;
        return folderRefuses && QFileInfo(path).isWritable() ? writeOver(path, bytes) : outcome;
    }
    if (!put(file, bytes)) {
        const Outcome outcome = failure();
        file.cancelWriting();
        return outcome;
    }
    errno = 0;
    if (!file.commit())
        return failure();
    return readBack(path, bytes);
}

}  // namespace atomic_file
