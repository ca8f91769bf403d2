#include "composer/frmComposer.h"

#include "composer/melody/rhythm.h"
#include "core/funzioni_mm.h"
#include "ui_entry_palette_panel.h"
#include "ui_frmComposer.h"
#include "ui_playback_panel.h"
#include "ui_range_panel.h"
#include "widgets/appearance.h"
#include "widgets/keyboard_span.h"
#include "widgets/panel_text.h"
#include "widgets/room_scale.h"

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>

#include <utility>

namespace {

constexpr QSize kSize(1180, 760);
constexpr int kLabelFrame = 24;

void showBusyPointer(bool on) {
    if (on)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

std::unique_ptr<Ui::frmComposer> makeForm(QDialog& window) {
    auto form = std::make_unique<Ui::frmComposer>();
    form->setupUi(&window);
    return form;
}

}  // namespace

frmComposer::frmComposer(const Services& services, ComposerState& state, QWidget* parent,
                         QString melodyFile)
    : QDialog(parent),
      services_(services),
      menu_(*this),
      ui_(makeForm(*this)),
      side_(*ui_),
      view_(*ui_, side_, composition_),
      runtime_(services.runtime, [this] { pollKeys(); }),
      model_(services_, runtime_, composition_, view_, view_, showBusyPointer),
      hand_(*ui_, view_, services.funzioniMM, model_.editor, state),
      keyboard_(*this, *ui_, services.runtime, composition_, hand_),
      presenter_(services_, *ui_, side_, view_, model_, menu_, keyboard_),
      entry_(*ui_, services.runtime, model_, view_, presenter_, keyboard_, menu_),
      midi_(*this, services.midiKeyboard, hand_, ui_->palette->ui(), menu_),
      playbackControls_(services.dialogs, *ui_, model_, view_, presenter_, keyboard_, menu_),
      range_(*ui_, model_, view_, presenter_),
      library_(services.dialogs, model_, side_, view_, presenter_, keyboard_, menu_),
      export_(*this, services.runtime, model_, state, side_, keyboard_, menu_),
      bookmarks_(model_, side_, view_, presenter_, keyboard_, menu_),
      bars_(*this, services.dialogs, composition_, state, view_, keyboard_, menu_),
      melodyFile_(std::move(melodyFile)) {
    setWindowFlags(Qt::Window | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint |
                   Qt::WindowSystemMenuHint | Qt::WindowTitleHint);
    ui_->column->setMenuBar(&menu_.bar());
    composition_.decimalSeparator = rhythm::decimalSeparator(QLocale());
    composition_.instrument = services_.funzioniMM.currentInstrument();
    appearance::enlargeText(*ui_->lblNome, 1.2);
    panel_text::reserve(*ui_->lblNt, panel_text::widestEntryNumber(), kLabelFrame);
    new KeyboardSpan(*ui_->lb);
    orderTabs();
    addSpeech(state);
    connect(&menu_, &ComposerMenu::closeChosen, this, &frmComposer::reject);
    connect(&presenter_, &MelodyPresenter::messageClosed, this, &frmComposer::takeActivation);
    ui_->instrument->showProgram(composition_.instrument);
    view_.showActiveNote();
    presenter_.showMelody();
    const QSize made = RoomScale::forType(*this, kSize);
    new RoomScale(*this, made);
    placeOnScreen(made);
}

/// The end of the program leaves the window without closing it. What the mouse holds ends here,
/// while the objects that answer its release are still there.
frmComposer::~frmComposer() {
    hide();
}

void frmComposer::addSpeech(ComposerState& state) {
    ComposerSpeech& speech = view_.speech();
    connect(&menu_, &ComposerMenu::silenceChosen, this, [&speech, &state](bool silent) {
        state.silent = silent;
        speech.setSilent(silent);
    });
    menu_.setSilent(state.silent);
    connect(&menu_, &ComposerMenu::directInsertionChosen, this,
            [&speech](bool on) { speech.directInsertion(on); });
    connect(&keyboard_, &ComposerKeyboard::semitoneChosen, this,
            [&speech] { speech.activeNote(); });
    connect(new QShortcut(Qt::Key_F2, this), &QShortcut::activated, this,
            [&speech] { speech.readActiveEntry(); });
    connect(new QShortcut(Qt::Key_F3, this), &QShortcut::activated, this,
            [&speech] { speech.readMelody(); });
}

/// As large as the screen allows, with the title bar in view: without this it would be above the
/// upper edge when the dialog is nearly as high as the screen.
void frmComposer::placeOnScreen(QSize wanted) {
    const QRect room = appearance::roomOnScreen(*this);
    resize(wanted.expandedTo(minimumSizeHint()).boundedTo(room.size()));
    const QSize free = room.size() - size();
    move(room.topLeft() + QPoint(free.width(), free.height()) / 2);
}

void frmComposer::orderTabs() {
    auto& playback = ui_->playback->ui();
    auto& range = ui_->range->ui();
    QWidget* last = ui_->palette->orderTabs(ui_->lblNt);
    const std::initializer_list<QWidget*> rest{
        playback.cmdPlay,  playback.chekLoop, playback.lblStep_0, playback.lblStep_1,
        playback.lblTempo, playback.Slider1,  range.lblid_0,      range.lblNini,
        range.lblid_1,     range.lblid_2,     range.lblNfine,     range.lblid_3,
        range.lblIDs_0,    range.lblSemitoni, range.lblIDs_1};
    for (QWidget* widget : rest) {
        setTabOrder(last, widget);
        last = widget;
    }
}

void frmComposer::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    closed_ = false;
    QMetaObject::invokeMethod(this, &frmComposer::Form_Activate, Qt::QueuedConnection);
}

/// A modal window's own loop runs this, so that the window cannot be left before the loop has
/// ended.
void frmComposer::Form_Activate() {
    if (polling_ || closed_)
        return;
    polling_ = true;
    const bool before = runtime_.pollKeysInOrder(true);
    becomeActive();
    library_.openAtStart(std::exchange(melodyFile_, {}));
    while (!closed_ && !runtime_.ending())
        runtime_.pump(kForever);
    keyboard_.releaseHeldKeys();
    runtime_.pollKeysInOrder(before);
    polling_ = false;
}

/// Each time, also after a box or a window in front of this one; the loop of the first activation
/// keeps running.
void frmComposer::becomeActive() {
    ui_->palette->ui().cmdInsNota->setFocus();
    keyboard_.resetOctave();
}

/// The window system may report the activation only after the box has returned. The effects come
/// here at once, so that they do not move a focus that is set after the box.
void frmComposer::takeActivation() {
    if (!std::exchange(activated_, true))
        becomeActive();
}

void frmComposer::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() != QEvent::ActivationChange)
        return;
    if (isActiveWindow())
        takeActivation();
    else
        activated_ = false;
}

void frmComposer::done(int result) {
    model_.arrows.release();
    model_.playback.player().abandon();
    view_.showPlaying(false);
    keyboard_.releaseHeldKeys();
    midi_.releaseKeys();
    if (!library_.mayClose())
        return;
    model_.unsaved.forget();
    closed_ = true;
    QDialog::done(result);
}

/// The keys that no control takes.
void frmComposer::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)
        ui_->Regolo->scrollPage(event->key() == Qt::Key_PageDown);
    else
        QDialog::keyPressEvent(event);
}

void frmComposer::contextMenuEvent(QContextMenuEvent* event) {
    menu_.context().popup(event->globalPos());
}

void frmComposer::pollKeys() {
    if (!closed_)
        keyboard_.poll();
}
