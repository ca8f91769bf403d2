#include "core/pitch.h"

#include "platform/user_text.h"

#include <algorithm>
#include <array>

namespace pitch {
namespace {

constexpr int kLowestOctave = 2;

constexpr std::array<const char*, kSemitones> kNames{
    QT_TRANSLATE_NOOP("UserText", "Do"),   QT_TRANSLATE_NOOP("UserText", "Do#"),
    QT_TRANSLATE_NOOP("UserText", "Re"),   QT_TRANSLATE_NOOP("UserText", "Re#"),
    QT_TRANSLATE_NOOP("UserText", "Mi"),   QT_TRANSLATE_NOOP("UserText", "Fa"),
    QT_TRANSLATE_NOOP("UserText", "Fa#"),  QT_TRANSLATE_NOOP("UserText", "Sol"),
    QT_TRANSLATE_NOOP("UserText", "Sol#"), QT_TRANSLATE_NOOP("UserText", "La"),
    QT_TRANSLATE_NOOP("UserText", "La#"),  QT_TRANSLATE_NOOP("UserText", "Si")};
constexpr std::array<const char*, kDegrees> kSyllables{
    QT_TRANSLATE_NOOP("UserText", "DO"),  QT_TRANSLATE_NOOP("UserText", "RE"),
    QT_TRANSLATE_NOOP("UserText", "MI"),  QT_TRANSLATE_NOOP("UserText", "FA"),
    QT_TRANSLATE_NOOP("UserText", "SOL"), QT_TRANSLATE_NOOP("UserText", "LA"),
    QT_TRANSLATE_NOOP("UserText", "SI")};
constexpr std::array<const char*, kDegrees> kLetters{
    QT_TRANSLATE_NOOP("UserText", "C"), QT_TRANSLATE_NOOP("UserText", "D"),
    QT_TRANSLATE_NOOP("UserText", "E"), QT_TRANSLATE_NOOP("UserText", "F"),
    QT_TRANSLATE_NOOP("UserText", "G"), QT_TRANSLATE_NOOP("UserText", "A"),
    QT_TRANSLATE_NOOP("UserText", "B")};

/// The pitch class of each degree: the major scale from Do.
constexpr std::array<int, kDegrees> kMajorScale{0, 2, 4, 5, 7, 9, 11};

}  // namespace

QString NoteName(int noteNumber) {
    if (noteNumber == kRest)
        return UserText::tr("P");
    if (!isPlayable(noteNumber))
        return {};
    return UserText::tr(kNames[static_cast<std::size_t>(noteNumber % kSemitones)]);
}

QString answerName(int degree, AnswerNames style) {
    if (degree < 0 || degree >= kDegrees)
        return {};
    const auto& names = style == AnswerNames::Syllables ? kSyllables : kLetters;
    return UserText::tr(names[static_cast<std::size_t>(degree)]);
}

std::optional<int> degreeOf(int noteNumber) {
    const auto degree = std::find(kMajorScale.begin(), kMajorScale.end(), noteNumber % kSemitones);
    if (degree == kMajorScale.end())
        return std::nullopt;
    return static_cast<int>(degree - kMajorScale.begin());
}

int noteNumberOfStep(int step) {
    const int octave = step / kDegrees;
    return kSemitones * (octave + 1) + kMajorScale[static_cast<std::size_t>(step % kDegrees)];
}

std::optional<NoteIndex> StepToNoteIndex(int step) {
    if (step < kLowestStep || step > kHighestStep)
        return std::nullopt;
    return noteIndexOf(static_cast<NoteNumber>(noteNumberOfStep(step)));
}

std::optional<int> NoteNumberToStep(int noteNumber) {
    if (!isPlayable(noteNumber))
        return std::nullopt;
    const std::optional<int> degree = degreeOf(noteNumber);
    if (!degree)
        return std::nullopt;
    return kDegrees * (noteNumber / kSemitones - 1) + *degree;
}

}  // namespace pitch
