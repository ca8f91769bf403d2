#pragma once

/// Lets screen readers read the ruler as a list of the steps' places, whose items can be pressed.
/// To be called before the first ruler is shown; calling it again does nothing.
void installRegoloAccessible();
