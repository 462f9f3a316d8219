// "Estornar": the checks in their order, what is said, and what of the roll is left.
#include <algorithm>
#include <tuple>

#include "reversal_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;

const Box kQuestion = {"Baixa de Ordem de Tecelagem", kReversalQuestion, host::Icon::kQuestion};

using Reversal = ReversalMill;

TEST_F(Reversal, LeavesNothingOfTheRoll) {
  ReservedOrder();
  Load();
  const std::string before = Books();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList{kQuestion});
  // The fabric's lot stays as an empty one.
  EXPECT_EQ(Stock("F1", "DF", "0000011"), 0);
  mill_.Exec("DELETE FROM {MAT_ITEN} WHERE LOTE = '0000011'");
  EXPECT_EQ(Books(), before);
  EXPECT_EQ(Log().back(), "ESTORNO MOVIMENTO DO LOTE: 000001 CODIGO: F1 QUANT:  0,000");
  EXPECT_EQ(mill_.Data(Screen(), "TbRolos").RecordCount(), 0u);
  EXPECT_EQ(mill_.Data(Screen(), "TbItens")["Qtde_B"].AsFloat(), 0);
}

TEST_F(Reversal, MovesYarnInAndFabricOut) {
  RollsOf({"10"});
  Type("EdtFunc", "P2");
  mill_.SetClock("2026-03-12 09:00:00");
  Type("EdtData", "12/03/2026");
  const double price = Number("SELECT PRECO_MED FROM {MAT_ITEN} WHERE LOTE = '0000011'");
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  const auto moves = Movements();
  ASSERT_EQ(moves.size(), 6u);  // two yarns out and the fabric in, and the way back
  const Row& fabric = moves[5];
  for (const auto& [column, value] : std::vector<std::pair<const char*, host::Value>>{{"CODIGO", "F1"},
                                                                                      {"COR", "01"},
                                                                                      {"LOTE", "0000011"},
                                                                                      {"DEPOSITO", "DF"},
                                                                                      {"DOCUMENTO", "000001"},
                                                                                      {"CLIENTE", "M00001"},
                                                                                      {"FUNCIONARIO", "P2"},
                                                                                      {"QTDE", 10.0},
                                                                                      {"SAIDA", "S"},
                                                                                      {"USUARIO", "ADMIN"},
                                                                                      {"CUSTO", price},
                                                                                      {"TIPO_MOV", "TECSAI"}}) {
    EXPECT_EQ(fabric.at(column), value) << column;
  }
  EXPECT_EQ(fabric.at("DATA").AsText(), "12/03/2026");
  for (const auto& [row, yarn, quantity] : {std::tuple{3, "Y1", 6.0}, {4, "Y2", 4.0}}) {
    const Row& move = moves[static_cast<std::size_t>(row)];
    EXPECT_EQ(move.at("CODIGO"), host::Value(yarn));
    EXPECT_EQ(move.at("QTDE"), host::Value(quantity));
    EXPECT_EQ(move.at("SAIDA"), host::Value("N"));
    EXPECT_EQ(move.at("PRECO"), host::Value(0.0));
    EXPECT_EQ(move.at("LOCAL"), host::Value("A1"));
    EXPECT_EQ(move.at("TIPO_MOV"), host::Value("TECENT"));
    EXPECT_EQ(move.at("DOCUMENTO"), host::Value("000001"));
    EXPECT_EQ(move.at("DATA").AsText(), "12/03/2026");
  }
  ExpectBooksBalance();
}

