#pragma once

/// What an answer of an exercise was.
enum class Verdict { None, Right, Wrong };

constexpr Verdict verdictOf(bool right) {
    return right ? Verdict::Right : Verdict::Wrong;
}
