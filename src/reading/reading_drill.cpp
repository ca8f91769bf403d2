#include "reading/reading_drill.h"

#include "platform/user_text.h"
#include "reading/answer_keys.h"
#include "reading/reading_board.h"
#include "reading/reading_controls.h"
#include "reading/reading_staff.h"
#include "reading/regolo.h"
#include "ui_reading_controls.h"
#include "widgets/action_icon.h"
#include "widgets/announcement.h"
#include "widgets/number_label.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>

namespace {

bool takesTyping(const QWidget& widget) {
    const auto* line = qobject_cast<const QLineEdit*>(&widget);
    return qobject_cast<const QComboBox*>(&widget) ||
           qobject_cast<const QAbstractSpinBox*>(&widget) || (line && !line->isReadOnly());
}

/// A session shows its counts in each pass, and screen readers look at whatever is set.
void showCount(QLineEdit& counter, int count) {
    const QString text = QString::number(count);
    if (counter.text() != text)
        counter.setText(text);
}

}  // namespace

ReadingDrill::ReadingDrill(Runtime& runtime, FunzioniMM& funzioniMM, const QString& noteFolder,
                           ReadingBoard& board, ReadingControls& controls)
    : session_(runtime, funzioniMM, noteFolder, *this),
      board_(board),
      controls_(controls),
      verdict_(runtime, [this] { board_.showVerdict(verdict_.shown()); }) {
    auto& ui = controls_.ui();
    connect(ui.Start, &QPushButton::clicked, this, &ReadingDrill::Start_Click);
    connect(ui.Slider1, &QSlider::valueChanged, this, &ReadingDrill::Slider1_Change);
    connect(ui.difficolt, &QComboBox::activated, this, &ReadingDrill::difficolt_Click);
    connect(&board_.staff().ruler(), &Regolo::pressed, this, &ReadingDrill::Regolo_MouseDown);
    connect(ui.ckOttava, &QCheckBox::toggled, this,
            [this](bool on) { session_.setExactOctave(on); });
    for (int degree = 0; degree < pitch::kDegrees; ++degree) {
        connect(board_.answerButtons()[static_cast<std::size_t>(degree)], &QPushButton::clicked,
                this, [this, degree] { session_.answer(degree + 1); });
    }
    QCoreApplication::instance()->installEventFilter(this);
    addSpeechKeys();

    board_.enableAnswers(false);
    controls_.showSpeedControls(false);
    controls_.hideStatistics();
    showKeyboardChoices(false);
    Nascondinote();
    showRange();
}

void ReadingDrill::addSpeechKeys() {
    const auto on = [this](Qt::Key key, auto text) {
        connect(new QShortcut(key, controls_.window()), &QShortcut::activated, this,
                [text] { announce(text()); });
    };
    on(Qt::Key_F2, [this] { return speech_.counts(); });
    on(Qt::Key_F3, [this] { return speech_.noteAgain(); });
}

void ReadingDrill::nameAnswers(pitch::AnswerNames style) {
    names_ = style;
    board_.nameAnswers(style);
    showRange();
}

void ReadingDrill::chooseMode(ReadingMode mode) {
    session_.setMode(mode);
    board_.enableAnswers(mode == ReadingMode::Normale);
    board_.showKeys(mode);
    controls_.showSpeedControls(mode == ReadingMode::Automatico);
}

void ReadingDrill::showWaiting(bool waits) {
    showRange();
    if (!waits)
        return;
    const QString told = UserText::tr("In attesa: prima ferma il metronomo");
    controls_.ui().lblIntervallo->setText(told);
    announce(told);
}

void ReadingDrill::enableStart(bool on) {
    startEnabled_ = on;
    controls_.ui().Start->setEnabled(on && session_.stepRange().startAllowed());
}

void ReadingDrill::showKeyboardChoices(bool on) {
    controls_.ui().ckOttava->setVisible(on);
}

void ReadingDrill::focusStart() {
    controls_.ui().Start->setFocus();
}

void ReadingDrill::Start_Click() {
    if (session_.active())
        session_.stop();
    else
        session_.start();
}

void ReadingDrill::Slider1_Change() {
    const int notesPerMinute = controls_.ui().Slider1->value();
    session_.setSpeed(notesPerMinute);
    controls_.showSpeed(notesPerMinute);
}

