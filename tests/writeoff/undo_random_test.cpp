// Rolls and reversals in any order: after each step the books say what the rolls that remain say.
//
// What stays behind on purpose, and is therefore not compared or added to what is expected:
//   - the ledger's rows, the log, and the numbers drawn for lots: the past is not rewritten;
//   - the average price of fabric lots and the fabric's price in its register;
//   - empty lots, and the fabric of metres and pieces: it leaves stock by its weight, so that units less kilograms
//     stay in the lot (100 m of 0.25 kg leave 75 behind);
//   - the last crumb (below 0.01) of a reservation that a roll recorded with its yarn: what is recorded comes back;
//   - what a roll took past its reservation: the reservation gets all of it back;
//   - what was given up of a reservation by hand;
//   - the closing of an item: a reversal always reopens it.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>

#include "host/decimal.h"
#include "reversal_mill.h"
#include "undo_books.h"

namespace test {
namespace {

using host::ActResult;

constexpr std::array kOrders = {"000001", "000002"};

class UndoRandom : public ReversalMill, public ::testing::WithParamInterface<unsigned> {
 protected:
  UndoRandom() {
    static constexpr std::array kSchemes = {"1", "2", "3", "4", "5", "6"};
    mill_.SetParameter("MAL", 40, kSchemes.at(GetParam() % kSchemes.size()));
    by_hand_ = GetParam() / kSchemes.size() % 2 == 0;
    mill_.SetParameter("MAL", 70, by_hand_ ? "N" : "S");
    // Pieces that weigh more than a kilogram cannot always be taken back.
    if (Chance(50)) mill_.Exec("UPDATE {MATERIAL} SET PESO = 1.5 WHERE CODIGO = 'FP'");
    // One item lives on its reservations, several on their compositions.
    Order(kOrders[0], {{"F1", "01", Kilograms(40) + 40, ""}});
    Order(kOrders[1], {{"F1", "01", 40, "PV0001"},
                       {"F1", "02", 60, ""},
                       {"FM", "01", 90, ""},
                       {"FP", "01", 50, "PV2"},
                       {"F2", "01", 30, ""}});
    for (const char* order : kOrders) {
      for (const auto& [yarn, deposit, lot] :
           {std::array{"Y1", "D1", "L1"}, {"Y1", "D1", "L2"}, {"Y2", "D1", "L1"}, {"Y2", "D2", "L3"}}) {
        if (!by_hand_ || Chance(60)) Reserve(yarn, deposit, lot, Kilograms(14) + 1, order);
      }
    }
  }
  // The yarn screen may not open any more after the last plan for it.
  void TearDown() override { EXPECT_EQ(mill_.Person().TakeUnexpected(), std::vector<std::string>()); }

  double Kilograms(double most) { return Pick(1, static_cast<int>(most * 1000)) / 1000.0; }
  int Pick(int least, int most) { return std::uniform_int_distribution<int>(least, most)(random_); }
  bool Chance(int percent) { return Pick(1, 100) <= percent; }

  void LoadOrder(const std::string& order) {
    if (order != loaded_) Load(order);
    loaded_ = order;
  }

  // Takes random lots at the yarn screen, sometimes not all that is wanted.
  void PlanYarnScreen() {
    if (planned_) return;
    planned_ = true;
    AtYarnScreen([this](host::Screen& yarn) {
      planned_ = false;
      auto& for_all = dynamic_cast<host::CheckBox&>(*yarn.FindComponent("CbTodos"));
      if (for_all.Enabled() && Chance(10)) mill_.Desk().Check(for_all, true);
      host::Grid& stock = mill_.GridOf(yarn, "TbEst");
      for (int take = Chance(10) ? 7 : 0; take < 8 && !yarn.CloseRequested(); ++take) {
        mill_.Desk().Enter(stock);
        if (stock.GetDataset().IsEmpty()) return;
        const int lots = static_cast<int>(stock.GetDataset().RecordCount());
        mill_.Desk().SelectRow(stock, static_cast<std::size_t>(Pick(1, lots)));
        mill_.Click(yarn, "BitBtn1");
      }
    });
  }

