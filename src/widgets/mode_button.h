#pragma once

class QToolButton;

/// Styles the two buttons that switch an exercise's mode, which look like labels: a title, and the
/// mode's large caption.
void styleModeButtons(QToolButton& title, QToolButton& mode);
