#include "composer/library/floppy.h"

#include "composer/library/melody_file.h"
#include "composer/library/melody_library.h"
#include "composer/library/melody_names.h"
#include "composer/melody/composition.h"
#include "core/services.h"
#include "platform/dialogs.h"
#include "platform/folders.h"
#include "platform/user_text.h"

#include <algorithm>
#include <utility>

namespace {

const QString kDrive = QStringLiteral("a:\\");

/// The usual failures have texts of their own for a floppy disk.
QString failureText(FileError error) {
    if (error.number == file_error::kDiskFull)
        error.text = UserText::tr("Dischetto pieno !!!");
    else if (error.number == file_error::kNotReady)
        error.text = UserText::tr("Dischetto non inserito o non inserito correttamente !!!");
    return melody_names::failureText(error);
}

}  // namespace

Floppy::Floppy(const Services& services, Composition& composition, MelodyLibrary& library,
               BusyPointer busyPointer)
    : dialogs_(services.dialogs),
      folders_(services.folders),
      composition_(composition),
      library_(library),
      busyPointer_(std::move(busyPointer)) {}

/// The current melody's name, or the answer to a question, which then is its name. Empty if there
/// is none to save under.
QString Floppy::nameToSave() {
    const QString& current = library_.CurrentMelodyName();
    if (!current.isEmpty())
        return melody_names::lastPart(current);
    QString name = melody_names::composed(
        dialogs_.input(UserText::tr("Nome melodia"), UserText::tr("Nome File")));
    if (name.isEmpty())
        return {};
    const bool readable = melody_file::canCarry(name);
    if (!readable || name.contains(melody_names::kBackslash) || name.contains(QLatin1Char('/'))) {
        dialogs_.message(readable ? melody_names::invalidName() : melody_names::unknownCharacter());
        return {};
    }
    library_.setCurrentMelodyName(name);
    return name;
}

void Floppy::save() {
    if (composition_.melody.texts().notes.isEmpty())
        return;
    const QString name = nameToSave();
    if (name.isEmpty())
        return;
    const auto bytes = library_.melodyBytes();
    if (!bytes)
        return;
    const QString file = melody_names::fileName(name);
    busyPointer_(true);
    const FileError error = folders_.writeFile(kDrive + file, *bytes);
    busyPointer_(false);
    dialogs_.message(error.failed() ? failureText(error)
                                    : UserText::tr("Salvato: %1\nsu dischetto").arg(file));
}

void Floppy::list() {
    melodies_ = library_list::melodies(folders_, kDrive);
}

int Floppy::copy(std::vector<int> rows) {
    if (rows.empty())
        return 0;
    std::sort(rows.begin(), rows.end());
    busyPointer_(true);
    const auto stopped = std::find_if_not(rows.begin(), rows.end(), [this](int row) {
        return copyOne(melodies_.at(static_cast<std::size_t>(row)));
    });
    busyPointer_(false);
    const auto copied = static_cast<int>(stopped - rows.begin());
    if (copied > 0)
        library_.fill();
    return copied;
}

bool Floppy::copyOne(const LibraryEntry& melody) {
    const QString target = library_.pathOf(melody.name);
    const Folders::Content content =
        folders_.readFile(kDrive + melody.fileName, melody_file::kLargestFile + 1);
    return !content.error.failed() && content.bytes.size() <= melody_file::kLargestFile &&
           library_.isInTree(target) && !folders_.replaceFile(target, content.bytes).failed();
}
