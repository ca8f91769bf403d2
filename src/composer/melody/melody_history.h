#pragma once

#include "composer/melody/composition.h"

#include <map>
#include <vector>

/// What a change of the melody changes beside its entries.
struct EditState {
    PlayRange range;
    std::int16_t stepIndex = 0;
    Bookmarks bookmarks;
    QString name;
    MelodySource source;
    int document = 0;
    int tempo = 0;
    int instrument = 0;
    EntrySettings::Mode mode;

    static EditState of(const Composition& composition);
};

/// The changes of a melody, to be taken back and done again without limit.
///
/// A change keeps only the entries that it took out or put in, so a key press costs the same in a
/// long melody as in a short one. Going back restores the range and the bookmarks as they were just
/// before the change. Name, tempo, instrument and the chosen attribute are restored only where the
/// change itself altered them: what the user set in the meantime stays. Step mode stays with its
/// entry; where the change itself had moved it, it goes back there.
class MelodyHistory {
public:
    class Recorder;

    bool canUndo() const { return !done_.empty(); }
    bool canRedo() const { return !undone_.empty(); }

    /// Take the last change back, or do it again; nothing happens if there is none. If the entry at
    /// the step index goes, the index moves to the nearest one, and step mode ends with the last.
    /// Whether the entry is still there.
    bool undo(Composition& composition);
    bool redo(Composition& composition);

    /// Whether the melody differs from what was last saved or opened of it. Its tempo and its
    /// instrument, which are saved with it, count as well, though they are not taken back.
    bool modified(const Composition& composition) const;
    void markSaved(const Composition& composition);

private:
    struct Change {
        MelodyDelta delta;
        EditState before;
        EditState after;
    };

    struct Saved {
        std::size_t changes = 0;  ///< that led there
        int tempo = 0;
        int instrument = 0;
    };

    void record(Change change);
    static void moveLast(std::vector<Change>& from, std::vector<Change>& to);
    static bool restore(Composition& composition, Change& change, const EditState& from,
                        const EditState& to);

    std::vector<Change> done_;
    std::vector<Change> undone_;
    std::map<int, Saved> saved_{{0, {}}};  ///< by document, for as long as a path leads back there
};

/// Records one change of a composition: made before it, told of the entries' change, and committed
/// after it. A change that left everything as it was is not recorded.
class MelodyHistory::Recorder {
public:
    Recorder(MelodyHistory& history, Composition& composition)
        : history_(history), composition_(composition), before_(EditState::of(composition)) {}

    /// Puts entries in the place of `count` entries at `position`.
    void replace(int position, int count, std::vector<MelodyEntry> entries);

    /// Puts a whole melody in the place of this one.
    void replaceAll(std::vector<MelodyEntry> entries,
                    std::shared_ptr<const MelodyTexts> damaged = {});

    void commit();

private:
    MelodyHistory& history_;
    Composition& composition_;
    EditState before_;
    MelodyDelta delta_;
    bool entriesChanged_ = false;
};
