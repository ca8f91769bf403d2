#include "composer/notation/staff_entry.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using staff_entry::Figure;

/// "2 8": a half tied to an eighth; "4." is dotted, "3:8" a triplet, "~" stands before a figure
/// that is not exact.
std::string written(const Figure& figure) {
    std::string text = figure.exact ? "" : "~";
    text += figure.triplet ? "3:" : "";
    for (const staff_entry::Value& value : figure.values) {
        text += &value == &figure.values.front() ? "" : " ";
        text += std::to_string(1 << static_cast<int>(value.duration));
        text += value.dots > 0 ? "." : "";
    }
    return text;
}

double quartersOf(const Figure& figure) {
    double sum = 0;
    for (const staff_entry::Value& value : figure.values)
        sum += 4.0 / (1 << static_cast<int>(value.duration)) * (value.dots == 1 ? 1.5 : 1);
    return figure.triplet ? sum * 2 / 3 : sum;
}

TEST(StaffEntry, DurationsAreEngravedAsAMusicianWritesThem) {
    const std::vector<std::pair<double, const char*>> cases{
        {3, "2."},        {1.25, "4 16"},   {5, "1 4"},          {8, "1 1"},
        {0.1875, "32."},  {2.5, "2 8"},     {24, "1 1 1 1 1 1"}, {0.15625, "64. 64"},
        {8.0 / 3, "3:1"}, {1.0 / 3, "3:8"}, {5.0 / 3, "3:2 8"},  {0.1, "~64."},
        {0, "~64"},       {1e300, "~1."}};
    for (const auto& [duration, figure] : cases)
        EXPECT_EQ(written(staff_entry::figureOf(duration)), figure) << duration;
    for (int i = 1; i <= 37 * 96; ++i) {
        const double duration = i / 96.0;
        const Figure figure = staff_entry::figureOf(duration);
        ASSERT_TRUE(!figure.values.empty() && figure.values.size() <= 6) << duration;
        ASSERT_EQ(figure.triplet, figure.exact && i % 3 != 0) << duration;
        if (figure.exact)
            ASSERT_NEAR(quartersOf(figure), duration, 1e-9) << written(figure);
        else
            ASSERT_TRUE(i % 3 != 0 || duration > 4 || i == 3) << duration;
    }
}

}  // namespace
