#pragma once

#include <QString>

/// The instruction that the window gives to the user.
enum class EarPrompt {
    LowerKey,
    UpperKey,
    Reference,
    RecogniseNote,
    RecogniseInterval,
    RecogniseChord,
    ResetRange,
};

QString textOf(EarPrompt prompt);
