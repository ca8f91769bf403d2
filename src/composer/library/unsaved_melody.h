#pragma once

#include "composer/melody/melody_editor.h"
#include "platform/runtime.h"

#include <QString>

class Dialogs;
class Folders;
class MelodyLibrary;
struct Services;

/// A copy of the melody that is not saved yet, in a file outside the tree of melodies, so that
/// hardly anything is lost when the program is killed or the machine goes off.
///
/// The copy is written a moment after a change, but not while something plays, and goes when the
/// melody is saved or given up. A melody that made way for another one before it was saved stays
/// there until that one is changed. A copy that cannot be written is not reported.
class UnsavedMelody {
public:
    UnsavedMelody(const Services& services, const Composition& composition, MelodyEditor& editor,
                  const MelodyLibrary& library);

    /// Asks about the melody that an earlier run left, if there is one, and takes it up again
    /// without a name or gives it up.
    EditOutcome offer();

    /// The melody may have changed: the copy is due soon.
    void changed();

    /// When `keepIfDue` is to be called next.
    Instant due() const { return due_; }
    void keepIfDue();

    /// Brings the copy up to date now.
    void keep();

    /// Another melody took the place of the one in the copy.
    void leave() { holdsThisMelody_ = false; }

    /// The melody is saved, or the user does without it.
    void forget();

private:
    Runtime& runtime_;
    Dialogs& dialogs_;
    Folders& folders_;
    const Composition& composition_;
    MelodyEditor& editor_;
    const MelodyLibrary& library_;
    QString path_;
    Instant due_ = kForever;
    bool holdsThisMelody_ = false;
};
