#include "platform/desktop/atomic_file.h"

#include "platform/desktop/trash.h"
#include "platform/system_files.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

#include <optional>

namespace atomic_file {
namespace {

Outcome failure() {
    return {false, system_files::lastError(), false};
}

/// On a full disk a write may lose bytes without an error, so every step is checked.
bool put(QFileDevice& file, const QByteArray& bytes) {
    system_files::clearError();
    if (file.write(bytes) != bytes.size())
        return false;
    return file.flush() && file.size() == bytes.size() &&
           system_files::reachesTheDisk(file.handle());
}

Outcome readBack(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    const bool same = file.open(QIODevice::ReadOnly) && file.readAll() == bytes;
    return {same, {}, !same};
}

/// Without emptying the file first, so that on a full disk its own blocks remain.
bool putOver(QFile& file, const QByteArray& bytes) {
    system_files::clearError();
    return file.seek(0) && file.write(bytes) == bytes.size() && file.resize(bytes.size()) &&
           system_files::reachesTheDisk(file.handle());
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

Outcome write(const QString& path, const QByteArray& bytes, Old old) {
    QSaveFile file(path);
    system_files::clearError();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        const Outcome outcome = failure();
        const bool folderRefuses = outcome.error == std::errc::permission_denied ||
                                   outcome.error == std::errc::operation_not_permitted;
        return folderRefuses && QFileInfo(path).isWritable() ? writeOver(path, bytes) : outcome;
    }
    if (!put(file, bytes)) {
        const Outcome outcome = failure();
        file.cancelWriting();
        return outcome;
    }
    // Where a link leads is what is written.
    const QString place = QFileInfo(path).canonicalFilePath();
    std::optional<QString> discarded;
    if (old == Old::Discarded && !place.isEmpty())
        discarded = trash::take(place);
    system_files::clearError();
    if (!file.commit()) {
        const Outcome outcome = failure();
        if (discarded)
            trash::giveBack(*discarded, place);
        return outcome;
    }
    return readBack(path, bytes);
}

Outcome Draft::open() {
    system_files::clearError();
    const bool opened = file_.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    return opened ? Outcome{true} : failure();
}

Outcome Draft::append(const QByteArray& bytes) {
    system_files::clearError();
    if (file_.write(bytes) != bytes.size())
        return failure();
    size_ += bytes.size();
    return {true};
}

Outcome Draft::amend(qint64 position, const QByteArray& bytes) {
    system_files::clearError();
    const bool amended =
        file_.seek(position) && file_.write(bytes) == bytes.size() && file_.seek(size_);
    return amended ? Outcome{true} : failure();
}

Outcome Draft::finish() {
    system_files::clearError();
    const bool whole =
        file_.flush() && file_.size() == size_ && system_files::reachesTheDisk(file_.handle());
    return whole && file_.commit() ? Outcome{true} : failure();
}

}  // namespace atomic_file