TEST_F(Reversal, SendsTheseStatements) {
  RollsOf({"10"});
  Type("EdtQtde", "3,5");
  mill_.TakeStatements();
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  const auto sent = mill_.TakeStatements();
  for (const char* expected :
       {"SELECT QTDE, PRECO_MED FROM MAT_ITEN WHERE CODIGO = 'F1' AND COR = '01' AND DEPOSITO = 'DF' AND LOTE = "
        "'0000011'",
        "UPDATE TECEL_ITEN SET QTDE_B = 0 , BAIXADA = 'N' WHERE CODIGO = 'F1' AND NUMERO = '000001' AND COR = '01'",
        "DELETE FROM TECELB WHERE NUMERO = '000001' AND ORDEM = 1",
        "DELETE FROM DEF_MOV WHERE NUMERO = '000001' AND ROLO = 1 AND TIPO = 'T'",
        "SELECT CODIGO, COR, NUMERO, DEPOSITO, LOTE, QTDE FROM BAIXA_FIO M WHERE NUMERO = '000001' AND MATERIAL = 'F1' "
        "AND ORDEM = 1",
        "SELECT MAX(MAT_ITEN.LOCAL) AS LOCAL FROM MAT_ITEN MAT_ITEN WHERE CODIGO = 'Y1' AND COR = 'CR' AND DEPOSITO = "
        "'D1' AND LOTE = 'L1'",
        "UPDATE MAT_RESERVA SET QTDE = QTDE + 6 ,QTDE_B = QTDE_B - 6 WHERE CODIGO = 'Y1' AND COR = 'CR' AND DEPOSITO = "
        "'D1' AND LOTE = 'L1' AND NUMERO = '000001' AND (TIPO = 'T' OR TIPO <> 'F' OR TIPO IS NULL)",
        "DELETE FROM BAIXA_FIO WHERE NUMERO = '000001' AND MATERIAL = 'F1' AND ORDEM = 1"}) {
    EXPECT_EQ(std::ranges::count(sent, expected), 1) << expected;
  }
  EXPECT_EQ(Log().back(), "ESTORNO MOVIMENTO DO LOTE: 000001 CODIGO: F1 QUANT:  3,500");
}

TEST_F(Reversal, LowersTheItemByTheRollWhileOthersRemain) {
  RollsOf({"10", "12,5"});
  mill_.TakeStatements();
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(mill_.TakeStatements("UPDATE TECEL_ITEN"),
            std::vector<std::string>{"UPDATE TECEL_ITEN SET QTDE_B = QTDE_B - 10 , BAIXADA = 'N' WHERE CODIGO = 'F1' "
                                     "AND NUMERO = '000001' AND COR = '01'"});
  EXPECT_EQ(Number("SELECT QTDE_B FROM {TECEL_ITEN}"), 12.5);
  ExpectBooksBalance();
}

TEST_F(Reversal, IsOneDurableWrite) {
  RollsOf({"10"});
  StandOnRoll(1);
  mill_.Person().Answer(kReversalQuestion, "yes");
  const auto before = mill_.Db().Stats().commits;
  ASSERT_EQ(Press(), ActResult::kDone);
  EXPECT_EQ(mill_.Db().Stats().commits, before + 1);
}

// --- the checks, in their order ----------------------------------------------------------------------------------

