#include "platform/key_places.h"

namespace {

/// X11 and Wayland count from 8 on.
constexpr std::uint32_t kScanCodeOffset = 8;

}  // namespace

std::uint32_t keyPlaceOf(std::uint32_t scanCode) {
    return scanCode > kScanCodeOffset ? scanCode - kScanCodeOffset : 0;
}
