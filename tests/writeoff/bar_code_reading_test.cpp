// What a bar code holds, by its length.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "host/text.h"
#include "writeoff/bar_code.h"

namespace writeoff {
namespace {

TEST(ReadBarCode, Of19DigitsHoldsTheWeight) {
  const BarCode code = ReadBarCode("7891234567895012345");
  EXPECT_EQ(code.kind, BarCode::Kind::kWeighed);
  EXPECT_EQ(code.ean13, "7891234567895");
  EXPECT_EQ(code.weight, 12.345);
  EXPECT_EQ(ReadBarCode("7891234567895999999").weight, 999.999);
  EXPECT_EQ(ReadBarCode("7891234567895000000").weight, 0);
}

TEST(ReadBarCode, Of14And15DigitsHoldsIndicatorAndBody) {
  BarCode code = ReadBarCode("17891234567892");
  EXPECT_EQ(code.kind, BarCode::Kind::kPackage);
  EXPECT_EQ(code.indicator, "1");
  EXPECT_EQ(code.body, "789123456789");
  code = ReadBarCode("127891234567892");
  EXPECT_EQ(code.kind, BarCode::Kind::kPackage);
  EXPECT_EQ(code.indicator, "12");
  EXPECT_EQ(code.body, "789123456789");
}

TEST(ReadBarCode, Of9CharactersIsALot) {
  EXPECT_EQ(ReadBarCode("000001001").kind, BarCode::Kind::kRollLabel);
  EXPECT_EQ(ReadBarCode("AB%_'ç\"12").lot, "AB%_'ç\"12");
}

TEST(ReadBarCode, LengthCountsCharacters) {
  EXPECT_EQ(ReadBarCode("çççççççç1").kind, BarCode::Kind::kRollLabel);
  EXPECT_EQ(ReadBarCode("çççç1").kind, BarCode::Kind::kOther);           // nine bytes
  EXPECT_EQ(ReadBarCode("ççççççç").kind, BarCode::Kind::kOther);         // fourteen bytes
  EXPECT_EQ(ReadBarCode("1234567890123ç").kind, BarCode::Kind::kOther);  // fourteen characters
}

TEST(ReadBarCode, WhatIsNotDigitsIsNoLongCode) {
  for (const char* text : {"1789123456789%", "1_____________", "'; DROP TABLE-", "1 789123456789", "+7891234567892",
                           "78912345678950123a5", "7891234567895-12345", "12,891234567892", "1.7891234567892"}) {
    EXPECT_EQ(ReadBarCode(text).kind, BarCode::Kind::kOther) << text;
  }
}

TEST(ReadBarCode, OfAnyOtherLengthIsNothing) {
  for (std::size_t length = 0; length <= 30; ++length) {
    const auto kind = ReadBarCode(std::string(length, '1')).kind;
    const bool known = length == 9 || length == 14 || length == 15 || length == 19;
    EXPECT_EQ(kind != BarCode::Kind::kOther, known) << length;
  }
}

// Anything a scanner with a dirty lens may type: what is read is in the text, at its place.
TEST(ReadBarCode, OfAHundredThousandCodesTellsWhatTheyHold) {
  std::mt19937 random(20260310);
  const auto below = [&random](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(random); };
  const std::vector<std::string> odd = {"%", "_",    "'",  "\"", " ", "ç", "€", ";",
                                        "-", "\x1D", "\\", "\t", "A", ".", ","};
  const std::vector<std::size_t> lengths = {9, 14, 15, 19};
  std::map<BarCode::Kind, int> seen;
  for (int round = 0; round < 100000; ++round) {
    std::size_t length = below(4) == 0 ? below(31) : lengths[below(lengths.size())];
    const std::size_t dirt = below(3) == 0 ? 8 : 0;
    std::string text;
    while (length-- > 0) {
      const bool odd_one = dirt > 0 && below(dirt) == 0;
      text += odd_one ? odd[below(odd.size())] : std::string(1, static_cast<char>('0' + below(10)));
    }
    const BarCode code = ReadBarCode(text);
    ++seen[code.kind];
    const bool digits = text.find_first_not_of("0123456789") == std::string::npos;
    switch (code.kind) {
      case BarCode::Kind::kWeighed: {
        ASSERT_TRUE(digits && text.size() == 19) << text;
        ASSERT_EQ(code.ean13, text.substr(0, 13));
        ASSERT_EQ(std::lround(code.weight * 1000), std::stol(text.substr(13))) << text;
        break;
      }
      case BarCode::Kind::kPackage:
        ASSERT_TRUE(digits && (text.size() == 14 || text.size() == 15)) << text;
        ASSERT_EQ(code.indicator + code.body + text.back(), text);
        ASSERT_EQ(code.body.size(), 12u);
        break;
      case BarCode::Kind::kRollLabel:
        ASSERT_EQ(host::Length(text), 9u) << text;
        ASSERT_EQ(code.lot, text);
        break;
      case BarCode::Kind::kOther:
        ASSERT_TRUE(!digits || (text.size() != 14 && text.size() != 15 && text.size() != 19)) << text;
        ASSERT_NE(host::Length(text), 9u) << text;
        break;
    }
  }
  for (const auto kind :
       {BarCode::Kind::kWeighed, BarCode::Kind::kPackage, BarCode::Kind::kRollLabel, BarCode::Kind::kOther}) {
    EXPECT_GT(seen[kind], 5000);
  }
}

}  // namespace
}  // namespace writeoff
