#pragma once

#include "core/lamp_colours.h"

#include <QLatin1String>
#include <QString>

#include <array>
#include <cstdint>
#include <optional>

/// Pulse patterns: short texts of the letters "a" (strong beat), "b" (ordinary beat) and "c"
/// (secondary accent), one for each pulse.
namespace pulse_pattern {

using lamp_colours::Colour;

constexpr int kMaxLength = 20;

enum class Kind { A, B, C };

struct BuiltIn {
    QLatin1String timeSig;
    QLatin1String pattern;
};

/// In the order in which the user steps through them.
constexpr std::array<BuiltIn, 4> kBuiltIn{{
    {QLatin1String("2/4"), QLatin1String("ab")},
    {QLatin1String("3/4"), QLatin1String("abb")},
    {QLatin1String("4/4"), QLatin1String("abbb")},
    {QLatin1String("6/8"), QLatin1String("abbcbb")},
}};

/// Nothing for any letter but "a", "b" and "c".
std::optional<Kind> kindOf(QChar letter);

Colour colourOf(Kind kind);

/// The time signature after the given one; the first for the last and for any text of the user's.
const BuiltIn& builtInAfter(const QString& timeSig);

bool isBuiltIn(const QString& pattern);

}  // namespace pulse_pattern
