#include "metronome/frmConfMetro.h"

#include "metronome/custom_sequence.h"
#include "metronome/metronome_speech.h"
#include "metronome/metronome_state.h"
#include "metronome/percussion_names.h"
#include "platform/user_text.h"
#include "ui_frmConfMetro.h"
#include "widgets/announcement.h"
#include "widgets/appearance.h"
#include "widgets/label_button.h"
#include "widgets/panel_text.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <utility>

namespace {

constexpr double kLetterTextScale = 1.6;

struct LetterColours {
    QRgb a, b, c;
};

/// Red, green and blue in shades that can be read as text.
constexpr LetterColours kOnLight{0xFFC40000, 0xFF007A00, 0xFF0000D0};
constexpr LetterColours kOnDark{0xFFFF6B6B, 0xFF4FD64F, 0xFF86A0FF};

QString pulseText(int pulse, int pulses) {
    return UserText::tr("Pulsazione %1 di %2 (Esc la ferma)").arg(pulse).arg(pulses);
}

template <typename Notes>
void fill(QComboBox& list, const Notes& notes, int chosen) {
    for (const int note : notes) {
        list.addItem(QString::number(note));
        list.setItemData(list.count() - 1, percussion_names::nameOf(note), Qt::ToolTipRole);
    }
    list.setMaxVisibleItems(static_cast<int>(notes.size()));
    list.setCurrentIndex(chosen);
}

QStringList soundNames(const QComboBox& list) {
    QStringList names;
    for (int i = 0; i < list.count(); ++i)
        names << list.itemData(i, Qt::ToolTipRole).toString();
    return names;
}

/// The name below the list says what the chosen note sounds.
void nameSound(QComboBox& list, QLabel& name) {
    const auto show = [&list, &name] {
        name.setText(list.currentData(Qt::ToolTipRole).toString());
        list.setAccessibleDescription(name.text());
    };
    QObject::connect(&list, &QComboBox::currentIndexChanged, &name, show);
    show();
}

void makeLetter(QToolButton& letter, QRgb colour) {
    appearance::enlargeText(letter, kLetterTextScale);
    makeLabelButton(letter, QColor::fromRgb(colour));
}

}  // namespace

frmConfMetro::frmConfMetro(FunzioniMM& funzioniMM, MetronomeState& state, QWidget* parent)
    : QDialog(parent),
      funzioniMM_(funzioniMM),
      state_(state),
      ui_(std::make_unique<Ui::frmConfMetro>()),
      test_(funzioniMM, state, *this) {
    ui_->setupUi(this);
    panel_text::reserve(*ui_->lblProva,
                        pulseText(pulse_pattern::kMaxLength, pulse_pattern::kMaxLength));
    showTesting(false);
    const bool dark = palette().color(QPalette::Window).lightness() < 128;
    const LetterColours& colours = dark ? kOnDark : kOnLight;
    makeLetter(*ui_->lblA, colours.a);
    makeLetter(*ui_->lblB1, colours.b);
    makeLetter(*ui_->lblC, colours.c);
    Form_Load();

    connectSound(ui_->InstrA, ui_->lblA, &MetronomeState::MetroNoteA);
    connectSound(ui_->InstrB1, ui_->lblB1, &MetronomeState::MetroNoteB);
    connectSound(ui_->InstrC, ui_->lblC, &MetronomeState::MetroNoteC);
    connect(ui_->seqPreset, &QComboBox::activated, this, &frmConfMetro::seqPreset_Click);
    connect(ui_->cmdTest, &QPushButton::clicked, this, &frmConfMetro::cmdTest_Click);
    connect(ui_->cmdFerma, &QPushButton::clicked, this, [this] { test_.stop(); });
    connect(ui_->cmdOk, &QPushButton::clicked, this, &QDialog::accept);
}

frmConfMetro::~frmConfMetro() = default;

