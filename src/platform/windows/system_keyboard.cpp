#include "platform/system_keyboard.h"

namespace system_keyboard {

void repeatWithoutReleases() {}

bool marksRepeats() {
    return true;
}

std::optional<bool> isDown(std::uint32_t /*scanCode*/) {
    return std::nullopt;
}

}  // namespace system_keyboard
