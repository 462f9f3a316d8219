// What stops a roll before anything is written: every message, its icon, and the field that gets the cursor.
#include "write_off_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;

class RollChecks : public WriteOffMill {
 protected:
  // A refused roll writes nothing and leaves the quantity as it was typed.
  void ExpectRefused(const Box& box, std::string_view field, std::string_view quantity = " 10,000") {
    EXPECT_EQ(Confirm(), ActResult::kRefused);
    EXPECT_EQ(Boxes(), BoxList{box});
    EXPECT_EQ(Focused(), field);
    EXPECT_EQ(Text("EdtQtde"), quantity);
    ExpectNothingWritten();
  }
  void ExpectNothingWritten() {
    EXPECT_TRUE(Rolls().empty());
    EXPECT_EQ(Number("SELECT COUNT(*) FROM {MAT_MOV} WHERE TIPO_DOC = 'BT'"), 0);
    EXPECT_EQ(Log(), std::vector<std::string>());
  }
  void Ready() {
    ReservedOrder();
    Load();
    Type("EdtQtde", "10");
  }
};

TEST_F(RollChecks, ReconciledPeriodStopsSilentlyBeforeAllElse) {
  Ready();
  mill_.Insert("TEC_PERIODO",
               {{"AREA", "IV"}, {"DT_INICIO", "2026-03-01"}, {"DT_FIM", "2026-03-31"}, {"CONCILIADO", "S"}});
  mill_.App().GetContabil();
  Type("EdtMaquina", "NO");  // the machine would be refused next
  EXPECT_EQ(Confirm(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Text("EdtQtde"), " 10,000");
  ExpectNothingWritten();
}

TEST_F(RollChecks, PeriodOfAnotherAreaOrMonthDoesNotStop) {
  Ready();
  mill_.Insert("TEC_PERIODO",
               {{"AREA", "IV"}, {"DT_INICIO", "2026-02-01"}, {"DT_FIM", "2026-02-28"}, {"CONCILIADO", "S"}});
  mill_.Insert("TEC_PERIODO",
               {{"AREA", "CP"}, {"DT_INICIO", "2026-03-01"}, {"DT_FIM", "2026-03-31"}, {"CONCILIADO", "S"}});
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(Rolls().size(), 1u);
}

TEST_F(RollChecks, EmptyDateIsAskedOfThePeriodToo) {
  Ready();
  mill_.Insert("TEC_PERIODO",
               {{"AREA", "IV"}, {"DT_INICIO", "1899-12-01"}, {"DT_FIM", "1899-12-31"}, {"CONCILIADO", "S"}});
  Type("EdtData", "");
  EXPECT_EQ(Confirm(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList());
}

TEST_F(RollChecks, UnknownMachine) {
  Ready();
  Type("EdtMaquina", "NO");
  ExpectRefused(Refusal("Código da Máquina Inválido."), "EdtMaquina");
}

TEST_F(RollChecks, NoMachineIsNoError) {
  Ready();
  Type("EdtMaquina", "");
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(Rolls().front().at("MAQUINA").AsText(), "");
}

TEST_F(RollChecks, NoOrder) {
  Ready();
  Type("EdtLote", "");
  ExpectRefused(Refusal("Lote Inválido."), "EdtLote");
}

TEST_F(RollChecks, UnknownOrder) {
  Ready();
  Type("EdtLote", "000009");
  ExpectRefused(Refusal("Lote Inválido."), "EdtLote");
}

TEST_F(RollChecks, MachineBeforeOrder) {
  Ready();
  Type("EdtLote", "");
  Type("EdtMaquina", "NO");
  ExpectRefused(Refusal("Código da Máquina Inválido."), "EdtMaquina");
}

TEST_F(RollChecks, UnknownEmployee) {
  Ready();
  Type("EdtFunc", "P9");
  ExpectRefused(Refusal("Código do Funcionário Inválido."), "EdtFunc");
}

TEST_F(RollChecks, OrderWithoutItems) {
  Order(kOrder, {});
  Load();
  Type("EdtQtde", "10");
  ExpectRefused(Refusal("Código Inválido."), "EdtCodigo");
}

TEST_F(RollChecks, EmployeeBeforeItem) {
  Order(kOrder, {});
  Load();
  Type("EdtQtde", "10");
  Type("EdtFunc", "P9");
  ExpectRefused(Refusal("Código do Funcionário Inválido."), "EdtFunc");
}

TEST_F(RollChecks, NoDeposit) {
  Ready();
  Type("EdtDeposito", "");
  ExpectRefused(Refusal("Depósito Inválido."), "EdtDeposito");
}

TEST_F(RollChecks, UnknownDeposit) {
  Ready();
  Type("EdtDeposito", "DX");
  ExpectRefused(Refusal("Depósito Inválido."), "EdtDeposito");
}

TEST_F(RollChecks, NoDate) {
  Ready();
  Type("EdtData", "");
  ExpectRefused(Refusal("Data da Baixa Inválida."), "EdtData");
}

TEST_F(RollChecks, DateAfterTheProgramsClock) {
  Ready();
  Type("EdtData", "11/03/2026");
  ExpectRefused(Refusal("Data da Baixa Inválida."), "EdtData");
}

TEST_F(RollChecks, TodayPassesAtMidnight) {
  Ready();
  mill_.SetClock("2026-03-10 00:00:00");
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(Rolls().size(), 1u);
}

TEST_F(RollChecks, DepositBeforeDate) {
  Ready();
  Type("EdtDeposito", "DX");
  Type("EdtData", "");
  ExpectRefused(Refusal("Depósito Inválido."), "EdtDeposito");
}

TEST_F(RollChecks, MaterialWithoutStockControl) {
  Ready();
  mill_.Exec("UPDATE {MATERIAL} SET ESTOQUE = NULL WHERE CODIGO = 'F1'");
  EXPECT_EQ(Confirm(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Refusal("Material não está ativo para controlar estoque. Impossível continuar.")});
  ExpectNothingWritten();
}

TEST_F(RollChecks, DateBeforeStockControl) {
  Ready();
  mill_.Exec("UPDATE {MATERIAL} SET ESTOQUE = 'N' WHERE CODIGO = 'F1'");
  Type("EdtData", "");
  ExpectRefused(Refusal("Data da Baixa Inválida."), "EdtData");
}

TEST_F(RollChecks, OrderDeletedAtAnotherStationMeanwhile) {
  Ready();
  // Between the first look at the order and the second one.
  const auto heard = mill_.Db().BeforeStatement;
  bool deleting = false;
  mill_.Db().BeforeStatement = [&](std::string_view sql) {
    if (!deleting && sql.find("ESTOQUE") != std::string_view::npos) {
      deleting = true;
      mill_.Exec("DELETE FROM {TECEL}");
    }
    heard(sql);
  };
  ExpectRefused(Refusal("Ordem de Tecelagem não cadastrada."), "EdtLote");
  mill_.Db().BeforeStatement = heard;
}

// --- quantity and weights ----------------------------------------------------------------------------------------

TEST_F(RollChecks, QuantityZeroIsNoRollAndNoError) {
  ReservedOrder();
  Load();
  Type("EdtPecas", "3");
  EXPECT_EQ(Roll("0"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Text("EdtPecas"), "0");
  EXPECT_EQ(Focused(), "EdtQtde");
  ExpectNothingWritten();
}

TEST_F(RollChecks, NegativeQuantityIsNoRollEither) {
  ReservedOrder();
  Load();
  EXPECT_EQ(Roll("-5"), ActResult::kDone);
  EXPECT_EQ(Text("EdtQtde"), " 0,000");
  ExpectNothingWritten();
}

TEST_F(RollChecks, HugeQuantityIsRefusedByTheStockAndLeavesNothing) {
  ReservedOrder();
  Load();
  EXPECT_EQ(Roll("999999999"), ActResult::kRefused);
  const auto boxes = Boxes();
  EXPECT_EQ(boxes, (BoxList{Notice("Lote sem reserva."), Notice("Baixa Cancelada.")}));
  ExpectNothingWritten();
  ExpectBooksBalance();
}

TEST_F(RollChecks, SameWeighingTwiceIsRefusedOnce) {
  ReservedOrder();
  Load();
  ASSERT_EQ(Roll("20"), ActResult::kDone);
  EXPECT_EQ(Roll("20"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Notice("Baixa já Realizada.")});
  EXPECT_EQ(Rolls().size(), 1u);
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(Rolls().size(), 2u);
  ExpectBooksBalance();
}

TEST_F(RollChecks, SameNetOfAnotherGrossIsTheSameWeighing) {
  ReservedOrder();
  Load();
  ASSERT_EQ(Roll("20"), ActResult::kDone);
  Type("EdtTara", "0,3");
  // 20.3 - 0.3 is not 20 in binary arithmetic.
  EXPECT_EQ(Roll("20,3"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Notice("Baixa já Realizada.")});
}

TEST_F(RollChecks, TheGuardOutlivesTheOrder) {
  ReservedOrder();
  Order("000002", {{}});
  Load();
  ASSERT_EQ(Roll("20"), ActResult::kDone);
  Load("000002");
  EXPECT_EQ(Roll("20"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Notice("Baixa já Realizada.")});
}

TEST_F(RollChecks, NetZeroOnAFreshScreenMeetsTheGuard) {
  ReservedOrder();
  Load();
  Type("EdtTara", "0,5");
  EXPECT_EQ(Roll("0,5"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Notice("Baixa já Realizada.")});
}

TEST_F(RollChecks, NetZeroPastTheGuardIsRefusedByTheStock) {
  ReservedOrder();
  Load();
  ASSERT_EQ(Roll("20"), ActResult::kDone);
  Type("EdtTara", "0,5");
  EXPECT_EQ(Roll("0,5"), ActResult::kRefused);
  const auto boxes = Boxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes.front().title, "Selecione os consumos");
  EXPECT_TRUE(boxes.front().text.starts_with("Erro na entrada da malha\n")) << boxes.front();
  EXPECT_EQ(Rolls().size(), 1u);
  ExpectBooksBalance();
}

TEST_F(RollChecks, NegativeNetIsRefusedByTheStock) {
  ReservedOrder();
  Load();
  Type("EdtTara", "2");
  EXPECT_EQ(Roll("1"), ActResult::kRefused);
  const auto boxes = Boxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_TRUE(boxes.front().text.starts_with("Erro na entrada da malha\n")) << boxes.front();
  ASSERT_EQ(Log().size(), 1u);
  EXPECT_TRUE(Log().front().starts_with("ERRO NA ENTRADA DA MALHA DO LOTE NR.: 000001 CODIGO: F1 QUANT: -1 "));
  EXPECT_TRUE(Rolls().empty());
  ExpectBooksBalance();
}

TEST_F(RollChecks, NoPiecesIsOneForTheTareAndSkipsTheAverage) {
  ReservedOrder();
  Load();
  Type("EdtTara", "0,5");
  EXPECT_EQ(Roll("50,5"), ActResult::kDone);  // KgRolo is 22
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Rolls().front().at("QTDE"), host::Value(50.0));
  EXPECT_EQ(Rolls().front().at("QTDE_R"), host::Value(0.0));
}

TEST_F(RollChecks, TareCountsPerPiece) {
  ReservedOrder();
  Load();
  Type("EdtTara", "0,3");
  Type("EdtPecas", "2");
  EXPECT_EQ(Roll("40,6"), ActResult::kDone);
  EXPECT_EQ(Rolls().front().at("QTDE"), host::Value(40.0));
  EXPECT_EQ(Rolls().front().at("QTDE_R"), host::Value(2.0));
}

const Box kAverage = {"Baixa de Ordem de Tecelagem", "Peso médio dos rolos está fora do padrão, deseja continuar?",
                      host::Icon::kQuestion};

struct AverageCase {
  double standard;
  const char* silent;
  const char* asks;
};

class RollAverage : public WriteOffMill, public ::testing::WithParamInterface<AverageCase> {};

TEST_P(RollAverage, AsksAboveTheCeilingOnly) {
  mill_.Exec("UPDATE {COMP_MATERIAL} SET KG_ROLO = " + host::Value(GetParam().standard).AsText());
  ReservedOrder();
  Load();
  Type("EdtPecas", "1");
  EXPECT_EQ(Roll(GetParam().silent), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Rolls().size(), 1u);

  Type("EdtPecas", "1");
  mill_.Person().Answer("Peso médio", "no");
  EXPECT_EQ(Roll(GetParam().asks), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{kAverage});
  EXPECT_EQ(Rolls().size(), 1u);

  mill_.Person().Answer("Peso médio", "yes");
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList{kAverage});
  EXPECT_EQ(Rolls().size(), 2u);
  ExpectBooksBalance();
}

