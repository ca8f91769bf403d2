#pragma once

#include "composer/library/library_list.h"

#include <QByteArray>
#include <QCollator>
#include <QString>

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

class Dialogs;
class Folders;
class FunzioniMM;
class MelodyEditor;
struct Composition;
struct FileError;
struct LibraryEntry;
struct MelodyFile;
struct MelodySource;
struct Services;

/// The tree of melody folders and what the user does in it. Questions and messages go through the
/// boxes of the seam; what changed is read from here and from the composition afterwards.
///
/// A row is a place in `entries`, -1 if none is selected. A failed operation has been reported and
/// changed neither the files nor the composition.
class MelodyLibrary {
public:
    /// What became of an activated row.
    enum class Activated {
        Nothing,  ///< no such row, or it was reported why not
        Folder,   ///< another folder is shown
        Melody,   ///< the melody is open and its instrument chosen: play it
        Damaged,  ///< the same of a file whose lines do not match, which was reported
    };

    /// Begins at the root, which is made if it is missing.
    MelodyLibrary(const Services& services, Composition& composition, MelodyEditor& editor);

    /// The folder that is shown, with a backslash at its end, and how far it lies below the root.
    const QString& MelodyFolder() const { return folder_; }
    int FolderDepth() const { return depth_; }
    QString pathLabel() const;

    /// The melody that "Salva" writes to; empty until one was opened or saved.
    const QString& CurrentMelodyName() const;
    void setCurrentMelodyName(const QString& name);

    /// Reads the folder again. If it is gone, the nearest one above it is shown.
    void fill();
    const std::vector<LibraryEntry>& entries() const { return entries_; }

    bool isMelody(int row) const;

    /// Where a melody of this folder stands in `entries`, or -1.
    int rowOf(const QString& melody) const;

    /// Enters a folder, goes up, or opens a melody.
    Activated activate(int row);

    /// Opens a melody from anywhere. "Salva" writes it back to where it is.
    Activated openFile(const QString& path);

    /// Each answers whether it was done; the list has then been filled again. `row` offers its text
    /// as the name.
    bool save(int row);
    bool canSave() const;  ///< whether `save` would have something to do
    bool saveAs(int row);
    bool createFolder();
    bool rename(int row);
    bool remove(int row);

    /// The composition as it is to be saved.
    MelodyFile melodyFile() const;

    /// The same as bytes; nothing if it holds what a file cannot, which is reported.
    std::optional<QByteArray> melodyBytes() const;

    /// Where a melody of this folder stands, or would stand, on the disk.
    QString pathOf(const QString& melody) const;

    /// Whether a path lies in the tree of melodies.
    bool isInTree(const QString& path) const;

private:
    const LibraryEntry* entryAt(int row) const;
    Activated open(const MelodySource& source);
    void enter(const LibraryEntry& folder);
    void goUp();
    bool write(const QString& name, const QString& path);
    bool put(MelodySource target);
    bool isOwnVersion(const QString& path) const;
    bool removeFolder(const LibraryEntry& entry);
    bool done(const FileError& error, const QString& ifBadName);
    bool accepts(const QString& name) const;

    Dialogs& dialogs_;
    Folders& folders_;
    FunzioniMM& funzioniMM_;
    Composition& composition_;
    MelodyEditor& editor_;
    QCollator collator_;

    QString root_;
    QString folder_;
    int depth_ = 0;
    std::vector<LibraryEntry> entries_;

    /// What the files held, by their paths, when they were opened or saved here last.
    std::map<QString, QByteArray> digests_;
};
