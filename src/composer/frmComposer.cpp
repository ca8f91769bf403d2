#include "composer/frmComposer.h"

#include "composer/melody/rhythm.h"
#include "composer/panels/bookmark_panel.h"
#include "composer/panels/browser_panel.h"
#include "core/funzioni_mm.h"
#include "core/instruments.h"
#include "platform/dialogs.h"
#include "ui_entry_palette_panel.h"
#include "ui_frmComposer.h"
#include "ui_modify_panel.h"
#include "ui_playback_panel.h"
#include "ui_range_panel.h"
#include "widgets/appearance.h"
#include "widgets/panel_text.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QStyle>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace {

constexpr QSize kSize(1180, 760);
constexpr int kLabelFrame = 24;

bool isArrow(int key) {
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

void showBusyPointer(bool on) {
    if (on)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

bool takesText(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QComboBox*>(widget);
}

staff_entry::Entry onStaff(const MelodyEntry& entry) {
    const QChar first =
        entry.attribute.isEmpty() ? letter::kNormale.front() : entry.attribute.front();
    return {entry.noteNumber(), entry.quarters(), first.toLatin1()};
}

}  // namespace

frmComposer::frmComposer(const Services& services, QWidget* parent, QString melodyFile)
    : QDialog(parent),
      services_(services),
      ui_(std::make_unique<Ui::frmComposer>()),
      editor_(composition_),
      keys_(services.runtime, *this),
      runtime_(services.runtime, [this] { pollKeys(); }),
      playback_(runtime_, services.funzioniMM, composition_),
      arrows_(runtime_, services.funzioniMM, composition_),
      library_(services, composition_, editor_),
      bookmarks_(services.dialogs, composition_, editor_),
      export_(services, composition_),
      floppy_(services, composition_, library_, showBusyPointer),
      unsaved_(services, composition_, editor_, library_),
      menu_(*this, menuHandlers()),
      browser_(new BrowserPanel),
      bookmarkPanel_(new BookmarkPanel),
      melodyFile_(std::move(melodyFile)) {
    ui_->setupUi(this);
    setWindowFlags(Qt::Window | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint |
                   Qt::WindowSystemMenuHint | Qt::WindowTitleHint);
    ui_->column->setMenuBar(&menu_.bar());
    composition_.decimalSeparator = rhythm::decimalSeparator(QLocale());
    composition_.instrument = services_.funzioniMM.currentInstrument();
    playback_.attach(*this);
    arrangeSide();
    orderTabs();
    connectPalette();
    connectPlayback();
    connectRange();
    connectEditFrame();
    connectStaff();
    connectLibrary();
    ui_->instrument->showProgram(composition_.instrument);
    showActiveNote();
    showMelody();
    placeOnScreen();
    QCoreApplication::instance()->installEventFilter(this);
}

/// The end of the program leaves the window without closing it. What the mouse holds then ends
/// while there is somebody to end it.
frmComposer::~frmComposer() {
    hide();
}

ComposerMenu::Handlers frmComposer::menuHandlers() {
    ComposerMenu::Handlers handlers;
    handlers.open = [this] { mnuApri_Click(); };
    handlers.save = [this] { mnuSalva_Click(); };
    handlers.saveAs = [this] { mnuSaveAs_Click(); };
    handlers.exportAudio = [this] { mnuEsportaAudio_Click(); };
    handlers.exportMidi = [this] { mnuEsportaMidi_Click(); };
    handlers.saveToFloppy = [this] { mnuSalvaA_Click(); };
    handlers.copyFromFloppy = [this] { mnuCopyFromA_Click(); };
    handlers.addBookmark = [this] { cmdAddBm_Click(); };
    handlers.close = [this] { reject(); };
    handlers.undo = [this] { mnuAnnulla_Click(); };
    handlers.redo = [this] { mnuRipeti_Click(); };
    handlers.delayedPlay = [this] { mnuPlayRitardo_Click(); };
    handlers.organ = [this] { chooseInstrument(instruments::kOrgano); };
    handlers.piano = [this] { chooseInstrument(instruments::kPianoforte); };
    return handlers;
}

/// As large as the screen allows, with the title bar in view: left to itself a dialog that is
/// nearly as high as the screen would hide it.
void frmComposer::placeOnScreen() {
    const QRect room = appearance::roomOnScreen(*this);
    resize(kSize.boundedTo(room.size()));
    const QSize free = room.size() - size();
    move(room.topLeft() + QPoint(free.width(), free.height()) / 2);
}

/// The column beside the staff keeps its width whether a panel is open or not, so that opening one
/// moves nothing else; panels that have no room below each other are scrolled. While none is open,
/// a word about what comes there stands in it.
void frmComposer::arrangeSide() {
    for (QWidget* panel : std::initializer_list<QWidget*>{browser_, bookmarkPanel_}) {
        ui_->sidePanels->addWidget(panel);
        panel->hide();
    }
    const int content =
        std::max({ui_->frmModifica->sizeHint().width(), browser_->minimumSizeHint().width(),
                  bookmarkPanel_->minimumSizeHint().width()});
    ui_->side->setFixedWidth(content + style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    ui_->side->setMinimumHeight(ui_->frmModifica->sizeHint().height());
    appearance::enlargeText(*ui_->lblNome, 1.2);
    panel_text::reserve(*ui_->lblNt, panel_text::widestEntryNumber(), kLabelFrame);
    showEditFrame(false);
}

void frmComposer::orderTabs() {
    auto& playback = ui_->playback->ui();
    auto& range = ui_->range->ui();
    QWidget* last = ui_->palette->orderTabs(ui_->lblNt);
    const std::initializer_list<QWidget*> rest{
        playback.cmdPlay,  playback.chekLoop, playback.lblStep_0, playback.lblStep_1,
        playback.Slider1,  range.lblid_0,     range.lblNini,      range.lblid_1,
        range.lblid_2,     range.lblNfine,    range.lblid_3,      range.lblIDs_0,
        range.lblSemitoni, range.lblIDs_1};
    for (QWidget* widget : rest) {
        setTabOrder(last, widget);
        last = widget;
    }
}

void frmComposer::connectPalette() {
    auto& palette = ui_->palette->ui();
    ui_->palette->onSymbol([this](std::uint8_t index) { cmdSimbNote_Click(index); });
    ui_->palette->onAttribute([this](std::uint8_t index) { cmdAttrNota_Click(index); });
    connect(palette.ckConsAtt, &QCheckBox::clicked, this, &frmComposer::ckConsAtt_Click);
    connect(palette.lblActNote, &QToolButton::clicked, this, &frmComposer::lblActNote_DblClick);
    connect(palette.cmdInsNota, &QPushButton::clicked, this, &frmComposer::cmdInsNota_Click);
    connect(palette.cmdInsPausa, &QPushButton::clicked, this, &frmComposer::cmdInsPausa_Click);
    connect(palette.cmdCanc, &QPushButton::clicked, this, &frmComposer::cmdCanc_Click);
    connect(palette.cmdReset, &QPushButton::clicked, this, &frmComposer::cmdReset_Click);
    ui_->lb->onKeyDown([this](int index) { lb_MouseDown(index); });
    ui_->lb->onKeyUp([this](int index) { lb_MouseUp(index); });
    ui_->lb->onKeyDoubleClick([this](int) { lb_DblClick(); });
}

void frmComposer::connectPlayback() {
    auto& playback = ui_->playback->ui();
    connect(playback.cmdPlay, &QPushButton::clicked, this, &frmComposer::cmdPlay_Click);
    connect(playback.chekLoop, &QCheckBox::clicked, this, &frmComposer::chekLoop_Click);
    connect(playback.lblStep_0, &QToolButton::clicked, this,
            [this] { lblStep_Click(StepMode::Direction::Backward); });
    connect(playback.lblStep_1, &QToolButton::clicked, this,
            [this] { lblStep_Click(StepMode::Direction::Forward); });
    connect(playback.Slider1, &QScrollBar::valueChanged, this, &frmComposer::Slider1_Change);
    connect(ui_->lblNt, &QToolButton::clicked, this, &frmComposer::lblNt_DblClick);
    ui_->instrument->onProgram([this](int program) { chooseInstrument(program); });
}

void frmComposer::connectRange() {
    auto& range = ui_->range->ui();
    ui_->range->onArrowDown([this](PlayRange::Arrow arrow) { lblid_MouseDown(arrow); });
    ui_->range->onArrowUp([this] { lblid_MouseUp(); });
    ui_->range->onArrowStep([this](PlayRange::Arrow arrow) { lblid_Step(arrow); });
    connect(range.lblNini, &QLineEdit::editingFinished, this, &frmComposer::lblNini_Validate);
    connect(range.lblNfine, &QLineEdit::editingFinished, this, &frmComposer::lblNfine_Validate);
    for (QLineEdit* box : {range.lblNini, range.lblNfine})
        connect(box, &QLineEdit::returnPressed, this, &frmComposer::focusPlay);
    connect(range.lblIDs_0, &QToolButton::clicked, this, [this] { lblIDs_Click(-1); });
    connect(range.lblIDs_1, &QToolButton::clicked, this, [this] { lblIDs_Click(1); });
    connect(range.lblSemitoni, &QToolButton::clicked, this, &frmComposer::lblSemitoni_Click);
}

void frmComposer::connectEditFrame() {
    auto& frame = ui_->frmModifica->ui();
    connect(frame.cmdModifica_0, &QPushButton::clicked, this, &frmComposer::cmdModifica_Click);
    connect(frame.cmdInsertNote, &QPushButton::clicked, this, &frmComposer::cmdInsertNote_Click);
    connect(frame.cmdCancNota, &QPushButton::clicked, this, &frmComposer::cmdCancNota_Click);
}

void frmComposer::connectStaff() {
    ui_->Regolo->setSource(
        {[this] { return int{composition_.melody.EntryCount()}; },
         [this](int entry) { return onStaff(composition_.melody.entry(entry)); }});
    ui_->Regolo->onNoteChosen([this](int note) { noteDown(static_cast<pitch::NoteNumber>(note)); });
    ui_->Regolo->onNoteReleased([this](int note) { noteUp(static_cast<pitch::NoteNumber>(note)); });
}

void frmComposer::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    closed_ = false;
    QMetaObject::invokeMethod(
        this, [this] { Form_Activate(); }, Qt::QueuedConnection);
}

/// A modal window's own loop runs this, so that the window cannot be left before the loop has
/// ended.
void frmComposer::Form_Activate() {
    if (polling_ || closed_)
        return;
    polling_ = true;
    becomeActive();
    if (offerUnsaved())
        melodyFile_.clear();
    openMelodyFile();
    while (!closed_ && !runtime_.ending())
        runtime_.pump(kForever);
    silenceHands();
    polling_ = false;
}

/// Every time, as after a box or a window over this one; the loop of the first time goes on.
void frmComposer::becomeActive() {
    ui_->palette->ui().cmdInsNota->setFocus();
    keys_.piano().resetOctave();
}

/// What the window system reports later than the box returns is done here at its place, so that a
/// focus chosen after the box stays.
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
    arrows_.release();
    playback_.player().abandon();
    showPlaying(false);
    silenceHands();
    const bool loses = editor_.modified() || !unsaved_.othersKept();
    if (loses && !services_.dialogs.confirm(
                     QStringLiteral("La melodia non è stata salvata. Chiudere comunque ?")))
        return;
    unsaved_.forget();
    closed_ = true;
    QDialog::done(result);
}

