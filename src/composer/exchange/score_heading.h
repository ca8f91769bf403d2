#pragma once

#include <QString>

/// What stands over the notes of a melody on paper and in other programs.
struct ScoreHeading {
    QString title;
    int tempo = 60;   ///< quarter notes per minute
    int program = 0;  ///< General MIDI program 0..127
};
