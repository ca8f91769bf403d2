#include "composer/library/recovery_copy.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

constexpr int kMostCopies = 1000;

/// The first copy has the name alone, further ones a number behind it.
QString nameOf(int number) {
    QString name = QStringLiteral("Melodia non salvata");
    if (number > 1)
        name += QStringLiteral(" %1").arg(number);
    return name + QLatin1String(".mel");
}

bool isCopy(const QString& name) {
    static const QRegularExpression pattern(
        QStringLiteral("^Melodia non salvata( [1-9][0-9]{0,3})?\\.mel$"));
    return pattern.match(name).hasMatch();
}

}  // namespace

RecoveryCopy::RecoveryCopy(Folders& folders, QString path, std::unique_ptr<FileClaim> claim)
    : folders_(&folders), path_(std::move(path)), claim_(std::move(claim)) {}

/// Another program may have written the file before this one had its claim.
std::optional<RecoveryCopy> RecoveryCopy::make(Folders& folders) {
    for (int number = 1; number <= kMostCopies; ++number) {
        const QString path = folders.programFolder() + u'\\' + nameOf(number);
        if (folders.fileExists(path))
            continue;
        auto claim = folders.claim(path);
        if (claim && !folders.fileExists(path))
            return RecoveryCopy(folders, path, std::move(claim));
    }
    return std::nullopt;
}

std::vector<RecoveryCopy> RecoveryCopy::left(Folders& folders) {
    const QString folder = folders.programFolder() + u'\\';
    struct Found {
        QDateTime changed;
        QString path;
    };
    std::vector<Found> found;
    const QStringList names = folders.files(folder, QStringLiteral("Melodia non salvata*.mel"));
    for (const QString& name : names) {
        if (isCopy(name))
            found.push_back({folders.lastChanged(folder + name), folder + name});
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const Found& a, const Found& b) { return a.changed > b.changed; });
    std::vector<RecoveryCopy> copies;
    for (Found& file : found) {
        auto claim = folders.claim(file.path);
        if (claim && folders.fileExists(file.path))
            copies.push_back(RecoveryCopy(folders, std::move(file.path), std::move(claim)));
    }
    return copies;
}

bool RecoveryCopy::resting() const {
    return !writing_.valid() ||
           writing_.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

void RecoveryCopy::write(const QByteArray& bytes) {
    if (bytes == bytes_)
        return;
    bytes_ = bytes;
    stale_ = true;
    retry();
}

bool RecoveryCopy::retry() {
    if (!resting())
        return false;
    if (writing_.valid() && writing_.get().failed())
        stale_ = true;
    if (!std::exchange(stale_, false))
        return true;
    writing_ = folders_->writeInBackground(path_, bytes_);
    return false;
}

void RecoveryCopy::wait() const {
    if (writing_.valid())
        writing_.wait();
}

bool RecoveryCopy::finish() {
    wait();
    if (retry())
        return true;
    wait();
    return retry();
}

void RecoveryCopy::remove() {
    wait();
    folders_->removeFile(path_);
    claim_.reset();
}
