// Books that balance are left in peace; every kind of damage is named, and nothing else.
#include <sstream>

#include "books_mill.h"

namespace test {
namespace {

using Lines = std::vector<std::string>;

// --- books that balance -------------------------------------------------------------------------------------------

TEST(Books, OfAnEmptyMillBalance) {
  Mill mill;
  EXPECT_EQ(app::books::CheckBooks(mill.Db()), Lines{});
}

TEST_F(BooksTest, OfTheSmallMillBalance) { EXPECT_EQ(Check(), Lines{}); }

TEST_F(BooksTest, WithRollsBalance) {
  Order("000001");
  Order("000002", "F1", "02");
  Roll({});
  Roll({.number = 2, .quantity = 15.125, .yarns = {{"Y1", "L1", 9.075}, {"Y1", "L2", 3}, {"Y2", "L1", 3.05}}});
  Roll({.order = "000002", .colour = "02", .quantity = 10, .yarns = {{"Y1", "L1", 6}, {"Y2", "L1", 4}}});
  EXPECT_EQ(Check(), Lines{});
  std::ostringstream out;
  EXPECT_EQ(app::books::Check(mill_.Db(), out), 0);
  EXPECT_EQ(out.str(), "Os livros conferem.\n");
}

TEST_F(BooksTest, MayHaveGapsInTheRollNumbers) {
  Order("000001");
  Roll({.number = 1});
  Roll({.number = 4});
  EXPECT_EQ(Check(), Lines{});
}

TEST_F(BooksTest, MayHaveRollsWithoutYarn) {
  Order("000001", "F2");
  Roll({.fabric = "F2", .yarns = {}});
  EXPECT_EQ(Check(), Lines{});
}

TEST_F(BooksTest, TakeMetresAndPiecesByTheirWeight) {
  Order("000001", "FM");
  Order("000002", "FP");
  Roll({.fabric = "FM", .quantity = 20, .stocked = 80});
  Roll({.order = "000002", .fabric = "FP", .quantity = 10, .stocked = 33.333333, .yarns = {{"Y1", "L1", 10}}});
  Roll({.order = "000002", .number = 2, .fabric = "FP", .quantity = 7, .stocked = 23.333333, .yarns = {}});
  EXPECT_EQ(Check(), Lines{});
}

TEST_F(BooksTest, LetRollsShareALot) {
  const Lines lots = {"000000", "100001", "100002PV0001"};
  for (std::size_t at = 0; at < lots.size(); ++at) {
    const std::string order = "10000" + std::to_string(at);
    Order(order);
    for (int number = 1; number <= 3; ++number) {
      Roll({.order = order, .number = number, .quantity = 3, .lot = lots[at], .yarns = {{"Y1", "L1", 3}}});
    }
  }
  EXPECT_EQ(Check(), Lines{});
}

TEST_F(BooksTest, LetTheLastCrumbOfAReservationGoAlong) {
  Order("000001");
  Roll({.yarns = {{"Y1", "L1", 12, 0.009}, {"Y2", "L1", 8, 0.004}}});
  Roll({.number = 2, .yarns = {{"Y1", "L1", 12, 0.0099}, {"Y2", "L1", 8}}});
  EXPECT_EQ(Check(), Lines{});
}

TEST_F(BooksTest, ForgetARollWhoseYarnWasTakenBack) {
  Order("000001");
  Roll({});
  Move("000001", "Y1", "CR", "D1", "L1", 12, true);
  Move("000001", "Y1", "CR", "D1", "L1", 12.005, false);  // its record had the crumb in it
  EXPECT_EQ(Check(), Lines{});
}

TEST_F(BooksTest, ForgetARollThatWasReversed) {
  Order("000001");
  Move("000001", "Y1", "CR", "D1", "L1", 12, true);
  Move("000001", "F1", "01", "DF", "0000011", 20, false);
  Move("000001", "F1", "01", "DF", "0000011", 20, true);
  Move("000001", "Y1", "CR", "D1", "L1", 12, false);
  EXPECT_EQ(Check(), Lines{});
}

TEST_F(BooksTest, LeaveOtherMovementsAlone) {
  Order("000001");
  Roll({});
  Move("NF123", "Y1", "CR", "D1", "L9", 50, false, "NF");
  Move("PV9", "F1", "01", "DF", "0000011", 5, true, "PV");
  EXPECT_EQ(Check(), Lines{});
}

TEST_F(BooksTest, BearTheRoundingOfManyRolls) {
  Order("000001");
  for (int number = 1; number <= 40; ++number) {
    Roll({.number = number, .quantity = 1.0 / 3, .lot = "000001", .yarns = {{"Y1", "L1", 0.2}, {"Y2", "L1", 0.133}}});
  }
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 13.333333 WHERE NUMERO = '000001'");
  EXPECT_EQ(Check(), Lines{});
}

TEST_F(BooksTest, LeaveReservationsOfOtherModulesAlone) {
  mill_.Insert("MAT_RESERVA", {{"NUMERO", "900001"},
                               {"CODIGO", "Y1"},
                               {"COR", "CR"},
                               {"DEPOSITO", "D1"},
                               {"LOTE", "L1"},
                               {"QTDE", 3},
                               {"TIPO", "F"}});
  EXPECT_EQ(Check(), Lines{});
}

// --- damage -------------------------------------------------------------------------------------------------------

class Damaged : public BooksTest {
 protected:
  void SetUp() override {
    BooksTest::SetUp();
    Order("000001");
    Roll({});
    Roll({.number = 2, .quantity = 10, .yarns = {{"Y1", "L2", 6}, {"Y2", "L1", 4}}});
    ASSERT_EQ(Check(), Lines{});
  }
};

TEST_F(Damaged, ABalanceThatItsMovementsDoNotMake) {
  mill_.Exec("UPDATE {MAT_ITEN} SET QTDE = QTDE + 0.01 WHERE CODIGO = 'Y1' AND LOTE = 'L1' AND DEPOSITO = 'D1'");
  EXPECT_EQ(Check(), Lines{"Saldo do lote difere dos seus movimentos: material Y1, cor CR, depósito D1, lote L1: saldo "
                           "88,01, movimentos 88."});
}

TEST_F(Damaged, ALotThatIsGone) {
  mill_.Exec("DELETE FROM {MAT_ITEN} WHERE CODIGO = 'Y2' AND LOTE = 'L3'");
  EXPECT_EQ(Check(), Lines{"Saldo do lote difere dos seus movimentos: material Y2, cor CR, depósito D2, lote L3: saldo "
                           "0, movimentos 40."});
}

TEST_F(Damaged, AMovementThatIsNotOfWeavingAndGone) {
  mill_.Exec("DELETE FROM {MAT_MOV} WHERE CODIGO = 'Y3' AND LOTE = 'F0001-9'");
  EXPECT_EQ(Check(), Lines{"Saldo do lote difere dos seus movimentos: material Y3, cor CR, depósito D1, lote F0001-9: "
                           "saldo 25, movimentos 0."});
}

TEST_F(Damaged, ALotBelowZero) {
  mill_.Exec("UPDATE {MAT_ITEN} SET QTDE = -2 WHERE CODIGO = 'Y3' AND LOTE = 'L1'");
  mill_.Exec("UPDATE {MAT_MOV} SET QTDE = 2, SAIDA = 'S' WHERE CODIGO = 'Y3' AND LOTE = 'L1'");
  EXPECT_EQ(Check(), Lines{"Saldo negativo: material Y3, cor CR, depósito D1, lote L1: -2."});
  mill_.Exec("UPDATE {MAT_ITEN} SET QTDE = -0.01 WHERE CODIGO = 'Y3' AND LOTE = 'L1'");
  mill_.Exec("UPDATE {MAT_MOV} SET QTDE = 0.01 WHERE CODIGO = 'Y3' AND LOTE = 'L1'");
  EXPECT_EQ(Check(), Lines{});
}

TEST_F(Damaged, AnItemThatCountsOtherThanItsRolls) {
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 29.99");
  EXPECT_EQ(Check(), Lines{"Quantidade baixada do item difere das suas peças: ordem 000001, malha F1, cor 01: item "
                           "29,99, 2 peças com 30."});
}

TEST_F(Damaged, AnItemThatIsGone) {
  mill_.Exec("DELETE FROM {TECEL_ITEN}");
  EXPECT_EQ(Check(), Lines{"Peças sem item na ordem: ordem 000001, malha F1, cor 01: 2 peças, 30."});
}

TEST_F(Damaged, AnOrderThatIsGone) {
  mill_.Exec("DELETE FROM {TECEL}");
  EXPECT_EQ(Check(), (Lines{"Item sem ordem: ordem 000001, malha F1, cor 01.",
                            "Reserva sem ordem: ordem 000001, fio Y1, cor CR, depósito D1, lote L1.",
                            "Reserva sem ordem: ordem 000001, fio Y2, cor CR, depósito D1, lote L1."}));
}

TEST_F(Damaged, ARollNumberThatStandsTwice) {
  mill_.Exec("ALTER TABLE {TECELB} DROP CONSTRAINT {TECELB}_PK");
  mill_.Insert("TECELB", {{"NUMERO", "000001"},
                          {"CODIGO", "F1"},
                          {"COR", "01"},
                          {"ORDEM", 2},
                          {"QTDE", 0},
                          {"DEPOSITO", "DF"},
                          {"LOTE", "0000012"}});
  EXPECT_EQ(Check(), (Lines{"Número de peça repetido: ordem 000001, peça 2: 2 vezes.",
                            "Peça sem entrada no estoque: ordem 000001, malha F1, cor 01, depósito DF, lote 0000012: 2 "
                            "peças, 1 entrada."}));
}

TEST_F(Damaged, ANegativeReservation) {
  mill_.Exec("UPDATE {MAT_RESERVA} SET QTDE = -0.001 WHERE CODIGO = 'Y1'");
  mill_.Exec("UPDATE {MAT_RESERVA} SET QTDE_B = -1 WHERE CODIGO = 'Y2'");
  EXPECT_EQ(Check(), (Lines{"Reserva negativa: ordem 000001, material Y1, cor CR, depósito D1, lote L1: reservado "
                            "-0,001, consumido 0.",
                            "Reserva negativa: ordem 000001, material Y2, cor CR, depósito D1, lote L1: reservado 500, "
                            "consumido -1."}));
}

TEST_F(Damaged, ARollThatIsGone) {
  mill_.Exec("DELETE FROM {TECELB} WHERE ORDEM = 2");
  EXPECT_EQ(
      Check(),
      (Lines{
          "Quantidade baixada do item difere das suas peças: ordem 000001, malha F1, cor 01: item 30, 1 peça com 20.",
          "Baixa de fio sem a sua peça: ordem 000001, peça 2, malha F1, fio Y1, cor CR, depósito D1, lote L2: 6.",
          "Baixa de fio sem a sua peça: ordem 000001, peça 2, malha F1, fio Y2, cor CR, depósito D1, lote L1: 4.",
          "Entrada de malha sem peça: ordem 000001, malha F1, cor 01, depósito DF, lote 0000012: 0 peças, 1 "
          "entrada."}));
}

TEST_F(Damaged, AnEntryThatIsGone) {
  mill_.Exec("DELETE FROM {MAT_MOV} WHERE LOTE = '0000011'");
  mill_.Exec("UPDATE {MAT_ITEN} SET QTDE = 0 WHERE LOTE = '0000011'");
  EXPECT_EQ(Check(), Lines{"Peça sem entrada no estoque: ordem 000001, malha F1, cor 01, depósito DF, lote 0000011, "
                           "peça 1: 1 peça, 0 entradas."});
}

TEST_F(Damaged, AnEntryOfAnotherQuantity) {
  mill_.Exec("UPDATE {MAT_MOV} SET QTDE = 20.01 WHERE LOTE = '0000011'");
  mill_.Exec("UPDATE {MAT_ITEN} SET QTDE = 20.01 WHERE LOTE = '0000011'");
  EXPECT_EQ(Check(), Lines{"Entrada de malha difere das peças: ordem 000001, malha F1, cor 01, depósito DF, lote "
                           "0000011, peça 1: peças 20, entradas 20,01."});
}

TEST_F(Damaged, AnEntryIntoAnotherDeposit) {
  mill_.Exec("UPDATE {MAT_MOV} SET DEPOSITO = 'D2' WHERE LOTE = '0000011'");
  mill_.Exec("UPDATE {MAT_ITEN} SET DEPOSITO = 'D2' WHERE LOTE = '0000011'");
  EXPECT_EQ(Check(), (Lines{"Entrada de malha sem peça: ordem 000001, malha F1, cor 01, depósito D2, lote 0000011: 0 "
                            "peças, 1 entrada.",
                            "Peça sem entrada no estoque: ordem 000001, malha F1, cor 01, depósito DF, lote 0000011, "
                            "peça 1: 1 peça, 0 entradas."}));
}

TEST_F(Damaged, AnEntryWithoutRoll) {
  Move("000001", "F1", "01", "DF", "0000013", 5, false);
  EXPECT_EQ(Check(), Lines{"Entrada de malha sem peça: ordem 000001, malha F1, cor 01, depósito DF, lote 0000013: 0 "
                           "peças, 1 entrada."});
}

TEST_F(Damaged, AnEntryInSharedLotsIsMissedByCount) {
  Roll({.number = 3, .quantity = 5, .lot = "000000", .yarns = {}});
  Roll({.number = 4, .quantity = 5, .lot = "000000", .yarns = {}});
  ASSERT_EQ(Check(), Lines{});
  mill_.Exec("DELETE FROM {MAT_MOV} WHERE ID = (SELECT MAX(ID) FROM {MAT_MOV})");
  mill_.Exec("UPDATE {MAT_ITEN} SET QTDE = 5 WHERE LOTE = '000000' AND CODIGO = 'F1' AND COR = '01'");
  EXPECT_EQ(Check(), Lines{"Peça sem entrada no estoque: ordem 000001, malha F1, cor 01, depósito DF, lote 000000: 2 "
                           "peças, 1 entrada."});
}

TEST_F(Damaged, MetresThatTheWeightDoesNotMake) {
  Order("000002", "FM");
  Roll({.order = "000002", .fabric = "FM", .quantity = 20, .stocked = 79, .yarns = {}});
  EXPECT_EQ(Check(), Lines{"Entrada de malha difere das peças: ordem 000002, malha FM, cor 01, depósito DF, lote "
                           "0000021, peça 1: peças 80, entradas 79."});
}

TEST_F(Damaged, AYarnRecordThatIsGone) {
  mill_.Exec("DELETE FROM {BAIXA_FIO} WHERE ORDEM = 2 AND CODIGO = 'Y1'");
  EXPECT_EQ(Check(),
            Lines{"Saída de fio sem baixa: ordem 000001, fio Y1, cor CR, depósito D1, lote L2: 0 baixas, 1 saída."});
}

TEST_F(Damaged, AYarnIssueThatIsGone) {
  mill_.Exec("DELETE FROM {MAT_MOV} WHERE LOTE = 'L2' AND TIPO_DOC = 'BT'");
  mill_.Exec("UPDATE {MAT_ITEN} SET QTDE = 50 WHERE LOTE = 'L2'");
  EXPECT_EQ(
      Check(),
      Lines{
          "Fio baixado sem saída do estoque: ordem 000001, fio Y1, cor CR, depósito D1, lote L2: 1 baixa, 0 saídas."});
}

TEST_F(Damaged, AYarnRecordOfAnotherQuantity) {
  mill_.Exec("UPDATE {BAIXA_FIO} SET QTDE = 6.02 WHERE LOTE = 'L2'");
  EXPECT_EQ(Check(), Lines{"Saída de fio difere das baixas: ordem 000001, fio Y1, cor CR, depósito D1, lote L2: baixas "
                           "6,02, saídas 6."});
  // Less than what left the stock is no crumb.
  mill_.Exec("UPDATE {BAIXA_FIO} SET QTDE = 5.995 WHERE LOTE = 'L2'");
  EXPECT_EQ(Check(), Lines{"Saída de fio difere das baixas: ordem 000001, fio Y1, cor CR, depósito D1, lote L2: baixas "
                           "5,995, saídas 6."});
}

TEST_F(Damaged, AYarnRecordOfAnotherRoll) {
  mill_.Exec("UPDATE {BAIXA_FIO} SET ORDEM = 7 WHERE LOTE = 'L2'");
  EXPECT_EQ(Check(), Lines{"Baixa de fio sem a sua peça: ordem 000001, peça 7, malha F1, fio Y1, cor CR, depósito D1, "
                           "lote L2: 6."});
}

TEST_F(Damaged, AYarnRecordOfAnotherFabric) {
  mill_.Exec("UPDATE {BAIXA_FIO} SET MATERIAL = NULL WHERE LOTE = 'L2'");
  EXPECT_EQ(Check(),
            Lines{"Baixa de fio sem a sua peça: ordem 000001, peça 2, malha , fio Y1, cor CR, depósito D1, lote "
                  "L2: 6."});
}

TEST_F(Damaged, IsToldLineByLineWithAnExitCode) {
  mill_.Exec("UPDATE {MAT_RESERVA} SET QTDE = -1 WHERE CODIGO = 'Y1'");
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 0");
  std::ostringstream out;
  EXPECT_EQ(app::books::Check(mill_.Db(), out), 1);
  EXPECT_EQ(out.str(),
            "Quantidade baixada do item difere das suas peças: ordem 000001, malha F1, cor 01: item 0, 2 peças com "
            "30.\nReserva negativa: ordem 000001, material Y1, cor CR, depósito D1, lote L1: reservado -1, consumido "
            "0.\n");
}

TEST_F(Damaged, ReadsOnly) {
  mill_.Exec("DELETE FROM {TECELB}");
  mill_.TakeStatements();
  const auto commits = mill_.Db().Stats().commits;
  Check();
  for (const auto& statement : mill_.TakeStatements()) EXPECT_TRUE(statement.starts_with("SELECT")) << statement;
  EXPECT_EQ(mill_.Db().Stats().commits, commits);
}

}  // namespace
}  // namespace test