// Half the standard in whole kilograms, halves away from zero: 10.5 is 11, 10.3 is 10.
INSTANTIATE_TEST_SUITE_P(Standards, RollAverage,
                         ::testing::Values(AverageCase{21, "32", "32,001"}, AverageCase{20.6, "30,6", "30,601"},
                                           AverageCase{22, "33", "33,001"}));

TEST_F(RollChecks, AverageIsPerPiece) {
  ReservedOrder();
  Load();
  Type("EdtPecas", "2");
  EXPECT_EQ(Roll("50"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
}

TEST_F(RollChecks, LightRollsAreNeverAskedAbout) {
  ReservedOrder();
  Load();
  Type("EdtPecas", "1");
  EXPECT_EQ(Roll("0,5"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
}

TEST_F(RollChecks, WithoutStandardRollNothingIsAsked) {
  mill_.Exec("UPDATE {COMP_MATERIAL} SET KG_ROLO = 0");
  ReservedOrder();
  Load();
  Type("EdtPecas", "1");
  EXPECT_EQ(Roll("55"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
}

// --- counted and measured items ----------------------------------------------------------------------------------

TEST_F(RollChecks, MeasuredItemWithoutUnitWeight) {
  mill_.Exec("UPDATE {MATERIAL} SET PESO = 0 WHERE CODIGO = 'FM'");
  Order(kOrder, {{"FM", "01", 100, ""}});
  Load();
  Type("EdtQtde", "10");
  EXPECT_EQ(Confirm(), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Refusal("Peso Médio do material zerado.")});
  ExpectNothingWritten();
}

TEST_F(RollChecks, MetresAreWrittenOffByWeightAndStockedAsMetres) {
  Order(kOrder, {{"FM", "01", 100, ""}});
  Reserve("Y1", "D1", "L1", 12.5);
  Reserve("Y2", "D1", "L1", 12.5);
  Load();
  ASSERT_EQ(Roll("40"), ActResult::kDone);
  EXPECT_EQ(Boxes(), BoxList());
  EXPECT_EQ(Rolls().front().at("QTDE"), host::Value(10.0));
  EXPECT_EQ(Number("SELECT QTDE_B FROM {TECEL_ITEN}"), 10);
  EXPECT_EQ(Stock("FM", "DF", "0000011"), 40);
  // Half the reservations of 100 m x 0.25 kg: 12.5 / 25 for each yarn.
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 95);
  ExpectBooksBalance();
}

TEST_F(RollChecks, TheGuardRemembersTheConvertedWeight) {
  Order(kOrder, {{"FM", "01", 400, ""}});
  Reserve("Y1", "D1", "L1", 50);
  Reserve("Y2", "D1", "L1", 50);
  Load();
  ASSERT_EQ(Roll("40"), ActResult::kDone);
  EXPECT_EQ(Roll("40"), ActResult::kDone);  // 40 m, remembered as 10 kg
  EXPECT_EQ(Roll("10"), ActResult::kRefused);
  EXPECT_EQ(Boxes(), BoxList{Notice("Baixa já Realizada.")});
}

TEST_F(RollChecks, PiecesAndSmallLetterUnits) {
  mill_.Exec("UPDATE {MATERIAL} SET UNIDADE = 'pc' WHERE CODIGO = 'FP'");
  Order(kOrder, {{"FP", "01", 100, ""}});
  Reserve("Y1", "D1", "L1", 30);
  Load();
  ASSERT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Rolls().front().at("QTDE"), host::Value(3.0));
  EXPECT_EQ(Stock("FP", "DF", "0000011"), 10);
  // The reservation's share goes by what is open in the item as ordered: 30 of 100, for 3 kg.
  EXPECT_EQ(Stock("Y1", "D1", "L1"), 99.1);
  ExpectBooksBalance();
}

}  // namespace
}  // namespace test
