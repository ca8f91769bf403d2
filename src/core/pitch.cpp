#include "core/pitch.h"

#include <algorithm>
#include <array>

namespace pitch {
namespace {

constexpr int kLowestOctave = 2;

constexpr std::array<const char*, kSemitones> kNames{"Do",  "Do#", "Re",   "Re#", "Mi",  "Fa",
                                                     "Fa#", "Sol", "Sol#", "La",  "La#", "Si"};
constexpr std::array<const char*, kDegrees> kSyllables{"DO", "RE", "MI", "FA", "SOL", "LA", "SI"};
constexpr std::array<const char*, kDegrees> kLetters{"C", "D", "E", "F", "G", "A", "B"};

/// The pitch class of each degree: the major scale from Do.
constexpr std::array<int, kDegrees> kMajorScale{0, 2, 4, 5, 7, 9, 11};

}  // namespace

QString NoteName(int noteNumber) {
    if (noteNumber == kRest)
        return QStringLiteral("P");
    if (!isPlayable(noteNumber))
        return {};
    return QLatin1String(kNames[static_cast<std::size_t>(noteNumber % kSemitones)]);
}

QString answerName(int degree, AnswerNames style) {
    if (degree < 0 || degree >= kDegrees)
        return {};
    const auto& names = style == AnswerNames::Syllables ? kSyllables : kLetters;
    return QLatin1String(names[static_cast<std::size_t>(degree)]);
}

std::optional<NoteIndex> StepToNoteIndex(int step) {
    if (step < kLowestStep || step > kHighestStep)
        return std::nullopt;
    const int octave = step / kDegrees;
    const int offset = kMajorScale[static_cast<std::size_t>(step % kDegrees)];
    return static_cast<NoteIndex>(kSemitones * (octave - kLowestOctave) + offset);
}

std::optional<int> NoteNumberToStep(int noteNumber) {
    if (!isPlayable(noteNumber))
        return std::nullopt;
    const auto degree = std::find(kMajorScale.begin(), kMajorScale.end(), noteNumber % kSemitones);
    if (degree == kMajorScale.end())
        return std::nullopt;
    const int octave = noteNumber / kSemitones - 1;
    return kDegrees * octave + static_cast<int>(degree - kMajorScale.begin());
}

}  // namespace pitch
