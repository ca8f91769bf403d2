#include "composer/library/unsaved_melody.h"

#include "composer/library/melody_file.h"
#include "composer/library/melody_library.h"
#include "composer/library/melody_reader.h"
#include "core/services.h"
#include "platform/dialogs.h"
#include "platform/folders.h"

#include <utility>

namespace {

constexpr std::chrono::seconds kRest(2);
const QLatin1String kFile("\\Melodia non salvata.mel");

}  // namespace

UnsavedMelody::UnsavedMelody(const Services& services, const Composition& composition,
                             MelodyEditor& editor, const MelodyLibrary& library)
    : runtime_(services.runtime),
      dialogs_(services.dialogs),
      folders_(services.folders),
      composition_(composition),
      editor_(editor),
      library_(library),
      path_(services.folders.programFolder() + kFile) {}

EditOutcome UnsavedMelody::offer() {
    const MelodyReading reading = readMelody(folders_, path_);
    if (!reading.file)
        return {};
    holdsThisMelody_ = true;
    if (dialogs_.offer(QStringLiteral("L'ultima melodia non è stata salvata. Recuperarla ?")))
        return editor_.recover(*reading.file);
    forget();
    return {};
}

/// A user who never rests for long is not to put the copy off for ever.
void UnsavedMelody::changed() {
    if (due_ == kForever)
        due_ = runtime_.now() + kRest;
}

void UnsavedMelody::keepIfDue() {
    if (runtime_.now() >= due_)
        keep();
}

/// An emptied melody leaves the copy of what it was.
void UnsavedMelody::keep() {
    if (std::exchange(due_, kForever) == kForever)
        return;
    if (!editor_.modified()) {
        forget();
        return;
    }
    if (composition_.melody.empty())
        return;
    const melody_file::Written written = melody_file::write(library_.melodyFile());
    if (written.refused.isEmpty() && !folders_.writeFile(path_, written.bytes).failed())
        holdsThisMelody_ = true;
}

void UnsavedMelody::forget() {
    due_ = kForever;
    if (std::exchange(holdsThisMelody_, false))
        folders_.removeFile(path_);
}
