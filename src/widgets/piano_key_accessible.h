#pragma once

/// Lets screen readers read the piano's keys as buttons that can be pressed. To be called before
/// the first keyboard is shown; calling it again does nothing.
void installPianoKeyAccessible();