TEST_F(Reversal, ThePeriodOfTheTypedDateStopsSilently) {
  RollsOf({"10"});
  Conciliate("2026-03-01", "2026-03-31");
  StandOnRoll(1);
  EXPECT_EQ(Press(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Rolls().size(), 1u);
}

TEST_F(Reversal, TheDateIsFromTheRollToToday) {
  ReservedOrder();
  Load();
  Type("EdtData", "05/03/2026");
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  for (const char* wrong : {"", "04/03/2026", "11/03/2026"}) {
    Type("EdtData", wrong);
    StandOnRoll(1);
    EXPECT_EQ(Press(), ActResult::kRefused) << wrong;
    EXPECT_EQ(Boxes(), BoxList{Refusal("Data da Baixa Inválida.")}) << wrong;
    EXPECT_EQ(Focused(), "EdtData") << wrong;
  }
  for (const char* right : {"05/03/2026", "10/03/2026"}) {
    Type("EdtData", right);
    EXPECT_EQ(Reverse(1, "no"), ActResult::kRefused) << right;
    EXPECT_EQ(Boxes(), BoxList{kQuestion}) << right;
  }
  EXPECT_EQ(Rolls().size(), 1u);
}

// A roll of a night shift is dated the next day, and cannot be taken back before that day.
TEST_F(Reversal, ARollOfTomorrowWaitsUntilTomorrow) {
  RollsOf({"10"});
  mill_.Exec("UPDATE {TECELB} SET DT_LAN = '2026-03-11'");
  Load();
  StandOnRoll(1);
  EXPECT_EQ(Press(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Refusal("Data da Baixa Inválida.")});
  mill_.SetClock("2026-03-11 00:00:00");
  Type("EdtData", "11/03/2026");
  EXPECT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_TRUE(Rolls().empty());
}

TEST_F(Reversal, WithoutRollsTheDateIsAskedForFirst) {
  ReservedOrder();
  Load();
  Type("EdtData", "");
  EXPECT_EQ(Press(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Refusal("Data da Baixa Inválida.")});
  Type("EdtData", "10/03/2026");
  EXPECT_EQ(Press(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Refusal("Sem baixas para estornar.")});
}

TEST_F(Reversal, WithoutAnOrderThereIsNothingToTakeBack) {
  mill_.Open("TfmMovBaiTec");
  EXPECT_EQ(Press(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Refusal("Sem baixas para estornar.")});
}

TEST_F(Reversal, AFabricWithoutStockControlIsRefused) {
  RollsOf({"10"});
  for (const char* flag : {"'N'", "NULL"}) {
    mill_.Exec(std::string("UPDATE {MATERIAL} SET ESTOQUE = ") + flag + " WHERE CODIGO = 'F1'");
    StandOnRoll(1);
    EXPECT_EQ(Press(), ActResult::kRefused);
    EXPECT_EQ(Boxes(), BoxList{Refusal("Material não está ativo para controlar estoque. Impossível continuar.")});
  }
}

TEST_F(Reversal, NoLeavesTheRoll) {
  RollsOf({"10"});
  const std::string before = Books();
  EXPECT_EQ(Reverse(1, "no"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{kQuestion});
  EXPECT_EQ(Books(), before);
}

TEST_F(Reversal, TheRightAndTheRollsOwnPeriodComeAfterTheQuestionSilently) {
  ReservedOrder();
  Load();
  Type("EdtData", "20/02/2026");
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  Type("EdtData", "10/03/2026");
  const std::string before = Books();
  Conciliate("2026-02-01", "2026-02-28");
  EXPECT_EQ(Reverse(1), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{kQuestion});
  mill_.Exec("DELETE FROM TEC_PERIODO");
  mill_.TakeRight("TfmMovBaiTec", "E");
  EXPECT_EQ(Reverse(1), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{kQuestion});
  EXPECT_EQ(Books(), before);
}

TEST_F(Reversal, APaidRollIsNotRefused) {
  RollsOf({"10"});
  mill_.Exec("UPDATE {TECELB} SET PAGO = 'S', NF_COB = '77', DT_PAGTO = '2026-03-10'");
  EXPECT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_TRUE(Rolls().empty());
}

// --- the item, the numbers, the screen ---------------------------------------------------------------------------

TEST_F(Reversal, ReopensTheItem) {
  RollsOf({"60", "40"});
  ASSERT_EQ(Value("SELECT BAIXADA FROM {TECEL_ITEN}").AsText(), "S");
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Value("SELECT BAIXADA FROM {TECEL_ITEN}").AsText(), "N");
  ExpectBooksBalance();
}

TEST_F(Reversal, ReopensAnItemThatWasClosedByHand) {
  RollsOf({"10"});
  mill_.Exec("UPDATE {TECEL_ITEN} SET BAIXADA = 'S'");
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Value("SELECT BAIXADA FROM {TECEL_ITEN}").AsText(), "N");
}

TEST_F(Reversal, NeverLeavesLessThanNothingWrittenOff) {
  RollsOf({"10"});
  for (const char* stored : {"10.0004", "9.5", "0"}) {
    mill_.Exec(std::string("UPDATE {TECEL_ITEN} SET QTDE_B = ") + stored);
    if (Rolls().empty()) {
      ASSERT_EQ(mill_.Desk().DblClick(mill_.GridOf(Screen(), "TbItens")), ActResult::kDone);
      mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 0");
      ASSERT_EQ(Roll("10"), ActResult::kDone);
      mill_.Exec(std::string("UPDATE {TECEL_ITEN} SET QTDE_B = ") + stored);
    }
    ASSERT_EQ(Reverse(1), ActResult::kDone);
    EXPECT_EQ(Number("SELECT QTDE_B FROM {TECEL_ITEN}"), 0) << stored;
  }
}

TEST_F(Reversal, KeepsTheLeastOfRollsThatRemain) {
  Order(kOrder, {{"FM", "01", 10, ""}});
  mill_.SetParameter("MAL", 70, "N");
  mill_.Exec("DELETE FROM {COMP_MATERIAL}");
  Load();
  ASSERT_EQ(Roll("0,001"), ActResult::kDone);  // a quarter of a gram
  ASSERT_EQ(Roll("4"), ActResult::kDone);
  ASSERT_EQ(Reverse(2), ActResult::kDone);
  EXPECT_EQ(Number("SELECT QTDE_B FROM {TECEL_ITEN}"), 0.00025);
  ExpectBooksBalance();
}

