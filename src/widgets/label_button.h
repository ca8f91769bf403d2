#pragma once

class QColor;
class QToolButton;

/// Makes a button look like a label that can be clicked: no frame, a text in colour.
void makeLabelButton(QToolButton& button, const QColor& colour);
