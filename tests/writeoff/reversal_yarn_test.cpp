// The yarn of a reversed roll: back into its lots and to its reservations.
#include <tuple>

#include "reversal_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;

class ReversalYarn : public ReversalMill {
 protected:
  /// Writes a roll of 10 kg (Y1 6, Y2 4) whose yarn the operator takes from D1/L1.
  void RollByHand(std::string_view quantity = "10") {
    AtYarnScreen([this](host::Screen& yarn) {
      Take(yarn, "L1", "D1");
      Take(yarn, "L1", "D1");
    });
    ASSERT_EQ(Roll(quantity), ActResult::kDone);
    ASSERT_EQ(Boxes(), BoxList());
  }
  double Average(const char* yarn, const char* lot) {
    return Number(std::string("SELECT PRECO_MED FROM {MAT_ITEN} WHERE DEPOSITO = 'D1' AND CODIGO = '") + yarn +
                  "' AND LOTE = '" + lot + "'");
  }
};

TEST_F(ReversalYarn, ComesBackToLotAndReservation) {
  RollsOf({"10", "20"});
  ASSERT_EQ(Reverse(2), ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 94);
  EXPECT_EQ(Stock("Y2", "D1", "L1"), 76);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 54);
  EXPECT_EQ(Consumed("Y1", "D1", "L1"), 6);
  EXPECT_EQ(Left("Y2", "D1", "L1"), 36);
  EXPECT_EQ(Consumed("Y2", "D1", "L1"), 4);
  ASSERT_EQ(Consumption().size(), 2u);
  EXPECT_EQ(Consumption().front().at("ORDEM").AsInteger(), 1);
  ExpectBooksBalance();
}

TEST_F(ReversalYarn, LeavesTheAveragePriceOfItsLotAlone) {
  RollsOf({"10"});
  const auto entry = mill_.App().NewEstoque();
  entry->Material = "Y1";
  entry->Cor = "CR";
  entry->Deposito = "D1";
  entry->Lote = "L1";
  entry->Quantidade = 94;
  entry->PrecoUnitario = 30;
  entry->Data = host::Date::FromParts(2026, 3, 10).value();
  entry->MovimentaEstoqueMaterial(true, true);
  mill_.Db().MakeDurable();
  ASSERT_EQ(Average("Y1", "L1"), 25);
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Average("Y1", "L1"), 25);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 194);
}

// Two lots of one yarn, in the order in which they were taken.
TEST_F(ReversalYarn, ComesBackToEachLotItWasTakenFrom) {
  Order(kOrder, {{}});
  Reserve("Y1", "D1", "L1", 4);
  Reserve("Y1", "D1", "L2", 46);
  Reserve("Y2", "D1", "L1", 40);
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  ASSERT_EQ(Stock("Y1", "D1", "L1"), 96);
  ASSERT_EQ(Stock("Y1", "D1", "L2"), 49);
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 100);
  EXPECT_EQ(Stock("Y1", "D1", "L2"), 50);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 4);
  EXPECT_EQ(Left("Y1", "D1", "L2"), 46);
  ExpectBooksBalance();
}

TEST_F(ReversalYarn, OfNoReservationComesBackToStockAlone) {
  FreeOrder();
  Load();
  RollByHand();
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Told(), BoxList());
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 100);
  EXPECT_EQ(Number("SELECT COUNT(*) FROM {MAT_RESERVA}"), 0);
  EXPECT_TRUE(Consumption().empty());
  ExpectBooksBalance();
}

// The roll took more than was reserved, and the reservation gets all of it.
TEST_F(ReversalYarn, TakenPastItsReservationComesBackToItWhole) {
  FreeOrder();
  Reserve("Y1", "D1", "L1", 5);
  mill_.Insert("TECEL_ITEN", {{"NUMERO", kOrder}, {"CODIGO", "F2"}, {"COR", "01"}, {"QTDE", 10}});
  Load();
  // Five of the six kilograms come from the reservation, the rest from the operator's choice of the same lot.
  AtYarnScreen([this](host::Screen& yarn) {
    Take(yarn, "L1", "D1");
    Take(yarn, "L1", "D1");
  });
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  ASSERT_EQ(Left("Y1", "D1", "L1"), 0);
  ASSERT_EQ(Consumed("Y1", "D1", "L1"), 6);
  Boxes();
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 6);
  EXPECT_EQ(Consumed("Y1", "D1", "L1"), 0);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 100);
  ExpectBooksBalance();
}

