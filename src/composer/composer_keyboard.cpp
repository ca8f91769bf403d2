#include "composer/composer_keyboard.h"

#include "composer/hand_playing.h"
#include "composer/melody/composition.h"
#include "core/pitch.h"
#include "ui_entry_palette_panel.h"
#include "ui_frmComposer.h"
#include "widgets/number_label.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace {

bool isArrow(int key) {
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

/// Enter and its like mean something in these controls.
bool takesEnter(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QComboBox*>(widget) ||
           qobject_cast<const QAbstractItemView*>(widget) ||
           qobject_cast<const PianoKeyboard*>(widget) ||
           qobject_cast<const DoubleClickLabel*>(widget) ||
           qobject_cast<const NumberLabel*>(widget) || qobject_cast<const QMenuBar*>(widget);
}

bool isEntryKey(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Delete;
}

/// A letter in the menu bar opens a menu, and a digit the line of a number.
bool takesText(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QComboBox*>(widget) ||
           qobject_cast<const NumberLabel*>(widget) || qobject_cast<const QMenuBar*>(widget);
}

}  // namespace

ComposerKeyboard::ComposerKeyboard(QDialog& window, Ui::frmComposer& ui, const Runtime& runtime,
                                   const Composition& composition, HandPlaying& hand)
    : window_(window), ui_(ui), composition_(composition), hand_(hand), keys_(runtime, *this) {
    QCoreApplication::instance()->installEventFilter(this);
}

/// Sees a key before its control does. What is typed is noted here, because the focus may have
/// moved on by the time that the keys are polled.
bool ComposerKeyboard::eventFilter(QObject* target, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* focused = qobject_cast<QWidget*>(target);
        const int pressed = static_cast<QKeyEvent*>(event)->key();
        if (!focused || focused->window() != &window_ || !isEntryKey(pressed) ||
            !takesEnter(focused))
            return false;
        event->accept();
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (target == window_.windowHandle()) {
        const auto chord = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
        if (focus().typing || key.modifiers().testAnyFlags(chord))
            typed_ = true;
        return false;
    }
    const auto* widget = qobject_cast<QWidget*>(target);
    if (!widget || widget->window() != &window_ || !isArrow(key.key()))
        return false;
    // An arrow that means a step or a semitone does not move the focus from button to button.
    const ComputerKeys::Focus focused = focus();
    const bool sideways = key.key() == Qt::Key_Left || key.key() == Qt::Key_Right;
    return !(sideways ? focused.takesSideways : focused.takesUpAndDown);
}

/// Every control that has a use of its own for a key keeps it; so does an open menu.
ComputerKeys::Focus ComposerKeyboard::focus() const {
    const QWidget* focused = window_.focusWidget();
    const bool elsewhere =
        QApplication::activePopupWidget() || QApplication::activeModalWidget() != &window_;
    const bool text = elsewhere || takesText(focused);
    const bool slides = text || qobject_cast<const QAbstractSlider*>(focused) ||
                        qobject_cast<const QAbstractItemView*>(focused);
    return {text, slides || focused == ui_.lb, slides};
}

void ComposerKeyboard::poll() {
    ComputerKeys::Focus now = focus();
    now.typing = std::exchange(typed_, false) || now.typing;
    keys_.poll(now);
}

void ComposerKeyboard::releaseHeldKeys() {
    keys_.releaseAll();
}

void ComposerKeyboard::noteDown(pitch::NoteNumber note) {
    hand_.pressKey(note);
}

/// It sounds again, but only a press inserts.
void ComposerKeyboard::noteRepeated(pitch::NoteNumber note) {
    hand_.beginNote(note);
}

void ComposerKeyboard::noteUp(pitch::NoteNumber note) {
    hand_.endNote(note);
}

void ComposerKeyboard::stepKeyDown(bool forward) {
    Q_EMIT stepRequested(forward ? StepMode::Direction::Forward : StepMode::Direction::Backward);
    ui_.palette->ui().cmdInsNota->setFocus();
}

/// Without an active note it begins at middle C.
void ComposerKeyboard::semitoneKeyDown(bool upwards) {
    int note = pitch::kMiddleC;
    if (pitch::isPlayable(composition_.activeNote))
        note = composition_.activeNote + (upwards ? 1 : -1);
    semitoneNote_ = static_cast<pitch::NoteNumber>(
        std::clamp<int>(note, pitch::kLowestNote, pitch::kHighestNote));
    hand_.beginNote(semitoneNote_);
    Q_EMIT semitoneChosen();
}

void ComposerKeyboard::semitoneKeyUp() {
    hand_.endNote(std::exchange(semitoneNote_, pitch::kRest));
}
