#include "composer/library/melody_library.h"

#include "composer/library/melody_file.h"
#include "composer/library/melody_names.h"
#include "composer/library/melody_reader.h"
#include "composer/melody/melody_editor.h"
#include "core/funzioni_mm.h"
#include "core/services.h"
#include "platform/dialogs.h"
#include "platform/folders.h"
#include "platform/user_text.h"

#include <QCryptographicHash>
#include <QLocale>

#include <algorithm>
#include <utility>

using melody_names::kBackslash;
using Kind = LibraryEntry::Kind;

namespace {

QString invalidFolderName() {
    return UserText::tr("Nome cartella non valido !!!");
}

QString alreadyThere(const QString& name) {
    return UserText::tr("E' già presente una melodia dal nome: ") + name;
}

QByteArray digestOf(const QByteArray& bytes) {
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

}  // namespace

MelodyLibrary::MelodyLibrary(const Services& services, Composition& composition,
                             MelodyEditor& editor)
    : dialogs_(services.dialogs),
      folders_(services.folders),
      funzioniMM_(services.funzioniMM),
      composition_(composition),
      editor_(editor),
      collator_(QLocale(QLocale::Italian, QLocale::Italy)),
      root_(melody_names::rootOf(services.folders.programFolder())),
      folder_(root_) {
    if (!folders_.folderExists(root_))
        folders_.createFolder(root_.chopped(1));
}

const QString& MelodyLibrary::CurrentMelodyName() const {
    return composition_.source.name;
}

void MelodyLibrary::setCurrentMelodyName(const QString& name) {
    composition_.source = {name, {}, {}};
}

QString MelodyLibrary::pathLabel() const {
    return melody_names::pathLabel(folder_);
}

void MelodyLibrary::fill() {
    while (depth_ > 0 && !folders_.folderExists(folder_))
        goUp();
    entries_ = library_list::read(
        folders_, folder_, depth_ > 0 ? library_list::Parent::Shown : library_list::Parent::Hidden,
        collator_);
}

int MelodyLibrary::rowOf(const QString& melody) const {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [&melody](const LibraryEntry& entry) {
            return entry.kind == Kind::Melody && entry.name == melody;
        });
    return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
}

const LibraryEntry* MelodyLibrary::entryAt(int row) const {
    const bool isThere = row >= 0 && static_cast<std::size_t>(row) < entries_.size();
    return isThere ? &entries_[static_cast<std::size_t>(row)] : nullptr;
}

bool MelodyLibrary::isMelody(int row) const {
    const LibraryEntry* const entry = entryAt(row);
    return entry && entry->kind == Kind::Melody;
}

MelodyLibrary::Activated MelodyLibrary::activate(int row) {
    if (!entryAt(row))
        return Activated::Nothing;
    const LibraryEntry entry = *entryAt(row);
    if (entry.kind == Kind::Melody)
        return open({entry.name, folder_, entry.fileName});
    if (entry.kind == Kind::Parent)
        goUp();
    else
        enter(entry);
    fill();
    return Activated::Folder;
}

/// A folder that is gone in the meantime is just no longer listed.
void MelodyLibrary::enter(const LibraryEntry& folder) {
    const QString path = folder_ + folder.fileName + kBackslash;
    if (!folders_.folderExists(path))
        return;
    folder_ = path;
    ++depth_;
}

void MelodyLibrary::goUp() {
    folder_.chop(1);
    folder_.truncate(folder_.lastIndexOf(kBackslash) + 1);
    --depth_;
}

/// A melody of the tree is opened as if the browser stood in its folder.
MelodyLibrary::Activated MelodyLibrary::openFile(const QString& path) {
    const qsizetype end = path.lastIndexOf(kBackslash) + 1;
    const QString folder = path.left(end);
    const QString fileName = path.mid(end);
    const bool outside = !path.startsWith(root_) || !isInTree(path);
    const Activated activated =
        open({melody_names::melodyName(fileName), folder, fileName, outside});
    if (!outside && activated != Activated::Nothing) {
        folder_ = folder;
        depth_ = static_cast<int>(folder.count(kBackslash) - root_.count(kBackslash));
    }
    return activated;
}

