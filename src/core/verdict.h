#pragma once

#include <QString>

/// What an answer of an exercise was.
enum class Verdict { None, Right, Wrong };

constexpr Verdict verdictOf(bool right) {
    return right ? Verdict::Right : Verdict::Wrong;
}

/// As it is said. Short, because the next question may sound at once.
QString inWords(Verdict verdict);
