// The order as it is stored.
#include <algorithm>

#include "order_mill.h"

namespace test {
namespace {

class Saving : public OrderTest {
 protected:
  // All inputs filled, one item of each kind of value.
  std::string FullOrder() {
    const std::string number = NewOrder();
    Type("EdtFicha", "F-77");
    Type("EdtPrazo", "30");
    Type("EdtMaquina", "MQ1");
    Type("EdtPonto", "2,755");
    Type("EdtFluxo", "FL1");
    Type("EdtRPM", "25");
    Type("EdtDeposito", "DF");
    Type("EdtObs", "Entregar cedo, à tarde não.");
    EXPECT_EQ(mill_.Append(Screen(), "TbItens",
                           {{"Codigo", "F1"},
                            {"Pedido", "PV0001"},
                            {"Cor", "02"},
                            {"Qtde", "150,5"},
                            {"Ciclos", "3"},
                            {"Baixada", "N"},
                            {"Obs", "d'água; sem pressa"}}),
              ActResult::kDone);
    return number;
  }
};

TEST_F(Saving, AllColumnsOfHeaderAndItem) {
  const std::string number = FullOrder();
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines());
  EXPECT_EQ(Stored("SELECT T.*, CAST(OBSERVACAO AS VARCHAR(4000)) AS OBS4 FROM {TECEL} T",
                   {"NUMERO", "MALHARIA", "PERIODO", "OBS4", "DT_INICIO", "DT_EMISSAO", "FICHA", "MAQUINA", "FLUXO",
                    "RPM", "TPONTO", "SITUACAO", "DEPOSITO", "PEDIDO"}),
            Lines{number + " | M00001 | 30 | Entregar cedo, à tarde não. | 10/03/2026 |  | F-77 | MQ1 | FL1 | 25 | "
                           "2.755 | A | DF | "});
  EXPECT_EQ(Items(number), Lines{"F1 | 02 | PV0001 | 6.5 | 150.5 | N | 0 | 3 | d'água; sem pressa"});
  EXPECT_EQ(Log(), Lines{"ORDEM DE TECELAGEM | INCLUSAO DA ORDEM NR. 000001 | 0 | 000001"});
}

TEST_F(Saving, TheStatementsInTheirOrder) {
  FullOrder();
  mill_.TakeStatements();
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  Lines written;
  for (const auto& sql : mill_.TakeStatements()) {
    if (sql.find("TEC_LOG") != std::string::npos) {
      written.push_back("(log)");
    } else if (sql.starts_with("DELETE") || sql.starts_with("INSERT") || sql.starts_with("UPDATE") ||
               sql.starts_with("SELECT SUM(")) {
      written.push_back(sql);
    }
  }
  EXPECT_EQ(
      written,
      (Lines{"DELETE FROM MAT_RESERVA WHERE NUMERO = '000001' AND (QTDE_B <= 0 OR QTDE_B IS NULL) AND (TIPO = 'T' OR "
             "TIPO <> 'F' OR TIPO IS NULL)",
             "(log)", "DELETE FROM TECEL WHERE NUMERO = '000001'", "DELETE FROM TECEL_ITEN WHERE NUMERO = '000001'",
             "INSERT INTO TECEL "
             "(NUMERO,MALHARIA,PERIODO,OBSERVACAO,DT_INICIO,FICHA,MAQUINA,FLUXO,RPM,TPONTO,SITUACAO,DEPOSITO) VALUES "
             "('000001', 'M00001', '30', 'Entregar cedo, à tarde não.', '03/10/2026', 'F-77', 'MQ1', 'FL1', 25, 2.755, "
             "'A', 'DF')",
             "SELECT SUM(QTDE) QTDE_B FROM TECELB WHERE NUMERO = '000001' AND CODIGO = 'F1' AND COR = '02'",
             "INSERT INTO TECEL_ITEN (NUMERO,CODIGO,COR,PEDIDO,CUSTO,QTDE,BAIXADA,QTDE_B,CICLOS,OBS) VALUES "
             "('000001', 'F1', '02', 'PV0001', 6.5, 150.5, 'N', 0, 3, 'd''água; sem pressa')"}));
}

TEST_F(Saving, OneForcedWrite) {
  FullOrder();
  const auto before = mill_.Db().Stats().commits;
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.Db().Stats().commits - before, 1u);
}

