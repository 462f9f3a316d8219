// How heavy a roll may be on the average before a person is asked.
#include "weaving/average_weight.h"

#include <gtest/gtest.h>

namespace {

using weaving::AverageRoll;
using weaving::HeaviestRoll;

TEST(AverageWeight, HalfAsMuchAgainInWholeKilograms) {
  EXPECT_EQ(HeaviestRoll(20), 30);
  EXPECT_EQ(HeaviestRoll(21), 32);      // 10.5 counts as 11
  EXPECT_EQ(HeaviestRoll(20.6), 30.6);  // 10.3 as 10
  EXPECT_EQ(HeaviestRoll(0.9), 0.9);    // 0.45 as nothing
}

TEST(AverageWeight, IsKilogramsPerPiece) {
  EXPECT_EQ(AverageRoll(20.4, 2), 10.2);
  EXPECT_EQ(AverageRoll(10, 3), 3.333);
  EXPECT_EQ(AverageRoll(10, 0), 0);
  EXPECT_EQ(AverageRoll(10, -1), 0);
  EXPECT_EQ(AverageRoll(1e308, 1e-300), 0);
}

}  // namespace
