#include "widgets/label_button.h"

#include <QColor>
#include <QPalette>
#include <QToolButton>

void makeLabelButton(QToolButton& button, const QColor& colour) {
    QPalette palette = button.palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, QPalette::ButtonText, colour);
    button.setPalette(palette);
    button.setAutoRaise(true);
    button.setCursor(Qt::PointingHandCursor);
    button.setFocusPolicy(Qt::StrongFocus);
}
