#pragma once

#include "reading/reading_session.h"
#include "reading/reading_speech.h"
#include "reading/reading_verdict.h"

#include <QObject>

class QKeyEvent;
class QWidget;
class ReadingBoard;
class ReadingControls;

/// The handlers of the reading drill: it owns the session, hands on to it what the user does on the
/// two halves of the drill, and shows and announces what the session says. F2 announces the counts,
/// F3 the place of the note on show.
class ReadingDrill : public QObject, private ReadingDisplay {
    Q_OBJECT

public:
    /// Puts the controls into their idle state.
    ReadingDrill(Runtime& runtime, FunzioniMM& funzioniMM, const QString& noteFolder,
                 ReadingBoard& board, ReadingControls& controls);

    void nameAnswers(pitch::AnswerNames style);
    void chooseMode(ReadingMode mode);
    void answerWithNote(bool on) { session_.setAnswerWithNote(on); }

    /// Lets `Start` be pressed or not, as far as the chosen range allows it.
    void enableStart(bool on);
    void focusStart();

    /// The keys of a MIDI keyboard, by their note number.
    void keyDown(int note) { session_.keyDown(note); }
    void keyUp(int note) { session_.keyUp(note); }
    /// Whether the automatic drill runs.
    bool runsAutomatically() const { return session_.pollsAnswers(); }
    /// While another activity that was started later runs inside its loop, no note follows, and the
    /// window says so.
    void showWaiting(bool waits);

    /// Offers what concerns a MIDI keyboard only where there is one.
    void showKeyboardChoices(bool on);

    void Start_Click();
    void Slider1_Change();
    void difficolt_Click();
    void Regolo_MouseDown(double y);

Q_SIGNALS:
    /// The statistics of a session have come or gone.
    void statisticsShown(bool shown);
    /// The automatic drill begins or has ended.
    void automaticRun(bool begins);

protected:
    /// Hands the answer keys to the session, whichever control of the drill has the focus. A key
    /// that answers does nothing else in the window.
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void showNote(int step) override;
    void Nascondinote() override;
    void showCounts(int conta, int er) override;
    void answerJudged(std::optional<int> degree, Verdict verdict) override;
    void sessionStarted() override;
    void sessionStopped(const ReadingStatistics& statistics) override;

    bool takesKey(const QWidget& focus, const QKeyEvent& key);
    void showRange();
    void addSpeechKeys();

    ReadingSession session_;
    ReadingBoard& board_;
    ReadingControls& controls_;
    ReadingVerdict verdict_;
    ReadingSpeech speech_;
    pitch::AnswerNames names_ = pitch::AnswerNames::Syllables;
    bool startEnabled_ = true;
};
