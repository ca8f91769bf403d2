#pragma once

#include "core/pitch.h"
#include "platform/key_codes.h"
#include "reading/reading_statistics.h"

#include <QString>
#include <Qt>

#include <algorithm>
#include <array>
#include <optional>

/// The keys that answer in the reading drill. The mode "normale" goes by the character typed. The
/// automatic mode polls keys: the letters wherever the keyboard layout has them, and the numeric
/// keypad instead of the digit row.
namespace answer_keys {

/// The character of each degree's key, Do to Si, as the window shows them.
constexpr std::array<char, pitch::kDegrees> kCharacters{'d', '1', 'f', '2', 'g', '3', 'h'};

/// The polled keys of each degree; the keypad reads 4, 1, 6, 2, 7, 3, 8. Degrees with one key
/// carry it twice.
constexpr std::array<std::array<KeyCode, 2>, pitch::kDegrees> kPolled{{
    {letterKey('D'), kKeyNumpad0 + 4},
    {kKeyNumpad0 + 1, kKeyNumpad0 + 1},
    {letterKey('F'), kKeyNumpad0 + 6},
    {kKeyNumpad0 + 2, kKeyNumpad0 + 2},
    {letterKey('G'), kKeyNumpad0 + 7},
    {kKeyNumpad0 + 3, kKeyNumpad0 + 3},
    {letterKey('H'), kKeyNumpad0 + 8},
}};

/// The keys that answer a degree 0..6 in a mode, as the window names them under the button: "d", or
/// "d / Num 4" for a letter and the keypad's 4.
QString inWords(int degree, ReadingMode mode);

/// Whether a key event's key is polled. Without NumLock the keypad's digits are cursor keys.
constexpr bool isPolled(int qtKey, bool onKeypad) {
    constexpr std::array kLetters{Qt::Key_D, Qt::Key_F, Qt::Key_G, Qt::Key_H};
    constexpr std::array kKeypad{Qt::Key_1,    Qt::Key_2,        Qt::Key_3,    Qt::Key_4,
                                 Qt::Key_6,    Qt::Key_7,        Qt::Key_8,    Qt::Key_End,
                                 Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Left, Qt::Key_Right,
                                 Qt::Key_Home, Qt::Key_Up};
    return std::find(kLetters.begin(), kLetters.end(), qtKey) != kLetters.end() ||
           (onKeypad && std::find(kKeypad.begin(), kKeypad.end(), qtKey) != kKeypad.end());
}

/// The degree 0..6 that a typed character answers; nothing for any other character.
constexpr std::optional<int> degreeOf(char32_t typed) {
    const char32_t lower = typed >= U'A' && typed <= U'Z' ? typed + 32 : typed;
    for (std::size_t degree = 0; degree < kCharacters.size(); ++degree) {
        if (lower == static_cast<char32_t>(kCharacters[degree]))
            return static_cast<int>(degree);
    }
    return std::nullopt;
}

}  // namespace answer_keys
