// How many rolls an item lets expect.
#include "weaving/expected_rolls.h"

#include <gtest/gtest.h>

namespace {

using weaving::ExpectedRolls;

TEST(ExpectedRolls, AreTheNearestWholeNumber) {
  EXPECT_EQ(ExpectedRolls(1000, 20), 50);
  EXPECT_EQ(ExpectedRolls(1000, 17.5), 57);  // 57.14
  EXPECT_EQ(ExpectedRolls(50, 20), 3);       // 2.5
  EXPECT_EQ(ExpectedRolls(9, 20), 0);
}

TEST(ExpectedRolls, AreNoneWhereNothingIsOrderedOrNobodyKnowsARollsWeight) {
  EXPECT_EQ(ExpectedRolls(0, 20), 0);
  EXPECT_EQ(ExpectedRolls(-40, 20), 0);
  EXPECT_EQ(ExpectedRolls(40, 0), 0);
  EXPECT_EQ(ExpectedRolls(-40, -20), 0);
}

}  // namespace
