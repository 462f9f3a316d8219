// What a roll consumes without the operator: from the order's reservations, or by the fabric's composition.
#include <algorithm>

#include "writeoff/write_off_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;

const BoxList kNoReservation = {Notice("Lote sem reserva."), Notice("Baixa Cancelada.")};

class ReservedYarn : public WriteOffMill {
 protected:
  std::vector<std::string> CompositionQueries() { return mill_.TakeStatements("FROM COMP_MATERIAL COMP LEFT JOIN"); }
  std::vector<std::string> ReservationQueries() { return mill_.TakeStatements("QTDE_RESERVADA"); }
  std::vector<std::string> Refused(std::string_view quantity) {
    EXPECT_EQ(Roll(quantity), ActResult::kRefused);
    std::vector<std::string> texts;
    for (const Box& box : Boxes()) texts.push_back(box.text);
    return texts;
  }
};

TEST_F(ReservedYarn, AmountsFollowTheReservationsAndNotTheComposition) {
  // The composition says 60 and 40 %.
  Order(kOrder, {{}});
  Reserve("Y1", "D1", "L1", 30);
  Reserve("Y3", "D1", "L1", 50);
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 97);
  EXPECT_EQ(Stock("Y2", "D1", "L1"), 80);
  EXPECT_EQ(Stock("Y3", "D1", "L1"), 55);
  ExpectBooksBalance();
}

TEST_F(ReservedYarn, SharesCountWhatIsStillOpen) {
  ReservedOrder();
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 50");
  mill_.Insert("TECELB", {{"NUMERO", kOrder}, {"CODIGO", "F1"}, {"COR", "01"}, {"ORDEM", 7}, {"QTDE", 50}});
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 88);  // 60 of the 50 that are open
  EXPECT_EQ(Rolls().back().at("ORDEM").AsInteger(), 8);
}

TEST_F(ReservedYarn, SeveralLotsOfOneYarnGoInTheOrderOfTheirCodes) {
  Order(kOrder, {{}});
  Reserve("Y1", "D1", "L2", 30);
  Reserve("Y1", "D1", "L1", 5);
  Reserve("Y2", "D1", "L1", 40);
  Load();
  ASSERT_EQ(Roll("20"), ActResult::kDone);  // Y1: 35 of 100, so 7
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 95);
  EXPECT_EQ(Stock("Y1", "D1", "L2"), 48);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 0);
  EXPECT_EQ(Left("Y1", "D1", "L2"), 28);
  ExpectBooksBalance();
}

TEST_F(ReservedYarn, LotThatHoldsLessThanItsReservationIsSkippedWhole) {
  Order(kOrder, {{}});
  Reserve("Y1", "D1", "L1", 100.001);
  Reserve("Y2", "D1", "L1", 40);
  Load();
  EXPECT_EQ(Refused("10"), (std::vector<std::string>{"Lote sem reserva.", "Baixa Cancelada."}));
  EXPECT_TRUE(Rolls().empty());
  EXPECT_EQ(Stock("Y2", "D1", "L1"), 80);
  ExpectBooksBalance();
}

TEST_F(ReservedYarn, LotThatHoldsExactlyItsReservationIsTaken) {
  Order(kOrder, {{}});
  Reserve("Y1", "D1", "L1", 100);
  Reserve("Y2", "D1", "L1", 80);
  Load();
  ASSERT_EQ(Roll("100"), ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 0);
  ExpectBooksBalance();
}

TEST_F(ReservedYarn, ReservationsOfOtherOrdersAreNotLookedAt) {
  ReservedOrder();
  Order("000002", {{}});
  Reserve("Y1", "D1", "L1", 95, "000002");
  Load();
  ASSERT_EQ(Roll("20"), ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 88);
}

TEST_F(ReservedYarn, WithoutOperatorTheScreenIsNeverShown) {
  ReservedOrder();
  mill_.SetParameter("MAL", 70, "N");
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);  // an unexpected modal screen would fail the test
  EXPECT_EQ(Rolls().size(), 1u);
  EXPECT_EQ(mill_.Desk().Find("fmMovBaiFio"), nullptr);
}

