#include "platform/key_places.h"

#include <array>

namespace {

/// Set in the codes of the keys that the first PC keyboards did not have. The others' codes are
/// the numbers of their places.
constexpr std::uint32_t kExtended = 0x100;

struct ExtendedKey {
    std::uint32_t scanCode;
    std::uint32_t place;
};
constexpr std::array<ExtendedKey, 5> kExtendedKeys{{{0x11C, 96},     // Enter of the numeric keypad
                                                    {0x148, 103},    // up
                                                    {0x14B, 105},    // left
                                                    {0x14D, 106},    // right
                                                    {0x150, 108}}};  // down

}  // namespace

std::uint32_t keyPlaceOf(std::uint32_t scanCode) {
    if ((scanCode & kExtended) == 0)
        return scanCode;
    for (const ExtendedKey& key : kExtendedKeys) {
        if (key.scanCode == scanCode)
            return key.place;
    }
    return 0;
}
