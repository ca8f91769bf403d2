#include "support/memory_folders.h"

#include <QRegularExpression>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

const QChar kBackslash(u'\\');
const QString kDriveA = QStringLiteral("A:");

/// A path without "." and "..", and with a capital drive letter.
QString keyOf(const QString& path) {
    QStringList parts;
    const QStringList names = QString(path).replace(u'/', kBackslash).split(kBackslash);
    for (const QString& name : names) {
        if (name == ".." && parts.size() > 1)
            parts.removeLast();
        else if (!name.isEmpty() && name != "." && name != "..")
            parts << name;
    }
    if (!parts.isEmpty())
        parts.front() = parts.front().toUpper();
    return parts.join(kBackslash);
}

QString parentOf(const QString& key) {
    return key.left(std::max<qsizetype>(key.lastIndexOf(kBackslash), 0));
}

QString nameOf(const QString& key) {
    return key.mid(key.lastIndexOf(kBackslash) + 1);
}

/// Written when it is finished.
class MemoryDraft : public FileDraft {
public:
    MemoryDraft(Folders& folders, QString path) : folders_(folders), path_(std::move(path)) {}

    FileError append(const QByteArray& bytes) override {
        bytes_ += bytes;
        return {};
    }
    FileError amend(qint64 position, const QByteArray& bytes) override {
        bytes_.replace(position, bytes.size(), bytes);
        return {};
    }
    FileError finish() override { return folders_.writeFile(path_, bytes_); }

private:
    Folders& folders_;
    QString path_;
    QByteArray bytes_;
};

class MemoryClaim : public FileClaim {
public:
    MemoryClaim(std::shared_ptr<QSet<QString>> claimed, QString key)
        : claimed_(std::move(claimed)), key_(std::move(key)) {}
    ~MemoryClaim() override { claimed_->remove(key_); }

private:
    std::shared_ptr<QSet<QString>> claimed_;
    QString key_;
};

FileError error(int number) {
    return {number, QStringLiteral("Testo dell'errore %1 !!!").arg(number)};
}

}  // namespace

MemoryFolders::MemoryFolders() {
    folders_ << kDriveA << keyOf(programFolder());
}

void MemoryFolders::put(const QString& path, const QByteArray& bytes) {
    const QString key = keyOf(path);
    const QStringList parts = parentOf(key).split(kBackslash);
    for (qsizetype i = 1; i <= parts.size(); ++i) {
        const QString folder = parts.first(i).join(kBackslash);
        if (!folders_.contains(folder))
            folders_ << folder;
    }
    files_[key] = bytes;
    changed_[key] = ++writes_;
}

void MemoryFolders::takeFiles(const MemoryFolders& other) {
    files_ = other.files_;
    changed_ = other.changed_;
    writes_ = other.writes_;
}

MemoryFolders MemoryFolders::afterCrash() const {
    MemoryFolders left = *this;
    left.claimed_ = std::make_shared<QSet<QString>>();
    return left;
}

QByteArray MemoryFolders::at(const QString& path) const {
    const auto found = files_.find(keyOf(path));
    return found == files_.end() ? QByteArray() : found->second;
}

void MemoryFolders::loseFolder(const QString& path) {
    const QString key = keyOf(path);
    const auto isLost = [&key](const QString& other) {
        return other == key || other.startsWith(key + kBackslash);
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
    if (!folderExists(folder))
        return {};
    QStringList names{QStringLiteral("."), QStringLiteral("..")};
    for (const QString& other : folders_) {
        if (parentOf(other) == keyOf(folder))
            names << nameOf(other);
    }
    return names;
}

QStringList MemoryFolders::files(const QString& folder, const QString& pattern) const {
    const QString key = keyOf(folder);
    if (key == kDriveA && !hasDriveA)
        return {};
    const auto wanted = QRegularExpression::fromWildcard(pattern, Qt::CaseInsensitive);
    QStringList names;
    for (const auto& [file, bytes] : files_) {
        if (parentOf(file) == key && wanted.match(nameOf(file)).hasMatch())
            names << nameOf(file);
    }
    return names;
}

bool MemoryFolders::isInside(const QString& root, const QString& path) const {
    return keyOf(path).startsWith(keyOf(root) + kBackslash);
}

QDateTime MemoryFolders::lastChanged(const QString& path) const {
    const auto found = changed_.find(keyOf(path));
    return QDateTime::fromSecsSinceEpoch(found == changed_.end() ? 0 : found->second);
}

Folders::Content MemoryFolders::readFile(const QString& path, qint64 atMost) const {
    if (readFailure.failed())
        return {readFailure, {}};
    if (!fileExists(path))
        return {error(file_error::kNotFound), {}};
    return {{}, at(path).left(atMost)};
}

FileError MemoryFolders::checkParent(const QString& key) const {
    if (key.startsWith(kDriveA) && !hasDriveA)
        return error(file_error::kNotReady);
    return folders_.contains(parentOf(key)) ? FileError{} : error(file_error::kPathNotFound);
}

FileError MemoryFolders::writeFile(const QString& path, const QByteArray& bytes) {
    const QString key = keyOf(path);
    if (const FileError failure = checkParent(key); failure.failed())
        return failure;
    if (folders_.contains(key))
        return error(file_error::kNoAccess);
    if (!writeFailure.failed())
        put(path, bytes);
    return writeFailure;
}

FileError MemoryFolders::replaceFile(const QString& path, const QByteArray& bytes) {
    const QByteArray old = at(path);
    const FileError failure = writeFile(path, bytes);
    if (!failure.failed() && !old.isNull() && old != bytes)
        trash << old;
    return failure;
}

Folders::Draft MemoryFolders::draftFile(const QString& path) {
    return {{}, std::make_unique<MemoryDraft>(*this, path)};
}

FileError MemoryFolders::renameFile(const QString& from, const QString& to) {
    if (!fileExists(from))
        return error(file_error::kNotFound);
    if (fileExists(to) || folderExists(to))
        return error(file_error::kAlreadyExists);
    if (const FileError failure = writeFile(to, at(from)); failure.failed())
        return failure;
    return removeFile(from);
}

FileError MemoryFolders::removeFile(const QString& path) {
    if (writeFailure.failed())
        return writeFailure;
    return files_.erase(keyOf(path)) > 0 ? FileError{} : error(file_error::kNotFound);
}

FileError MemoryFolders::discardFile(const QString& path) {
    const QByteArray old = at(path);
    const FileError failure = removeFile(path);
    if (!failure.failed())
        trash << old;
    return failure;
}

FileError MemoryFolders::createFolder(const QString& path) {
    const QString key = keyOf(path);
    if (const FileError failure = checkParent(key); failure.failed())
        return failure;
    if (fileExists(path) || folderExists(path))
        return error(file_error::kAlreadyExists);
    if (!writeFailure.failed())
        folders_ << key;
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