TEST_F(ReservedYarn, WithoutTheParameterTheCompositionGivesTheAmounts) {
  for (const char* off : {"N", ""}) {
    SCOPED_TRACE(off);
    mill_.SetParameter("MAL", 70, off);
    mill_.Exec("DELETE FROM {TECEL}");
    mill_.Exec("DELETE FROM {TECEL_ITEN}");
    mill_.Exec("DELETE FROM {MAT_RESERVA}");
    Order(kOrder, {{}});
    Reserve("Y1", "D1", "L1", 10);
    Reserve("Y2", "D1", "L1", 50);
    Load();
    const double before = Stock("Y1", "D1", "L1");
    mill_.TakeStatements();
    ASSERT_EQ(Roll(*off == 'N' ? "10" : "11"), ActResult::kDone);
    EXPECT_TRUE(ReservationQueries().empty());
    EXPECT_NEAR(before - Stock("Y1", "D1", "L1"), *off == 'N' ? 6 : 6.6, 1e-9);
  }
}

TEST_F(ReservedYarn, TwoItemsAlwaysGoByTheComposition) {
  Order(kOrder, {{"F1", "01", 100, ""}, {"F1", "02", 100, ""}});
  Reserve("Y1", "D1", "L1", 10);
  Reserve("Y2", "D1", "L1", 50);
  Load();
  mill_.TakeStatements();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(CompositionQueries(),
            std::vector<std::string>{
                "SELECT COMP.CODIGO, MATERIAL.DESCRICAO, COMP.COR_I AS COR, COMP.PERC, SUM(COMP.PERC * (10/100.00)) AS "
                "QTDE FROM COMP_MATERIAL COMP LEFT JOIN MATERIAL MATERIAL ON (COMP.CODIGO = MATERIAL.CODIGO) WHERE "
                "COMP.MATERIAL = 'F1' AND COMP.COR = '01' AND (COMP.PERC * (10/100.00)) > 0 AND NOT (COMP.COR_I LIKE "
                "'%*%') GROUP BY COMP.CODIGO, MATERIAL.DESCRICAO, COMP.COR_I, COMP.PERC, COMP.ORDEM"});
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 94);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 4);
  ExpectBooksBalance();
}

TEST_F(ReservedYarn, NothingReservedGoesByTheCompositionAndFindsNoLot) {
  Order(kOrder, {{}});
  Load();
  mill_.TakeStatements();
  EXPECT_EQ(Roll("10"), ActResult::kRefused);
  EXPECT_EQ(CompositionQueries().size(), 1u);
  EXPECT_EQ(Boxes(), kNoReservation);
  EXPECT_EQ(Text("EdtQtde"), " 10,000");
  ExpectBooksBalance();
}

TEST_F(ReservedYarn, OverDeliveredItemGoesByTheComposition) {
  ReservedOrder();
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 120");
  mill_.Insert("TECELB", {{"NUMERO", kOrder}, {"CODIGO", "F1"}, {"COR", "01"}, {"ORDEM", 1}, {"QTDE", 120}});
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 94);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 54);
}