void frmComposer::contextMenuEvent(QContextMenuEvent* event) {
    menu_.context().popup(event->globalPos());
}

/// Sees a key before its control does. What is typed is noted here, because the focus may have
/// moved on by the time that the keys are polled.
bool frmComposer::eventFilter(QObject* target, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(target, event);
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (target == windowHandle()) {
        const auto chord = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
        if (keysFocus().typing || key.modifiers().testAnyFlags(chord))
            typed_ = true;
        return false;
    }
    const auto* widget = qobject_cast<QWidget*>(target);
    if (!widget || widget->window() != this || !isArrow(key.key()))
        return false;
    // An arrow that means a step or a semitone does not move the focus from button to button.
    const ComputerKeys::Focus focus = keysFocus();
    const bool sideways = key.key() == Qt::Key_Left || key.key() == Qt::Key_Right;
    return !(sideways ? focus.takesSideways : focus.takesUpAndDown);
}

/// Every control that has a use of its own for a key keeps it; so does an open menu.
ComputerKeys::Focus frmComposer::keysFocus() const {
    const QWidget* focus = focusWidget();
    const bool elsewhere =
        QApplication::activePopupWidget() || QApplication::activeModalWidget() != this;
    const bool text = elsewhere || takesText(focus);
    const bool slides = text || qobject_cast<const QAbstractSlider*>(focus) ||
                        qobject_cast<const QAbstractItemView*>(focus) ||
                        qobject_cast<const QMenuBar*>(focus);
    return {text, slides || focus == ui_->lb, slides};
}

void frmComposer::pollKeys() {
    if (closed_)
        return;
    ComputerKeys::Focus focus = keysFocus();
    focus.typing = std::exchange(typed_, false) || focus.typing;
    keys_.poll(focus);
}
