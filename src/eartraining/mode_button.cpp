#include "eartraining/mode_button.h"

#include "widgets/label_button.h"

#include <QPalette>
#include <QToolButton>

namespace {

constexpr double kTextScale = 1.5;

}  // namespace

void styleModeButtons(QToolButton& title, QToolButton& mode) {
    makeLabelButton(title, title.palette().color(QPalette::WindowText));
    makeLabelButton(mode, mode.palette().color(QPalette::Link));
    QFont font = mode.font();
    font.setPointSizeF(font.pointSizeF() * kTextScale);
    font.setBold(true);
    mode.setFont(font);
}
