// What a scale sends, before it is a weight.
#include "writeoff/scale_frames.h"

#include <gtest/gtest.h>

#include <random>

namespace writeoff {
namespace {

using Weight = std::optional<double>;

TEST(AnswerEnded, BehindItsFigures) {
  EXPECT_TRUE(AnswerEnded("12.345\r"));
  EXPECT_TRUE(
      AnswerEnded("\x02"
                  "12345\x03"));
  EXPECT_TRUE(AnswerEnded("\r 12.345 kg\x03"));
  EXPECT_FALSE(AnswerEnded(""));
  EXPECT_FALSE(AnswerEnded("12.345"));
  EXPECT_FALSE(AnswerEnded("\r"));
  EXPECT_FALSE(AnswerEnded("\r\n 12.3"));
  EXPECT_FALSE(AnswerEnded("\x03"));
}

TEST(NewestFrame, OfOneIsItsFirstTenCharacters) {
  EXPECT_EQ(NewestFrame("012345"), "012345");
  EXPECT_EQ(NewestFrame("0123456789AB"), "0123456789");
  EXPECT_EQ(NewestFrame("  012345\r\n"), "  012345");
  EXPECT_EQ(NewestFrame("\x02"
                        "ABC012345000000\r"),
            "\x02"
            "ABC012345");
  EXPECT_EQ(NewestFrame(""), "");
  EXPECT_EQ(NewestFrame("\r\n\x03"), "");
}

TEST(NewestFrame, OfSeveralIsTheNewestWholeOne) {
  EXPECT_EQ(NewestFrame("001000\r002000\r003000\r"), "003000");
  EXPECT_EQ(NewestFrame("001000\r\n002000\r\n003"), "002000");
  EXPECT_EQ(NewestFrame("\x02"
                        "001000\x03\x02"
                        "002000\x03\x02"
                        "00"),
            "\x02"
            "002000");
}

TEST(NewestFrame, NeverOneCutAtTheFrontOrTheEnd) {
  EXPECT_EQ(NewestFrame("345\r001000\r002"), "001000");
  EXPECT_EQ(NewestFrame("345\r002"), "");
  EXPECT_EQ(NewestFrame("345\x03\x02"
                        "0020"),
            "");
  // A checksum behind the end mark is no frame.
  EXPECT_EQ(NewestFrame("\x02"
                        "ABC001000\r7\x02"
                        "ABC002000\r9"),
            "\x02"
            "ABC002000");
  // The end of the second was lost on the line.
  EXPECT_EQ(NewestFrame("\x02"
                        "001000\r\x02"
                        "0020\x02"
                        "003000\r"),
            "\x02"
            "003000");
}

TEST(NewestFrame, MarkedByStxAlone) {
  EXPECT_EQ(NewestFrame("000\x02"
                        "ABC001000\x02"
                        "ABC002000\x02"
                        "ABC003"),
            "\x02"
            "ABC002000");
  // Each may have broken off before the next began.
  EXPECT_EQ(NewestFrame("\x02"
                        "020\x02"
                        "020\x02"
                        "020"),
            "");
  // All there is broke off.
  EXPECT_EQ(NewestFrame("\x02"
                        "0010"),
            "");
  EXPECT_EQ(NewestFrame("\x02"
                        "ABC001000"),
            "\x02"
            "ABC001000");
}

TEST(WeightOfDigits, TheCommaStandsBeforeTheDigitCountedFromTheEnd) {
  EXPECT_EQ(WeightOfDigits("001234", 0), Weight(123.4));
  EXPECT_EQ(WeightOfDigits("012345", 2), Weight(12.345));
  EXPECT_EQ(WeightOfDigits("012345", 1), Weight(123.45));
  EXPECT_EQ(WeightOfDigits("012345", 5), Weight(0.012345));
  EXPECT_EQ(WeightOfDigits("9999999999", 0), Weight(999999999.9));
  EXPECT_EQ(WeightOfDigits("000000", 2), Weight(0));
}

TEST(WeightOfDigits, WhatIsNoDigitIsDropped) {
  EXPECT_EQ(WeightOfDigits("\x02"
                           "ABC001234",
                           0),
            Weight(123.4));
  EXPECT_EQ(WeightOfDigits("ST,+ 12.345kg", 2), Weight(12.345));
  EXPECT_EQ(WeightOfDigits("-01 2.3\xFF\x80", 0), Weight(12.3));
}

TEST(WeightOfDigits, NoMoreDigitsThanDecimalsAreNoWeight) {
  EXPECT_EQ(WeightOfDigits("", 0), std::nullopt);
  EXPECT_EQ(WeightOfDigits("ABC", 0), std::nullopt);
  EXPECT_EQ(WeightOfDigits("12", 2), std::nullopt);
  EXPECT_EQ(WeightOfDigits("1", 9), std::nullopt);
  EXPECT_EQ(WeightOfDigits("123", 2), Weight(0.123));
  EXPECT_EQ(WeightOfDigits("1", 0), Weight(0.1));
  EXPECT_EQ(WeightOfDigits("123", -1), std::nullopt);
}

// Frames of known weights, begun anywhere and broken off anywhere: what comes out is one of them or nothing.
TEST(NewestFrame, OfAStreamIsAlwaysOneOfItsFrames) {
  std::mt19937 random(20260310);
  const auto below = [&random](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(random); };
  const std::vector<std::pair<std::string, std::string>> marks = {{"", "\r"},     {"", "\r\n"},     {"\x02", "\x03"},
                                                                  {"\x02", "\r"}, {"\x02", "\r\n"}, {"\n", "\r\x03"}};
  std::size_t found = 0;
  for (int round = 0; round < 100000; ++round) {
    const auto& [begin, end] = marks[below(marks.size())];
    const char* const status = below(2) == 0 ? "" : "AbC";
    std::string stream;
    std::vector<std::string> sent;
    for (std::size_t i = 0; i < 4; ++i) {
      std::string frame = begin == "\x02" ? begin : "";
      frame += status;
      for (int d = 0; d < 6; ++d) frame += static_cast<char>('0' + below(10));
      stream += begin == "\x02" ? "" : begin;
      stream += frame;
      stream += end;
      sent.push_back(std::move(frame));
    }
    const std::size_t one = stream.size() / 4;
    // At least two of the four are there whole or in part, so that the first can be seen to be cut.
    const std::size_t from = below(one + 1);
    const std::size_t to = from + one + below(stream.size() - from - one + 1);
    const std::string frame = NewestFrame(stream.substr(from, to - from));
    if (frame.empty()) continue;
    ++found;
    ASSERT_NE(std::find(sent.begin(), sent.end(), frame), sent.end())
        << "of " << ::testing::PrintToString(stream.substr(from, to - from)) << " came "
        << ::testing::PrintToString(frame);
  }
  EXPECT_GT(found, 50000u);
}

TEST(NewestFrame, OfAnythingIsAtMostTenCharactersOfIt) {
  std::mt19937 random(7);
  std::uniform_int_distribution<int> byte(0, 255);
  std::uniform_int_distribution<int> length(0, 60);
  for (int round = 0; round < 100000; ++round) {
    std::string received(static_cast<std::size_t>(length(random)), '\0');
    for (char& c : received)
      c = static_cast<char>(round % 3 == 0 ? "\x02\x03\r\n0123456789"[byte(random) % 14] : byte(random));
    const std::string frame = NewestFrame(received);
    ASSERT_LE(frame.size(), 10u);
    ASSERT_NE(received.find(frame), std::string::npos);
    const auto weight = WeightOfDigits(frame, round % 4);
    ASSERT_GE(weight.value_or(0), 0);
  }
}

}  // namespace
}  // namespace writeoff
