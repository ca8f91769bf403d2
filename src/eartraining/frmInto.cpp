#include "eartraining/frmInto.h"

#include "core/instruments.h"
#include "core/services.h"
#include "eartraining/ear_training_state.h"
#include "eartraining/middle_c_patch.h"
#include "ui_chord_panel.h"
#include "ui_frmInto.h"
#include "ui_interval_panel.h"
#include "ui_pitch_panel.h"
#include "widgets/announcement.h"
#include "widgets/appearance.h"

#include <QMenu>
#include <QMenuBar>

#include <array>

namespace {

constexpr double kPromptTextScale = 1.5;
constexpr double kPromptAccent = 0.22;  ///< the share of the accent in the prompt's ground

void stylePrompt(QLabel& prompt) {
    appearance::enlargeText(prompt, kPromptTextScale, QFont::Normal);
    QPalette palette = prompt.palette();
    palette.setColor(QPalette::Window,
                     appearance::mixed(palette.color(QPalette::Highlight),
                                       palette.color(QPalette::Window), kPromptAccent));
    prompt.setPalette(palette);
}

void addItem(QMenu& menu, const char* name, const QString& text, std::function<void()> handler) {
    QAction* item = menu.addAction(text);
    item->setObjectName(QLatin1String(name));
    QObject::connect(item, &QAction::triggered, &menu, std::move(handler));
}

}  // namespace

frmInto::frmInto(const Services& services, EarTrainingState& state, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmInto>()),
      ear_(services.runtime, services.funzioniMM, services.dialogs, state) {
    ui_->setupUi(this);
    resize(size().boundedTo(appearance::roomOnScreen(*this).size()));
    stylePrompt(*ui_->lblStep);
    appearance::keepPlace(*ui_->cmdEsci);
    ui_->keyboard->showRangeMarks(true);
    ui_->frmRacc->setMinimumHeight(ui_->FrmIntervalli->sizeHint().height());
    ui_->pitchPanel->attach(ear_.pitch());
    ui_->FrmIntervalli->attach(ear_.interval());
    ui_->frmRacc->attach(ear_.chord());
    ui_->Fr1->attach(services.funzioniMM);
    buildMenus();
    connectControls();
    showContext(state.chordRequested ? EarExercise::Chord : state.exercise);
    ear_.load(*this);
    ui_->keyboard->setFocus();
}

/// The end of the program leaves the window without closing it.
frmInto::~frmInto() {
    hide();
}

void frmInto::buildMenus() {
    auto* bar = new QMenuBar(this);
    layout()->setMenuBar(bar);
    exercises_ = bar->addMenu(QStringLiteral("Esercizio"));
    exercises_->setObjectName(QStringLiteral("Esercizio"));
    addItem(*exercises_, "mnuNota", QStringLiteral("Riconoscimento altezza nota"),
            [this] { mnuNota_Click(); });
    addItem(*exercises_, "mnuRint", QStringLiteral("Riconoscimento intervallo"),
            [this] { mnuRint_Click(); });
    addItem(*exercises_, "mnuRicTa", QStringLiteral("Riconoscimento tipo accordo"),
            [this] { mnuRicTa_Click(); });
    QMenu* instrument = bar->addMenu(QStringLiteral("Strumento"));
    instrument->setObjectName(QStringLiteral("strumento"));
    addItem(*instrument, "mnuPiano", QStringLiteral("Pianoforte"),
            [this] { ui_->Fr1->choose(instruments::kPianoforte); });
    addItem(*instrument, "mnuOrgano", QStringLiteral("Organo"),
            [this] { ui_->Fr1->choose(instruments::kOrgano); });
    addItem(*instrument, "mnuSs", QStringLiteral("Scegli strumento ..."),
            [this] { ui_->Fr1->mnuSs_Click(); });
}

