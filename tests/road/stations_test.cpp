// Two stations at work on one database at the same time.
#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "app/books/check.h"
#include "road/processes.h"
#include "support/mill.h"
#include "support/road.h"

namespace {

constexpr int kRolls = 300;

TEST(Stations, WriteTheirRollsOnOneOrderWithoutMeeting) {
  test::Mill mill;
  test::FillSmallMill(mill);
  mill.SetClock("2026-03-09 10:00:00");
  const test::OrderPlan plan = test::SmallMillOrder(200);
  const std::string order = test::SaveOrder(mill, plan);
  const double roll = 0.25;

  test::Station one({"rolls", mill.Path(), order, "DF", std::to_string(kRolls), "0.25"});
  test::Station two({"rolls", mill.Path(), order, "DF", std::to_string(kRolls), "0.25"});
  const test::Ended first = one.Wait();
  const test::Ended second = two.Wait();
  EXPECT_EQ(first.exit_code, 0) << first.output;
  EXPECT_EQ(second.exit_code, 0) << second.output;
  EXPECT_EQ(first.output, "");
  EXPECT_EQ(second.output, "");

  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {TECELB}").AsInteger(), 2 * kRolls);
  EXPECT_EQ(mill.Scalar("SELECT COUNT(DISTINCT ORDEM) FROM {TECELB}").AsInteger(), 2 * kRolls);
  EXPECT_EQ(mill.Scalar("SELECT MAX(ORDEM) FROM {TECELB}").AsInteger(), 2 * kRolls);
  const double woven = mill.Scalar("SELECT SUM(QTDE) FROM {TECELB}").AsFloat();
  EXPECT_NEAR(woven, kRolls * (2 * roll + 0.001), 1e-6);
  EXPECT_NEAR(mill.Scalar("SELECT QTDE_B FROM {TECEL_ITEN}").AsFloat(), woven, 1e-6);
  EXPECT_EQ(app::books::CheckBooks(mill.Db()), std::vector<std::string>{});

  double reserved = 0;
  for (const auto& lot : plan.reservations) reserved += lot.quantity;
  EXPECT_NEAR(mill.Scalar("SELECT SUM(QTDE + QTDE_B) FROM {MAT_RESERVA}").AsFloat(), reserved, 1e-6);
}

TEST(Stations, NeverGetTheSameOrderNumber) {
  test::Mill mill;
  test::FillSmallMill(mill);
  test::Station one({"orders", mill.Path(), "40"});
  test::Station two({"orders", mill.Path(), "40"});
  const test::Ended first = one.Wait();
  const test::Ended second = two.Wait();
  EXPECT_EQ(first.exit_code, 0) << first.output;
  EXPECT_EQ(second.exit_code, 0) << second.output;

  std::set<std::string> numbers;
  std::istringstream lines(first.output + second.output);
  for (std::string line; std::getline(lines, line);) EXPECT_TRUE(numbers.insert(line).second) << line << " twice";
  EXPECT_EQ(numbers.size(), 80u);
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {TECEL}").AsInteger(), 80);
  EXPECT_EQ(mill.Scalar("SELECT COUNT(*) FROM {TECEL_ITEN}").AsInteger(), 80);
}

}  // namespace