// The roll knows nothing of what was reserved after it.
TEST_F(ReversalYarn, DoesNotGrowAReservationMadeAfterTheRoll) {
  FreeOrder();
  Load();
  RollByHand();
  Reserve("Y1", "D1", "L1", 30);
  mill_.Insert("MAT_RESERVA", {{"NUMERO", kOrder},
                               {"CODIGO", "Y2"},
                               {"COR", "CR"},
                               {"DEPOSITO", "D1"},
                               {"LOTE", "L1"},
                               {"QTDE", 20},
                               {"QTDE_B", 3},
                               {"TIPO", "T"}});
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 30);
  EXPECT_EQ(Consumed("Y1", "D1", "L1"), 0);
  // Three of the four had been taken from this one.
  EXPECT_EQ(Left("Y2", "D1", "L1"), 23);
  EXPECT_EQ(Consumed("Y2", "D1", "L1"), 0);
  ExpectBooksBalance();
}

TEST_F(ReversalYarn, AReservationGivenUpGetsItsShareBack) {
  RollsOf({"10"});
  mill_.Exec("UPDATE {MAT_RESERVA} SET QTDE = 0");
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 6);
  EXPECT_EQ(Consumed("Y1", "D1", "L1"), 0);
}

TEST_F(ReversalYarn, OfKindFIsNotTouchedAndOfNoKindIs) {
  RollsOf({"10", "11", "12"});
  for (const auto& [roll, kind, back] : {std::tuple{3, "'X'", 7.2}, {2, "NULL", 6.6}, {1, "'F'", 0.0}}) {
    mill_.Exec(std::string("UPDATE {MAT_RESERVA} SET TIPO = ") + kind + " WHERE CODIGO = 'Y1'");
    const double left = Left("Y1", "D1", "L1");
    ASSERT_EQ(Reverse(roll), ActResult::kDone);
    EXPECT_NEAR(Left("Y1", "D1", "L1"), left + back, 1e-9) << kind;
  }
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 100);
}

// The last crumb of a reservation goes with a roll and is recorded as consumed; the record is what comes back.
TEST_F(ReversalYarn, ACrumbComesBackWithTheRoll) {
  Order(kOrder, {{"F1", "01", 10, ""}});
  Reserve("Y1", "D1", "L1", 6.004);
  Reserve("Y2", "D1", "L1", 4);
  Load();
  // A tenth of a gram less than the order's weight.
  ASSERT_EQ(Roll("9,998"), ActResult::kDone);
  const double recorded = Number("SELECT QTDE FROM {BAIXA_FIO} WHERE CODIGO = 'Y1'");
  const double moved = Number("SELECT QTDE FROM {MAT_MOV} WHERE CODIGO = 'Y1' AND TIPO_DOC = 'BT'");
  ASSERT_NEAR(recorded, 6.004, 1e-9);
  ASSERT_GT(recorded, moved);
  ASSERT_EQ(Left("Y1", "D1", "L1"), 0);
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_NEAR(Left("Y1", "D1", "L1"), 6.004, 1e-9);
  EXPECT_EQ(Consumed("Y1", "D1", "L1"), 0);
  EXPECT_NEAR(Stock("Y1", "D1", "L1"), 100 + recorded - moved, 1e-9);
  ExpectBooksBalance();
}

TEST_F(ReversalYarn, OfAnotherFabricUnderTheSameNumberStays) {
  RollsOf({"10"});
  mill_.Exec("UPDATE {BAIXA_FIO} SET MATERIAL = 'F2' WHERE CODIGO = 'Y2'");
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  ASSERT_EQ(Consumption().size(), 1u);
  EXPECT_EQ(Consumption().front().at("MATERIAL"), host::Value("F2"));
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 100);
  EXPECT_EQ(Stock("Y2", "D1", "L1"), 76);
}

TEST_F(ReversalYarn, ComesBackToALotThatIsNoLongerListed) {
  RollsOf({"10"});
  mill_.Exec("DELETE FROM {MAT_MOV} WHERE CODIGO = 'Y2' AND LOTE = 'L1' AND TIPO_DOC <> 'BT'");
  mill_.Exec("UPDATE {MAT_MOV} SET SAIDA = 'N' WHERE CODIGO = 'Y2' AND LOTE = 'L1'");
  mill_.Exec("DELETE FROM {MAT_ITEN} WHERE CODIGO = 'Y2' AND LOTE = 'L1'");
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Told(), BoxList());
  EXPECT_EQ(Stock("Y2", "D1", "L1"), 4);
}

TEST_F(ReversalYarn, KeepsThePlaceOfTheLot) {
  RollsOf({"10"});
  mill_.Exec("UPDATE {MAT_ITEN} SET LOCAL = 'B7' WHERE CODIGO = 'Y1' AND LOTE = 'L1'");
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Movements()[3].at("LOCAL"), host::Value("B7"));
  EXPECT_EQ(Value("SELECT LOCAL FROM {MAT_ITEN} WHERE CODIGO = 'Y1' AND LOTE = 'L1' AND DEPOSITO = 'D1'").AsText(),
            "B7");
}

}  // namespace
}  // namespace test
