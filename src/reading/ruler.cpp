#include "reading/ruler.h"

#include "reading/staff_step.h"

#include <algorithm>
#include <array>

namespace ruler {
namespace {

constexpr std::array<Band, staff_step::kCount> kBands{{
    {11, 4545, 4635}, {12, 4425, 4530}, {13, 4305, 4395}, {14, 4200, 4290}, {15, 4095, 4185},
    {16, 4005, 4080}, {17, 3915, 3990}, {18, 3840, 3900}, {19, 3735, 3810}, {20, 3630, 3705},
    {21, 3555, 3615}, {22, 3480, 3540}, {23, 3405, 3450}, {24, 3300, 3375}, {25, 3225, 3270},
    {26, 3135, 3210}, {27, 3060, 3120}, {28, 2970, 3045}, {29, 2865, 2940}, {30, 2760, 2820},
    {31, 2655, 2730}, {40, 2220, 2310}, {41, 2130, 2205}, {42, 2040, 2100}, {43, 1935, 2025},
    {44, 1845, 1920}, {45, 1770, 1830}, {46, 1680, 1755}, {47, 1590, 1665}, {48, 1500, 1560},
    {49, 1425, 1485}, {50, 1335, 1395}, {51, 1260, 1320}, {52, 1170, 1245}, {53, 1080, 1155},
    {54, 990, 1065},  {55, 900, 960},   {56, 810, 885},   {57, 735, 795},   {58, 645, 720},
    {59, 555, 630},   {60, 480, 540},   {61, 390, 465},   {62, 300, 360},   {63, 210, 285},
    {64, 90, 180},
}};

}  // namespace

std::optional<Band> bandOf(int step) {
    const auto band = std::find_if(kBands.begin(), kBands.end(),
                                   [step](const Band& b) { return b.step == step; });
    return band == kBands.end() ? std::nullopt : std::optional(*band);
}

std::optional<int> stepAt(double y) {
    const auto band = std::find_if(kBands.begin(), kBands.end(),
                                   [y](const Band& b) { return y >= b.top && y <= b.bottom; });
    return band == kBands.end() ? std::nullopt : std::optional(band->step);
}

}  // namespace ruler
