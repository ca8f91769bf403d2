#include "metronome/frmMetro.h"

#include "core/funzioni_mm.h"
#include "core/tempo_names.h"
#include "metronome/frmConfMetro.h"
#include "metronome/metronome_host.h"
#include "metronome/metronome_speech.h"
#include "metronome/tap_input.h"
#include "platform/user_text.h"
#include "ui_frmMetro.h"
#include "widgets/action_icon.h"
#include "widgets/announcement.h"
#include "widgets/appearance.h"
#include "widgets/label_button.h"

#include <QEvent>
#include <QSignalBlocker>

#include <chrono>

namespace {

constexpr double kTempoTextScale = 1.9;
constexpr double kTimeSigTextScale = 1.4;
constexpr double kNameTextScale = 1.2;
/// A tempo that goes on changing is not announced: a screen reader drops what comes too fast, also
/// the last one.
constexpr std::chrono::milliseconds kTempoRests{250};

void takeColours(QWidget& widget, const QWidget& source) {
    QPalette colours = widget.palette();
    for (const QPalette::ColorRole role : {QPalette::Button, QPalette::ButtonText})
        colours.setColor(role, source.palette().color(QPalette::Active, role));
    widget.setPalette(colours);
}

}  // namespace

frmMetro::frmMetro(Runtime& runtime, FunzioniMM& funzioniMM, MetronomeState& state,
                   MetronomeHost& host, QWidget* parent)
    : QGroupBox(parent),
      ui_(std::make_unique<Ui::frmMetro>()),
      funzioniMM_(funzioniMM),
      state_(state),
      host_(host),
      metronome_(runtime, funzioniMM, state, *this) {
    ui_->setupUi(this);
    setActionIcon(*ui_->cmdSSmetro, ActionIcon::Play);
    setActionIcon(*ui_->cmdSetup, ActionIcon::Settings);
    appearance::enlargeText(*ui_->lblTempo, kTempoTextScale);
    appearance::enlargeText(*ui_->lblAndamento, kNameTextScale, QFont::Normal);
    for (QWidget* label : {ui_->lblTs, ui_->lblX12})
        appearance::enlargeText(*label, kTimeSigTextScale);
    for (QToolButton* label : {ui_->lblTs, ui_->lblX12, ui_->lblCloseMetro})
        makeLabelButton(*label, palette().color(QPalette::Link));
    connectControls();
    connectTempo(runtime);
    metronome_.load();
    showTempo();
    hide();
}

frmMetro::~frmMetro() = default;

void frmMetro::connectControls() {
    const auto onClick = [this](QAbstractButton* button, void (frmMetro::*handler)()) {
        connect(button, &QAbstractButton::clicked, this, handler);
    };
    onClick(ui_->cmdSSmetro, &frmMetro::cmdSSmetro_Click);
    onClick(ui_->lblTs, &frmMetro::lblTs_Click);
    onClick(ui_->lblX12, &frmMetro::lblX12_Click);
    onClick(ui_->cmdSetup, &frmMetro::cmdSetup_Click);
    onClick(ui_->lblCloseMetro, &frmMetro::lblCloseMetro_Click);
    connect(ui_->MetroVol, &QScrollBar::sliderMoved, this, &frmMetro::MetroVol_Scroll);
    for (QScrollBar* bar : std::initializer_list<QScrollBar*>{ui_->MetroTempoS, ui_->MetroVol})
        bar->installEventFilter(this);
}

void frmMetro::connectTempo(const Runtime& runtime) {
    ui_->MetroTempoS->setRange(Metronome::kSlowest, Metronome::kFastest);
    ui_->lblTempo->describe([this] { return metronome_speech::tempo(metronome_.shownTempo()); },
                            [this] { return ui_->lblAndamento->text(); });
    ui_->lblTempo->describeLine(UserText::tr("Pulsazioni al minuto"), Metronome::kTempoDigits);
    connect(ui_->MetroTempoS, &QScrollBar::valueChanged, this, &frmMetro::MetroTempoS_Change);
    ui_->lblTempo->turnBar(*ui_->MetroTempoS);
    connect(ui_->lblTempo, &NumberLabel::numberTyped, this, &frmMetro::lblTempo_Typed);
    tempoSpeech_.setSingleShot(true);
    tempoSpeech_.setInterval(kTempoRests);
    tempoSpeech_.callOnTimeout(
        this, [this] { announce(metronome_speech::tempo(metronome_.shownTempo())); });
    const auto* input = new TapInput(*ui_->cmdBatti, runtime);
    connect(input, &TapInput::tapped, this, &frmMetro::cmdBatti_Tap);
}

/// While the metronome beats, the release of a mouse button waits for the next pulse but timers do
/// not: a short click on a bar's arrow would repeat itself until then.
bool frmMetro::eventFilter(QObject* /*target*/, QEvent* event) {
    return event->type() == QEvent::Timer && state_.MetroRunning;
}

