#include "platform/key_places.h"

#include <gtest/gtest.h>

TEST(KeyPlaces, ScanCodesCountFromEight) {
    EXPECT_EQ(keyPlaceOf(24), 16U) << "Q";
    EXPECT_EQ(keyPlaceOf(9), 1U) << "escape";
    EXPECT_EQ(keyPlaceOf(7), 0U);
}
