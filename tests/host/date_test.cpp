#include "host/date.h"

#include <gtest/gtest.h>

#include "host/text.h"
#include "host/value.h"

namespace {

using host::Date;
using host::DateTime;
using host::Value;

Date Day(int year, int month, int day) { return Date::FromParts(year, month, day).value(); }

TEST(Date, ExistsOrNot) {
  EXPECT_FALSE(Date::FromParts(2026, 2, 31));
  EXPECT_FALSE(Date::FromParts(2026, 2, 29));
  EXPECT_TRUE(Date::FromParts(2024, 2, 29));
  EXPECT_TRUE(Date::FromParts(2000, 2, 29));
  EXPECT_FALSE(Date::FromParts(1900, 2, 29));
  EXPECT_FALSE(Date::FromParts(2026, 13, 1));
  EXPECT_FALSE(Date::FromParts(2026, 0, 1));
  EXPECT_FALSE(Date::FromParts(2026, 4, 31));
  EXPECT_FALSE(Date::FromParts(2026, 1, 0));
  EXPECT_FALSE(Date::FromParts(0, 1, 1));
  EXPECT_FALSE(Date::FromParts(10000, 1, 1));
  EXPECT_TRUE(Date::FromParts(9999, 12, 31));
}

TEST(Date, ReadsWhatAPersonTypes) {
  EXPECT_EQ(Date::FromDisplay("10/03/2026"), Day(2026, 3, 10));
  EXPECT_EQ(Date::FromDisplay("1/3/26"), Day(2026, 3, 1));
  EXPECT_EQ(Date::FromDisplay(" 01/03/2026 "), Day(2026, 3, 1));
  for (const char* text : {"", "31/02/2026", "2026-03-10", "10/03", "10/03/026", "10/03/2026/1", "a/b/c", "1/3/2",
                           "-1/3/2026", "01/003/2026", "10 /03/2026"}) {
    EXPECT_EQ(Date::FromDisplay(text), std::nullopt) << text;
  }
}

TEST(Date, ReadsAndWritesIso) {
  EXPECT_EQ(Date::FromIso("2026-03-10"), Day(2026, 3, 10));
  EXPECT_EQ(Day(2026, 3, 10).ToIso(), "2026-03-10");
  EXPECT_EQ(Day(7, 3, 1).ToIso(), "0007-03-01");
  for (const char* text : {"2026-3-10", "2026-02-30", "2026/03/10", "2026-03-10 ", ""}) {
    EXPECT_EQ(Date::FromIso(text), std::nullopt) << text;
  }
}

TEST(Date, IsWrittenForPeopleAndForStatements) {
  EXPECT_EQ(Day(2026, 3, 1).ToDisplay(), "01/03/2026");
  EXPECT_EQ(Day(2026, 3, 1).ToSql(), "03/01/2026");
}

TEST(Date, TheZeroDateIsNoDateForPeople) {
  EXPECT_TRUE(Date().IsZero());
  EXPECT_EQ(Date().ToDisplay(), "");
  EXPECT_EQ(Date().ToSql(), "12/30/1899");
  EXPECT_EQ(Date::FromDisplay("30/12/1899"), Date());
}

TEST(Date, CountsDaysAcrossMonthsAndYears) {
  EXPECT_EQ(Day(2026, 12, 31).AddDays(1), Day(2027, 1, 1));
  EXPECT_EQ(Day(2024, 2, 28).AddDays(1), Day(2024, 2, 29));
  EXPECT_EQ(Day(2026, 2, 28).AddDays(1), Day(2026, 3, 1));
  EXPECT_EQ(Day(2026, 1, 1).AddDays(-1), Day(2025, 12, 31));
  EXPECT_EQ(Day(2026, 1, 1).AddDays(365), Day(2027, 1, 1));
}

TEST(Date, KnowsTheDayOfTheWeek) {
  EXPECT_EQ(Day(2026, 3, 8).Weekday(), 0);  // a Sunday
  EXPECT_EQ(Day(2026, 3, 14).Weekday(), 6);
  EXPECT_EQ(Date().Weekday(), 6);
}

TEST(Date, RoundTripsOverManyDays) {
  Date date = Day(1990, 1, 1);
  for (int round = 0; round < 20000; ++round) {
    ASSERT_EQ(Date::FromDisplay(date.ToDisplay()), date);
    ASSERT_EQ(Date::FromIso(date.ToIso()), date);
    const Date next = date.AddDays(1);
    ASSERT_LT(date, next);
    ASSERT_EQ((date.Weekday() + 1) % 7, next.Weekday());
    date = next;
  }
}

TEST(DateTime, ReadsAndWritesIso) {
  const auto moment = DateTime::FromIso("2026-03-10 22:15:01");
  ASSERT_TRUE(moment);
  EXPECT_EQ(moment->date, Day(2026, 3, 10));
  EXPECT_EQ(moment->second_of_day, 22 * 3600 + 15 * 60 + 1);
  EXPECT_EQ(moment->ToIso(), "2026-03-10 22:15:01");
  for (const char* text : {"2026-03-10", "2026-03-10 24:00:00", "2026-03-10 22:60:00", "2026-02-30 10:00:00",
                           "2026-03-10T22:15:01", "2026-03-10 2:15:01"}) {
    EXPECT_FALSE(DateTime::FromIso(text)) << text;
  }
}

TEST(Value, ReadsAsWhatIsAskedFor) {
  EXPECT_EQ(Value().AsText(), "");
  EXPECT_EQ(Value().AsFloat(), 0);
  EXPECT_TRUE(Value().AsDate().IsZero());
  EXPECT_EQ(Value(2.5).AsText(), "2.5");
  EXPECT_EQ(Value(2.5).AsInteger(), 3);
  EXPECT_EQ(Value(-2.5).AsInteger(), -3);
  EXPECT_EQ(Value(1e300).AsInteger(), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(Value("12").AsInteger(), 12);
  EXPECT_EQ(Value("12,5").AsFloat(), 12.5);
  EXPECT_EQ(Value("doze").AsFloat(), 0);
  EXPECT_EQ(Value("9007199254740993").AsInteger(), 9007199254740993);  // more than a double tells apart
  EXPECT_EQ(Value(Day(2026, 3, 1)).AsText(), "01/03/2026");
  EXPECT_EQ(Value("01/03/2026").AsDate(), Day(2026, 3, 1));
  EXPECT_EQ(Value("2026-03-01").AsDate(), Day(2026, 3, 1));
}

TEST(Value, EqualInKindAndValue) {
  EXPECT_EQ(Value(1), Value(1.0));
  EXPECT_FALSE(Value(1) == Value("1"));
  EXPECT_FALSE(Value() == Value(""));
  EXPECT_EQ(Value(), Value());
  EXPECT_FALSE(Value(std::int64_t{9007199254740993}) == Value(std::int64_t{9007199254740992}));
}

TEST(Text, CountsCharactersNotBytes) {
  EXPECT_EQ(host::Length("ação"), 4u);
  EXPECT_EQ(host::Left("ação", 3), "açã");
  EXPECT_EQ(host::Left("ab", 5), "ab");
  EXPECT_EQ(host::Left("ab", 0), "");
  EXPECT_EQ(host::Trim(" \t a b \r\n"), "a b");
  EXPECT_TRUE(host::SameName("Codigo", "CODIGO"));
  EXPECT_FALSE(host::SameName("Codigo", "Codig"));
}

TEST(Text, SplitsOutsideQuotesOnly) {
  using Pieces = std::vector<std::string>;
  EXPECT_EQ(host::SplitOutsideQuotes("'a,b','c'", ','), (Pieces{"'a,b'", "'c'"}));
  EXPECT_EQ(host::SplitOutsideQuotes("'it''s; so';'x'", ';'), (Pieces{"'it''s; so'", "'x'"}));
  EXPECT_EQ(host::SplitOutsideQuotes("", ','), (Pieces{""}));
  EXPECT_EQ(host::SplitOutsideQuotes("a,,b,", ','), (Pieces{"a", "", "b", ""}));
}

}  // namespace