void frmMetro::mnuMetro_Click() {
    show();
    ui_->cmdSSmetro->setFocus();
}

void frmMetro::showWaiting(bool waits) {
    if (waits)
        announce(metronome_speech::waits());
    waits_ = waits;
    showTempo();
}

void frmMetro::cmdSSmetro_Click() {
    metronome_.startOrStop();
}

void frmMetro::lblTs_Click() {
    if (metronome_.stepTimeSignature())
        announce(metronome_speech::timeSignature(state_.MetroTimeSig));
}

void frmMetro::MetroTempoS_Change() {
    metronome_.setTempo(ui_->MetroTempoS->value());
    showTempo();
    tempoSpeech_.start();
}

void frmMetro::lblTempo_Typed(int pulsesPerMinute) {
    setShownTempo(pulsesPerMinute);
}

void frmMetro::cmdBatti_Tap(TapTempo::Time at) {
    if (const auto pulsesPerMinute = taps_.tap(at))
        setShownTempo(*pulsesPerMinute);
}

void frmMetro::setShownTempo(double pulsesPerMinute) {
    metronome_.setShownTempo(pulsesPerMinute);
    const QSignalBlocker silent(ui_->MetroTempoS);
    ui_->MetroTempoS->setValue(metronome_.tempo());
    showTempo();
    tempoSpeech_.start();
}

void frmMetro::lblX12_Click() {
    metronome_.toggleDoubling();
    showTempo();
    tempoSpeech_.start();
}

void frmMetro::MetroVol_Scroll() {
    metronome_.setVolume(ui_->MetroVol->sliderPosition());
}

void frmMetro::cmdSetup_Click() {
    frmConfMetro(funzioniMM_, state_, this).exec();
}

void frmMetro::lblCloseMetro_Click() {
    hide();
    host_.focusStart();
}

void frmMetro::showTempo() {
    const bool doubled = metronome_.doubled();
    const int tempo = metronome_.shownTempo();
    ui_->lblTempo->setText(QString::number(tempo));
    if (waits_)
        showPace(UserText::tr("In attesa"), metronome_speech::waits());
    else if (state_.MetroRunning && !funzioniMM_.output().isOpen())
        showPace(UserText::tr("Nessuna uscita"), metronome_speech::silent());
    else
        showPace(tempo_names::nameOf(tempo), UserText::tr("Il nome italiano del tempo"));
    ui_->lblX12->setText(doubled ? QStringLiteral("x2") : QStringLiteral("x1"));
    ui_->lblX12->setToolTip(doubled ? UserText::tr("Clicca per dimezzare la velocità")
                                    : UserText::tr("Clicca per raddoppiare la velocità"));
    ui_->lblX12->setAccessibleName(doubled ? UserText::tr("Velocità raddoppiata, x2")
                                           : UserText::tr("Velocità semplice, x1"));
}

void frmMetro::showPace(const QString& word, const QString& why) {
    ui_->lblAndamento->setText(word);
    ui_->lblAndamento->setToolTip(why);
}

void frmMetro::enableControls(bool on) {
    ui_->cmdSetup->setEnabled(on);
    ui_->lblCloseMetro->setEnabled(on);
}

/// Announced first: a screen reader is also told of every control that changes here, and asks about
/// each before it comes to what follows.
void frmMetro::metronomeStarted() {
    tempoSpeech_.stop();
    announce(metronome_speech::started(metronome_.shownTempo(), state_.MetroTimeSig));
    host_.setMetronomeRunning(true);
    enableControls(false);
    takeColours(*ui_->cmdSSmetro, host_.startColourSource());
    setActionIcon(*ui_->cmdSSmetro, ActionIcon::Stop);
}

void frmMetro::metronomeStopped() {
    announce(metronome_speech::stopped());
    enableControls(true);
    takeColours(*ui_->cmdSSmetro, host_.stopColourSource());
    setActionIcon(*ui_->cmdSSmetro, ActionIcon::Play);
    host_.setMetronomeRunning(false);
}

void frmMetro::showTimeSignature(const QString& timeSig) {
    ui_->lblTs->setText(QString(timeSig).replace(QLatin1Char('&'), QLatin1String("&&")));
    ui_->lblTs->setAccessibleName(metronome_speech::timeSignature(timeSig));
}

void frmMetro::showLamps(int count) {
    darkenLamps();
    ui_->lamps->setVisibleLamps(count);
}

void frmMetro::darkenLamps() {
    ui_->lamps->setAllColours(lamp_colours::kUnlit);
}

void frmMetro::lightLamp(int lamp, pulse_pattern::Colour colour) {
    ui_->lamps->setColour(lamp, colour);
}
