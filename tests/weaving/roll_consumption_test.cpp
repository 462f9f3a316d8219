// What a roll takes from which lots, without a screen: lists, takings, and what always stays equal.
#include "weaving/roll_consumption.h"

#include <map>
#include <random>
#include <vector>

#include "app/application.h"
#include "host/decimal.h"
#include "writeoff/write_off_mill.h"

namespace test {
namespace {

using weaving::RollConsumption;
using weaving::StockLot;
using weaving::Stopped;

class Consumption : public WriteOffMill {
 protected:
  Consumption() : consumption_(mill_.App()) {}

  weaving::NewRoll NewRoll(double kilograms) const {
    weaving::NewRoll roll;
    roll.order = kOrder;
    roll.fabric = "F1";
    roll.colour = "01";
    roll.kilograms = kilograms;
    return roll;
  }
  void List(double kilograms, bool from_reservations = false, bool merged = false) {
    consumption_.List(NewRoll(kilograms), {.from_reservations = from_reservations, .merged = merged});
  }
  std::size_t Lot(const StockLot& wanted) const {
    std::size_t at = 0;
    while (at < consumption_.Lots().size() && !(consumption_.Lots()[at].lot == wanted)) ++at;
    return at;
  }
  double Wanted(std::size_t need) const { return consumption_.Needs().at(need).wanted; }