// The roll names the sales order that its item had. Where the order was given another one since, no item is found;
// the next save of the order counts its rolls anew.
TEST_F(Reversal, AnItemOfAnotherSalesOrderIsMendedByTheNextSave) {
  Order(kOrder, {{"F1", "01", 100, "PV0001"}});
  Reserve("Y1", "D1", "L1", 60);
  Reserve("Y2", "D1", "L1", 40);
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  ASSERT_EQ(Roll("12"), ActResult::kDone);
  ASSERT_EQ(Rolls().front().at("PEDIDO"), host::Value("PV0001"));
  mill_.Exec("UPDATE {TECEL_ITEN} SET PEDIDO = 'PV0002'");
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Told(), BoxList());
  EXPECT_EQ(Number("SELECT QTDE_B FROM {TECEL_ITEN}"), 22);
  host::Screen& order = mill_.Open("TfmCadLoteTec");
  ASSERT_EQ(mill_.Type(order, "EdtNumero", kOrder), ActResult::kDone);
  ASSERT_EQ(mill_.Type(order, "EdtFicha", "F-2"), ActResult::kDone);
  ASSERT_EQ(mill_.Click(order, "BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Number("SELECT QTDE_B FROM {TECEL_ITEN}"), 12);
  Boxes();
  mill_.Person().TakeUnexpected();
  ExpectBooksBalance();
}

TEST_F(Reversal, OfTheNewestFreesItsNumberAndOfAnotherLeavesAHole) {
  RollsOf({"10", "11", "12"});
  ASSERT_EQ(Reverse(2), ActResult::kDone);
  ASSERT_EQ(Roll("13"), ActResult::kDone);
  ASSERT_EQ(Reverse(4), ActResult::kDone);
  ASSERT_EQ(Roll("14"), ActResult::kDone);
  std::vector<std::int64_t> numbers;
  for (const Row& roll : Rolls()) numbers.push_back(roll.at("ORDEM").AsInteger());
  EXPECT_EQ(numbers, (std::vector<std::int64_t>{1, 3, 4}));
  EXPECT_EQ(Rolls().back().at("QTDE"), host::Value(14.0));
  EXPECT_EQ(Told(), BoxList());
  ExpectBooksBalance();
}

// The guard is against one weighing confirmed twice; taking the roll back does not make it another weighing.
TEST_F(Reversal, DoesNotForgetTheLastWeight) {
  RollsOf({"10"});
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  Told();
  EXPECT_EQ(Roll("10"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Notice("Baixa já Realizada.")});
  EXPECT_EQ(Roll("10"), ActResult::kDone);
}

TEST_F(Reversal, KeepsWhatIsTyped) {
  RollsOf({"10"});
  Type("EdtMaquina", "MQ2");
  Type("EdtDeposito", "D1");
  Type("EdtQtde", "7");
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Text("EdtMaquina"), "MQ2");
  EXPECT_EQ(Text("EdtDeposito"), "D1");
  EXPECT_EQ(Text("EdtQtde"), " 7,000");
}

TEST_F(Reversal, TakesTheRollsOwnDefectsWithIt) {
  RollsOf({"10", "11"});
  const auto defect = [this](int roll, const char* kind, const char* order = kOrder) {
    mill_.Insert("DEF_MOV", {{"NUMERO", order}, {"ARTIGO", "F1"}, {"ROLO", roll}, {"TIPO", kind}, {"QUANT", 1}});
  };
  defect(1, "T");
  defect(1, "T");
  defect(2, "T");
  defect(1, "D");
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  const auto left = mill_.Rows("SELECT ROLO, TIPO FROM {DEF_MOV} ORDER BY MOV");
  ASSERT_EQ(left.size(), 2u);
  EXPECT_EQ(left[0].at("ROLO").AsInteger(), 2);
  EXPECT_EQ(left[1].at("TIPO").AsText(), "D");
}

TEST_F(Reversal, OfARollWithoutYarnMovesTheFabricAlone) {
  Order(kOrder, {{"F2", "01", 100, ""}});
  mill_.SetParameter("MAL", 70, "N");
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  ASSERT_TRUE(Consumption().empty());
  ASSERT_EQ(Reverse(1), ActResult::kDone);
  EXPECT_EQ(Movements().size(), 2u);
  EXPECT_EQ(Stock("F2", "DF", "0000011"), 0);
  EXPECT_TRUE(Rolls().empty());
  EXPECT_EQ(Number("SELECT QTDE_B FROM {TECEL_ITEN}"), 0);
  ExpectBooksBalance();
}

}  // namespace
}  // namespace test