  void WriteRoll(UndoBooks& books) {
    const std::string order = kOrders.at(static_cast<std::size_t>(Pick(0, 1)));
    LoadOrder(order);
    PlanYarnScreen();
    host::Grid& items = mill_.GridOf(Screen(), "TbItens");
    const int count = static_cast<int>(items.GetDataset().RecordCount());
    mill_.Desk().SelectRow(items, static_cast<std::size_t>(Pick(1, count)));
    Type("EdtTara", "0");
    Type("EdtNFRet", Chance(50) ? "777" : "88");
    Type("EdtPecas", Chance(30) ? "2" : "0");
    Type("EdtQtde", host::FormatNumber("0.000", Chance(10) ? 0.001 * Pick(1, 9) : Kilograms(6), ','));
    const std::size_t before = books.Rolls().size();
    const ActResult result = Confirm();
    Boxes();
    const host::Value number = mill_.Scalar("SELECT MAX(ORDEM) FROM {TECELB} WHERE NUMERO = '" + order + "'");
    const auto rolls = static_cast<std::size_t>(mill_.Scalar("SELECT COUNT(*) FROM {TECELB}").AsInteger());
    ASSERT_EQ(rolls, before + (result == ActResult::kDone ? 1 : 0));
    if (result != ActResult::kDone) return;
    books.Written({order, static_cast<int>(number.AsInteger())});
    ++written_;
  }

  void ReverseRoll(UndoBooks& books) {
    const auto rolls = books.Rolls();
    const UndoBooks::Key& roll = rolls.at(static_cast<std::size_t>(Pick(0, static_cast<int>(rolls.size()) - 1)));
    LoadOrder(roll.first);
    const bool there = books.CanReverse(roll);
    EXPECT_EQ(Reverse(roll.second), there ? ActResult::kDone : ActResult::kRefused);
    EXPECT_EQ(Told().size(), there ? 0u : 1u);
    if (!there) return;
    books.Reversed(roll);
    ++reversed_;
  }

  void GiveUpReservation(UndoBooks& books) {
    LoadOrder(kOrders[1]);
    mill_.Person().Answer("Este procedimento irá zerar", "yes");
    ASSERT_EQ(mill_.Desk().PickMenu(Screen(), "Considerar Reserva como baixada"), ActResult::kDone);
    Boxes();
    books.GivenUp(kOrders[1]);
  }

  void Step(UndoBooks& books) {
    const std::size_t rolls = books.Rolls().size();
    // Some seeds go up and down between nothing and many rolls.
    if (rolls == 0) rising_ = true;
    if (rolls > 14) rising_ = false;
    if (by_hand_ && Chance(1)) {
      GiveUpReservation(books);
    } else if (rolls == 0 || Chance(rising_ ? 65 : 30)) {
      WriteRoll(books);
    } else {
      ReverseRoll(books);
    }
  }

  std::mt19937 random_{GetParam()};
  bool by_hand_ = false;
  bool planned_ = false;
  bool rising_ = true;
  std::string loaded_;
  int written_ = 0;
  int reversed_ = 0;
};

TEST_P(UndoRandom, LeavesWhatTheRollsThatRemainSay) {
  const char* soak = std::getenv("TECELAGEM_SOAK");
  const int steps = soak == nullptr ? 145 : 145 * std::max(1, std::atoi(soak));
  UndoBooks books(mill_);
  for (int step = 1; step <= steps; ++step) {
    SCOPED_TRACE("step " + std::to_string(step));
    Step(books);
    EXPECT_EQ(books.Differences(), std::vector<std::string>());
    if (step % 30 == 0) ExpectBooksBalance();
    if (HasFailure()) return;
  }
  // Down to nothing: what the order had is free again.
  for (int left = 200; left > 0 && !books.Rolls().empty(); --left) ReverseRoll(books);
  EXPECT_EQ(books.Differences(), std::vector<std::string>());
  ExpectBooksBalance();
  EXPECT_GT(written_, steps / 5);
  EXPECT_GT(reversed_, steps / 5);
}

INSTANTIATE_TEST_SUITE_P(Seeds, UndoRandom, ::testing::Range(0u, 12u));

}  // namespace
}  // namespace test