TEST_F(ReservedYarn, NothingOpenAndYarnStillReservedIsToldInOneSentence) {
  ReservedOrder();
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 100");
  Load();
  EXPECT_EQ(Roll("10"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{YarnNotice("O item já foi baixado por inteiro e ainda tem fios reservados. Use "
                                        "\"Considerar Reserva como baixada\" para liberar a reserva.")});
  EXPECT_TRUE(Rolls().empty());
  EXPECT_EQ(mill_.Desk().Find("fmMovBaiFio"), nullptr);

  // The way out: then the composition counts, and finds nothing reserved.
  mill_.Person().Answer("zerar o saldo", "yes");
  ASSERT_EQ(mill_.Desk().PickMenu(Screen(), "Considerar Reserva como baixada"), ActResult::kDone);
  Boxes();
  EXPECT_EQ(Confirm(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), kNoReservation);
}

TEST_F(ReservedYarn, PlaceholderColoursAreNeverConsumed) {
  Order(kOrder, {{"F3", "01", 100, ""}});
  mill_.Insert("COMP_MATERIAL",
               {{"MATERIAL", "F3"}, {"COR", "01"}, {"CODIGO", "Y2"}, {"COR_I", host::Value()}, {"PERC", 10}});
  Reserve("Y1", "D1", "L1", 0.001);  // less than the roll takes: the reservation counts for its lot only
  mill_.SetParameter("MAL", 70, "N");
  Load();
  std::vector<std::string> lines;
  AtYarnScreen([&](host::Screen& yarn) {
    host::Dataset& wanted = mill_.Data(yarn, "TbBaixa");
    for (std::size_t row = 1; row <= wanted.RecordCount(); ++row) {
      lines.push_back(wanted.ValueAt(row, 0).AsText() + " " + wanted.ValueAt(row, 3).AsText());
    }
  });
  EXPECT_EQ(Roll("10"), ActResult::kRefused);
  EXPECT_EQ(lines, std::vector<std::string>{"Y1 6.999"});
  EXPECT_EQ(Boxes(), BoxList{Notice("Baixa Cancelada.")});
}

TEST_F(ReservedYarn, AFabricWithoutCompositionNeedsNoYarn) {
  Order(kOrder, {{"F2", "01", 100, ""}});
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_TRUE(Consumption().empty());
  EXPECT_EQ(Stock("F2", "DF", "0000011"), 10);
  // At the price of the weaving alone: 4.00 less 9.25 %.
  EXPECT_EQ(Number("SELECT PRECO FROM {MATERIAL} WHERE CODIGO = 'F2'"), 3.63);
  ExpectBooksBalance();
}

TEST_F(ReservedYarn, KindFIsNotWeavings) {
  Order(kOrder, {{}});
  Reserve("Y1", "D1", "L1", 60, kOrder, "F");
  Reserve("Y2", "D1", "L1", 40, kOrder, "F");
  Load();
  EXPECT_EQ(Roll("10"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), kNoReservation);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 60);
}

TEST_F(ReservedYarn, KindFBesideKindTIsLeftAlone) {
  ReservedOrder();
  Reserve("Y1", "D1", "L1", 33, kOrder, "F");
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Number("SELECT QTDE FROM {MAT_RESERVA} WHERE TIPO = 'F'"), 33);
  EXPECT_EQ(Number("SELECT QTDE_B FROM {MAT_RESERVA} WHERE TIPO = 'F'"), 0);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 94);
}

TEST_F(ReservedYarn, KindNullCountsAsWeavings) {
  Order(kOrder, {{}});
  Reserve("Y1", "D1", "L1", 60, kOrder, host::Value());
  Reserve("Y2", "D1", "L1", 40, kOrder, host::Value());
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 54);
  EXPECT_EQ(Consumed("Y1", "D1", "L1"), 6);
}

TEST_F(ReservedYarn, AnotherColoursLotIsNotTaken) {
  // The first line of the composition is Y1 in CR; a lot of Y1 in 01 with a smaller code stands before it.
  mill_.Insert("MAT_ITEN", {{"CODIGO", "Y1"}, {"COR", "01"}, {"DEPOSITO", "D1"}, {"LOTE", "A0"}, {"QTDE", 0}});
  const auto entry = mill_.App().NewEstoque();
  entry->Material = "Y1";
  entry->Cor = "01";
  entry->Deposito = "D1";
  entry->Lote = "A0";
  entry->Quantidade = 100;
  entry->Data = host::Date::FromParts(2026, 1, 2).value();
  entry->MovimentaEstoqueMaterial(true, true);
  mill_.Exec("UPDATE {COMP_MATERIAL} SET COR_I = '01' WHERE MATERIAL = 'F1' AND COR = '01' AND CODIGO = 'Y2'");
  mill_.Exec("UPDATE {COMP_MATERIAL} SET CODIGO = 'Y1' WHERE MATERIAL = 'F1' AND COR = '01' AND CODIGO = 'Y2'");
  mill_.SetParameter("MAL", 70, "N");
  Order(kOrder, {{}});
  Reserve("Y1", "D1", "L1", 60);
  mill_.Insert("MAT_RESERVA", {{"NUMERO", kOrder},
                               {"CODIGO", "Y1"},
                               {"COR", "01"},
                               {"DEPOSITO", "D1"},
                               {"LOTE", "A0"},
                               {"QTDE", 40},
                               {"TIPO", "T"}});
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 94);
  EXPECT_EQ(Stock("Y1", "D1", "A0"), 96);
  ExpectBooksBalance();
}