MelodyLibrary::Activated MelodyLibrary::open(const MelodySource& source) {
    MelodyReading reading = readMelody(folders_, source.folder + source.fileName);
    if (!reading.file) {
        dialogs_.message(reading.error.failed() ? melody_names::failureText(reading.error)
                                                : damagedMelodyText());
        return Activated::Nothing;
    }
    digests_[source.folder + source.fileName] = digestOf(reading.bytes);
    reading.file->name = source.name;
    reading.file->source = source;
    // Undo restores the instrument that was in use, whatever the melody before it had.
    composition_.instrument = funzioniMM_.currentInstrument();
    const EditOutcome outcome = editor_.open(*reading.file);
    if (outcome.changed)
        funzioniMM_.chooseInstrument(composition_.instrument);
    if (outcome.message.isEmpty())
        return Activated::Melody;
    dialogs_.message(outcome.message);
    return outcome.changed ? Activated::Damaged : Activated::Nothing;
}

QString MelodyLibrary::pathOf(const QString& melody) const {
    QString usual = folder_ + melody_names::fileName(melody);
    if (folders_.fileExists(usual))
        return usual;
    // The extension may be written in capitals.
    const auto melodies = library_list::melodies(folders_, folder_);
    const auto found =
        std::find_if(melodies.begin(), melodies.end(),
                     [&melody](const LibraryEntry& entry) { return entry.name == melody; });
    return found == melodies.end() ? usual : folder_ + found->fileName;
}

bool MelodyLibrary::isInTree(const QString& path) const {
    return folders_.isInside(root_, path);
}

bool MelodyLibrary::save(int row) {
    if (composition_.source.name.isEmpty())
        return saveAs(row);
    if (composition_.source.outside)
        return put(composition_.source);
    const bool isHere = composition_.source.folder == folder_;
    return write(composition_.source.name, isHere ? folder_ + composition_.source.fileName
                                                  : pathOf(composition_.source.name));
}

bool MelodyLibrary::canSave() const {
    return !composition_.source.name.isEmpty() || !composition_.melody.texts().notes.isEmpty();
}

bool MelodyLibrary::saveAs(int row) {
    if (composition_.melody.texts().notes.isEmpty())
        return false;
    const LibraryEntry* const selected = entryAt(row);
    const QString name = melody_names::composed(
        dialogs_.input(UserText::tr("Nome melodia"), UserText::tr("Salva con nome"),
                       selected ? selected->text() : QString()));
    if (name.isEmpty() || !accepts(name))
        return false;
    const QString path = pathOf(name);
    const bool mayWrite =
        !folders_.fileExists(path) ||
        dialogs_.confirm(alreadyThere(name) + UserText::tr("\nVuoi sostituirla ?"));
    return mayWrite && write(name, path);
}

/// A name may lead into a folder below this one, but must end in a name.
bool MelodyLibrary::accepts(const QString& name) const {
    if (!melody_file::canCarry(name)) {
        dialogs_.message(melody_names::unknownCharacter());
        return false;
    }
    const bool hasName = !name.endsWith(kBackslash) && !name.endsWith(QLatin1Char('/'));
    if (hasName && isInTree(folder_ + melody_names::fileName(name)))
        return true;
    dialogs_.message(melody_names::invalidName());
    return false;
}

MelodyFile MelodyLibrary::melodyFile() const {
    MelodyFile file;
    file.texts = composition_.melody.texts();
    file.bookmarks = composition_.bookmarks.items();
    file.tempo = composition_.tempo;
    file.instrument = funzioniMM_.currentInstrument();
    return file;
}

std::optional<QByteArray> MelodyLibrary::melodyBytes() const {
    const melody_file::Written written = melody_file::write(melodyFile());
    if (written.refused.isEmpty())
        return written.bytes;
    dialogs_.message(
        UserText::tr("Il file non può contenere il carattere \"%1\" !!!").arg(written.refused));
    return std::nullopt;
}

bool MelodyLibrary::write(const QString& name, const QString& path) {
    if (!isInTree(path)) {
        dialogs_.message(melody_names::invalidName());
        return false;
    }
    return put({name, folder_, path.mid(folder_.size())});
}

/// Whether a file holds this melody as it was opened or saved here last.
bool MelodyLibrary::isOwnVersion(const QString& path) const {
    const MelodySource& source = composition_.source;
    const auto digest = digests_.find(path);
    if (source.folder + source.fileName != path || source.emptied || digest == digests_.end())
        return false;
    const Folders::Content content = folders_.readFile(path, melody_file::kLargestFile + 1);
    return !content.error.failed() && digestOf(content.bytes) == digest->second;
}

