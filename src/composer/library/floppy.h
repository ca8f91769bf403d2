#pragma once

#include "composer/library/library_list.h"

#include <QString>

#include <functional>
#include <vector>

class Dialogs;
class Folders;
class MelodyLibrary;
struct Composition;
struct Services;

/// The exchange of melodies on a floppy disk in drive A:, whose folders are not used.
class Floppy {
public:
    /// Shows the busy pointer, or the normal one again.
    using BusyPointer = std::function<void(bool)>;

    Floppy(const Services& services, Composition& composition, MelodyLibrary& library,
           BusyPointer busyPointer);

    /// Writes the melody to the disk, replacing one of its name without asking, and says so or why
    /// not. A melody without a name is asked for it.
    void save();

    /// Reads what is on the disk: nothing if there is none.
    void list();
    const std::vector<LibraryEntry>& melodies() const { return melodies_; }

    /// Copies the selected rows into the library's folder, the first one first, replacing without
    /// asking; the library's list is then filled again. A failure ends it without a message.
    /// Answers how many were copied.
    int copy(std::vector<int> rows);

private:
    QString nameToSave();
    bool copyOne(const LibraryEntry& melody);

    Dialogs& dialogs_;
    Folders& folders_;
    Composition& composition_;
    MelodyLibrary& library_;
    BusyPointer busyPointer_;
    std::vector<LibraryEntry> melodies_;
};
