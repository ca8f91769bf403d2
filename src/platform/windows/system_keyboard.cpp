#include "platform/system_keyboard.h"

namespace system_keyboard {

/// The toolkit marks the repeats of this system's keys without fail.
void repeatWithoutReleases() {}

std::optional<bool> isDown(std::uint32_t /*scanCode*/) {
    return std::nullopt;
}

}  // namespace system_keyboard
