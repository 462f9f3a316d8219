#include "host/decimal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "host/errors.h"

namespace {

using host::FormatNumber;
using host::ParseTyped;
using host::ParseTypedInteger;
using host::PointText;
using host::RoundTo;

TEST(FormatNumber, RoundsHalvesAwayFromZero) {
  EXPECT_EQ(FormatNumber("0", 10.5), "11");
  EXPECT_EQ(FormatNumber("0", 11.5), "12");
  EXPECT_EQ(FormatNumber("0", -10.5), "-11");
  EXPECT_EQ(FormatNumber("0.00", 0.185), "0.19");
  EXPECT_EQ(FormatNumber("0.00", -0.185), "-0.19");
  EXPECT_EQ(FormatNumber("0.000", 2.0005), "2.001");
}

// 1.005 is a little less in binary; what a person sees and means is 1.005.
TEST(FormatNumber, RoundsTheDecimalTextNotTheBinaryValue) {
  EXPECT_EQ(FormatNumber("0.00", 1.005), "1.01");
  EXPECT_EQ(FormatNumber("0.00", 1.0049), "1.00");
  EXPECT_EQ(FormatNumber("0.0", 99.96), "100.0");
}

TEST(FormatNumber, CarriesThroughNines) {
  EXPECT_EQ(FormatNumber("0.00", 9.999), "10.00");
  EXPECT_EQ(FormatNumber("0", 999.5), "1000");
  EXPECT_EQ(FormatNumber("0.000", 0.9995), "1.000");
}

TEST(FormatNumber, NeverShowsAMinusZero) {
  EXPECT_EQ(FormatNumber("0.00", -0.004), "0.00");
  EXPECT_EQ(FormatNumber("0", -0.0), "0");
  EXPECT_EQ(FormatNumber("0.00", -0.005), "-0.01");
}

TEST(FormatNumber, OptionalDigitsShowWhenNotZero) {
  EXPECT_EQ(FormatNumber("0.######", 12.5), "12.5");
  EXPECT_EQ(FormatNumber("0.######", 12), "12");
  EXPECT_EQ(FormatNumber("0.0#", 12), "12.0");
  EXPECT_EQ(FormatNumber("0.0#", 12.25), "12.25");
  EXPECT_EQ(FormatNumber("#.##", 0.5), ".5");
  EXPECT_EQ(FormatNumber("000", 7), "007");
}

TEST(FormatNumber, KeepsWhatStandsAroundTheNumberAndUsesTheSign) {
  EXPECT_EQ(FormatNumber(" 0.000", 1.5), " 1.500");
  EXPECT_EQ(FormatNumber("0.00 kg", 1.5, ','), "1,50 kg");
  EXPECT_EQ(FormatNumber("0.0000", 33.33333, ','), "33,3333");
}

TEST(FormatNumber, RefusesWhatIsNotFinite) {
  EXPECT_THROW(FormatNumber("0", std::nan("")), host::InputError);
  EXPECT_THROW(FormatNumber("0", std::numeric_limits<double>::infinity()), host::InputError);
  EXPECT_THROW(RoundTo(std::nan(""), 2), host::InputError);
  EXPECT_THROW(PointText(-std::numeric_limits<double>::infinity()), host::InputError);
}

TEST(RoundTo, ReadsBackWhatTheFormatGives) {
  EXPECT_EQ(RoundTo(0.1 + 0.2, 3), 0.3);
  EXPECT_EQ(RoundTo(1.005, 2), 1.01);
  EXPECT_EQ(RoundTo(-2.5, 0), -3);
  EXPECT_FALSE(std::signbit(RoundTo(-0.0001, 2)));
  std::mt19937 random(7);
  std::uniform_real_distribution<double> number(-5000, 5000);
  for (int round = 0; round < 2000; ++round) {
    const double value = number(random);
    const double rounded = RoundTo(value, 3);
    EXPECT_EQ(FormatNumber("0.000", rounded), FormatNumber("0.000", value));
    EXPECT_EQ(RoundTo(rounded, 3), rounded);
    EXPECT_LE(std::abs(rounded - value), 0.0005000001);
  }
}

TEST(PointText, IsTheShortestTextThatReadsBack) {
  EXPECT_EQ(PointText(0.1), "0.1");
  EXPECT_EQ(PointText(100), "100");
  EXPECT_EQ(PointText(-2.5), "-2.5");
  EXPECT_EQ(PointText(-0.0), "0");
  EXPECT_EQ(PointText(1e21), "1000000000000000000000");
  EXPECT_EQ(PointText(1e-7), "0.0000001");
  EXPECT_EQ(PointText(1.0 / 3.0), "0.3333333333333333");
}

TEST(PointText, ReadsBackTheSameAndHasNoExponent) {
  std::mt19937_64 random(11);
  std::uniform_real_distribution<double> digits(-1, 1);
  std::uniform_int_distribution<int> power(-300, 300);
  for (int round = 0; round < 2000; ++round) {
    const double value = digits(random) * std::pow(10.0, power(random));
    const std::string text = PointText(value);
    EXPECT_EQ(text.find_first_of("eE"), std::string::npos);
    EXPECT_EQ(std::stod(text), value) << text;
  }
}

TEST(ParseTyped, TakesCommaOrPointAsDecimalSign) {
  EXPECT_EQ(ParseTyped("12,5"), 12.5);
  EXPECT_EQ(ParseTyped("12.5"), 12.5);
  EXPECT_EQ(ParseTyped(",5"), 0.5);
  EXPECT_EQ(ParseTyped("5,"), 5.0);
  EXPECT_EQ(ParseTyped("-12,5"), -12.5);
  EXPECT_EQ(ParseTyped("+3"), 3.0);
  EXPECT_EQ(ParseTyped("  7 "), 7.0);
  EXPECT_EQ(ParseTyped(""), 0.0);
  EXPECT_EQ(ParseTyped("   "), 0.0);
  EXPECT_EQ(ParseTyped("007"), 7.0);
}

TEST(ParseTyped, TakesThousandsOnlyBesideAComma) {
  EXPECT_EQ(ParseTyped("1.234.567,89"), 1234567.89);
  EXPECT_EQ(ParseTyped("1 234,5"), 1234.5);
  EXPECT_EQ(ParseTyped("1.234,"), 1234.0);
  EXPECT_EQ(ParseTyped("1.234"), 1.234);  // alone, the point is the decimal sign
  EXPECT_EQ(ParseTyped("1.234.567"), std::nullopt);
  EXPECT_EQ(ParseTyped("1 234"), std::nullopt);
  EXPECT_EQ(ParseTyped("1.23,4"), std::nullopt);
  EXPECT_EQ(ParseTyped("1234.567,8"), std::nullopt);
  EXPECT_EQ(ParseTyped("1.234 567,8"), std::nullopt);
  EXPECT_EQ(ParseTyped(".234,5"), std::nullopt);
  EXPECT_EQ(ParseTyped("1.,5"), std::nullopt);
}

TEST(ParseTyped, RefusesWhatIsNoNumber) {
  for (const char* text : {"abc", "1e400", "1e5", "nan", "inf", "-", "+", ",", ".", "1,2,3", "1,2.3", "--1", "1-",
                           "- 1", "0x10", "12a", "1'000", "१२",
                           "1\u00a0"
                           "000,0"}) {
    EXPECT_EQ(ParseTyped(text), std::nullopt) << text;
  }
}

TEST(ParseTyped, TakesAtMostFifteenWholeDigits) {
  EXPECT_EQ(ParseTyped("999999999999999"), 999999999999999.0);
  EXPECT_EQ(ParseTyped("1000000000000000"), std::nullopt);
  EXPECT_EQ(ParseTyped("0000000000000000012"), 12.0);
}

TEST(ParseTyped, ReadsWhatTheScreenShows) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> number(-1e6, 1e6);
  for (int round = 0; round < 1000; ++round) {
    const double value = RoundTo(number(random), 4);
    EXPECT_EQ(ParseTyped(FormatNumber("0.0000", value, ',')), value);
    EXPECT_EQ(ParseTyped(PointText(value)), value);
  }
}

TEST(ParseTypedInteger, TakesWholeNumbersThatFit) {
  EXPECT_EQ(ParseTypedInteger("12"), 12);
  EXPECT_EQ(ParseTypedInteger("12,00"), 12);
  EXPECT_EQ(ParseTypedInteger("-5"), -5);
  EXPECT_EQ(ParseTypedInteger(""), 0);
  EXPECT_EQ(ParseTypedInteger("12,5"), std::nullopt);
  EXPECT_EQ(ParseTypedInteger("2147483647"), 2147483647);
  EXPECT_EQ(ParseTypedInteger("2147483648"), std::nullopt);
  EXPECT_EQ(ParseTypedInteger("doze"), std::nullopt);
}

}  // namespace
