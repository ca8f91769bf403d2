#pragma once

#include <QPalette>

/// The colours of the windows: two themes of the program's own, and those of a desktop that a user
/// has set to high contrast.
namespace palettes {

QPalette light();
QPalette dark();

/// Whether a palette does without shades: windows, pages and buttons have one colour, which the
/// text differs from by far.
bool hasHighContrast(const QPalette& desktop);

/// The colours of a desktop of high contrast. What its palette would make hard to see on its
/// background has the colour of the text.
QPalette highContrast(const QPalette& desktop);

}  // namespace palettes
