#include "widgets/mode_button.h"

#include "widgets/appearance.h"
#include "widgets/label_button.h"

#include <QLabel>
#include <QPalette>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr double kTextScale = 1.5;

}  // namespace

void styleModeButtons(QToolButton& title, QToolButton& mode) {
    makeLabelButton(title, title.palette().color(QPalette::WindowText));
    makeLabelButton(mode, mode.palette().color(QPalette::Link));
    appearance::enlargeText(mode, kTextScale);
}

void reserveExplanations(QLabel& explanation, const QStringList& texts) {
    for (const QString& text : texts) {
        explanation.setText(text);
        explanation.setMinimumWidth(
            std::max(explanation.minimumWidth(), explanation.sizeHint().width()));
    }
}