TEST_F(Saving, TheCheckOfTheCompositionIsAsked) {
  FullOrder();
  mill_.TakeStatements();
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.TakeStatements("COMP_MATERIAL COMP"),
            Lines{"SELECT COMP.CODIGO, COMP.COR FROM COMP_MATERIAL COMP WHERE COMP.MATERIAL = 'F1' AND COMP.COR = "
                  "'02' AND NOT (COMP.COR_I LIKE '%*%')"});
}

TEST_F(Saving, TheScreenIsEmptiedAndTheFocusGoesToTheNumber) {
  const std::string number = FullOrder();
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Text("EdtNumero"), number);
  EXPECT_EQ(Text("EdtMalharia"), "");
  EXPECT_EQ(Text("EdtData"), "");
  EXPECT_EQ(Text("EdtPonto"), "2,755");
  EXPECT_EQ(Screen().TbItens.RecordCount(), 0u);
  EXPECT_EQ(FocusedName(), "EdtNumero");
}

TEST_F(Saving, ASecondSaveLogsAnAlterationAndReplacesTheOrder) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F2", "01", "40"}});
  mill_.Exec("UPDATE {TECEL} SET DT_EMISSAO = '2026-03-01', SITUACAO = 'X' WHERE NUMERO = '" + number + "'");
  Load(number);
  Stand("TbItens", {{"Codigo", "F2"}});
  EXPECT_EQ(mill_.Desk().DeleteRow(Screen().DBGrid6), ActResult::kDone);
  EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Qtde", "120"}}), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items(number), Lines{"F1 | 01 |  | 5 | 120 |  | 0 | 0 | "});
  // What is not written is lost, and the state is open again.
  EXPECT_EQ(Stored("SELECT * FROM {TECEL}", {"DT_EMISSAO", "SITUACAO"}), Lines{" | A"});
  EXPECT_EQ(Log().back(), "ORDEM DE TECELAGEM | ALTERACAO DA ORDEM NR. 000001 | 1 | 000001");
}

TEST_F(Saving, WithoutTheRightItIsSilent) {
  FullOrder();
  mill_.TakeRight("TfmCadLoteTec", "A");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), Lines());
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {TECEL}").AsInteger(), 0);
  EXPECT_EQ(Screen().TbItens.RecordCount(), 1u);
}

TEST_F(Saving, AColourOutsideTheCompositionStopsTheSave) {
  NewOrder();
  AddItem("F1", "01", "10");
  AddItem("F1", "02", "10");
  mill_.Exec("DELETE FROM {COMP_MATERIAL} WHERE MATERIAL = 'F1' AND COR = '02'");
  const Lines before = Everything();
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  const auto shown = mill_.Person().TakeMessages();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].text, "Cor inválida na composição do material F1 cor 02.\nImpossível continuar a gravação.");
  EXPECT_EQ(shown[0].title, "Ordens de Tecelagem");
  EXPECT_EQ(shown[0].icon, host::Icon::kInformation);
  EXPECT_EQ(Everything(), before);
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Cor"}), (Lines{"F1 | 01", "F1 | 02"}));
  EXPECT_EQ(Screen().TbItens["Cor"].AsText(), "02");
  // The rows still remember what they were entered with.
  Stand("TbItens", {{"Cor", "01"}});
  EXPECT_EQ(Screen().TbItens["CodAnt"].AsText(), "F1");
}

TEST_F(Saving, PlaceholderColoursAreNoComposition) {
  NewOrder();
  AddItem("F3", "01", "10");
  mill_.Exec("DELETE FROM {COMP_MATERIAL} WHERE MATERIAL = 'F3' AND CODIGO = 'Y1'");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(),
            Lines{"Cor inválida na composição do material F3 cor 01.\nImpossível continuar a gravação."});
  mill_.Exec("UPDATE {COMP_MATERIAL} SET COR_I = NULL WHERE MATERIAL = 'F3'");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages().size(), 1u);
}

