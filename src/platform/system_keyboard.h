#pragma once

#include <cstdint>
#include <optional>

/// What a system's keyboard is asked for beside its key events. Each system's folder implements it.
namespace system_keyboard {

/// Has a held key repeat as presses alone, where the system would put a release before each. To be
/// called once, after the application object was made.
void repeatWithoutReleases();

/// Whether this system marks every repeat. Then a press without the mark is a new one, even of a
/// key that seems to be down: its release was lost.
bool marksRepeats();

/// Whether the key with this scan code is down at this moment, whichever application has the focus;
/// nothing where the system does not tell.
std::optional<bool> isDown(std::uint32_t scanCode);

}  // namespace system_keyboard
