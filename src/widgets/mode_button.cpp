#include "widgets/mode_button.h"

#include "widgets/appearance.h"
#include "widgets/label_button.h"

#include <QPalette>
#include <QToolButton>

namespace {

constexpr double kTextScale = 1.5;

}  // namespace

void styleModeButtons(QToolButton& title, QToolButton& mode) {
    makeLabelButton(title, title.palette().color(QPalette::WindowText));
    makeLabelButton(mode, mode.palette().color(QPalette::Link));
    appearance::enlargeText(mode, kTextScale);
}
