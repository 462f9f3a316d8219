// Books kept by the screens themselves.
#include <atomic>
#include <thread>

#include "books_mill.h"
#include "support/road.h"

namespace test {
namespace {

using host::ActResult;
using Lines = std::vector<std::string>;

TEST_F(BooksTest, KeptByTheScreensBalance) {
  const std::string order = SaveOrder(mill_, SmallMillOrder(100));
  EXPECT_EQ(Check(), Lines{});
  host::Screen& screen = OpenWriteOff(mill_, order, "DF");
  for (const double weight : {21.5, 20.333, 19.0, 22.75}) {
    ASSERT_EQ(ConfirmRoll(mill_, screen, weight), ActResult::kDone);
    EXPECT_EQ(mill_.Messages(), Lines{}) << weight;
  }
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {TECELB}").AsInteger(), 4);
  EXPECT_EQ(Check(), Lines{});

  mill_.Exec("DELETE FROM {TECELB} WHERE ORDEM = 3");
  const auto yarns = mill_.Scalar("SELECT COUNT(*) FROM {BAIXA_FIO} WHERE ORDEM = 3").AsInteger();
  EXPECT_GE(yarns, 2);
  const Lines off = Check();
  ASSERT_EQ(off.size(), static_cast<std::size_t>(yarns) + 2);  // the item, the yarns of the roll, its fabric
  EXPECT_EQ(off.front(), "Quantidade baixada do item difere das suas peças: ordem " + order +
                             ", malha F1, cor 01: item 83,583, 3 peças com 64,583.");
  EXPECT_EQ(off.back(), "Entrada de malha sem peça: ordem " + order + ", malha F1, cor 01, depósito DF, lote " + order +
                            "3: 0 peças, 1 entrada.");
}

TEST_F(BooksTest, KeptByTheScreensBalanceWhateverTheLotScheme) {
  for (const char* scheme : {"1", "2", "3", "4", "5", "6", "9"}) {
    mill_.SetParameter("MAL", 40, scheme);
    const std::string order = SaveOrder(mill_, SmallMillOrder(20));
    host::Screen& screen = OpenWriteOff(mill_, order, "DF");
    for (const double weight : {6.5, 7.25}) {
      ASSERT_EQ(ConfirmRoll(mill_, screen, weight), ActResult::kDone) << scheme;
      EXPECT_EQ(mill_.Messages(), Lines{}) << scheme;
    }
    EXPECT_EQ(Check(), Lines{}) << scheme;
    mill_.Desk().CloseScreen(screen);
  }
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {TECELB}").AsInteger(), 14);
}

TEST_F(BooksTest, KeptByTheScreensBalanceDownToTheLastCrumb) {
  // Weights that leave less than 0.01 of a reservation when the order is all but woven.
  const std::string order = SaveOrder(mill_, SmallMillOrder(30));
  host::Screen& screen = OpenWriteOff(mill_, order, "DF");
  for (const double weight : {9.997, 10.003, 9.994}) {
    ASSERT_EQ(ConfirmRoll(mill_, screen, weight), ActResult::kDone);
    EXPECT_EQ(mill_.Messages(), Lines{}) << weight;
    EXPECT_EQ(Check(), Lines{}) << weight;
  }
  const double recorded = mill_.Scalar("SELECT SUM(QTDE) FROM {BAIXA_FIO}").AsFloat();
  const double issued = mill_.Scalar("SELECT SUM(QTDE) FROM {MAT_MOV} WHERE TIPO_DOC = 'BT' AND SAIDA = 'S'").AsFloat();
  EXPECT_GT(recorded, issued + 0.0005);
  EXPECT_LT(recorded, issued + 0.03);
}

TEST_F(BooksTest, BalanceAfterAFailureAtAnyStatementOfARoll) {
  const std::string order = SaveOrder(mill_, SmallMillOrder(100));
  host::Screen& screen = OpenWriteOff(mill_, order, "DF");
  int failures = 0;
  double weight = 0.5;
  for (int nth = 1;; ++nth) {
    ASSERT_LT(nth, 120);
    weight += 0.001;  // the same weight twice in a row would be taken for one weighing
    mill_.FailStatement(nth);
    ConfirmRoll(mill_, screen, weight);
    const bool failed = mill_.StopFailing();
    mill_.Messages();
    mill_.Person().TakeErrors();
    EXPECT_EQ(Check(), Lines{}) << nth;
    if (!failed) break;
    ++failures;
  }
  EXPECT_GT(failures, 15);
}

TEST_F(BooksTest, CanBeCheckedWhileAStationWrites) {
  const std::string order = SaveOrder(mill_, SmallMillOrder(150));
  Mill::Options options;
  options.database = mill_.Path();
  Mill other(options);
  other.SetClock("2026-03-10 09:30:00");
  std::atomic<int> written = 0;
  std::thread station([&] {
    host::Screen& screen = OpenWriteOff(other, order, "DF");
    for (int roll = 0; roll < 150; ++roll) {
      if (ConfirmRoll(other, screen, 0.5 + 0.001 * roll) != ActResult::kDone) return;
      ++written;
    }
  });
  int checks = 0;
  while (written < 150 && checks < 2000) {
    EXPECT_EQ(Check(), Lines{}) << checks;
    ++checks;
  }
  station.join();
  EXPECT_EQ(written, 150);
  EXPECT_GT(checks, 3);
  EXPECT_EQ(Check(), Lines{});
}

}  // namespace
}  // namespace test
