#pragma once

#include "reading/reading_session.h"

#include <QObject>

class QKeyEvent;
class QWidget;
class ReadingBoard;
class ReadingControls;

/// The drill's handlers: it translates what the user does on the two halves of the drill into the
/// session and shows what the session says.
class ReadingDrill : public QObject, public ReadingDisplay {
public:
    /// Puts the controls into their idle state.
    ReadingDrill(ReadingSession& session, ReadingBoard& board, ReadingControls& controls);

    void nameAnswers(pitch::AnswerNames style);
    void chooseMode(ReadingMode mode);

    /// Lets `Start` be pressed or not, as far as the chosen range allows it.
    void enableStart(bool on);
    void focusStart();

    void Start_Click();
    void Slider1_Change();
    void difficolt_Click();
    void Regolo_MouseDown(double y);

    void showNote(int step) override;
    void Nascondinote() override;
    void showCounts(int conta, int er) override;
    void sessionStarted() override;
    void sessionStopped(const ReadingStatistics& statistics) override;

protected:
    /// Hands the answer keys to the session, whichever control of the drill has the focus. A key
    /// that answers does nothing else in the window.
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    bool takesKey(const QWidget& focus, const QKeyEvent& key);
    void showRange();

    ReadingSession& session_;
    ReadingBoard& board_;
    ReadingControls& controls_;
    pitch::AnswerNames names_ = pitch::AnswerNames::Syllables;
    bool startEnabled_ = true;
};
