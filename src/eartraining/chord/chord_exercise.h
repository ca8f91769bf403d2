#pragma once

#include "eartraining/chord/chord_range.h"
#include "eartraining/chord/chord_types.h"
#include "eartraining/ear_exercise.h"
#include "eartraining/ear_prompt.h"
#include "platform/user_text.h"

#include <array>

/// Recognising the type of a chord whose root falls into a range that the user chooses on the
/// keyboard. Answers are judged even while the exercise does not run.
class ChordExercise : public EarExercise {
public:
    static constexpr EarPrompt kRecognise{
        QT_TRANSLATE_NOOP("UserText", "Riconosci tipo accordo suonato")};

    /// `chord` holds the notes of the current chord, which outlives the window.
    ChordExercise(ExerciseContext& context, chord_types::Notes& chord);

    /// A click on a key: a bound of the range.
    void keyClicked(pitch::NoteIndex key) override;
    /// With a complete range, three keys that are held together answer with the type of their
    /// chord. Those still down from the choice of the range do not.
    void keyPlayed(pitch::NoteIndex key, const HeldKeys& held) override;

    /// Only with a complete range.
    void startOrStop() override;
    void typeClicked(int type);

    const char* hint() const override;
    std::optional<KeySpan> span() const override;
    bool canHearAgain() const override { return sounding_; }
    void hearAgain() override;

    bool available(int type) const { return !excluded_[static_cast<std::size_t>(type)]; }
    /// Takes one of the less common types out of the draw or puts it back in.
    void toggleAvailable(int type);

    /// Whether the keys of each chord are shown as it is played.
    bool showsKeys() const { return showsKeys_; }
    void toggleKeys() { showsKeys_ = !showsKeys_; }

    const ChordRange& range() const { return range_; }
    void resetRange();
    bool resetVisible() const { return resetVisible_; }

    void enter() override;
    void leave(bool keyboardTaken) override;
    void stopSound() override;

private:
    void setResetVisible(bool visible);
    void drawAndPlay();
    std::int16_t drawType();
    /// Plays a chord, after a silence if there was another one. Whether it came to that.
    bool playChord(chord_types::Notes chord);
    void silenceChord();
    bool endChord();

    chord_types::Notes& chord_;
    ChordRange range_;
    HeldKeys choosing_;  ///< were down when a key chose an end of the range
    std::array<bool, chord_types::kCount> excluded_{};
    std::int16_t current_ = 0;
    bool showsKeys_ = true;
    bool resetVisible_ = false;
    bool sounding_ = false;
    bool inSilence_ = false;  ///< before a chord
};
