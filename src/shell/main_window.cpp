#include "shell/main_window.h"

#include "composer/frmComposer.h"
#include "core/funzioni_mm.h"
#include "core/instruments.h"
#include "eartraining/frmInto.h"
#include "metronome/frmMetro.h"
#include "platform/folders.h"
#include "platform/help_viewer.h"
#include "platform/runtime.h"
#include "platform/user_text.h"
#include "reading/reading_drill.h"
#include "reference/frmOptions.h"
#include "shell/frmAbout.h"
#include "shell/frmMidiTest.h"
#include "shell/status_line.h"
#include "ui_main_window.h"
#include "widgets/announcement.h"
#include "widgets/appearance.h"
#include "widgets/in_front.h"
#include "widgets/label_button.h"
#include "widgets/room_scale.h"

#include <QCloseEvent>
#include <QLabel>
#include <QToolButton>

namespace {

constexpr int kStatusIndent = 12;

}  // namespace

MainWindow::MainWindow(const Services& services)
    : services_(services),
      ui_(std::make_unique<Ui::MainWindow>()),
      noteFolder_(start_up::noteFolder(services.folders.programFolder())),
      helpFile_(start_up::helpFile(services.folders.programFolder())),
      status_(new QLabel),
      chooseOutput_(new QToolButton),
      keys_(services.midiKeyboard, *this, [this] { return isInFront(*this); }) {
    ui_->setupUi(this);
    const QSize made = RoomScale::forType(*this, size());
    resize(made.boundedTo(appearance::roomOnScreen(*this).size()));
    ui_->exitRow->setContentsMargins(0, 0, ui_->toolArea->barRoom(), 0);
    status_->setContentsMargins(kStatusIndent, 0, 0, 2);
    ui_->statusBar->addWidget(status_, 1);
    drill_ = std::make_unique<ReadingDrill>(services_.runtime, services_.funzioniMM, noteFolder_,
                                            *ui_->board, *ui_->controls);
    metronomeFrame_ =
        new frmMetro(services_.runtime, services_.funzioniMM, metronomeState_, *this, ui_->centre);
    ui_->tools->insertWidget(ui_->tools->indexOf(ui_->guide), metronomeFrame_);
    connect(drill_.get(), &ReadingDrill::automaticRun, metronomeFrame_, [this](bool begins) {
        metronomeFrame_->showWaiting(begins && metronomeState_.MetroRunning);
    });
    addGuide();
    setTabOrder(&ui_->guide->lastControl(), ui_->cmdEsci);
    connectMenu();
    Form_Load();
    new RoomScale(*this, made);
}

/// When the system ends the program the window is destroyed without having been closed.
MainWindow::~MainWindow() {
    services_.funzioniMM.onChange(nullptr);
    services_.funzioniMM.MidiClose();
}

void MainWindow::connectMenu() {
    for (QAction* separator :
         {ui_->Sep3, ui_->step4, ui_->SeparatoreN, ui_->step5, ui_->Step6, ui_->Separatore30,
          ui_->Separatore1, ui_->Separatore2, ui_->Separatore3})
        separator->setSeparator(true);

    const auto on = [this](QAction* item, void (MainWindow::*handler)()) {
        item->setAutoRepeat(false);
        connect(item, &QAction::triggered, this, handler);
        // By its key a choice would be made without a word.
        connect(item, &QAction::triggered, this, [item] {
            if (item->isChecked())
                announce(item->text());
        });
    };
    on(ui_->Esci, &MainWindow::Esci_Click);
    on(ui_->mnuLettura, &MainWindow::mnuLettura_Click);
    on(ui_->Intonazione, &MainWindow::Intonazione_Click);
    on(ui_->mnuRint, &MainWindow::mnuRint_Click);
    on(ui_->mnuRac, &MainWindow::mnuRac_Click);
    on(ui_->mnuComposer, &MainWindow::mnuComposer_Click);
    on(ui_->mnuPromemoria, &MainWindow::mnuPromemoria_Click);
    on(ui_->mnuMetro, &MainWindow::mnuMetro_Click);
    on(ui_->mnuMidiTest, &MainWindow::mnuMidiTest_Click);
    on(ui_->Nominote1, &MainWindow::Nominote1_Click);
    on(ui_->Nominote2, &MainWindow::Nominote2_Click);
    on(ui_->Suono1, &MainWindow::Suono1_Click);
    on(ui_->Suono2, &MainWindow::Suono2_Click);
    on(ui_->mnuOrgano, &MainWindow::mnuOrgano_Click);
    on(ui_->mnuPiano, &MainWindow::mnuPiano_Click);
    on(ui_->mnuNormale, &MainWindow::mnuNormale_Click);
    on(ui_->mnuAutomatico, &MainWindow::mnuAutomatico_Click);
    on(ui_->mnuAiuto, &MainWindow::mnuAiuto_Click);
    on(ui_->mnuVersione, &MainWindow::mnuVersione_Click);
    connect(ui_->cmdEsci, &QPushButton::clicked, this, &MainWindow::Esci_Click);
    connect(&helpKey_, &HelpKey::pressed, this, [this] { services_.help.show(helpFile_); });
}

