#include "shell/frmMidiTest.h"

#include "core/funzioni_mm.h"
#include "core/instruments.h"
#include "core/services.h"
#include "platform/user_text.h"
#include "shell/midi_test.h"
#include "shell/status_line.h"
#include "ui_frmMidiTest.h"
#include "widgets/announcement.h"
#include "widgets/in_front.h"
#include "widgets/instrument_button.h"
#include "widgets/panel_text.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSignalBlocker>

namespace {

constexpr int kDeviceIdRole = Qt::UserRole;

}  // namespace

frmMidiTest::frmMidiTest(const Services& services, QWidget* parent)
    : QDialog(parent),
      midiOut_(services.midiOut),
      funzioniMM_(services.funzioniMM),
      keyboard_(services.midiKeyboard),
      ui_(std::make_unique<Ui::frmMidiTest>()),
      keys_(services.midiKeyboard, *this, [this] { return isInFront(*this); }) {
    ui_->setupUi(this);
    panel_text::reserve(*ui_->lblInstr, QStringLiteral("000"), 0);
    showInstrument();
    frmMidiTest::keyboardsChanged();
    connectControls();
}

frmMidiTest::~frmMidiTest() {
    // When the program ends the window is destroyed without having been closed.
    if (isVisible())
        Form_Unload();
}

void frmMidiTest::connectControls() {
    // The keyboard and screen readers choose by selecting a line; the mouse may drag the selection
    // about before it lets go, and may click on the selected line again.
    ui_->LstMidiDev->viewport()->installEventFilter(this);
    connect(ui_->LstMidiDev, &QListWidget::itemSelectionChanged, this, [this] {
        if (QApplication::mouseButtons() == Qt::NoButton)
            LstMidiDev_Click();
    });
    connect(ui_->cmdTest, &QPushButton::clicked, this, &frmMidiTest::cmdTest_Click);
    connect(ui_->cmdOff, &QPushButton::clicked, this, &frmMidiTest::cmdOff_Click);
    connect(ui_->InstrS, &QSlider::valueChanged, this, &frmMidiTest::InstrS_Change);
    connect(ui_->cmdStrumento, &InstrumentButton::programChosen, ui_->InstrS, &QSlider::setValue);
    connect(ui_->cmdChiudi, &QPushButton::clicked, this, &QDialog::accept);
}

void frmMidiTest::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!activated_)
        QMetaObject::invokeMethod(this, &frmMidiTest::Form_Activate, Qt::QueuedConnection);
}

bool frmMidiTest::eventFilter(QObject* target, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
        QMetaObject::invokeMethod(this, &frmMidiTest::LstMidiDev_Click, Qt::QueuedConnection);
    return QDialog::eventFilter(target, event);
}

void frmMidiTest::Form_Activate() {
    if (activated_)
        return;
    activated_ = true;
    const midi_test::DeviceList list = midi_test::listDevices(midiOut_);
    const QSignalBlocker blocker(ui_->LstMidiDev);
    for (const midi_test::Device& device : list.devices) {
        auto* line = new QListWidgetItem(device.name, ui_->LstMidiDev);
        line->setData(kDeviceIdRole, device.id);
    }
    if (!list.opensFirst)
        return;
    ui_->LstMidiDev->setCurrentRow(0);
    const int id = showDeviceId(*ui_->LstMidiDev->item(0));
    showInstrument();
    funzioniMM_.MidiOpen(id);
    funzioniMM_.ProgramChange(funzioniMM_.currentInstrument());
}

void frmMidiTest::LstMidiDev_Click() {
    const QList<QListWidgetItem*> selected = ui_->LstMidiDev->selectedItems();
    if (selected.isEmpty())
        return;
    funzioniMM_.MidiOpen(showDeviceId(*selected.front()));
    funzioniMM_.ProgramChange(ui_->InstrS->value());
    announce(status_line::text(funzioniMM_, nullptr));
}

void frmMidiTest::cmdTest_Click() {
    funzioniMM_.NoteOn(FunzioniMM::kMelodyChannel, midi_test::kTestNote, midi_test::kTestVelocity);
}

void frmMidiTest::cmdOff_Click() {
    funzioniMM_.NoteOff(FunzioniMM::kMelodyChannel, midi_test::kTestNote);
}

void frmMidiTest::InstrS_Change() {
    const int program = ui_->InstrS->value();
    nameInstrument(program);
    funzioniMM_.chooseInstrument(program);
}

void frmMidiTest::done(int result) {
    Form_Unload();
    QDialog::done(result);
}

void frmMidiTest::Form_Unload() {
    cmdOff_Click();
}

void frmMidiTest::showInstrument() {
    const QSignalBlocker blocker(ui_->InstrS);
    ui_->InstrS->setValue(funzioniMM_.currentInstrument());
    nameInstrument(funzioniMM_.currentInstrument());
}

void frmMidiTest::nameInstrument(int program) {
    ui_->cmdStrumento->setProgram(program);
    ui_->lblInstr->setText(QString::number(program));
    ui_->lblNomeInstr->setText(instruments::InstrumentName(program));
}

/// Shows the ID of a line's device and answers with it.
int frmMidiTest::showDeviceId(const QListWidgetItem& line) {
    const int id = line.data(kDeviceIdRole).toInt();
    ui_->lblDevID->setText(UserText::tr("Dev. ID: %1").arg(id));
    return id;
}

void frmMidiTest::keyDown(int note) {
    lastKey_ = UserText::tr("Ultimo tasto: %1").arg(midi_test::keyName(note));
    keyboardsChanged();
    announce(lastKey_);
}

void frmMidiTest::keyboardsChanged() {
    const QString keyboards = status_line::keyboards(keyboard_);
    const QString text = keyboards.isEmpty() ? UserText::tr("Tastiera MIDI: nessuna") : keyboards;
    ui_->lblTastiere->setText(lastKey_.isEmpty() ? text
                                                 : text + QStringLiteral("   ·   ") + lastKey_);
}