void frmInto::connectControls() {
    const auto cycleOctave = [this] { ear_.pianoKeys().cycleOctave(); };
    PianoKeyboard& keyboard = *ui_->keyboard;
    keyboard.onKeyDown([&keyboard](int key) { keyboard.setMarked(key, true); });
    keyboard.onKeyUp([&keyboard](int key) { keyboard.setMarked(key, false); });
    keyboard.onKeyClick([this](int key) { ear_.keyClicked(static_cast<pitch::NoteIndex>(key)); });
    new MiddleCPatch(keyboard, cycleOctave);
    ui_->score->onPercentageDoubleClick(cycleOctave);
    connect(ui_->cmdEsci, &QPushButton::clicked, this, &QDialog::reject);
}

void frmInto::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!activated_)
        QMetaObject::invokeMethod(
            this, [this] { Form_Activate(); }, Qt::QueuedConnection);
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

void frmInto::mnuNota_Click() {
    showContext(EarExercise::Pitch);
    ear_.choosePitch();
}

void frmInto::mnuRint_Click() {
    showContext(EarExercise::Interval);
    ear_.chooseInterval();
}

void frmInto::mnuRicTa_Click() {
    showContext(EarExercise::Chord);
    ear_.chooseChord();
}

/// The exercise's number, for what will be told of it elsewhere, as a help topic.
void frmInto::showContext(EarExercise exercise) {
    setProperty("contextNumber", static_cast<int>(exercise));
}

QWidget& frmInto::widgetOf(EarControl control) {
    auto& pitch = ui_->pitchPanel->ui();
    auto& chord = ui_->frmRacc->ui();
    const std::array<QWidget*, 7> widgets{
        ui_->cmdEsci, pitch.cmdReimposta, pitch.IntoStart, ui_->FrmIntervalli,
        ui_->frmRacc, chord.ComdRacStart, chord.cmdRes,
    };
    return *widgets[static_cast<std::size_t>(control)];
}

QPushButton& frmInto::startButtonOf(EarExercise exercise) {
    if (exercise == EarExercise::Pitch)
        return *ui_->pitchPanel->ui().IntoStart;
    if (exercise == EarExercise::Interval)
        return *ui_->FrmIntervalli->ui().CmdIntStart;
    return *ui_->frmRacc->ui().ComdRacStart;
}

void frmInto::showPrompt(EarPrompt prompt) {
    ui_->lblStep->setText(textOf(prompt));
    announce(*ui_->lblStep);
}

void frmInto::showScore(const Score& score) {
    ui_->score->show(score);
}

void frmInto::announceVerdict(const Score& score) {
    ui_->score->announceVerdict(score);
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

void frmInto::showControl(EarControl control, bool on) {
    // A frame that comes takes the place of the panel; side by side they would stretch the window.
    if (on && (control == EarControl::FrmIntervalli || control == EarControl::frmRacc))
        ui_->pitchPanel->hide();
    widgetOf(control).setVisible(on);
    arrangePitchPanel();
}

/// The controls of the pitch exercise make room for the other exercises, unless one of them is
/// asked for there too. Alone, they are as high as the others, so that the keyboard stays in place.
void frmInto::arrangePitchPanel() {
    const bool intervals = !ui_->FrmIntervalli->isHidden();
    ui_->pitchPanel->setVisible(ui_->frmRacc->isHidden() &&
                                (!intervals || ui_->pitchPanel->hasButtons()));
    ui_->pitchPanel->setMinimumHeight(intervals ? 0 : ui_->FrmIntervalli->sizeHint().height());
}

void frmInto::focusIntoStart() {
    ui_->pitchPanel->ui().IntoStart->setFocus();
}

void frmInto::enableExerciseMenu(bool on) {
    exercises_->setEnabled(on);
}

void frmInto::showRunning(EarExercise exercise, bool running) {
    QPushButton& button = startButtonOf(exercise);
    button.setText(running ? QStringLiteral("Stop") : QStringLiteral("Start"));
    const QPalette source =
        running ? ui_->lblStep->palette() : ui_->pitchPanel->ui().Label6->palette();
    QPalette palette = button.palette();
    palette.setColor(QPalette::Button, source.color(running ? QPalette::Window : QPalette::Button));
    button.setPalette(palette);
}
