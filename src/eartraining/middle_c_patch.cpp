#include "eartraining/middle_c_patch.h"

#include "core/pitch.h"
#include "eartraining/double_click.h"
#include "widgets/piano_keyboard.h"

#include <QEvent>

namespace {

constexpr double kHeightShare = 0.22;  ///< of the key, from its lower end

QWidget& middleCOf(PianoKeyboard& keyboard) {
    return *keyboard.findChild<QWidget*>(
        QStringLiteral("lb_%1").arg(pitch::noteIndexOf(pitch::kMiddleC)));
}

}  // namespace

MiddleCPatch::MiddleCPatch(PianoKeyboard& keyboard, std::function<void()> doubleClicked)
    : QWidget(&keyboard), key_(middleCOf(keyboard)) {
    setObjectName(QStringLiteral("Lbdoc"));
    setToolTip(QStringLiteral("Do Centrale"));
    setAccessibleName(toolTip());
    onDoubleClick(*this, std::move(doubleClicked));
    key_.installEventFilter(this);
    settle();
}

bool MiddleCPatch::eventFilter(QObject* /*target*/, QEvent* event) {
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
        settle();
    return false;
}

void MiddleCPatch::settle() {
    QRect place = key_.geometry();
    place.setTop(place.bottom() - qRound(kHeightShare * place.height()));
    setGeometry(place);
}
