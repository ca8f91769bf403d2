#pragma once

#include "composer/melody/melody_editor.h"
#include "platform/folders.h"

#include <QChar>
#include <QString>

#include <optional>

class Dialogs;
class FunzioniMM;
struct Services;

/// Files of other programs that can become a melody.
namespace melody_import {

/// Whether a file's name tells that it is one.
bool isForeign(const QString& path);

/// What came of reading a file: the melody, which bears the file's name, with what was left out of
/// it; or the error that the disk gave; or the reasons why there is none, in one text.
struct Outcome {
    FileError error;
    QString fault;
    std::optional<MelodyFile> file;
    QString leftOut;
};

Outcome read(const Folders& folders, const QString& path, QChar decimalSeparator);

}  // namespace melody_import

/// Opens such files in the composer, where the melody is one that was never saved.
class MelodyImport {
public:
    MelodyImport(const Services& services, Composition& composition, MelodyEditor& editor);

    /// Asks for the file; the empty text if the user chooses none.
    QString askFile() const;

    /// Reports what was left out, or why nothing was opened; whether the melody is open.
    bool open(const QString& path);

private:
    Dialogs& dialogs_;
    Folders& folders_;
    FunzioniMM& funzioniMM_;
    Composition& composition_;
    MelodyEditor& editor_;
};
