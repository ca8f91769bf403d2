#include "composer/engraved_melody.h"

#include "composer/melody/melody.h"

staff_entry::Entry staffEntryOf(const MelodyEntry& entry) {
    const QChar first =
        entry.attribute.isEmpty() ? letter::kNormale.front() : entry.attribute.front();
    return {entry.noteNumber(), entry.quarters(), first.toLatin1()};
}

notation::Source engravedSource(const Melody& melody, const score::Notation& notation) {
    return {[&melody] { return int{melody.EntryCount()}; },
            [&melody](int entry) { return staffEntryOf(melody.entry(entry)); }, notation};
}
