#include "widgets/piano_key_accessible.h"

#include "widgets/parts_accessible.h"
#include "widgets/piano_keyboard.h"

namespace {

class KeyAccessible : public QAccessibleWidget {
public:
    KeyAccessible(PianoKey* key, PianoKeyboard* keyboard)
        : QAccessibleWidget(key, QAccessible::Button), key_(key), keyboard_(keyboard) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.focusable = keyboard_->isEnabled();
        state.focused = keyboard_->hasFocus() && keyboard_->cursorKey() == key_->index();
        state.pressed = keyboard_->pressed(key_->index());
        return state;
    }

    QStringList actionNames() const override { return {pressAction()}; }

    void doAction(const QString& name) override {
        if (name == pressAction() && keyboard_->isEnabled())
            keyboard_->tap(key_->index());
    }

private:
    PianoKey* key_;
    PianoKeyboard* keyboard_;
};

QAccessibleInterface* makeKey(const QString& className, QObject* object) {
    if (className != QLatin1String(PianoKey::staticMetaObject.className()))
        return nullptr;
    auto* key = qobject_cast<PianoKey*>(object);
    auto* keyboard = key ? qobject_cast<PianoKeyboard*>(key->parentWidget()) : nullptr;
    return keyboard ? new KeyAccessible(key, keyboard) : nullptr;
}

}  // namespace

void installPianoKeyAccessible() {
    installPartsAccessible<PianoKeyboard, QAccessible::Grouping>();
    QAccessible::installFactory(makeKey);
}
