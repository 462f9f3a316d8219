// What a yarn takes, and when shares make a whole.
#include "composition/consumption.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using composition::CourseLength;
using composition::IsNearlyWhole;
using composition::IsWhole;

TEST(Consumption, OfACourseIsAStitchOnEveryNeedle) {
  EXPECT_EQ(CourseLength(3.5, 100), 350);
  EXPECT_EQ(CourseLength(0, 100), std::nullopt);
  EXPECT_EQ(CourseLength(3.5, 0), std::nullopt);
  EXPECT_EQ(CourseLength(-3.5, -100), std::nullopt);
}

TEST(Consumption, GrowsWithLengthAndFeedersAndShrinksWithTheCount) {
  EXPECT_DOUBLE_EQ(composition::RelativeConsumption(300, 2, 30), 0.118);
  EXPECT_DOUBLE_EQ(composition::RelativeConsumption(600, 2, 30), 0.236);
  EXPECT_DOUBLE_EQ(composition::RelativeConsumption(300, 4, 30), 0.236);
  EXPECT_DOUBLE_EQ(composition::RelativeConsumption(300, 2, 60), 0.059);
}

TEST(Consumption, SharesAreHeldAgainstAHundredTwice) {
  EXPECT_FALSE(IsWhole(99.96));
  EXPECT_FALSE(IsWhole(100.000001));
  EXPECT_FALSE(IsWhole(0));
  EXPECT_TRUE(IsWhole(100));
  EXPECT_TRUE(IsWhole(99.99999999999999));

  EXPECT_TRUE(IsNearlyWhole(99.96));
  EXPECT_TRUE(IsNearlyWhole(100.04));
  EXPECT_FALSE(IsNearlyWhole(99.94));
  EXPECT_FALSE(IsNearlyWhole(100.05));
  EXPECT_FALSE(IsNearlyWhole(0));
}

}  // namespace
