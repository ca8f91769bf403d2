#pragma once

#include "core/pitch.h"
#include "eartraining/exercise_code.h"
#include "eartraining/key_span.h"

#include <optional>
#include <set>

class ExerciseContext;

using HeldKeys = std::set<pitch::NoteIndex>;

/// The interface and common state of an exercise of the ear-training window, which uses exercises
/// by this class only. One of them is chosen at a time; an exercise runs from its start to its
/// stop.
class EarExercise {
public:
    EarExercise(ExerciseContext& context, ExerciseCode code, bool startVisible = true)
        : context_(context), code_(code), startVisible_(startVisible) {}
    virtual ~EarExercise() = default;

    EarExercise(const EarExercise&) = delete;
    EarExercise& operator=(const EarExercise&) = delete;

    ExerciseCode code() const { return code_; }
    bool chosen() const { return chosen_; }
    void setChosen(bool chosen);

    bool running() const { return running_; }
    virtual void startOrStop() = 0;

    /// Whether the panel and the start button on it are visible.
    virtual bool visible() const { return chosen_; }
    bool startVisible() const { return startVisible_; }

    /// The second line beside the instruction, a literal shown by `UserText::tr`.
    virtual const char* hint() const = 0;
    /// The range that was chosen on the keyboard, once it has both ends.
    virtual std::optional<KeySpan> span() const = 0;

    /// Whether something has been asked that has not been answered. It is then played again in the
    /// mode that is chosen now, and counts nothing.
    virtual bool canHearAgain() const = 0;
    virtual void hearAgain() = 0;

    /// Whether the exercise, once chosen, has the keyboard to itself: the range marks of the other
    /// exercises are removed, and `leave` tells them so.
    virtual bool takesKeyboard() const { return true; }
    /// A click on a key of the keyboard while the exercise is chosen.
    virtual void keyClicked(pitch::NoteIndex /*key*/) {}
    /// A key of a MIDI keyboard went down; `held` are all that are down then.
    virtual void keyPlayed(pitch::NoteIndex key, const HeldKeys& /*held*/) { keyClicked(key); }

    /// Begins anew when the exercise is chosen from the menu, even if it was chosen before.
    virtual void enter() = 0;
    /// Ends what it sounds and shows when another exercise is chosen.
    virtual void leave(bool keyboardTaken) = 0;
    /// Ends a note that was left sounding; sends nothing if there is none.
    virtual void stopSound() = 0;

protected:
    ExerciseContext& context() const { return context_; }
    /// While an exercise runs no other can be chosen, and the window stays open.
    void setRunning(bool running);
    void setStartVisible(bool visible);
    void focusStart();
    /// To be called after every change of what the panel shows.
    void changed();

private:
    ExerciseContext& context_;
    const ExerciseCode code_;
    bool chosen_ = false;
    bool running_ = false;
    bool startVisible_;
};
