#pragma once

#include <QString>

#include <vector>

class Folders;
class QCollator;

/// One line of the melody browser.
struct LibraryEntry {
    enum class Kind { Folder, Parent, Melody };

    Kind kind = Kind::Melody;
    QString name;      ///< without the extension
    QString fileName;  ///< as it stands on the disk

    /// As the browser shows it: folders are marked with "» ".
    QString text() const;
};

namespace library_list {

enum class Parent { Shown, Hidden };

/// What a folder holds: its sub-folders as the system enumerates them, ".." among them if it is to
/// be shown, then its melodies in the collator's order.
std::vector<LibraryEntry> read(const Folders& folders, const QString& folder, Parent parent,
                               const QCollator& collator);

/// The melodies of a folder as the system enumerates them: files "*.mel" in either case, without
/// the companions ("._…") that some systems write beside a file.
std::vector<LibraryEntry> melodies(const Folders& folders, const QString& folder);

/// Whether there is any beside "." and "..".
bool hasSubFolders(const Folders& folders, const QString& folder);

}  // namespace library_list