void ReadingDrill::difficolt_Click() {
    QComboBox& list = *controls_.ui().difficolt;
    const std::size_t item = difficulty::chosenItem(static_cast<std::size_t>(list.currentIndex()));
    list.setCurrentIndex(static_cast<int>(item));
    session_.chooseDifficulty(item);
    board_.staff().ruler().showAllMarkers();
    showRange();
}

void ReadingDrill::Regolo_MouseDown(double y) {
    StepRangeChoice& range = session_.stepRange();
    if (session_.active() || !range.acceptsClicks())
        return;
    if (range.nothingChosen())
        Nascondinote();
    if (const std::optional<int> step = range.click(y))
        board_.staff().ruler().hideMarker(*step);
    showRange();
    announce(controls_.ui().lblIntervallo->text());
}

void ReadingDrill::showNote(int step) {
    verdict_.noteShown(step);
    board_.staff().showNote(step);
    announce(speech_.note(step));
}

void ReadingDrill::Nascondinote() {
    verdict_.noteHidden();
    board_.staff().hideNotes();
}

void ReadingDrill::showCounts(int conta, int er) {
    speech_.count(conta, er);
    showCount(*controls_.ui().conta, conta);
    showCount(*controls_.ui().er, er);
}

void ReadingDrill::answerJudged(std::optional<int> degree, Verdict verdict) {
    verdict_.judged(verdict, degree);
    announce(speech_.verdict(verdict), ReadingSpeech::kAfterSound);
}

void ReadingDrill::sessionStarted() {
    speech_.start(session_.mode());
    controls_.ui().Start->setText(UserText::tr("Stop"));
    setActionIcon(*controls_.ui().Start, ActionIcon::Stop);
    controls_.hideStatistics();
    Q_EMIT statisticsShown(false);
    // No range can be chosen during a session, and its staff shows nothing but the note asked for.
    board_.staff().ruler().setEnabled(false);
    board_.staff().ruler().showAllMarkers();
    board_.enableAnswers(session_.mode() == ReadingMode::Normale);
    showRange();
    Q_EMIT automaticRun(session_.mode() == ReadingMode::Automatico);
}

void ReadingDrill::sessionStopped(const ReadingStatistics& statistics) {
    controls_.ui().Start->setText(UserText::tr("Start"));
    setActionIcon(*controls_.ui().Start, ActionIcon::Play);
    verdict_.end();
    board_.staff().ruler().setEnabled(true);
    board_.enableAnswers(false);
    announce(speech_.stop(statistics));
    Q_EMIT automaticRun(false);
    if (statistics.empty())
        return;
    controls_.showStatistics(statistics);
    Q_EMIT statisticsShown(true);
}

bool ReadingDrill::eventFilter(QObject* target, QEvent* event) {
    // A counter would copy or select its number where the menu has a shortcut.
    if (event->type() == QEvent::ShortcutOverride &&
        (target == controls_.ui().conta || target == controls_.ui().er)) {
        event->ignore();
        return true;
    }
    const auto* focus = qobject_cast<QWidget*>(target);
    return event->type() == QEvent::KeyPress && focus && focus->window() == controls_.window() &&
           takesKey(*focus, *static_cast<QKeyEvent*>(event));
}

bool ReadingDrill::takesKey(const QWidget& focus, const QKeyEvent& key) {
    // No item of the drill's own list is found by an answer's key.
    if (takesTyping(focus) && &focus != controls_.ui().difficolt)
        return false;
    if (session_.pollsAnswers())
        return answer_keys::isPolled(key.key(), key.modifiers().testFlag(Qt::KeypadModifier));
    const bool opensNumber = qobject_cast<const NumberLabel*>(&focus) && NumberLabel::isDigit(key);
    if (!session_.active() || opensNumber || key.text().size() != 1)
        return false;
    const std::optional<int> degree = answer_keys::degreeOf(key.text().front().unicode());
    if (!degree)
        return false;
    session_.answer(*degree + 1);
    return true;
}

void ReadingDrill::showRange() {
    enableStart(startEnabled_);
    controls_.ui().lblIntervallo->setText(session_.stepRange().inWords(names_));
}