TEST_F(ReservedYarn, OneKilogramOfARoundShareConsumesThreeDecimals) {
  Order(kOrder, {{"F1", "01", 3, ""}});
  Reserve("Y1", "D1", "L1", 2);
  Reserve("Y2", "D1", "L1", 1);
  Load();
  ASSERT_EQ(Roll("1"), ActResult::kDone);  // two thirds and one third
  const auto taken = Consumption();
  ASSERT_EQ(taken.size(), 2u);
  EXPECT_EQ(taken[0].at("QTDE"), host::Value(0.667));
  EXPECT_EQ(taken[1].at("QTDE"), host::Value(0.333));
  ExpectBooksBalance();
}

// --- crumbs ------------------------------------------------------------------------------------------------------

struct CrumbCase {
  double reserved;
  double recorded;  // BAIXA_FIO.QTDE for a take of 10
  double left;
};

class ReservationCrumb : public WriteOffMill, public ::testing::WithParamInterface<CrumbCase> {};

TEST_P(ReservationCrumb, GoesWithTheRoll) {
  // Two items: the amounts go by the composition, so the take is 10 whatever is reserved.
  Order(kOrder, {{"FP", "01", 100, ""}, {"F2", "01", 1, ""}});
  mill_.Exec("UPDATE {MATERIAL} SET PESO = 1 WHERE CODIGO = 'FP'");
  Reserve("Y1", "D1", "L1", GetParam().reserved);
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  ASSERT_EQ(Consumption().size(), 1u);
  EXPECT_NEAR(Consumption().front().at("QTDE").AsFloat(), GetParam().recorded, 1e-9);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 90);  // the ledger takes what was weighed
  EXPECT_NEAR(Left("Y1", "D1", "L1"), GetParam().left, 1e-9);
  ExpectBooksBalance();
}

INSTANTIATE_TEST_SUITE_P(Left, ReservationCrumb,
                         ::testing::Values(CrumbCase{10, 10, 0}, CrumbCase{10.005, 10.005, 0},
                                           CrumbCase{10.0099, 10.0099, 0}, CrumbCase{10.01, 10, 0.01},
                                           CrumbCase{10.0004, 10.0004, 0}, CrumbCase{10.02, 10, 0.02}));

TEST_F(ReservedYarn, AForgivenRemainderIsNotConsumed) {
  // 9.99 reserved for a line of 10: what is missing is 0.01, which closes the line.
  Order(kOrder, {{"FP", "01", 100, ""}, {"F2", "01", 1, ""}});
  mill_.Exec("UPDATE {MATERIAL} SET PESO = 1 WHERE CODIGO = 'FP'");
  Reserve("Y1", "D1", "L1", 9.99);
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 90.01);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 0);
  ExpectBooksBalance();
}

TEST_F(ReservedYarn, ARemainderAboveThatIsMissing) {
  Order(kOrder, {{"FP", "01", 100, ""}, {"F2", "01", 1, ""}});
  mill_.Exec("UPDATE {MATERIAL} SET PESO = 1 WHERE CODIGO = 'FP'");
  Reserve("Y1", "D1", "L1", 9.989);
  Load();
  EXPECT_EQ(Roll("10"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), kNoReservation);
  EXPECT_EQ(Left("Y1", "D1", "L1"), 9.989);
}

TEST_F(ReservedYarn, SupplierNamesAreAskedForOnlyWhenWanted) {
  Order(kOrder, {{}});
  Reserve("Y3", "D1", "F0001-9", 20);
  Load();
  mill_.TakeStatements();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_TRUE(mill_.TakeStatements("SELECT FIRST 1 NOME FROM ENTIDADE").empty());
}

TEST_F(ReservedYarn, RollWithManyDecimalsFitsTheStatements) {
  mill_.Exec("UPDATE {MATERIAL} SET PESO = 0.123456789 WHERE CODIGO = 'FM'");
  mill_.SetParameter("MAL", 70, "");
  Order(kOrder, {{"FM", "01", 100000, ""}});
  Reserve("Y1", "D1", "L1", 90);
  Reserve("Y2", "D1", "L1", 70);
  Load();
  ASSERT_EQ(Roll("987,654"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_NEAR(Stock("FM", "DF", "0000011"), 987.654, 1e-6);
  ExpectBooksBalance();
}

}  // namespace
}  // namespace test
