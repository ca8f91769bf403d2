#include "composer/melody/bookmarks.h"

#include <algorithm>

QString Bookmark::text() const {
    const QString separator = QStringLiteral(" ") + QChar(Bookmarks::kSeparator) + QLatin1Char(' ');
    return QString::number(start) + separator + QString::number(end) + separator + name;
}

std::optional<Bookmark> Bookmark::fromText(const QString& text) {
    const QChar separator(Bookmarks::kSeparator);
    bool startRead = false;
    bool endRead = false;
    Bookmark bookmark;
    bookmark.start = text.section(separator, 0, 0).trimmed().toInt(&startRead);
    bookmark.end = text.section(separator, 1, 1).trimmed().toInt(&endRead);
    if (!startRead || !endRead)
        return std::nullopt;
    bookmark.name = text.section(separator, 2).trimmed();
    return bookmark;
}

QString Bookmarks::wholeMelody(int count) {
    return Bookmark{1, count, QStringLiteral("Tutto")}.text();
}

void Bookmarks::refresh(int count) {
    if (!empty())
        items_.front() = wholeMelody(count);
}

void Bookmarks::afterDeletion(int index, int count) {
    const int deleted = index + 1;
    const int last = std::max(count, 1);
    for (QString& item : items_) {
        auto bookmark = Bookmark::fromText(item);
        if (!bookmark)
            continue;
        const int start = bookmark->start > deleted ? bookmark->start - 1 : bookmark->start;
        const int end = bookmark->end >= deleted ? bookmark->end - 1 : bookmark->end;
        bookmark->start = std::clamp(start, 1, last);
        bookmark->end = std::clamp(end, bookmark->start, last);
        item = bookmark->text();
    }
    refresh(count);
}
