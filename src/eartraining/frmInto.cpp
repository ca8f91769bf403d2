#include "eartraining/frmInto.h"

#include "core/funzioni_mm.h"
#include "core/instruments.h"
#include "core/services.h"
#include "eartraining/ear_training_state.h"
#include "eartraining/exercise_panel.h"
#include "eartraining/middle_c_patch.h"
#include "eartraining/score.h"
#include "platform/user_text.h"
#include "ui_frmInto.h"
#include "widgets/announcement.h"
#include "widgets/appearance.h"
#include "widgets/in_front.h"
#include "widgets/keyboard_span.h"
#include "widgets/panel_text.h"
#include "widgets/room_scale.h"
#include "widgets/verdict_badge.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr double kPromptTextScale = 1.5;
constexpr int kHintLetters = 56;  ///< wide ones; most of the hints stand in one line then

/// The instruction and the line below it stand on one ground.
void stylePrompt(QWidget& ground, QLabel& prompt) {
    appearance::enlargeText(prompt, kPromptTextScale, QFont::Normal);
    QPalette palette = ground.palette();
    palette.setColor(QPalette::Window, promptColour(palette));
    ground.setPalette(palette);
}

void addItem(QMenu& menu, const char* name, const QString& text, std::function<void()> handler) {
    QAction* item = menu.addAction(text);
    item->setObjectName(QString::fromUtf8(name));
    QObject::connect(item, &QAction::triggered, &menu, std::move(handler));
}

}  // namespace

frmInto::frmInto(const Services& services, EarTrainingState& state, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmInto>()),
      funzioniMM_(services.funzioniMM),
      verdict_(new VerdictBadge(this)),
      ear_(services.runtime, services.funzioniMM, services.dialogs, state, *this),
      keys_(services.midiKeyboard, *this, [this] { return isInFront(*this); }) {
    ui_->setupUi(this);
    const QSize made = RoomScale::forType(*this, size());
    resize(made.boundedTo(appearance::roomOnScreen(*this).size()));
    stylePrompt(*ui_->prompt, *ui_->lblStep);
    panel_text::reserve(*ui_->lblSpiegaStep, QString(kHintLetters, QLatin1Char('n')), 0);
    appearance::keepPlace(*ui_->cmdEsci);
    ui_->keyboard->showRangeMarks(true);
    span_ = new KeyboardSpan(*ui_->keyboard);
    connect(ui_->keyboard, &PianoKeyboard::arranged, this, &frmInto::placeVerdict);
    addPanels();
    orderTabs();
    buildMenus();
    connectControls();
    addKeys();
    hintSpeech_.setSingleShot(true);
    hintSpeech_.callOnTimeout(this, &frmInto::announceHint);
    showContext(state.requested());
    ear_.load();
    ui_->keyboard->setFocus();
    new RoomScale(*this, made);
}

/// When the program ends the window is destroyed without having been closed.
frmInto::~frmInto() {
    hide();
}

/// Each panel stands above the one before, so that the pitch exercise is under the interval chart
/// when both are visible. Their place is as high as the highest, so that the keyboard does not
/// move.
void frmInto::addPanels() {
    panels_ = makePanels(ear_.exercises(), ui_->exercises);
    int height = 0;
    for (ExercisePanel* panel : panels_) {
        ui_->panels->insertWidget(0, panel);
        height = std::max(height, panel->sizeHint().height());
    }
    ui_->exercises->setMinimumHeight(height);
}

/// The panels are made after the form; Tab goes through the window from top to bottom. The buttons
/// of the mode come before the others of their panel, so that what answers is next to the start.
void frmInto::orderTabs() {
    QWidgetList parts{ui_->score};
    std::copy(panels_.rbegin(), panels_.rend(), std::back_inserter(parts));
    parts << ui_->Fr1 << ui_->keyboard << ui_->cmdEsci;
    QWidget* last = nullptr;
    for (QWidget* part : parts) {
        QWidgetList controls = QList{part} + part->findChildren<QWidget*>();
        std::stable_partition(controls.begin(), controls.end(), [](const QWidget* control) {
            return qobject_cast<const QToolButton*>(control);
        });
        for (QWidget* control : controls) {
            if ((control->focusPolicy() & Qt::TabFocus) == 0 || control->window() != this)
                continue;
            if (last)
                setTabOrder(last, control);
            last = control;
        }
    }
}

