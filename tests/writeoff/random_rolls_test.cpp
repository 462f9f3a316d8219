// Random orders, reservations and rolls: whatever comes, the books balance and nothing reserved is lost.
#include <array>
#include <random>

#include "host/decimal.h"
#include "write_off_mill.h"

namespace test {
namespace {

using host::ActResult;

class RandomRolls : public WriteOffMill, public ::testing::WithParamInterface<unsigned> {
 protected:
  double Kilograms(double most) {
    return std::uniform_int_distribution<int>(1, static_cast<int>(most * 1000))(random_) / 1000.0;
  }
  bool Chance(int percent) { return std::uniform_int_distribution<int>(1, 100)(random_) <= percent; }

  struct Held {
    double left;
    double consumed;
  };
  std::map<std::string, Held> Reservations() {
    std::map<std::string, Held> held;
    for (const Row& row : mill_.Rows("SELECT CODIGO, DEPOSITO, LOTE, QTDE, QTDE_B FROM {MAT_RESERVA}")) {
      held[row.at("CODIGO").AsText() + row.at("DEPOSITO").AsText() + row.at("LOTE").AsText()] = {
          row.at("QTDE").AsFloat(), row.at("QTDE_B").AsFloat()};
    }
    return held;
  }

  void ExpectReservationsKept(const std::map<std::string, Held>& before) {
    for (const auto& [lot, now] : Reservations()) {
      const Held& was = before.at(lot);
      EXPECT_GE(now.left, 0) << lot;
      EXPECT_GE(now.consumed, was.consumed) << lot;
      const double taken = now.consumed - was.consumed;
      // Until more is taken than was left, what leaves the reserved part arrives in the consumed one; past that all
      // of it is consumed and nothing is left.
      if (taken <= was.left + 1e-9) {
        EXPECT_NEAR(now.left + now.consumed, was.left + was.consumed, 1e-6) << lot;
      } else {
        EXPECT_EQ(now.left, 0) << lot;
      }
      EXPECT_TRUE(now.left == 0 || now.left >= 0.001 - 1e-9) << lot << " keeps a crumb of " << now.left;
    }
  }

  // The yarn screen may not open any more after the last plan for it.
  void TearDown() override { EXPECT_EQ(mill_.Person().TakeUnexpected(), std::vector<std::string>()); }

  std::mt19937 random_{GetParam()};
};

TEST_P(RandomRolls, KeepTheBooks) {
  static constexpr std::array kSchemes = {"1", "2", "3", "4", "5", "6", ""};
  mill_.SetParameter("MAL", 40, kSchemes.at(GetParam() % kSchemes.size()));
  mill_.SetParameter("MAL", 70, "N");
  static constexpr std::array kFabrics = {"F1", "FM", "FP"};
  const std::string fabric = kFabrics.at(GetParam() % kFabrics.size());
  Order(kOrder, {{fabric, "01", Kilograms(120) + 20, ""}});
  if (Chance(30)) mill_.Insert("TECEL_ITEN", {{"NUMERO", kOrder}, {"CODIGO", "F2"}, {"COR", "01"}, {"QTDE", 10}});
  for (const auto& [yarn, deposit, lot] :
       {std::array{"Y1", "D1", "L1"}, {"Y1", "D1", "L2"}, {"Y2", "D1", "L1"}, {"Y2", "D2", "L3"}}) {
    if (Chance(70)) Reserve(yarn, deposit, lot, Kilograms(40));
  }
  Order("000002", {{}});
  Reserve("Y1", "D2", "L1", Kilograms(30), "000002");
  mill_.Exec("DELETE FROM {MAT_RESERVA} WHERE NUMERO = '000002' AND QTDE < 1");
  Load();

  bool planned = false;
  for (int roll = 0; roll < 25; ++roll) {
    SCOPED_TRACE("roll " + std::to_string(roll));
    const auto before = Reservations();
    const std::size_t rolls = Rolls().size();
    if (!planned) {
      planned = true;
      AtYarnScreen([&](host::Screen& yarn) {
        planned = false;
        auto& for_all = dynamic_cast<host::CheckBox&>(*yarn.FindComponent("CbTodos"));
        if (for_all.Enabled() && Chance(30)) mill_.Desk().Check(for_all, true);
        if (!Chance(80)) return;
        host::Grid& stock = mill_.GridOf(yarn, "TbEst");
        for (int take = 0; take < 12 && !yarn.CloseRequested(); ++take) {
          mill_.Desk().Enter(stock);
          if (stock.GetDataset().IsEmpty()) return;
          const std::size_t lots = stock.GetDataset().RecordCount();
          mill_.Desk().SelectRow(stock, std::uniform_int_distribution<std::size_t>(1, lots)(random_));
          mill_.Click(yarn, "BitBtn1");
        }
      });
    }
    Type("EdtQtde", host::FormatNumber("0.000", Kilograms(Chance(10) ? 200 : 15), ','));
    const ActResult result = Confirm();
    Boxes();
    EXPECT_EQ(Rolls().size(), rolls + (result == ActResult::kDone ? 1 : 0));
    ExpectReservationsKept(before);
    ExpectBooksBalance();
    if (HasFailure()) return;
  }
  EXPECT_GT(Rolls().size(), 3u);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRolls, ::testing::Range(1u, 22u));

}  // namespace
}  // namespace test
