#include "composer/library/bookmark_commands.h"

#include "composer/library/melody_file.h"
#include "composer/library/melody_names.h"
#include "composer/melody/melody_editor.h"
#include "platform/dialogs.h"
#include "platform/user_text.h"

#include <algorithm>

namespace {

constexpr int kLongestName = 12;
constexpr qsizetype kFewestToMove = 3;

QString asTyped(const QString& answer) {
    return melody_names::composed(answer.trimmed());
}

/// Whether a name can be told from the rest of the line.
bool fitsTheLine(const QString& name) {
    return !name.contains(QLatin1Char(';')) && !name.contains(QChar(Bookmarks::kSeparator)) &&
           melody_file::canCarry(name);
}

}  // namespace

const QStringList& BookmarkCommands::items() const {
    return composition_.bookmarks.items();
}

std::optional<Bookmark> BookmarkCommands::bookmarkAt(int row) const {
    return Bookmark::fromText(items().value(row));
}

bool BookmarkCommands::replace(int row, const Bookmark& bookmark) {
    QStringList changed = items();
    changed[row] = bookmark.text();
    return editor_.setBookmarks(changed).changed;
}

bool BookmarkCommands::canAdd() const {
    return composition_.range.end() < composition_.melody.EntryCount();
}

bool BookmarkCommands::add() {
    if (!canAdd())
        return false;
    const QString name =
        asTyped(dialogs_.input(UserText::tr("Nome riferimento (Max 12c.)"), QString()))
            .left(kLongestName);
    if (!fitsTheLine(name)) {
        dialogs_.message(melody_names::unknownCharacter());
        return false;
    }
    if (name.isEmpty())
        return false;
    QStringList changed = items();
    if (changed.isEmpty())
        changed << Bookmarks::wholeMelody(composition_.melody.EntryCount());
    changed << Bookmark{composition_.range.start() + 1, composition_.range.end() + 1, name}.text();
    return editor_.setBookmarks(changed).changed;
}

bool BookmarkCommands::activate(int row) {
    const auto bookmark = bookmarkAt(row);
    if (!bookmark)
        return false;
    const int count = composition_.melody.EntryCount();
    // A file may hold any number: clamping it first keeps the subtraction from overflowing.
    const auto entry = [count](int number) { return std::clamp(number, 1, count + 1) - 1; };
    composition_.range.select(entry(bookmark->start), entry(bookmark->end), count);
    return true;
}

bool BookmarkCommands::modify(int row) {
    auto bookmark = bookmarkAt(row);
    if (!bookmark)
        return false;
    bookmark->start = composition_.range.start() + 1;
    bookmark->end = composition_.range.end() + 1;
    return replace(row, *bookmark);
}

bool BookmarkCommands::rename(int row) {
    auto bookmark = bookmarkAt(row);
    if (!bookmark)
        return false;
    const QString name = asTyped(dialogs_.input(
        UserText::tr("Rinominare"), UserText::tr("Rinomina riferimento"), bookmark->name));
    if (name.isEmpty())
        return false;
    if (melody_names::isForbiddenForBookmark(name) || !fitsTheLine(name)) {
        dialogs_.message(melody_names::invalidName());
        return false;
    }
    bookmark->name = name.left(kLongestName);
    return replace(row, *bookmark);
}

int BookmarkCommands::move(int row, Direction direction) {
    const auto last = items().size() - 1;
    const bool canMove =
        direction == Direction::Up ? row >= 1 && row <= last : row >= 0 && row < last;
    if (items().size() < kFewestToMove || !canMove)
        return row;
    const int target = direction == Direction::Up ? row - 1 : row + 1;
    QStringList changed = items();
    changed.move(row, target);
    editor_.setBookmarks(changed);
    return target;
}

bool BookmarkCommands::remove(int row) {
    if (row < 1 || items().value(row).isEmpty())
        return false;
    QStringList changed = items();
    changed.removeAt(row);
    if (changed.size() == 1)
        changed.clear();
    return editor_.setBookmarks(changed).changed;
}
