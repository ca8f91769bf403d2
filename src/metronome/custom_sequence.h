#pragma once

#include <QLatin1String>
#include <QString>

#include <array>
#include <optional>

class FunzioniMM;
struct MetronomeState;

/// The user's own pulse patterns: what may be typed, the examples, the sounds and how the result
/// is stored.
namespace custom_sequence {

constexpr int kMaxTempoLength = 5;

struct Preset {
    QLatin1String pattern;
    QLatin1String tempo;
};

constexpr std::array<Preset, 3> kPresets{{
    {QLatin1String("abcb"), QLatin1String("2/4")},
    {QLatin1String("abcbcb"), QLatin1String("3/4")},
    {QLatin1String("abcbcbcb"), QLatin1String("4/4")},
}};

/// Notes of the percussion channel among which each pulse kind's sound is chosen.
inline constexpr std::array kSoundsA{38, 40, 46, 49, 53, 61, 65, 66, 76, 77, 81};
inline constexpr std::array kSoundsB{27, 35, 36, 45, 48, 54, 69, 75, 82, 85};
inline constexpr std::array kSoundsC{31, 33, 34, 37, 42, 43, 44, 51};

/// The letter that a typed character puts into the pattern: "a", "b" or "c", from either case.
/// Nothing for any other, which is dropped.
std::optional<QChar> typedLetter(QChar character);

/// Sounds one percussion note, if an output is open.
void testSound(FunzioniMM& funzioniMM, int note);

/// What the window holds when it closes.
struct Result {
    QString pattern;
    QString tempo;
    int soundIndexA = 0;
    int soundIndexB = 0;
    int soundIndexC = 0;
};

/// Writes the result into the metronome's state. An empty pattern stands for "ab" in "2/4"; a
/// built-in pattern leaves the time signature as it was; any other takes the tempo as its time
/// signature, or "P." if that is empty.
void store(MetronomeState& state, const Result& result);

}  // namespace custom_sequence
