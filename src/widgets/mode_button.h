#pragma once

#include <QStringList>

class QLabel;
class QToolButton;

/// Styles the two labels that switch an exercise's mode: a title, and the mode's large caption.
void styleModeButtons(QToolButton& title, QToolButton& mode);

/// Makes room for the longest of a mode's explanations, so that a change of mode moves nothing.
void reserveExplanations(QLabel& explanation, const QStringList& texts);