void frmInto::buildMenus() {
    auto* bar = new QMenuBar(this);
    layout()->setMenuBar(bar);
    exercises_ = bar->addMenu(UserText::tr("Esercizio"));
    exercises_->setObjectName(QStringLiteral("Esercizio"));
    for (ExercisePanel* panel : panels_) {
        addItem(*exercises_, panel->menuItem().name, panel->menuItem().text,
                [this, panel] { choose(panel->exercise()); });
    }
    QMenu* instrument = bar->addMenu(UserText::tr("Strumento"));
    instrument->setObjectName(QStringLiteral("strumento"));
    addItem(*instrument, "mnuPiano", UserText::tr("Pianoforte"),
            [this] { chooseInstrument(instruments::kPianoforte); });
    addItem(*instrument, "mnuOrgano", UserText::tr("Organo"),
            [this] { chooseInstrument(instruments::kOrgano); });
    addItem(*instrument, "mnuSs", UserText::tr("Scegli strumento ..."), [this] { mnuSs_Click(); });
}

void frmInto::connectControls() {
    const auto cycleOctave = [this] { ear_.pianoKeys().cycleOctave(); };
    PianoKeyboard& keyboard = *ui_->keyboard;
    connect(&keyboard, &PianoKeyboard::keyDown, &keyboard,
            [&keyboard](int key) { keyboard.setMarked(key, true); });
    connect(&keyboard, &PianoKeyboard::keyUp, &keyboard,
            [&keyboard](int key) { keyboard.setMarked(key, false); });
    connect(&keyboard, &PianoKeyboard::keyClick, this,
            [this](int key) { ear_.keyClicked(static_cast<pitch::NoteIndex>(key)); });
    connect(new MiddleCPatch(keyboard), &MiddleCPatch::doubleClicked, this, cycleOctave);
    connect(ui_->score, &ScorePanel::percentageDoubleClicked, this, cycleOctave);
    const auto hearAgain = [this] { ear_.hearAgain(); };
    for (const ExercisePanel* panel : panels_)
        connect(panel, &ExercisePanel::hearAgainClicked, this, hearAgain);
    connect(ui_->Fr1, &InstrumentFrame::programChosen, this, &frmInto::chooseInstrument);
    connect(ui_->cmdEsci, &QPushButton::clicked, this, &QDialog::reject);
}

void frmInto::addKeys() {
    connect(new QShortcut(Qt::CTRL | Qt::Key_Return, this), &QShortcut::activated, this,
            [this] { ear_.startOrStop(); });
    connect(new QShortcut(Qt::Key_F2, this), &QShortcut::activated, this,
            [this] { announce(scoreInWords_); });
    connect(new QShortcut(Qt::Key_F3, this), &QShortcut::activated, this, [this] {
        announce(speech_.promptAgain());
        announce(ui_->lblSpiegaStep->text());
    });
}

/// Not a shortcut: one that is held down would repeat itself.
void frmInto::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F4 && event->modifiers() == Qt::NoModifier)
        ear_.hearAgain();
    else
        QDialog::keyPressEvent(event);
}

void frmInto::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!activated_)
        QMetaObject::invokeMethod(this, &frmInto::Form_Activate, Qt::QueuedConnection);
}

void frmInto::Form_Activate() {
    if (activated_)
        return;
    activated_ = true;
    ear_.activate();
}

void frmInto::done(int result) {
    if (ear_.unload())
        QDialog::done(result);
}

void frmInto::keyDown(int note) {
    if (!pitch::isPlayable(note))
        return;
    const pitch::NoteIndex key = pitch::noteIndexOf(static_cast<pitch::NoteNumber>(note));
    ui_->keyboard->setHeld(key, true);
    ear_.keyPlayed(key);
}

