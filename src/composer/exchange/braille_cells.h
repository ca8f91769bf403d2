#pragma once

#include "core/note_values.h"
#include "core/pitch.h"

#include <QString>

#include <array>
#include <initializer_list>

/// The signs of braille music after the international manual, as cells of six dots.
namespace braille {

/// A cell of Unicode by its dots 1 to 6.
constexpr char16_t cell(std::initializer_list<int> dots) {
    constexpr char16_t kNoDots = 0x2800;
    char16_t pattern = kNoDots;
    for (const int dot : dots)
        pattern = static_cast<char16_t>(pattern | 1 << (dot - 1));
    return pattern;
}

constexpr char16_t kBlank = cell({});

/// Do to Si as eighth notes.
constexpr std::array<char16_t, pitch::kDegrees> kNotes{
    cell({1, 4, 5}), cell({1, 5}), cell({1, 2, 4}), cell({1, 2, 4, 5}),
    cell({1, 2, 5}), cell({2, 4}), cell({2, 4, 5})};

/// What a value adds to a note's cell, and its rest. A whole note looks like a 16th, a half note
/// like a 32nd, a quarter note like a 64th, an eighth note like a 128th.
struct ValueCells {
    char16_t added;
    char16_t rest;
};
constexpr std::array<ValueCells, 4> kValues{{{cell({3, 6}), cell({1, 3, 4})},
                                             {cell({3}), cell({1, 3, 6})},
                                             {cell({6}), cell({1, 2, 3, 6})},
                                             {cell({}), cell({1, 3, 4, 6})}}};

/// The first value that looks like one before.
constexpr auto kFirstSmall = note_values::Duration::Sixteenth;

constexpr const ValueCells& cellsOf(note_values::Duration value) {
    return kValues[static_cast<std::size_t>(value) % kValues.size()];
}

/// The marks of the octaves 1 to 7; 4 is that of middle C.
constexpr std::array<char16_t, 7> kOctaves{cell({4}),    cell({4, 5}), cell({4, 5, 6}), cell({5}),
                                           cell({4, 6}), cell({5, 6}), cell({6})};

constexpr char16_t kDot = cell({3});
constexpr char16_t kHyphen = cell({5});  ///< at the end of a line inside of a bar
constexpr char16_t kNumber = cell({3, 4, 5, 6});
constexpr char16_t kEquals = cell({2, 3, 5, 6});

inline constexpr std::array kTie{cell({4}), cell({1, 4})};
inline constexpr std::array kDoubleBar{cell({1, 2, 6}), cell({1, 3})};

constexpr char16_t kSharp = cell({1, 4, 6});
constexpr char16_t kFlat = cell({1, 2, 6});
constexpr char16_t kNatural = cell({1, 6});

/// Three notes of a triplet; any other number of them, up to where groups separate.
constexpr char16_t kTriplet = cell({2, 3});
inline constexpr std::array kOtherTriplet{cell({4, 5, 6}), cell({2, 5}), cell({3})};
inline constexpr std::array kGroupsSeparate{cell({1, 2, 6}), cell({2})};

/// Values from the whole note to the eighth, and below, follow.
inline constexpr std::array kLargerValues{cell({4, 5}), cell({1, 2, 6}), cell({2})};
inline constexpr std::array kSmallerValues{cell({6}), cell({1, 2, 6}), cell({2})};

/// The articulations by the letters of entries; a cell without dots stands for none.
struct Articulation {
    char letter;
    char16_t prefix;
};
constexpr char16_t kStaccato = cell({2, 3, 6});
inline constexpr std::array<Articulation, 3> kArticulations{
    {{'s', kBlank}, {'a', cell({4, 6})}, {'t', cell({4, 5, 6})}}};

/// A number as its digits stand behind the number sign, in the upper or lower part of the cells.
QString upperDigits(int number);
QString lowerDigits(int number);

/// Text in Italian literary braille. A character without a sign there becomes a blank.
QString literary(const QString& text);

/// The characters that embossers and displays print as these cells; line ends stay.
QByteArray ascii(const QString& cells);

}  // namespace braille