/// What a new user does not find by himself: the other exercises, the manual, and what to do when
/// nothing is heard.
void MainWindow::addGuide() {
    std::vector<GuidePanel::Row> rows;
    for (QAction* item : {ui_->Intonazione, ui_->mnuRint, ui_->mnuRac, ui_->mnuComposer,
                          ui_->mnuPromemoria, ui_->mnuMetro})
        rows.push_back({item, item->shortcut().toString(QKeySequence::NativeText)});
    rows.push_back({ui_->mnuAiuto, QKeySequence(Qt::Key_F1).toString(QKeySequence::NativeText)});
    ui_->guide->setRows(UserText::tr("Altri esercizi e aiuto"), rows);
    connect(drill_.get(), &ReadingDrill::statisticsShown, ui_->guide, [this](bool shown) {
        ui_->guide->setWanted(!shown);
        ui_->toolArea->makeRoom();
    });

    chooseOutput_->setObjectName(QStringLiteral("cmdUscita"));
    chooseOutput_->setText(UserText::tr("Non si sente nulla? MIDI Test ..."));
    chooseOutput_->setToolTip(
        UserText::tr("Apre la finestra in cui si sceglie e si prova un'uscita del suono"));
    makeLabelButton(*chooseOutput_, palette().color(QPalette::Link));
    chooseOutput_->hide();
    connect(chooseOutput_, &QToolButton::clicked, this, &MainWindow::mnuMidiTest_Click);
    ui_->statusBar->addPermanentWidget(chooseOutput_);
}

void MainWindow::Form_Load() {
    services_.funzioniMM.onChange([this] { showStatus(); });
    services_.funzioniMM.setCurrentInstrument(instruments::kOrgano);
}

void MainWindow::paintEvent(QPaintEvent* event) {
    QMainWindow::paintEvent(event);
    // The first activation blocks for the tune, so it comes after the window has been painted.
    if (!activated_)
        QMetaObject::invokeMethod(this, &MainWindow::Form_Activate, Qt::QueuedConnection);
}

void MainWindow::Form_Activate() {
    if (activated_)
        return;
    activated_ = true;
    start_up::firstActivation(services_.runtime, services_.funzioniMM, noteFolder_, *this);
    if (services_.midiKeyboard)
        services_.midiKeyboard->listen();
    if (!melodyAtStart_.isEmpty() && !services_.runtime.ending())
        showComposer(melodyAtStart_);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (metronomeState_.MetroRunning) {
        event->ignore();
        return;
    }
    services_.funzioniMM.MidiClose();
    event->accept();
    services_.runtime.end();
}

void MainWindow::Esci_Click() {
    close();
}

void MainWindow::mnuLettura_Click() {
    drill_->focusStart();
}

void MainWindow::Intonazione_Click() {
    showEarTraining(ExerciseCode::Pitch);
}

void MainWindow::mnuRint_Click() {
    showEarTraining(ExerciseCode::Interval);
}

void MainWindow::mnuRac_Click() {
    showEarTraining(ExerciseCode::Chord);
}

void MainWindow::showEarTraining(ExerciseCode exercise) {
    earTraining_.request(exercise);
    frmInto(services_, earTraining_, this).exec();
}

