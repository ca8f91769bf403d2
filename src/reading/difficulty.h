#pragma once

#include "platform/user_text.h"
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
    const char* text;                ///< shown by `UserText::tr`
    std::optional<StepRange> range;  ///< nothing for a separator line
};

constexpr std::array<Item, 11> kItems{{
    {QT_TRANSLATE_NOOP("UserText", "Chiave di Sol: SI - MI"), StepRange{43, 53}},
    {QT_TRANSLATE_NOOP("UserText", "Chiave di Sol: Sol - Sol"), StepRange{41, 55}},
    {QT_TRANSLATE_NOOP("UserText", "Chiave di Sol: Fa - Do"), StepRange{40, 58}},
    {QT_TRANSLATE_NOOP("UserText", "Chiave di Sol: Fa - Sol"), StepRange{40, 62}},
    {"---------------------------", std::nullopt},
    {QT_TRANSLATE_NOOP("UserText", "Chiave di Fa: Sol - La"), StepRange{18, 26}},
    {QT_TRANSLATE_NOOP("UserText", "Chiave di Fa: Mi - Do"), StepRange{16, 28}},
    {QT_TRANSLATE_NOOP("UserText", "Chiave di Fa: Do - Mi"), StepRange{14, 30}},
    {QT_TRANSLATE_NOOP("UserText", "Chiave di Fa: Sol - Fa"), StepRange{11, 31}},
    {"----------------------------", std::nullopt},
    {QT_TRANSLATE_NOOP("UserText", "5 Ottave Do - Si"), StepRange{14, 64}},
}};

/// The item that a choice leads to: a separator leads to the first item.
constexpr std::size_t chosenItem(std::size_t index) {
    return index < kItems.size() && kItems[index].range ? index : 0;
}

}  // namespace difficulty