/// Takes a copy, since the source of the composition may be the target itself. What is not this
/// melody's own last version goes to the trash: a namesake, or what another program saved there.
bool MelodyLibrary::put(MelodySource target) {
    const auto bytes = melodyBytes();
    if (!bytes)
        return false;
    const QString path = target.folder + target.fileName;
    const FileError error =
        isOwnVersion(path) ? folders_.writeFile(path, *bytes) : folders_.replaceFile(path, *bytes);
    if (!done(error, melody_names::invalidName()))
        return false;
    digests_[path] = digestOf(*bytes);
    target.emptied = false;
    composition_.name = UserText::tr("Salvato: ") + target.name;
    composition_.source = std::move(target);
    editor_.markSaved();
    return true;
}

/// Reports a failure, or fills the list again.
bool MelodyLibrary::done(const FileError& error, const QString& ifBadName) {
    if (error.failed()) {
        dialogs_.message(error.number == file_error::kBadName ? ifBadName
                                                              : melody_names::failureText(error));
        return false;
    }
    fill();
    return true;
}

bool MelodyLibrary::createFolder() {
    const QString name = melody_names::composed(
        dialogs_.input(UserText::tr("Nome cartella"), UserText::tr("Nome Cartella")).trimmed());
    if (name.isEmpty())
        return false;
    if (melody_names::isForbiddenForFile(name)) {
        dialogs_.message(invalidFolderName());
        return false;
    }
    if (!melody_file::canCarry(name)) {
        dialogs_.message(melody_names::unknownCharacter());
        return false;
    }
    return done(folders_.createFolder(folder_ + name), invalidFolderName());
}

bool MelodyLibrary::rename(int row) {
    const LibraryEntry* const selected = entryAt(row);
    if (!selected || selected->kind != Kind::Melody)
        return false;
    const LibraryEntry entry = *selected;
    const QString name = melody_names::composed(
        dialogs_.input(UserText::tr("Rinominare"), UserText::tr("Rinomina melodia"), entry.name));
    if (name.isEmpty())
        return false;
    if (melody_names::isForbiddenForFile(name)) {
        dialogs_.message(melody_names::invalidName());
        return false;
    }
    if (!accepts(name))
        return false;
    if (folders_.fileExists(pathOf(name))) {
        dialogs_.message(alreadyThere(name));
        return false;
    }
    const bool isCurrent =
        composition_.source.folder == folder_ && composition_.source.fileName == entry.fileName;
    const QString fileName = melody_names::fileName(name);
    if (!done(folders_.renameFile(folder_ + entry.fileName, folder_ + fileName),
              melody_names::invalidName())) {
        return false;
    }
    if (const auto known = digests_.extract(folder_ + entry.fileName))
        digests_[folder_ + fileName] = known.mapped();
    if (isCurrent) {
        composition_.source = {name, folder_, fileName};
        composition_.name = name;
    }
    return true;
}

bool MelodyLibrary::remove(int row) {
    const LibraryEntry* const selected = entryAt(row);
    if (!selected || selected->kind == Kind::Parent)
        return false;
    const LibraryEntry entry = *selected;
    if (entry.kind == Kind::Folder)
        return removeFolder(entry);
    return dialogs_.confirm(UserText::tr("Eliminare il file: %1 ?").arg(entry.name)) &&
           done(folders_.discardFile(folder_ + entry.fileName), melody_names::invalidName());
}

/// Files that are no melodies hold a folder as well, though only the system knows of them.
bool MelodyLibrary::removeFolder(const LibraryEntry& entry) {
    const QString path = folder_ + entry.fileName;
    const bool isEmpty = library_list::melodies(folders_, path + kBackslash).empty() &&
                         !library_list::hasSubFolders(folders_, path + kBackslash);
    if (isEmpty) {
        if (!dialogs_.confirm(UserText::tr("Eliminare la cartella: %1 ?").arg(entry.name)))
            return false;
        if (!folders_.discardFolder(path).failed()) {
            fill();
            return true;
        }
    }
    dialogs_.message(UserText::tr("Impossibile eliminare la cartella !!!"));
    return false;
}
