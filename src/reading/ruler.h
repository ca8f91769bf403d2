#pragma once

#include <optional>

/// The scale of the ruler beside the staff, on which two clicks choose a range of steps. Its unit
/// is the twip, counted from the top. Each step has a band of twips; the bands follow the lines and
/// spaces of the staff, a little unevenly.
namespace ruler {

/// The ruler's length in twips.
constexpr double kLength = 4725;

struct Band {
    int step;
    int top;     ///< first twip, included
    int bottom;  ///< last twip, included

    constexpr double centre() const { return (top + bottom) / 2.0; }
};

/// The band of a step that carries a note; nothing for any other step.
std::optional<Band> bandOf(int step);

/// The step whose band holds the place `y`, in twips; nothing between two bands.
std::optional<int> stepAt(double y);

}  // namespace ruler
