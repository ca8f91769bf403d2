#pragma once

#include "core/verdict.h"
#include "platform/runtime.h"
#include "reading/reading_statistics.h"
#include "reading/step_range_choice.h"

#include <QDateTime>
#include <QString>

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

class FunzioniMM;

/// What the reading session shows; the window's `ReadingDrill` implements it.
class ReadingDisplay {
public:
    virtual ~ReadingDisplay() = default;

    virtual void showNote(int step) = 0;  ///< make the picture of a step visible
    virtual void Nascondinote() = 0;      ///< hide every picture of a note
    virtual void showCounts(int conta, int er) = 0;
    /// An answer to the note on show, by its degree 0 (Do) to 6 (Si), has been judged; a black key
    /// has no degree.
    virtual void answerJudged(std::optional<int> degree, Verdict verdict) = 0;
    virtual void sessionStarted() = 0;
    /// The session is over; the statistics are shown unless they are empty.
    virtual void sessionStopped(const ReadingStatistics& statistics) = 0;
};

/// A session of the note-reading drill, in both modes: it draws notes, judges answers and counts.
///
/// In the mode "normale" the answers come through `answer`; in the mode "automatico" `Start` runs
/// the session's loop until it is stopped, and the answers come from the keyboard as the runtime
/// holds it.
class ReadingSession {
public:
    /// `noteFolder` ends with a backslash. The display is used from the first start on.
    ReadingSession(Runtime& runtime, FunzioniMM& funzioniMM, QString noteFolder,
                   ReadingDisplay& display);

    ReadingMode mode() const { return mode_; }
    void setMode(ReadingMode mode) { mode_ = mode; }

    /// Whether the mode "normale" confirms right answers with the note itself instead of a sound
    /// file. The automatic mode never does: a note sounds until the next one is played, which there
    /// can be many unanswered notes later.
    void setAnswerWithNote(bool on) { answerWithNote_ = on; }

    /// Whether a key of a MIDI keyboard has to be the very note on show; otherwise it answers in
    /// any octave.
    void setExactOctave(bool on) { exactOctave_ = on; }

    /// Notes per minute, above 0.
    void setSpeed(int notesPerMinute) { period_ = 60.0 / notesPerMinute; }

    /// Takes the range of a difficulty item and replaces the note on show by one of that range.
    void chooseDifficulty(std::size_t item);

    StepRangeChoice& stepRange() { return stepRange_; }
    const StepRangeChoice& stepRange() const { return stepRange_; }

    /// Whether a session runs, or the loop of a stopped automatic one has not ended yet.
    bool active() const { return running_ || automaticLoop_; }

    /// Whether answers come from the polled keys just now.
    bool pollsAnswers() const { return automaticLoop_; }

    /// Starts a session; nothing happens while one is active. In the automatic mode this returns
    /// when the session is over.
    void start();

    /// Stops the session; an automatic one ends at its next pass.
    void stop();

    /// An answer of the mode "normale" for a degree 1 (Do) to 7 (Si). Ignored in the automatic
    /// mode and while no session runs.
    void answer(int degree);

    /// A key of a MIDI keyboard, by its note number: an answer in both modes. A black key is a
    /// wrong one.
    void keyDown(int note);
    void keyUp(int note) { pianoKeys_.erase(note); }

private:
    void Mostranota();
    int drawStep();
    /// Whether an answer of the mode "normale" counts now.
    bool takesAnswers() const { return mode_ == ReadingMode::Normale && running_; }
    void judge(std::optional<int> degree, bool right);
    void checkAnswer(bool right);
    void confirmRightAnswer();
    void runAutomatic();
    bool takeAnswers(Instant noteStart);
    void pollKeys();
    void pollPianoKeys();
    bool isAsked(int degree) const;
    bool isKeyOfNote(int note) const;
    void judgePolled(std::optional<int> degree, bool right, bool freshlyPressed);
    void finish();
    void showCounts();

    Runtime& runtime_;
    FunzioniMM& funzioniMM_;
    QString noteFolder_;
    ReadingDisplay& display_;

    ReadingMode mode_ = ReadingMode::Normale;
    StepRangeChoice stepRange_;
    bool answerWithNote_ = false;
    bool exactOctave_ = false;
    double period_ = 2;

    bool running_ = false;
    bool automaticLoop_ = false;
    int stepOnShow_ = 0;
    bool answered_ = false;
    std::array<bool, pitch::kDegrees> keysDown_{};  ///< per degree, as of the last pass
    std::set<int> pianoKeys_;                       ///< of a MIDI keyboard, that are down
    std::vector<int> pianoPresses_;                 ///< the ones that went down since the last pass
    std::int16_t correct_ = 0;
    std::int16_t wrong_ = 0;
    std::int16_t shown_ = 0;
    int conta_ = 0;  ///< the number that the counter `conta` shows
    QDateTime startTime_;
};
