#pragma once

#include <cstdint>

/// The number of a key's place on a PC keyboard, as Linux counts them, from the scan code that the
/// system's key events carry; 0 if the code says nothing. Each system's folder implements it.
std::uint32_t keyPlaceOf(std::uint32_t scanCode);