void frmInto::keyUp(int note) {
    if (!pitch::isPlayable(note))
        return;
    const pitch::NoteIndex key = pitch::noteIndexOf(static_cast<pitch::NoteNumber>(note));
    ui_->keyboard->setHeld(key, false);
    ear_.keyReleased(key);
}

void frmInto::choose(EarExercise& exercise) {
    showContext(exercise.code());
    announce(panelOf(exercise).menuItem().text);
    speech_.forgetPrompt();
    ear_.choose(exercise);
}

void frmInto::chooseInstrument(int program) {
    funzioniMM_.chooseInstrument(program);
    ui_->Fr1->showProgram(funzioniMM_.currentInstrument());
}

void frmInto::mnuSs_Click() {
    ui_->Fr1->open(funzioniMM_.currentInstrument());
}

ExercisePanel& frmInto::panelOf(const EarExercise& exercise) const {
    return **std::find_if(panels_.begin(), panels_.end(), [&exercise](const ExercisePanel* panel) {
        return &panel->exercise() == &exercise;
    });
}

/// The exercise's number, by which the manual finds its page.
void frmInto::showContext(ExerciseCode exercise) {
    setProperty("contextNumber", static_cast<int>(exercise));
}

void frmInto::showPrompt(const EarPrompt& prompt) {
    ui_->lblStep->setText(UserText::tr(prompt.text.data()));
    const QString words = speech_.prompt(prompt);
    if (activated_)
        announce(words);
}

void frmInto::showHint(const char* hint) {
    ui_->lblSpiegaStep->setText(UserText::tr(hint));
    if (activated_)
        hintSpeech_.start();
}

/// While an exercise runs the question sounds. A window that opens is read with its labels.
void frmInto::announceHint() {
    const bool running =
        std::any_of(panels_.begin(), panels_.end(),
                    [](const ExercisePanel* panel) { return panel->exercise().running(); });
    if (!running && isActiveWindow())
        announce(ui_->lblSpiegaStep->text());
}

void frmInto::showScore(const Score& score) {
    ui_->score->show(score);
    scoreInWords_ = EarSpeech::inWords(score);
}

void frmInto::announceVerdict(const Score& score) {
    announce(inWords(score.lastVerdict()));
}

void frmInto::showVerdict(const EarExercise& exercise, int answer, Verdict verdict) {
    if (QWidget* control = panelOf(exercise).answerControl(answer))
        verdict_->showOver(*control, verdict);
    else
        verdict_->showAt(*ui_->keyboard, ui_->keyboard->keyFace(answer), verdict);
    judged_ = answer;
}

/// The keyboard is of another size when a panel comes or goes.
void frmInto::placeVerdict() {
    if (verdict_->parentWidget() == ui_->keyboard)
        verdict_->setGeometry(ui_->keyboard->keyFace(judged_));
}

void frmInto::hideVerdict() {
    verdict_->hide();
}

void frmInto::showExercise(const EarExercise& exercise) {
    panelOf(exercise).showState();
}

void frmInto::focusStart(const EarExercise& exercise) {
    panelOf(exercise).focusStart();
}

void frmInto::showKey(pitch::NoteIndex key, bool pressed) {
    ui_->keyboard->setMarked(key, pressed);
}

void frmInto::showRangeMark(pitch::NoteIndex key, bool on) {
    ui_->keyboard->setRangeMark(key, on);
}

void frmInto::clearRangeMarks() {
    for (int key = 0; key < PianoKeyboard::kKeys; ++key)
        ui_->keyboard->setRangeMark(key, false);
}

void frmInto::showSpan(const std::optional<KeySpan>& span) {
    span_->setSpan(span ? std::optional(std::pair<int, int>(span->lower, span->upper))
                        : std::nullopt);
}

void frmInto::enableHearAgain(bool on) {
    for (ExercisePanel* panel : panels_)
        panel->enableHearAgain(on);
}

void frmInto::showClose(bool on) {
    ui_->cmdEsci->setVisible(on);
}

void frmInto::enableExerciseMenu(bool on) {
    exercises_->setEnabled(on);
}
