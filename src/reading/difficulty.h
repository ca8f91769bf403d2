#pragma once

#include "reading/staff_step.h"

#include <array>
#include <cstddef>
#include <optional>

/// The difficulty list: each item sets the lower and upper step of the draw.
namespace difficulty {

struct StepRange {
    int lower;
    int upper;
};

struct Item {
    const char* text;                ///< UTF-8
    std::optional<StepRange> range;  ///< nothing for a separator line
};

constexpr std::array<Item, 11> kItems{{
    {"Chiave di Sol: SI - MI", StepRange{43, 53}},
    {"Chiave di Sol: Sol - Sol", StepRange{41, 55}},
    {"Chiave di Sol: Fa - Do", StepRange{40, 58}},
    {"Chiave di Sol: Fa - Sol", StepRange{40, 62}},
    {"---------------------------", std::nullopt},
    {"Chiave di Fa: Sol - La", StepRange{18, 26}},
    {"Chiave di Fa: Mi - Do", StepRange{16, 28}},
    {"Chiave di Fa: Do - Mi", StepRange{14, 30}},
    {"Chiave di Fa: Sol - Fa", StepRange{11, 31}},
    {"----------------------------", std::nullopt},
    {"5 Ottave Do - Si", StepRange{14, 64}},
}};

/// The item that a choice leads to: a separator leads to the first item.
constexpr std::size_t chosenItem(std::size_t index) {
    return index < kItems.size() && kItems[index].range ? index : 0;
}

}  // namespace difficulty
