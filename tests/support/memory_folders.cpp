#include "support/memory_folders.h"

#include <QDir>
#include <QRegularExpression>

#include <memory>
#include <utility>

namespace {

const QChar kSlash(u'/');

/// A path without "." and "..", and with a capital drive letter.
QString keyOf(QString path) {
    const QString clean = QDir::cleanPath(path.replace(u'\\', kSlash));
    return clean.left(1).toUpper() + clean.mid(1);
}

QString parentOf(const QString& key) {
    return key.section(kSlash, 0, -2);
}

/// Written when it is finished.
struct MemoryDraft : FileDraft {
    MemoryDraft(Folders& into, QString file) : folders(into), path(std::move(file)) {}

    FileError append(const QByteArray& more) override {
        bytes += more;
        return {};
    }
    FileError amend(qint64 position, const QByteArray& better) override {
        bytes.replace(position, better.size(), better);
        return {};
    }
    FileError finish() override { return folders.writeFile(path, bytes); }

    Folders& folders;
    QString path;
    QByteArray bytes;
};

struct MemoryClaim : FileClaim {
    MemoryClaim(std::shared_ptr<QSet<QString>> all, QString own)
        : claimed(std::move(all)), key(std::move(own)) {}
    ~MemoryClaim() override { claimed->remove(key); }

    std::shared_ptr<QSet<QString>> claimed;
    QString key;
};

FileError error(int number) {
    return {number, QStringLiteral("Testo dell'errore %1 !!!").arg(number)};
}

}  // namespace

void MemoryFolders::put(const QString& path, const QByteArray& bytes) {
    static int writes = 0;
    const QString key = keyOf(path);
    for (qsizetype end = key.indexOf(kSlash); end > 0; end = key.indexOf(kSlash, end + 1)) {
        if (!folders_.contains(key.left(end)))
            folders_ << key.left(end);
    }
    files_[key] = {bytes, ++writes};
}

MemoryFolders MemoryFolders::afterCrash() const {
    MemoryFolders left = *this;
    left.claimed_ = std::make_shared<QSet<QString>>();
    return left;
}

QByteArray MemoryFolders::at(const QString& path) const {
    const auto found = files_.find(keyOf(path));
    return found == files_.end() ? QByteArray() : found->second.bytes;
}

void MemoryFolders::loseFolder(const QString& path) {
    const auto isLost = [key = keyOf(path)](const QString& other) {
        return other == key || other.startsWith(key + kSlash);
    };
    folders_.removeIf(isLost);
    std::erase_if(files_, [&isLost](const auto& file) { return isLost(file.first); });
}

bool MemoryFolders::fileExists(const QString& path) const {
    return files_.count(keyOf(path)) > 0;
}

bool MemoryFolders::folderExists(const QString& path) const {
    return folders_.contains(keyOf(path));
}

QStringList MemoryFolders::subFolders(const QString& folder) const {
    QStringList names{QStringLiteral("."), QStringLiteral("..")};
    for (const QString& other : folders_) {
        if (parentOf(other) == keyOf(folder))
            names << other.section(kSlash, -1);
    }
    return folderExists(folder) ? names : QStringList();
}

QStringList MemoryFolders::files(const QString& folder, const QString& pattern) const {
    const QString key = keyOf(folder);
    const auto wanted = QRegularExpression::fromWildcard(pattern, Qt::CaseInsensitive);
    QStringList names;
    for (const auto& [file, content] : files_) {
        const QString name = file.section(kSlash, -1);
        if (parentOf(file) == key && wanted.match(name).hasMatch())
            names << name;
    }
    return names;
}

bool MemoryFolders::isInside(const QString& root, const QString& path) const {
    return keyOf(path).startsWith(keyOf(root) + kSlash);
}

QDateTime MemoryFolders::lastChanged(const QString& path) const {
    const auto found = files_.find(keyOf(path));
    return QDateTime::fromSecsSinceEpoch(found == files_.end() ? 0 : found->second.changed);
}

Folders::Content MemoryFolders::readFile(const QString& path, qint64 atMost) const {
    if (readFailure.failed())
        return {readFailure, {}};
    if (!fileExists(path))
        return {error(file_error::kNotFound), {}};
    return {{}, at(path).left(atMost)};
}

FileError MemoryFolders::checkNew(const QString& key) const {
    return folders_.contains(parentOf(key)) ? FileError{} : error(file_error::kPathNotFound);
}

FileError MemoryFolders::writeFile(const QString& path, const QByteArray& bytes) {
    if (FileError failure = checkNew(keyOf(path)); failure.failed())
        return failure;
    if (folderExists(path))
        return error(file_error::kNoAccess);
    if (!writeFailure.failed())
        put(path, bytes);
    return writeFailure;
}

FileError MemoryFolders::replaceFile(const QString& path, const QByteArray& bytes) {
    const QByteArray old = at(path);
    FileError failure = writeFile(path, bytes);
    if (!failure.failed() && !old.isNull() && old != bytes)
        trash << old;
    return failure;
}

Folders::Draft MemoryFolders::draftFile(const QString& path) {
    if (FileError failure = checkNew(keyOf(path)); failure.failed())
        return {failure, nullptr};
    if (folderExists(path))
        return {error(file_error::kNoAccess), nullptr};
    return {{}, std::make_unique<MemoryDraft>(*this, path)};
}

FileError MemoryFolders::renameFile(const QString& from, const QString& to) {
    if (!fileExists(from))
        return error(file_error::kNotFound);
    if (fileExists(to) || folderExists(to))
        return error(file_error::kAlreadyExists);
    if (FileError failure = writeFile(to, at(from)); failure.failed())
        return failure;
    return removeFile(from);
}

FileError MemoryFolders::removeFile(const QString& path) {
    if (writeFailure.failed())
        return writeFailure;
    if (folderExists(path))
        return error(file_error::kNoAccess);
    if (fileExists(parentOf(keyOf(path))))
        return error(file_error::kPathNotFound);
    return files_.erase(keyOf(path)) > 0 ? FileError{} : error(file_error::kNotFound);
}

FileError MemoryFolders::discardFile(const QString& path) {
    const QByteArray old = at(path);
    FileError failure = removeFile(path);
    if (!failure.failed())
        trash << old;
    return failure;
}

FileError MemoryFolders::createFolder(const QString& path) {
    if (FileError failure = checkNew(keyOf(path)); failure.failed())
        return failure;
    if (fileExists(path) || folderExists(path))
        return error(file_error::kAlreadyExists);
    if (!writeFailure.failed())
        folders_ << keyOf(path);
    return writeFailure;
}

FileError MemoryFolders::removeFolder(const QString& path) {
    if (!folderExists(path))
        return error(file_error::kPathNotFound);
    if (subFolders(path).size() > 2 || !files(path, QStringLiteral("*")).isEmpty())
        return error(file_error::kNoAccess);
    folders_.removeAll(keyOf(path));
    return {};
}

std::unique_ptr<FileClaim> MemoryFolders::claim(const QString& path) {
    if (claimed_->contains(keyOf(path)))
        return nullptr;
    claimed_->insert(keyOf(path));
    return std::make_unique<MemoryClaim>(claimed_, keyOf(path));
}
