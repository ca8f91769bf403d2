#include "eartraining/middle_c_patch.h"

#include "core/pitch.h"
#include "platform/user_text.h"
#include "widgets/double_click.h"
#include "widgets/piano_keyboard.h"

#include <QMouseEvent>

namespace {

QWidget& middleCOf(PianoKeyboard& keyboard) {
    return *keyboard.findChild<QWidget*>(
        QStringLiteral("lb_%1").arg(pitch::noteIndexOf(pitch::kMiddleC)));
}

}  // namespace

MiddleCPatch::MiddleCPatch(PianoKeyboard& keyboard) : QWidget(&keyboard), keyboard_(keyboard) {
    setObjectName(QStringLiteral("Lbdoc"));
    setToolTip(UserText::tr("Do Centrale"));
    setAccessibleName(toolTip());
    connect(new DoubleClick(*this), &DoubleClick::doubleClicked, this,
            &MiddleCPatch::doubleClicked);
    middleCOf(keyboard).installEventFilter(this);
    placeOnKey();
}

bool MiddleCPatch::eventFilter(QObject* /*target*/, QEvent* event) {
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
        placeOnKey();
    return false;
}

void MiddleCPatch::placeOnKey() {
    setGeometry(keyboard_.middleCSquare());
}

void MiddleCPatch::mousePressEvent(QMouseEvent* event) {
    event->setAccepted(event->button() == Qt::LeftButton);
}
