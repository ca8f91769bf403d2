#pragma once

#include <QString>

/// The temporary files that saves and exports leave in a folder when they are killed: the name of
/// the file that was to be written, a point and six letters. Paths are the system's.
///
/// Only what is older than a day goes, as a younger file may be in the making, and only where this
/// program is known to have written.
namespace leftovers {

/// Those of one file that is about to be written again; whether none is left.
bool removeOf(const QString& target);

/// Those of melodies in a folder that is to be deleted, whatever their age.
void removeMelodiesOf(const QString& folder);

/// Those of melodies in a program folder, and of its first filling.
void removeMelodiesBelow(const QString& programFolder);

/// Records in the program folder, while a file is being written elsewhere, where that is.
class WriteRecord {
public:
    /// Without a program folder nothing is recorded.
    WriteRecord(const QString& programFolder, const QString& target);
    ~WriteRecord();

    WriteRecord(const WriteRecord&) = delete;
    WriteRecord& operator=(const WriteRecord&) = delete;

private:
    QString file_;
};

/// Those of the files of which records were left.
void removeRecorded(const QString& programFolder);

}  // namespace leftovers