TEST_F(Saving, AFabricWithoutCompositionPassesInAnyColour) {
  const std::string number = SavedOrder({{"F2", "01", "10"}, {"F2", "02", "20"}});
  EXPECT_EQ(Items(number).size(), 2u);
}

TEST_F(Saving, AChangedMillNeedsAPriceForEveryItem) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  EXPECT_EQ(Type("EdtMalharia", "M00004"), ActResult::kDone);
  const Lines before = Everything();
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  const auto shown = mill_.Person().TakeMessages();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].text, "Custo da malha não cadastrado para a malharia selecionada. Impossível continuar.");
  EXPECT_EQ(shown[0].icon, host::Icon::kInformation);
  EXPECT_EQ(Everything(), before);
  EXPECT_EQ(Text("EdtMalharia"), "M00004");
  EXPECT_EQ(Screen().TbItens.RecordCount(), 1u);
}

TEST_F(Saving, AMillThatStaysNeedsNoPrice) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  mill_.Exec("DELETE FROM {CADCORTI} WHERE CODIGO = 'F1'");
  Load(number);
  mill_.TakeStatements();
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines());
  EXPECT_EQ(mill_.TakeStatements("CADCORTI"), Lines());
  EXPECT_EQ(Items(number), Lines{"F1 | 01 |  | 5 | 100 |  | 0 | 0 | "});
}

TEST_F(Saving, AnotherMillKeepsTheItemsCost) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  mill_.Insert("CADCORTI", {{"TIPO", "C"}, {"CODIGO", "F1"}, {"CODCLI", "M00004"}, {"COR", "0"}, {"CUSTO", 9}});
  Load(number);
  Type("EdtMalharia", "M00004");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items(number), Lines{"F1 | 01 |  | 5 | 100 |  | 0 | 0 | "});
}

TEST_F(Saving, TheCompositionIsCheckedBeforeTheCostItemByItem) {
  const std::string number = SavedOrder({{"F2", "01", "10"}, {"F1", "01", "10"}});
  Load(number);
  Type("EdtMalharia", "M00004");
  mill_.Exec("DELETE FROM {COMP_MATERIAL} WHERE MATERIAL = 'F1' AND COR = '01'");
  // The first item lacks a price, the second a composition: the first one speaks.
  Stand("TbItens", {{"Codigo", Screen().TbItens["Codigo"].AsText()}});
  const bool f2_first = Shown("TbItens", {"Codigo"}).front() == "F2";
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages().front().starts_with("Custo da malha"), f2_first);
  mill_.Exec("INSERT INTO {CADCORTI} (TIPO, CODIGO, CODCLI, COR, CUSTO) VALUES ('C', 'F2', 'M00004', '0', 1)");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  EXPECT_TRUE(mill_.Messages().front().starts_with("Cor inválida"));
}

TEST_F(Saving, ANewOrderWithoutMillLacksThePrice) {
  EXPECT_EQ(Click("BtnIncluir"), ActResult::kDone);
  EXPECT_EQ(mill_.Append(Screen(), "TbItens", {{"Custo", "3"}, {"Codigo", "F1"}, {"Cor", "01"}, {"Qtde", "1"}}),
            ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(),
            Lines{"Custo da malha não cadastrado para a malharia selecionada. Impossível continuar."});
}

TEST_F(Saving, AStoredOrderThatNeverHadAMillKeepsItsMill) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  for (const char* none : {"NULL", "''"}) {
    mill_.Exec(std::string("UPDATE {TECEL} SET MALHARIA = ") + none);
    Load(number);
    EXPECT_EQ(Click("BtnGravar"), ActResult::kDone) << none;
    EXPECT_EQ(mill_.Messages(), Lines()) << none;
  }
}

TEST_F(Saving, WrittenOffQuantityComesFromTheRollsWhateverTheScreenShows) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F1", "02", "50"}});
  Load(number);
  Roll(number, "F1", "01", 1, 12.5);
  Roll(number, "F1", "01", 2, 10.25);
  EXPECT_EQ(Shown("TbItens", {"Cor", "Qtde_B"}), (Lines{"01 | 0", "02 | 0"}));
  Stand("TbItens", {{"Cor", "02"}});
  EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Baixada", "S"}}), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  // The closing mark is the screen's.
  EXPECT_EQ(Stored("SELECT * FROM {TECEL_ITEN} ORDER BY COR", {"COR", "QTDE_B", "BAIXADA"}),
            (Lines{"01 | 22.75 | ", "02 | 0 | S"}));
}