/// Called before the lists are connected, so that filling them sounds nothing.
void frmConfMetro::Form_Load() {
    fill(*ui_->InstrA, custom_sequence::kSoundsA, state_.MetroSoundIndexA);
    fill(*ui_->InstrB1, custom_sequence::kSoundsB, state_.MetroSoundIndexB);
    fill(*ui_->InstrC, custom_sequence::kSoundsC, state_.MetroSoundIndexC);
    nameSound(*ui_->InstrA, *ui_->lblSuonoA);
    nameSound(*ui_->InstrB1, *ui_->lblSuonoB1);
    nameSound(*ui_->InstrC, *ui_->lblSuonoC);
    const QStringList names =
        soundNames(*ui_->InstrA) + soundNames(*ui_->InstrB1) + soundNames(*ui_->InstrC);
    for (QLabel* name : {ui_->lblSuonoA, ui_->lblSuonoB1, ui_->lblSuonoC})
        panel_text::reserveWidest(*name, names);
    for (const custom_sequence::Preset& preset : custom_sequence::kPresets)
        ui_->seqPreset->addItem(preset.pattern);
    ui_->seqPreset->setCurrentIndex(-1);

    ui_->txtPattern->setMaxLength(pulse_pattern::kMaxLength);
    ui_->txtTempo->setMaxLength(custom_sequence::kMaxTempoLength);
    ui_->txtPattern->setText(state_.MetroPattern);
    ui_->txtPattern->selectAll();
    ui_->txtTempo->setText(state_.MetroTimeSig);
    // Characters composed by an input method would bypass the key filter.
    ui_->txtPattern->setAttribute(Qt::WA_InputMethodEnabled, false);
    ui_->txtPattern->installEventFilter(this);
    for (const QLineEdit* box : {ui_->txtPattern, ui_->txtTempo}) {
        connect(box, &QLineEdit::inputRejected, this,
                [box] { announce(metronome_speech::full(box->maxLength())); });
    }
}

/// The user's choice in the list sets the kind's note and sounds it, even if it is the same again;
/// a click on the letter sounds it.
void frmConfMetro::connectSound(QComboBox* list, QAbstractButton* letter, Note note) {
    connect(list, &QComboBox::activated, this, [this, list, note] {
        state_.*note = list->currentText().toShort();
        custom_sequence::testSound(funzioniMM_, state_.*note);
    });
    connect(letter, &QAbstractButton::clicked, this,
            [this, note] { custom_sequence::testSound(funzioniMM_, state_.*note); });
}

void frmConfMetro::seqPreset_Click() {
    const auto chosen = static_cast<std::size_t>(ui_->seqPreset->currentIndex());
    ui_->txtTempo->setText(custom_sequence::kPresets[chosen].tempo);
    ui_->txtPattern->setText(ui_->seqPreset->currentText());
}

void frmConfMetro::cmdTest_Click() {
    test_.play(ui_->txtPattern->text());
}

void frmConfMetro::showTesting(bool on) {
    ui_->cmdFerma->setEnabled(on);
    if (!on)
        ui_->lblProva->clear();
}

void frmConfMetro::showPulse(int pulse, int pulses) {
    showTesting(true);
    ui_->lblProva->setText(pulseText(pulse, pulses));
}

/// The button that ends it would pass the focus on to the one that closes the window.
void frmConfMetro::showEnd() {
    if (ui_->cmdFerma->hasFocus())
        ui_->cmdTest->setFocus();
    showTesting(false);
}

/// Escape, or a press of the button, which the wait keeps from it.
bool frmConfMetro::endsTest(const QEvent& input) {
    if (input.type() == QEvent::KeyPress) {
        endedByEscape_ = static_cast<const QKeyEvent&>(input).key() == Qt::Key_Escape;
        return endedByEscape_;
    }
    if (input.type() != QEvent::MouseButtonPress)
        return false;
    const QPoint place = static_cast<const QMouseEvent&>(input).globalPosition().toPoint();
    return ui_->cmdFerma->rect().contains(ui_->cmdFerma->mapFromGlobal(place));
}

void frmConfMetro::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && std::exchange(endedByEscape_, false))
        return;
    QDialog::keyPressEvent(event);
}

bool frmConfMetro::eventFilter(QObject* target, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(target, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool shortcut = (key->modifiers() & ~Qt::ShiftModifier) == Qt::ControlModifier;
    const bool types = !key->text().isEmpty() && key->text().front().isPrint();
    return types && !shortcut && txtPattern_KeyPress(key->text());
}

/// Inserts the letter that the key stands for, if any; the key itself is consumed.
bool frmConfMetro::txtPattern_KeyPress(const QString& typed) {
    if (const auto letter = custom_sequence::typedLetter(typed.front()))
        ui_->txtPattern->insert(*letter);
    else
        announce(metronome_speech::refusedLetter());
    return true;
}

void frmConfMetro::done(int result) {
    Form_Unload();
    QDialog::done(result);
}

void frmConfMetro::Form_Unload() {
    custom_sequence::store(
        state_, {ui_->txtPattern->text(), ui_->txtTempo->text(), ui_->InstrA->currentIndex(),
                 ui_->InstrB1->currentIndex(), ui_->InstrC->currentIndex()});
    announce(metronome_speech::stored(state_.MetroPattern, state_.MetroTimeSig));
}
