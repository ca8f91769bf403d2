#include "composer/library/unsaved_melody.h"

#include "composer/library/melody_file.h"
#include "composer/library/melody_library.h"
#include "composer/library/melody_reader.h"
#include "core/services.h"
#include "platform/dialogs.h"
#include "platform/folders.h"
#include "platform/user_text.h"

#include <algorithm>
#include <utility>

namespace {

/// From a change to its copy; a late alarm and the disk's time included, below two seconds.
constexpr std::chrono::milliseconds kWriteDelay(1400);

}  // namespace

UnsavedMelody::UnsavedMelody(const Services& services, const Composition& composition,
                             MelodyEditor& editor, const MelodyLibrary& library)
    : runtime_(services.runtime),
      dialogs_(services.dialogs),
      folders_(services.folders),
      composition_(composition),
      editor_(editor),
      library_(library),
      alarm_(services.runtime.makeAlarm([this] { wakeUp(); })),
      savedAtEnd_(services.runtime, [this] { finish(); }) {}

UnsavedMelody::~UnsavedMelody() {
    keep();
}

/// The copy stays until the recovered melody is saved as well.
EditOutcome UnsavedMelody::offer() {
    for (RecoveryCopy& copy : RecoveryCopy::left(folders_)) {
        const MelodyReading reading = readMelody(folders_, copy.path());
        if (!reading.file)
            continue;
        if (!dialogs_.offer(UserText::tr("L'ultima melodia non è stata salvata. Recuperarla ?"))) {
            copy.remove();
            continue;
        }
        EditOutcome outcome = editor_.recover(*reading.file);
        if (outcome.changed)
            copies_.emplace(composition_.document, std::move(copy));
        return outcome;
    }
    return {};
}

/// Further changes do not put the copy off: an alarm that is set stays as it is.
void UnsavedMelody::changed() {
    due_ = true;
    arm();
}

void UnsavedMelody::arm() {
    if (!std::exchange(waits_, true))
        alarm_->set(runtime_.now() + kWriteDelay);
}

void UnsavedMelody::wakeUp() {
    waits_ = false;
    keep();
    bool written = true;
    for (auto& [document, copy] : copies_)
        written = copy.retry() && written;
    if (!written)
        arm();
}

bool UnsavedMelody::othersKept() {
    return std::all_of(copies_.begin(), copies_.end(), [this](auto& copy) {
        return copy.first == composition_.document || copy.second.finish();
    });
}

void UnsavedMelody::finish() {
    keep();
    for (auto& [document, copy] : copies_)
        copy.finish();
}

void UnsavedMelody::keep() {
    if (std::exchange(due_, false))
        write();
}

/// The copy of a melody that was emptied is kept as it was written last.
void UnsavedMelody::write() {
    if (!editor_.modified()) {
        forget();
        return;
    }
    if (composition_.melody.empty())
        return;
    const melody_file::Written written = melody_file::write(library_.melodyFile());
    if (!written.refused.isEmpty())
        return;
    auto found = copies_.find(composition_.document);
    if (found == copies_.end()) {
        auto copy = RecoveryCopy::make(folders_);
        if (!copy)
            return;
        found = copies_.emplace(composition_.document, std::move(*copy)).first;
    }
    found->second.write(written.bytes);
    arm();
}

void UnsavedMelody::forget() {
    due_ = false;
    const auto copy = copies_.extract(composition_.document);
    if (copy)
        copy.mapped().remove();
}
