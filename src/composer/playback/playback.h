#pragma once

#include "composer/melody/step_mode.h"
#include "composer/playback/melody_player.h"

#include <QString>

struct MelodyEntry;

/// What the edit frame shows of the entry that was stepped to.
struct StepEntry {
    QString noteName;
    QString letter;
    QString valueName;       ///< `rhythm::kNoValueName` if the duration has no name
    bool canModify = false;  ///< `cmdModifica` is enabled

    static StepEntry of(const MelodyEntry& entry);
};

/// What the playback controls show beside the player.
class PlaybackView : public PlayerView {
public:
    virtual void openEditFrame() = 0;  ///< shows `frmModifica`, its multiplier set to "1"
    virtual void hideEditFrame() = 0;
    virtual void showStepEntry(const StepEntry& entry) = 0;
    virtual void untickLoop() = 0;  ///< `chekLoop`

    /// For those who do not see it: the user went to the entry at the step index.
    virtual void announceStep() = 0;
};

/// The playback controls: "Play" and "Stop", the delayed start, and the step arrows.
class Playback {
public:
    Playback(Runtime& runtime, FunzioniMM& funzioniMM, Composition& composition,
             PlaybackView& view);

    MelodyPlayer& player() { return player_; }
    const MelodyPlayer& player() const { return player_; }

    /// A click on `cmdPlay`: leaves step mode and plays the range, or stops.
    void clickPlay();

    /// Three seconds in which the window does not respond, then a click on `cmdPlay`.
    void clickDelayedPlay();

    /// Stops as a click would; nothing happens when nothing plays.
    void stop();

    /// Ends step mode and hides the edit frame.
    void leaveStep();

    /// A click on a step arrow: goes to the next entry of the range, makes its note the active one
    /// and plays it. Nothing happens while something plays. Answers a message to be shown, or the
    /// empty text.
    QString step(StepMode::Direction direction);

    /// The same for an entry that the user chose, in the range or not.
    void stepTo(int entry);

    /// Plays the entry at the step index once, as after a modification.
    void playStepEntry();

    /// After undo and redo, or when the entry at the step index went: everything that names an
    /// entry names the one that is there now, and its note is the active one. Without an entry the
    /// edit frame is hidden. `entryGone`: the last entry may be deleted again.
    void followStep(bool entryGone);

    /// Names the entry at the step index as the current one, after an insertion or a deletion
    /// there; at the index -1 there is none.
    void showStepPlace();

private:
    QString showStep();
    void takeStepEntry();
    QString describeAnomaly() const;

    Runtime& runtime_;
    Composition& composition_;
    MelodyPlayer player_;
    PlaybackView& view_;
};
