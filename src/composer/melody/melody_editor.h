#pragma once

#include "composer/melody/composition.h"
#include "composer/melody/melody_history.h"

#include <QString>
#include <QStringList>

/// What an operation changed, for the window to show.
struct EditOutcome {
    bool changed = false;        ///< the melody, or what belongs to it, is to be shown again
    bool emptied = false;        ///< as by `reset`, which has its own effects on the window
    QString message;             ///< to be shown; mostly empty
    bool stepEntryGone = false;  ///< the step index moved to the nearest entry, if one is left
};

/// The choices of the edit frame's lists, as they read.
struct EditChoice {
    QString valueName;
    QString multiplier;
    QString letter;  ///< empty if the entry has one that the list does not know
};

/// A melody as its file gives it.
struct MelodyFile {
    MelodyTexts texts;
    QStringList bookmarks;
    QString name;
    int tempo = Composition::kDefaultTempo;
    int instrument = Composition::kDefaultInstrument;
    MelodySource source = {};
};

/// The operations that change a composition, each of which can be taken back. It makes no sound and
/// shows nothing: the window does, by the outcome and the composition.
///
/// A damaged melody has no entries, and none can be added: `reset` or `open` replaces it.
class MelodyEditor {
public:
    explicit MelodyEditor(Composition& composition) : composition_(composition) {}

    /// Makes a note 36..95 the active one, unless a tie is chosen: its note sounds, but the tied
    /// entry takes the one chosen before. Whether it did.
    bool chooseActiveNote(pitch::NoteNumber note);

    /// Append the active note, if there is one, or a rest. A full melody refuses with a message.
    EditOutcome insertNote();
    EditOutcome insertRest();

    /// Takes the last entry away; the range is the whole melody again. The only entry is taken away
    /// by `reset`.
    EditOutcome deleteLast();

    /// Empties the melody, its name and its bookmarks, and ends step mode.
    EditOutcome reset();

    /// Change, insert after, or delete the entry at the step index; nothing if there is none. The
    /// index -1 inserts at the front. A value without a name modifies nothing. Once the entry is
    /// modified the window plays it.
    EditOutcome modify(const EditChoice& choice);
    EditOutcome insertAfter(const EditChoice& choice);
    EditOutcome deleteAtStep();

    /// Appends what stands from the entry of the edit frame to the end of the range once more; from
    /// an entry behind the range, to the end of the melody.
    EditOutcome repeatFromStep();

    /// Moves the amount of transposition by a semitone within -12..12; an empty melody has none.
    void changeTransposition(int semitones);

    /// How to go on with the transposition; empty where there is nothing to transpose.
    QString transpositionHint() const;

    /// Transposes the melody by the amount, which then returns to 0. If a note would leave the five
    /// octaves nothing changes and a message says so.
    EditOutcome transpose();

    /// Take what a box of the range holds and answer what it shows then. Both end step mode.
    QString validateStart(const QString& box);
    QString validateEnd(const QString& box);

    /// Puts a file's melody in the place of this one, its whole length in the range. A damaged file
    /// leaves its texts and a message; one that is too long leaves only a message.
    EditOutcome open(const MelodyFile& file);

    /// The same of a melody that was never saved.
    EditOutcome recover(const MelodyFile& file);

    /// Puts other bookmarks in the place of these.
    EditOutcome setBookmarks(const QStringList& items);

    /// Not to be called while something plays.
    bool canUndo() const { return history_.canUndo(); }
    bool canRedo() const { return history_.canRedo(); }
    EditOutcome undo() { return {true, false, {}, !history_.undo(composition_)}; }
    EditOutcome redo() { return {true, false, {}, !history_.redo(composition_)}; }

    /// Whether the melody, its tempo or its instrument differs from what was saved or opened last.
    bool modified() const { return history_.modified(composition_); }
    void markSaved() { history_.markSaved(composition_); }

private:
    using Recorder = MelodyHistory::Recorder;

    EditOutcome append(EntrySettings::Kind kind, pitch::NoteNumber note);
    pitch::NoteNumber chosenNote(const EditChoice& choice) const;
    void takeDuration(const EditChoice& choice, MelodyEntry& entry);

    Composition& composition_;
    MelodyHistory history_;
    int lastDocument_ = 0;
};
