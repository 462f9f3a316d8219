// Two stations where rolls are taken back: whoever is faster does it, the other one is told, and nothing is done twice.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "app/books/check.h"
#include "road/processes.h"
#include "support/mill.h"
#include "support/road.h"

namespace {

class UndoStations : public testing::Test {
 protected:
  UndoStations() {
    test::FillSmallMill(mill_);
    mill_.SetClock("2026-03-09 10:00:00");
  }

  void Rolls(const std::string& order, int count) {
    host::Screen& screen = test::OpenWriteOff(mill_, order, "DF");
    for (int roll = 0; roll < count; ++roll) {
      ASSERT_EQ(test::ConfirmRoll(mill_, screen, 0.25 + (roll % 2) * 0.001), host::ActResult::kDone);
    }
    mill_.Db().MakeDurable();
  }
  /// Waits for a station that must end well; what it printed.
  static std::string Well(test::Station& station) {
    const test::Ended ended = station.Wait();
    EXPECT_EQ(ended.exit_code, 0) << ended.output;
    return ended.output;
  }
  double Number(const char* sql) { return mill_.Scalar(sql).AsFloat(); }
  void ExpectReservedAsPlanned(const test::OrderPlan& plan) {
    double reserved = 0;
    for (const auto& lot : plan.reservations) reserved += lot.quantity;
    EXPECT_NEAR(Number("SELECT SUM(QTDE + QTDE_B) FROM {MAT_RESERVA}"), reserved, 1e-6);
  }

  test::Mill mill_;
};

TEST_F(UndoStations, TakeTheSameRollsBackOnce) {
  constexpr int k_rolls = 40;
  const test::OrderPlan plan = test::SmallMillOrder(100);
  const std::string order = test::SaveOrder(mill_, plan);
  const double yarn = Number("SELECT SUM(QTDE) FROM {MAT_ITEN} WHERE CODIGO LIKE 'Y%'");
  Rolls(order, k_rolls);
  test::Station one({"reverse", mill_.Path(), order, "DF", std::to_string(k_rolls), "1"});
  test::Station two({"reverse", mill_.Path(), order, "DF", std::to_string(k_rolls), "2"});
  EXPECT_EQ(std::atoi(Well(one).c_str()) + std::atoi(Well(two).c_str()), k_rolls);
  EXPECT_EQ(Number("SELECT COUNT(*) FROM {TECELB}"), 0);
  EXPECT_EQ(Number("SELECT COUNT(*) FROM {BAIXA_FIO}"), 0);
  EXPECT_EQ(Number("SELECT QTDE_B FROM {TECEL_ITEN}"), 0);
  EXPECT_EQ(Number("SELECT SUM(QTDE_B) FROM {MAT_RESERVA}"), 0);
  EXPECT_NEAR(Number("SELECT SUM(QTDE) FROM {MAT_ITEN} WHERE CODIGO LIKE 'Y%'"), yarn, 1e-6);
  EXPECT_EQ(Number("SELECT COUNT(*) FROM TEC_LOG WHERE TEXTO STARTING WITH 'ESTORNO MOVIMENTO'"), k_rolls);
  ExpectReservedAsPlanned(plan);
  EXPECT_EQ(app::books::CheckBooks(mill_.Db()), std::vector<std::string>{});
}

TEST_F(UndoStations, OneTakesBackWhileTheOtherWrites) {
  constexpr int k_before = 30;
  constexpr int k_written = 40;
  const test::OrderPlan plan = test::SmallMillOrder(100);
  const std::string order = test::SaveOrder(mill_, plan);
  Rolls(order, k_before);
  test::Station writing({"rolls", mill_.Path(), order, "DF", std::to_string(k_written), "0.3"});
  test::Station reversing({"reverse", mill_.Path(), order, "DF", std::to_string(k_before), "3"});
  EXPECT_EQ(Well(writing), "");
  EXPECT_EQ(Well(reversing), std::to_string(k_before) + "\n");
  EXPECT_EQ(Number("SELECT COUNT(*) FROM {TECELB}"), k_written);
  EXPECT_NEAR(Number("SELECT QTDE_B FROM {TECEL_ITEN}"), Number("SELECT SUM(QTDE) FROM {TECELB}"), 1e-6);
  ExpectReservedAsPlanned(plan);
  EXPECT_EQ(app::books::CheckBooks(mill_.Db()), std::vector<std::string>{});
}

// Their orders are not the same, but all their lots are: every statement may meet the other station's row.
TEST_F(UndoStations, OnTwoOrdersThatShareTheirLots) {
  mill_.SetParameter("MAL", 40, "1");
  const test::OrderPlan plan = test::SmallMillOrder(80);
  const std::string first = test::SaveOrder(mill_, plan);
  const std::string second = test::SaveOrder(mill_, plan);
  Rolls(first, 1);  // the lot 000000 of the fabric never runs empty
  test::Station one({"undo", mill_.Path(), first, "DF", "30"});
  test::Station two({"undo", mill_.Path(), second, "DF", "30"});
  EXPECT_EQ(Well(one), "");
  EXPECT_EQ(Well(two), "");
  EXPECT_EQ(Number("SELECT COUNT(*) FROM {TECELB}"), 1);
  EXPECT_EQ(app::books::CheckBooks(mill_.Db()), std::vector<std::string>{});
}

}  // namespace
