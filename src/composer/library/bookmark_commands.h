#pragma once

#include <QStringList>

#include <optional>

class Dialogs;
class MelodyEditor;
struct Bookmark;
struct Composition;

/// What the user does with the list of bookmarks. A row is a place in the list, -1 if none is
/// selected; every change can be taken back.
class BookmarkCommands {
public:
    enum class Direction { Up, Down };

    BookmarkCommands(Dialogs& dialogs, Composition& composition, MelodyEditor& editor)
        : dialogs_(dialogs), composition_(composition), editor_(editor) {}

    /// Whether the range lies in the melody, so that `add` does something: the list is shown then,
    /// before the name is asked.
    bool canAdd() const;

    /// Asks for a name and adds the range under it; the first bookmark brings that of the whole
    /// melody with it. Whether it was added.
    bool add();

    /// Makes the bookmark's stretch the range, kept within the melody. Whether it did: the caller
    /// then plays the range. Not to be called while something plays.
    bool activate(int row);

    /// Gives the bookmark the current range, keeping its name.
    bool modify(int row);

    /// Asks for another name.
    bool rename(int row);

    /// Moves the bookmark in a list of at least three; answers where it is then.
    int move(int row, Direction direction);

    /// Takes away a bookmark, except the first one. With the last of the user's bookmarks that of
    /// the whole melody goes as well. Not to be called while something plays.
    bool remove(int row);

private:
    const QStringList& items() const;
    std::optional<Bookmark> bookmarkAt(int row) const;
    bool replace(int row, const Bookmark& bookmark);

    Dialogs& dialogs_;
    Composition& composition_;
    MelodyEditor& editor_;
};
