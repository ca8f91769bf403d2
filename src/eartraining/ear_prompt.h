#pragma once

#include "platform/user_text.h"

#include <string_view>

/// The instruction that the window gives to the user. An exercise declares its own.
struct EarPrompt {
    std::string_view text;  ///< a literal, shown by `UserText::tr`
    /// The window stays open as long as the instruction stands.
    bool keepsWindowOpen = false;

    bool operator==(const EarPrompt&) const = default;
};

/// The instructions of every exercise that has a range chosen on the keyboard.
namespace range_prompts {

inline constexpr EarPrompt kLowerKey{
    QT_TRANSLATE_NOOP("UserText", "Scegli la nota inferiore dell'intervallo")};
inline constexpr EarPrompt kUpperKey{
    QT_TRANSLATE_NOOP("UserText", "Scegli la nota superiore dell'intervallo")};
inline constexpr EarPrompt kReset{QT_TRANSLATE_NOOP("UserText", "Reimposta l'intervallo")};

}  // namespace range_prompts
