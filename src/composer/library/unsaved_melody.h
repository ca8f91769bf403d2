#pragma once

#include "composer/library/recovery_copy.h"
#include "composer/melody/melody_editor.h"
#include "platform/runtime.h"

#include <map>
#include <memory>

class Dialogs;
class MelodyLibrary;
struct Services;

/// Copies of the melodies that were changed and not saved, each in a file of its own outside the
/// tree of melodies, so that hardly anything is lost when the program is killed, when the machine
/// goes off, or when another melody is opened in the place of one.
///
/// A copy is written within two seconds of a change, whatever plays and whichever box is open. It
/// goes when its melody is saved or given up by an answer; the next opening of the composer offers
/// it otherwise. A copy that cannot be written is not reported, but tried again.
class UnsavedMelody {
public:
    UnsavedMelody(const Services& services, const Composition& composition, MelodyEditor& editor,
                  const MelodyLibrary& library);

    /// Writes the copy if it is due.
    ~UnsavedMelody();

    /// Asks about the melodies that were left, the last one first, until the user takes one up
    /// again, which then has no name; those that are refused are gone.
    EditOutcome offer();

    /// The melody may have changed: its copy is due soon.
    void changed();

    /// Whether every melody that made way for another one is on the disk.
    bool othersKept();

    /// Brings the copy up to date now, as before another melody takes the place of this one.
    void keep();

    /// The melody is saved, or the user does without it.
    void forget();

private:
    void write();
    void arm();
    void wakeUp();
    void finish();

    Runtime& runtime_;
    Dialogs& dialogs_;
    Folders& folders_;
    const Composition& composition_;
    MelodyEditor& editor_;
    const MelodyLibrary& library_;
    std::map<int, RecoveryCopy> copies_;  ///< by document
    bool due_ = false;
    bool waits_ = false;  ///< for the alarm
    std::unique_ptr<Alarm> alarm_;
    SavedAtEnd savedAtEnd_;
};