  RollConsumption consumption_;
};

TEST_F(Consumption, ListsNeedsAndTheirLotsByCode) {
  FreeOrder();
  List(10);
  ASSERT_EQ(consumption_.Needs().size(), 2u);
  EXPECT_EQ(consumption_.Needs()[0].yarn, "Y1");
  EXPECT_EQ(Wanted(0), 6);
  EXPECT_EQ(Wanted(1), 4);
  ASSERT_FALSE(consumption_.Lots().empty());
  for (std::size_t at = 1; at < consumption_.Lots().size(); ++at) {
    EXPECT_LE(consumption_.Lots()[at - 1].lot.lot, consumption_.Lots()[at].lot.lot);
  }
  for (const std::size_t lot : consumption_.LotsOf(0)) EXPECT_EQ(consumption_.Lots()[lot].lot.code, "Y1");
  EXPECT_FALSE(consumption_.Covered());
}

TEST_F(Consumption, EqualLinesStandAloneOrInOne) {
  FreeOrder();
  mill_.Exec(
      "INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, PERC, ORDEM) VALUES "
      "('F1', '01', 'Y1', 'CR', 60, 3)");
  List(10);
  EXPECT_EQ(consumption_.Needs().size(), 3u);
  const std::size_t lots = consumption_.Lots().size();
  List(10, false, true);
  ASSERT_EQ(consumption_.Needs().size(), 2u);
  EXPECT_EQ(consumption_.Lots().size(), lots);
}

TEST_F(Consumption, ARemainderOfTenGramsIsForgivenAndOneGramMoreIsNot) {
  FreeOrder();
  List(10);
  const std::size_t lot = consumption_.LotsOf(0).front();
  consumption_.Take(0, lot, 5.989);
  EXPECT_EQ(Wanted(0), 0.011);
  EXPECT_EQ(consumption_.Needs()[0].computed, 0.011);
  List(10);
  consumption_.Take(0, lot, 5.99);
  EXPECT_EQ(Wanted(0), 0);
  EXPECT_EQ(consumption_.Needs()[0].computed, 0);
}

TEST_F(Consumption, OnlyWhatNoOtherOrderReservedIsFree) {
  FreeOrder();
  Order("000002", {{}});
  Reserve("Y1", "D1", "L1", 98, "000002");
  List(10);
  const std::size_t lot = Lot({"Y1", "CR", "D1", "L1"});
  const double held = consumption_.Lots().at(lot).held;
  ASSERT_EQ(consumption_.Lots()[lot].reserved, 98);
  EXPECT_EQ(consumption_.Free(0, lot), std::min(6.0, held - 98));
  mill_.Exec("UPDATE {MAT_RESERVA} SET QTDE = " + host::PointText(held) + " WHERE NUMERO = '000002'");
  List(10);
  EXPECT_EQ(consumption_.Free(0, lot), std::nullopt);
}

TEST_F(Consumption, OwnReservationsAreTakenWhole) {
  ReservedOrder();
  List(10, true);
  const auto taken = consumption_.TakeReserved();
  EXPECT_TRUE(taken.covered);
  EXPECT_EQ(taken.reserved, 40);
  EXPECT_EQ(consumption_.Lots().at(Lot({"Y1", "CR", "D1", "L1"})).taken, 6);
  EXPECT_EQ(consumption_.Lots().at(Lot({"Y2", "CR", "D1", "L1"})).taken, 4);
}

TEST_F(Consumption, ALotThatHoldsLessThanItsReservationIsLeftAlone) {
  ReservedOrder();
  mill_.Exec("UPDATE {MAT_ITEN} SET QTDE = 59.999 WHERE CODIGO = 'Y1' AND LOTE = 'L1' AND DEPOSITO = 'D1'");
  List(10, true);
  const auto taken = consumption_.TakeReserved();
  EXPECT_FALSE(taken.covered);
  EXPECT_EQ(Wanted(0), 6);
  EXPECT_EQ(Wanted(1), 0);
}

TEST_F(Consumption, AnOrderWovenInFullThatHoldsReservationsIsRefused) {
  ReservedOrder();
  List(10, true);
  ASSERT_FALSE(consumption_.Lots().empty());
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = QTDE");
  EXPECT_THROW(List(10, true), weaving::NothingOpen);
  EXPECT_TRUE(consumption_.Needs().empty());
  EXPECT_TRUE(consumption_.Lots().empty());
}

TEST_F(Consumption, RememberedLotsStopWhereOneWillNotDo) {
  FreeOrder();
  List(10);
  const StockLot y1{"Y1", "CR", "D1", "L1"};
  const StockLot y2{"Y2", "CR", "D1", "L1"};
  const auto stopped = [this](const std::vector<StockLot>& lots) { return consumption_.TakeRemembered(lots).stopped; };
  EXPECT_EQ(stopped({}), Stopped::kExhausted);
  EXPECT_EQ(stopped({{"Y9", "CR", "D1", "L1"}, y1}), Stopped::kUnusable);
  EXPECT_EQ(stopped({{"Y1", "CR", "D1", "L99"}}), Stopped::kUnusable);
  EXPECT_EQ(Wanted(0), 6);
  EXPECT_EQ(stopped({y1}), Stopped::kExhausted);
  EXPECT_EQ(Wanted(0), 0);
  EXPECT_EQ(stopped({y1, y2}), Stopped::kCovered);
  EXPECT_TRUE(consumption_.Covered());
}

// After any sequence of takings and second thoughts: what a lot holds and gave is what it held, what is wanted and was
// taken is what was computed, but for the forgiven remainder.
TEST_F(Consumption, NothingIsLostInAnySequence) {
  FreeOrder();
  for (unsigned seed = 0; seed < 200; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto below = [&random](std::size_t n) {
      return std::uniform_int_distribution<std::size_t>(0, n - 1)(random);
    };
    List(1 + static_cast<double>(below(90000)) / 1000);
    const auto before = consumption_.Lots();
    const auto wanted = consumption_.Needs();
    for (int act = 0; act < 12; ++act) {
      const std::size_t need = below(wanted.size());
      const auto lots = consumption_.LotsOf(need);
      const std::size_t lot = lots[below(lots.size())];
      const auto free = consumption_.Free(need, lot);
      if (!free || !(*free > 0)) continue;
      const auto need_before = consumption_.Needs()[need];
      const auto lot_before = consumption_.Lots()[lot];
      consumption_.Take(need, lot, host::RoundTo(*free * static_cast<double>(1 + below(4)) / 4, 3));
      if (below(4) != 0) continue;
      consumption_.PutBack(need, need_before, lot, lot_before);
      EXPECT_EQ(consumption_.Needs()[need], need_before);
      EXPECT_EQ(consumption_.Lots()[lot], lot_before);
    }
    std::map<std::string, double> taken;
    for (std::size_t lot = 0; lot < before.size(); ++lot) {
      const auto& now = consumption_.Lots()[lot];
      EXPECT_NEAR(now.held + now.taken, host::RoundTo(before[lot].held, 3), 1e-9);
      EXPECT_GE(now.held, 0);
      taken[now.lot.code] += now.taken;
    }
    for (std::size_t need = 0; need < wanted.size(); ++need) {
      EXPECT_NEAR(Wanted(need) + taken[wanted[need].yarn], wanted[need].wanted, 0.0111) << wanted[need].yarn;
      EXPECT_LE(taken[wanted[need].yarn], wanted[need].wanted + 0.0006);
    }
  }
}

}  // namespace
}  // namespace test