void MainWindow::mnuComposer_Click() {
    showComposer({});
}

void MainWindow::showComposer(const QString& melodyFile) {
    frmComposer(services_, composer_, this, melodyFile).exec();
}

void MainWindow::mnuPromemoria_Click() {
    frmOptions(this).exec();
}

void MainWindow::mnuMetro_Click() {
    metronomeFrame_->mnuMetro_Click();
    ui_->toolArea->makeRoom();
    ui_->toolArea->reveal(*metronomeFrame_);
}

void MainWindow::mnuMidiTest_Click() {
    frmMidiTest(services_, this).exec();
}

void MainWindow::Nominote1_Click() {
    ui_->Nominote1->setChecked(true);
    ui_->Nominote2->setChecked(false);
    drill_->nameAnswers(pitch::AnswerNames::Syllables);
}

void MainWindow::Nominote2_Click() {
    ui_->Nominote2->setChecked(true);
    ui_->Nominote1->setChecked(false);
    drill_->nameAnswers(pitch::AnswerNames::Letters);
}

void MainWindow::Suono1_Click() {
    drill_->answerWithNote(false);
    ui_->Suono1->setChecked(true);
}

void MainWindow::Suono2_Click() {
    drill_->answerWithNote(true);
    ui_->Suono1->setChecked(false);
}

void MainWindow::mnuOrgano_Click() {
    services_.funzioniMM.chooseInstrument(instruments::kOrgano);
}

void MainWindow::mnuPiano_Click() {
    services_.funzioniMM.chooseInstrument(instruments::kPianoforte);
}

void MainWindow::mnuNormale_Click() {
    ui_->mnuNormale->setChecked(true);
    ui_->mnuAutomatico->setChecked(false);
    drill_->chooseMode(ReadingMode::Normale);
}

void MainWindow::mnuAutomatico_Click() {
    ui_->mnuAutomatico->setChecked(true);
    ui_->mnuNormale->setChecked(false);
    drill_->chooseMode(ReadingMode::Automatico);
    ui_->toolArea->makeRoom();
}

void MainWindow::mnuAiuto_Click() {
    HelpKey::sendEscF1(*this);
}

void MainWindow::mnuVersione_Click() {
    frmAbout(this).exec();
}

void MainWindow::enableStartUpControls(bool on) {
    // A disabled control passes the focus on, to the ruler, which would then show a note.
    if (!on)
        ui_->centre->setFocus();
    drill_->enableStart(on);
    for (QAction* item : {ui_->Intonazione, ui_->mnuRint})
        item->setEnabled(on);
    ui_->cmdEsci->setEnabled(on);
}

void MainWindow::focusStart() {
    drill_->focusStart();
}

/// Of the metronome and the automatic drill, the one started last runs inside the other's loop.
void MainWindow::setMetronomeRunning(bool running) {
    metronomeFrame_->showWaiting(false);
    drill_->showWaiting(running && drill_->runsAutomatically());
    for (QMenu* menu : {ui_->f1, ui_->es, ui_->Opzioni})
        menu->setEnabled(!running);
    for (QWidget* widget : std::initializer_list<QWidget*>{ui_->cmdEsci, ui_->guide, chooseOutput_})
        widget->setEnabled(!running);
}

const QWidget& MainWindow::startColourSource() const {
    return *ui_->board->answerButtons().front();
}

const QWidget& MainWindow::stopColourSource() const {
    return *ui_->cmdEsci;
}

void MainWindow::keyDown(int note) {
    drill_->keyDown(note);
}

void MainWindow::keyUp(int note) {
    drill_->keyUp(note);
}

void MainWindow::keyboardsChanged() {
    showStatus();
    drill_->showKeyboardChoices(!services_.midiKeyboard->names().isEmpty());
    if (const QString said = status_line::keyboards(services_.midiKeyboard); !said.isEmpty())
        announce(said);
}

void MainWindow::showStatus() {
    status_->setText(status_line::text(services_.funzioniMM, services_.midiKeyboard));
    const OpenOutput& output = services_.funzioniMM.output();
    chooseOutput_->setVisible(output.wasTried() && !output.isOpen());
    metronomeFrame_->outputChanged();
}