TEST_F(Saving, ARowWithoutCodeIsDroppedOnSave) {
  const std::string number = SavedOrder({});
  EXPECT_EQ(Items(number), Lines());
  Load(number);
  // A header without items brings one empty row, which takes part in the checks but is not stored.
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Cor"}), Lines{" | "});
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items(number), Lines());
  Load(number);
  Type("EdtMalharia", "M00004");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(),
            Lines{"Custo da malha não cadastrado para a malharia selecionada. Impossível continuar."});
}

TEST_F(Saving, ARowStillBeingTypedBelongsToTheOrder) {
  const std::string number = NewOrder();
  AddItem("F1", "01", "10");
  mill_.Desk().SelectCell(Screen().DBGrid6, "Qtde");
  EXPECT_EQ(mill_.Desk().TypeCell(Screen().DBGrid6, "33"), ActResult::kDone);
  EXPECT_TRUE(Screen().TbItens.InEdit());
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items(number), Lines{"F1 | 01 |  | 5 | 33 |  | 0 | 0 | "});
}

TEST_F(Saving, AnOrderInStateBIsLockedAndItsReservationsAreStillWritten) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  mill_.Exec("UPDATE {TECEL} SET SITUACAO = 'B'");
  mill_.Exec("INSERT INTO {MAT_RESERVA} (NUMERO, CODIGO, COR, DEPOSITO, LOTE, QTDE, TIPO) VALUES ('" + number +
             "', 'Y1', 'CR', 'D1', 'L1', 7, 'T')");
  Load(number);
  EXPECT_FALSE(Screen().DBGrid6.Enabled());
  Stand("TbEstoque", {{"Lote", "L1"}, {"Deposito", "D1"}});
  EXPECT_EQ(mill_.Set(Screen(), "TbEstoque", {{"Sel", "N"}}), ActResult::kDone);
  Type("EdtFicha", "mudou");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  const auto shown = mill_.Person().TakeMessages();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].text, "Ordem de Tecelagem já impressa. Impossível Gravar.");
  EXPECT_EQ(shown[0].icon, host::Icon::kInformation);
  EXPECT_EQ(Stored("SELECT * FROM {TECEL}", {"SITUACAO", "FICHA"}), Lines{"B | "});
  EXPECT_EQ(Reservations(number), Lines());
  EXPECT_EQ(Text("EdtMalharia"), "");
  EXPECT_EQ(FocusedName(), "EdtNumero");
  EXPECT_EQ(Log().size(), 1u);
}

TEST_F(Saving, TheLockFollowsTheOrderOnTheScreen) {
  const std::string locked = SavedOrder({{"F1", "01", "100"}});
  const std::string open = SavedOrder({{"F1", "01", "100"}});
  mill_.Exec("UPDATE {TECEL} SET SITUACAO = 'B' WHERE NUMERO = '" + locked + "'");
  Load(locked);
  EXPECT_FALSE(Screen().DBGrid6.Enabled());
  Load(open);
  EXPECT_TRUE(Screen().DBGrid6.Enabled());
  Load(locked);
  Click("BtnIncluir");
  EXPECT_TRUE(Screen().DBGrid6.Enabled());
  Load(locked);
  Load("999");
  EXPECT_TRUE(Screen().DBGrid6.Enabled());
  Load(locked);
  EXPECT_EQ(Type("EdtNumero", ""), ActResult::kDone);
  EXPECT_TRUE(Screen().DBGrid6.Enabled());
}

TEST_F(Saving, RemarksOfFourThousandCharactersComeBackWhole) {
  const std::string number = NewOrder();
  std::string remarks;
  for (int i = 0; i < 1000; ++i) remarks += i % 100 == 99 ? "ção\n" : "ção ";
  remarks.back() = 'x';
  EXPECT_EQ(Type("EdtObs", remarks), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  Load(number);
  EXPECT_EQ(Text("EdtObs"), remarks);
}

}  // namespace
}  // namespace test
