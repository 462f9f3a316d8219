// A mill's price of a fabric: which of several rows of the table speaks.
#include "weaving/mill_price.h"

#include <gtest/gtest.h>

#include "app/application.h"
#include "support/mill.h"

namespace test {
namespace {

class MillPrices : public ::testing::Test {
 protected:
  MillPrices() : prices_(mill_.App()) {}
  void Price(std::string_view type, std::string_view colour, double cost) {
    mill_.Insert("CADCORTI", {{"TIPO", type}, {"CODIGO", "F"}, {"CODCLI", "M1"}, {"COR", colour}, {"CUSTO", cost}});
  }

  Mill mill_;
  weaving::MillPrice prices_;
};

TEST_F(MillPrices, TheBasePriceSpeaksWhereverItsRowStands) {
  Price("C", "02", 7);
  Price("T", "0", 1);
  Price("C", "0", 5);
  Price("C", "01", 6);
  EXPECT_EQ(prices_.Agreed("M1", "F"), 5);
  EXPECT_EQ(prices_.Service("M1", "F"), 4.54);
  // Rewritten, a row moves to another place in the file.
  mill_.Exec("DELETE FROM {CADCORTI} WHERE COR = '0' AND TIPO = 'C'");
  mill_.Exec("UPDATE {CADCORTI} SET CUSTO = CUSTO + 1");
  Price("C", "0", 8);
  EXPECT_EQ(prices_.Agreed("M1", "F"), 8);
  EXPECT_EQ(prices_.Service("M1", "F"), 7.26);
}

TEST_F(MillPrices, WithoutABasePriceTheFirstColourSpeaks) {
  Price("C", "09", 7);
  Price("C", "01", 6);
  EXPECT_EQ(prices_.Agreed("M1", "F"), 6);
}

TEST_F(MillPrices, OfAColourIsThatColours) {
  Price("T", "02", 9);
  Price("C", "02", 7);
  Price("C", "0", 5);
  EXPECT_EQ(prices_.Agreed("M1", "F", "02"), 7);
  EXPECT_EQ(prices_.Agreed("M1", "F", "03"), 0);
}

TEST_F(MillPrices, NoneIsZero) {
  EXPECT_EQ(prices_.Agreed("M1", "F"), 0);
  EXPECT_EQ(prices_.Service("M1", "F"), 0);
  Price("C", "0", -3);
  EXPECT_EQ(prices_.Service("M1", "F"), 0);
}

}  // namespace
}  // namespace test
