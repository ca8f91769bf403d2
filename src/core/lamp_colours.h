#pragma once

#include "platform/user_text.h"

#include <array>
#include <cstdint>

/// The colours of the metronome's lamps and what a screen reader calls a lamp of each.
namespace lamp_colours {

/// 0x00BBGGRR.
using Colour = std::uint32_t;

constexpr Colour kRed = 0x0000FF;
constexpr Colour kGreen = 0x00FF00;
constexpr Colour kBlue = 0xFF0000;
constexpr Colour kUnlit = 0xAAAAAA;

struct NamedColour {
    Colour colour;
    const char* name;
};

constexpr auto kAll = std::to_array<NamedColour>({
    {kUnlit, QT_TRANSLATE_NOOP("UserText", "spenta")},
    {kRed, QT_TRANSLATE_NOOP("UserText", "rossa")},
    {kGreen, QT_TRANSLATE_NOOP("UserText", "verde")},
    {kBlue, QT_TRANSLATE_NOOP("UserText", "blu")},
});

}  // namespace lamp_colours
