#pragma once

#include <cstdint>

/// The ear-training window's fixed colours, as opaque 0xAARRGGBB values.
namespace ear_colours {

using Rgb = std::uint32_t;

constexpr Rgb rgb(Rgb red, Rgb green, Rgb blue) {
    return 0xFF000000U | red << 16 | green << 8 | blue;
}

constexpr Rgb kRightIndicator = rgb(0, 192, 0);
constexpr Rgb kWrongIndicator = rgb(255, 0, 0);

constexpr Rgb kConsonant = rgb(192, 255, 255);  ///< also the buttons of chord types
constexpr Rgb kDissonant = rgb(224, 224, 224);
constexpr Rgb kDissonantButton = rgb(255, 255, 192);
constexpr Rgb kConsonantText = rgb(0, 0, 192);
constexpr Rgb kDissonantText = rgb(176, 0, 0);

}  // namespace ear_colours
