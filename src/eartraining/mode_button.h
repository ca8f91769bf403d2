#pragma once

class QToolButton;

/// Styles the two labels that switch an exercise's mode: a title, and the mode's large caption.
void styleModeButtons(QToolButton& title, QToolButton& mode);
