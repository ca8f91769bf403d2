#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// A named stretch of the melody, from one entry to another, counted from 1.
struct Bookmark {
    int start = 0;
    int end = 0;
    QString name;

    /// The text of the list and of the file: "3 ÷ 8 ÷ intro".
    QString text() const;

    /// Reads such a text; nothing if it does not begin with two numbers.
    static std::optional<Bookmark> fromText(const QString& text);
};

/// The list of bookmarks, as texts. The first one of a list that is not empty is the bookmark of
/// the whole melody.
class Bookmarks {
public:
    static constexpr char16_t kSeparator = u'\u00F7';

    Bookmarks() = default;
    explicit Bookmarks(QStringList items) : items_(std::move(items)) {}

    const QStringList& items() const { return items_; }
    bool empty() const { return items_.isEmpty(); }

    /// The bookmark of a whole melody of `count` entries.
    static QString wholeMelody(int count);

    /// After the melody changed its length: whatever stands first in a list that is not empty gives
    /// way to the bookmark of the whole melody.
    void refresh(int count);

    /// After an entry (counted from 0) was deleted and `count` are left: the bookmarks behind it
    /// move with their entries, those around it become shorter, and one on this entry alone goes
    /// over to the entry now in its place. No bookmark is dropped, and a text that is no bookmark
    /// stays as it is. The first one is refreshed.
    void afterDeletion(int index, int count);

    bool operator==(const Bookmarks&) const = default;

private:
    QStringList items_;
};
