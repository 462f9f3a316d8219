// A stored order on the screen, and its end: deleted or copied.
#include <algorithm>

#include "order_mill.h"

namespace test {
namespace {

class Loading : public OrderTest {};

TEST_F(Loading, TheQueryOfTheOrder) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  EXPECT_EQ(
      mill_.TakeStatements("FROM TECEL TECEL"),
      Lines{"SELECT TECEL.DEPOSITO, TECEL.DT_EMISSAO, TECEL.DT_INICIO, TECEL.FICHA, TECEL.FLUXO, TECEL.MALHARIA, "
            "TECEL.MAQUINA, TECEL.NUMERO, CAST(TECEL.OBSERVACAO AS VARCHAR(4000)) AS OBSERVACAO, TECEL.PERIODO, "
            "TECEL.RPM, TECEL.SITUACAO, TECEL.TPONTO, CLIENTE.NOME, TECEL_ITEN.CODIGO, TECEL_ITEN.PEDIDO, "
            "TECEL_ITEN.QTDE, TECEL_ITEN.QTDE_B, TECEL_ITEN.COR, TECEL_ITEN.BAIXADA, TECEL_ITEN.CUSTO, "
            "TECEL_ITEN.CICLOS, TECEL_ITEN.OBS, MATERIAL.DESCRICAO, MATERIAL.DESCRICAO2, MATERIAL.UNIDADE, "
            "MATERIAL.PESO, MATERIAL.NE, MATERIAL.CONCENTRACAO, MATERIAL.GRAMATURA AS GRAMATURA_MAT, MATERIAL.LARGURA "
            "AS LARGURA_MAT, MATERIAL.COMPOSICAO, MATERIAL.OBSERVACAO AS OBS_MAT, COR.DESCRICAO AS DESCCOR, "
            "DEPOSITO.DESCRICAO AS DESC_DEP_ENT, COMP.LARGURA, COMP.GRAMATURA, COMP.KG_ROLO, COMP.ALIMENTADORES, "
            "COMP.DIAMETRO, COMP.FINURA FROM TECEL TECEL LEFT JOIN TECEL_ITEN TECEL_ITEN ON (TECEL.NUMERO = "
            "TECEL_ITEN.NUMERO) LEFT JOIN MATERIAL MATERIAL ON (TECEL_ITEN.CODIGO = MATERIAL.CODIGO) LEFT JOIN "
            "ENTIDADE CLIENTE ON (TECEL.MALHARIA = CLIENTE.CODCLI) LEFT JOIN CADCOR COR ON (TECEL_ITEN.COR = COR.COR) "
            "LEFT JOIN DEPOSITO DEPOSITO ON (TECEL.DEPOSITO = DEPOSITO.CODIGO) LEFT JOIN (SELECT DISTINCT "
            "COMP_MATERIAL.MATERIAL, COMP_MATERIAL.COR, COMP_MATERIAL.LARGURA, COMP_MATERIAL.GRAMATURA, "
            "COMP_MATERIAL.KG_ROLO, COMP_MATERIAL.ALIMENTADORES, COMP_MATERIAL.DIAMETRO, COMP_MATERIAL.FINURA FROM "
            "COMP_MATERIAL COMP_MATERIAL ) AS COMP ON (COMP.MATERIAL = TECEL_ITEN.CODIGO AND COMP.COR = "
            "TECEL_ITEN.COR) WHERE TECEL.NUMERO = '000001'"});
}

TEST_F(Loading, HeaderAndDescriptions) {
  const std::string number = NewOrder();
  Type("EdtFicha", "F-77");
  Type("EdtPrazo", "30");
  Type("EdtMaquina", "MQ1");
  Type("EdtPonto", "2,755");
  Type("EdtFluxo", "FL1");
  Type("EdtRPM", "25");
  Type("EdtDeposito", "DF");
  Type("EdtData", "05/03/2026");
  Type("EdtObs", "linha 1\nlinha 2");
  Click("BtnGravar");
  Click("BtnIncluir");
  Load(number);
  const Cells expected = {{"EdtMalharia", "M00001"},
                          {"LblMalharia", "Malharia Aurora"},
                          {"EdtData", "05/03/2026"},
                          {"EdtFicha", "F-77"},
                          {"EdtPrazo", "30"},
                          {"LblPrazo", "30 dias"},
                          {"EdtMaquina", "MQ1"},
                          {"LblMaquina", "Circular 30\" 28"},
                          {"EdtPonto", "2,755"},
                          {"EdtFluxo", "FL1"},
                          {"LblFluxo", "Malha crua"},
                          {"EdtRPM", "25"},
                          {"EdtDeposito", "DF"},
                          {"LblDeposito", "Depósito de malha"},
                          {"EdtObs", "linha 1\nlinha 2"}};
  for (const auto& [name, text] : expected) EXPECT_EQ(Text(name), text) << name;
}

TEST_F(Loading, AnItemWithAllThatIsLookedUp) {
  mill_.Exec(
      "UPDATE {MATERIAL} SET DESCRICAO2 = 'Malha leve', NE = 30, CONCENTRACAO = 1.5, COMPOSICAO = '60 algodão', "
      "OBSERVACAO = 'não passar' WHERE CODIGO = 'F1'");
  const std::string number = SavedOrder({{"F1", "02", "100"}});
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 3, PEDIDO = 'PV0001', BAIXADA = 'N', CICLOS = 4, OBS = 'x'");
  Load(number);
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Descricao", "Unidade", "Peso", "Pedido", "Cor", "DescCor", "Qtde", "Qtde_B",
                              "Baixada", "Custo"}),
            Lines{"F1 | Meia malha 30/1 PV | KG | 1 | PV0001 | 02 | Azul-marinho | 100 | 3 | N | 6.5"});
  EXPECT_EQ(Shown("TbItens",
                  {"Largura", "Gramatura", "KgRolo", "Comp1", "NE", "Concentracao", "Gramatura_Mat", "Largura_Mat",
                   "Comp2", "Observacao", "Alimentadores", "Diametro", "Finura", "Ciclos", "Obs", "CodAnt", "CorAnt"}),
            Lines{"1.75 | 165 | 22 | Malha leve | 30 | 1.5 | 160 | 1.8 | 60 algodão | não passar | 96 | 30 | 28 | 4 | "
                  "x | F1 | 02"});
}

TEST_F(Loading, RollsOfAnItemAreTheNearestWholeNumber) {
  const std::string number =
      SavedOrder({{"F1", "01", "100"}, {"F1", "02", "99"}, {"F2", "01", "100"}, {"F3", "01", "-40"}});
  Load(number);
  Lines rolls = Shown("TbItens", {"Codigo", "Cor", "Qtde_Rolo"});
  std::sort(rolls.begin(), rolls.end());
  // 100 / 22 = 4.55; 99 / 22 = 4.5 away from zero; no roll weight; nothing to weave.
  EXPECT_EQ(rolls, (Lines{"F1 | 01 | 5", "F1 | 02 | 5", "F2 | 01 | 0", "F3 | 01 | 0"}));
}

TEST_F(Loading, LeavingTheNumberAgainForgetsWhatWasTyped) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  mill_.Set(Screen(), "TbItens", {{"Qtde", "1"}});
  Type("EdtFicha", "nova");
  Load(number);
  EXPECT_EQ(Shown("TbItens", {"Qtde"}), Lines{"100"});
  EXPECT_EQ(Text("EdtFicha"), "");
}

TEST_F(Loading, CompositionRowsWithOtherMeasuresDoubleTheItem) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  mill_.Exec("UPDATE {COMP_MATERIAL} SET LARGURA = 2 WHERE MATERIAL = 'F1' AND COR = '01' AND CODIGO = 'Y2'");
  Load(number);
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Cor"}), (Lines{"F1 | 01", "F1 | 01"}));
  // Either of them may be changed; it is no new row.
  EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Qtde", "90"}}), ActResult::kDone);
  const Lines before = Everything();
  // Two rows of one key: the table refuses the second, and nothing is changed.
  EXPECT_EQ(Click("BtnGravar"), ActResult::kFailed);
  EXPECT_EQ(Errors().size(), 1u);
  EXPECT_EQ(Everything(), before);
  mill_.Messages();
  EXPECT_EQ(mill_.Desk().DeleteRow(Screen().DBGrid6), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items(number).size(), 1u);
}

// --- delete --------------------------------------------------------------------------------------------------------

class Deleting : public OrderTest {
 protected:
  void Answer(const char* reply) { mill_.Person().Answer("Deseja excluir totalmente a Ordem de Tecelagem?", reply); }
};

TEST_F(Deleting, TakesEverythingButTheReservationsOfOtherModules) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  const auto reserve = [&](const char* order, const char* lot, const host::Value& kind, double consumed) {
    mill_.Insert("MAT_RESERVA", {{"NUMERO", order},
                                 {"CODIGO", "Y1"},
                                 {"COR", "CR"},
                                 {"DEPOSITO", "D1"},
                                 {"LOTE", lot},
                                 {"QTDE", 5},
                                 {"QTDE_B", consumed},
                                 {"TIPO", kind}});
  };
  reserve("000001", "L1", "T", 0);
  reserve("000001", "L2", "T", 3);
  reserve("000001", "L3", host::Value(), 0);
  reserve("000001", "L4", "F", 0);
  reserve("000099", "L1", "T", 0);
  mill_.Insert("PROG_OF", {{"NUM_DOC", number}, {"TIPO", "M"}});
  mill_.Insert("PROG_OF", {{"NUM_DOC", number}, {"TIPO", "X"}});
  Load(number);
  mill_.TakeStatements();
  Answer("yes");
  EXPECT_EQ(Click("BtnExcluir"), ActResult::kDone);
  Lines sent;
  for (const auto& sql : mill_.TakeStatements()) {
    if (sql.starts_with("DELETE")) sent.push_back(sql);
  }
  EXPECT_EQ(sent, (Lines{"DELETE FROM TECEL WHERE NUMERO = '000001'", "DELETE FROM TECEL_ITEN WHERE NUMERO = '000001'",
                         "DELETE FROM MAT_RESERVA WHERE NUMERO = '000001' AND (TIPO = 'T' OR TIPO <> 'F' OR TIPO IS "
                         "NULL)",
                         "DELETE FROM PROG_OF WHERE NUM_DOC = '000001' AND TIPO = 'M'"}));
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {TECEL}").AsInteger(), 0);
  EXPECT_EQ(Items(number), Lines());
  EXPECT_EQ(Stored("SELECT * FROM {MAT_RESERVA} ORDER BY NUMERO", {"NUMERO", "LOTE"}),
            (Lines{"000001 | L4", "000099 | L1"}));
  EXPECT_EQ(Stored("SELECT * FROM {PROG_OF}", {"TIPO"}), Lines{"X"});
  EXPECT_EQ(Log().back(), "ORDEM DE TECELAGEM | EXCLUSAO DA ORDEM NR. 000001 | 2 | 000001");
  EXPECT_EQ(Text("EdtMalharia"), "");
  EXPECT_EQ(Text("EdtNumero"), number);
}

TEST_F(Deleting, NoIsTheDefaultAndKeepsEverything) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  const Lines before = Everything();
  EXPECT_EQ(Click("BtnExcluir"), ActResult::kDone);  // nobody answers
  Answer("no");
  EXPECT_EQ(Click("BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(Everything(), before);
  EXPECT_EQ(Text("EdtMalharia"), "M00001");
  const auto shown = mill_.Person().TakeMessages();
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_EQ(shown[0].icon, host::Icon::kQuestion);
}

TEST_F(Deleting, AnItemPartlyWrittenOffForbidsIt) {
  const std::string number = SavedOrder({{"F2", "01", "100"}, {"F1", "01", "100"}});
  Roll(number, "F1", "01", 1, 10);
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 10 WHERE CODIGO = 'F1'");
  Load(number);
  const Lines before = Everything();
  EXPECT_EQ(Click("BtnExcluir"), ActResult::kRefused);
  const auto shown = mill_.Person().TakeMessages();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].text, "Lote com baixas. Impossível excluir.");
  EXPECT_EQ(shown[0].icon, host::Icon::kInformation);
  EXPECT_EQ(Everything(), before);
}

TEST_F(Deleting, TheStateDoesNotForbidIt) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  mill_.Exec("UPDATE {TECEL} SET SITUACAO = 'B'");
  Load(number);
  Answer("yes");
  EXPECT_EQ(Click("BtnExcluir"), ActResult::kDone);
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {TECEL}").AsInteger(), 0);
}

TEST_F(Deleting, WithoutTheRightItIsSilent) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  mill_.TakeRight("TfmCadLoteTec", "E");
  EXPECT_EQ(Click("BtnExcluir"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), Lines());
  EXPECT_EQ(Items(number).size(), 1u);
}

// --- duplicate -----------------------------------------------------------------------------------------------------

class Duplicating : public OrderTest {
 protected:
  void Answer(const char* reply) { mill_.Person().Answer("Deseja duplicar esta ordem?", reply); }
};

TEST_F(Duplicating, CopiesTheScreenUnderANewNumber) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F2", "02", "40"}});
  Roll(number, "F1", "01", 1, 10);
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 10, BAIXADA = 'S', OBS = 'veja' WHERE CODIGO = 'F1'");
  mill_.Exec("UPDATE {TECEL} SET SITUACAO = 'B'");
  mill_.Insert("MAT_RESERVA", {{"NUMERO", number},
                               {"CODIGO", "Y1"},
                               {"COR", "CR"},
                               {"DEPOSITO", "D1"},
                               {"LOTE", "L1"},
                               {"QTDE", 5},
                               {"TIPO", "T"}});
  Load(number);
  Type("EdtFicha", "não gravada");
  mill_.SetClock("2026-04-01 08:00:00");
  Answer("yes");
  EXPECT_EQ(Click("BtnDuplicar"), ActResult::kDone);
  EXPECT_EQ(Text("EdtNumero"), "000002");
  EXPECT_EQ(Text("EdtMalharia"), "");
  EXPECT_EQ(FocusedName(), "EdtNumero");
  EXPECT_EQ(Stored("SELECT * FROM {TECEL} ORDER BY NUMERO", {"NUMERO", "MALHARIA", "FICHA", "SITUACAO", "DT_INICIO"}),
            (Lines{"000001 | M00001 |  | B | 10/03/2026", "000002 | M00001 | não gravada | A | 01/04/2026"}));
  EXPECT_EQ(Items("000002"), (Lines{"F1 | 01 |  | 5 | 100 |  | 0 | 0 | veja", "F2 | 02 |  | 4 | 40 |  | 0 | 0 | "}));
  EXPECT_EQ(Reservations("000002"), Lines());
  EXPECT_EQ(Log().back(), "ORDEM DE TECELAGEM | ORDEM NR. 000001 DUPLICACAO PARA 000002 | 0 | 000002");
  // The next act leaves the number and brings the copy.
  EXPECT_EQ(mill_.Desk().Leave(), ActResult::kDone);
  EXPECT_EQ(Text("EdtFicha"), "não gravada");
  EXPECT_TRUE(Screen().DBGrid6.Enabled());
}

TEST_F(Duplicating, AsksForNoPriceAndNoComposition) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  mill_.Exec("DELETE FROM {CADCORTI}");
  mill_.Exec("DELETE FROM {COMP_MATERIAL} WHERE COR = '01'");
  Answer("yes");
  EXPECT_EQ(Click("BtnDuplicar"), ActResult::kDone);
  EXPECT_EQ(Items("000002").size(), 1u);
}

TEST_F(Duplicating, OnlyYesGoesOn) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  const Lines before = Everything();
  EXPECT_EQ(Click("BtnDuplicar"), ActResult::kDone);
  EXPECT_EQ(Everything(), before);
  EXPECT_EQ(Text("EdtNumero"), number);
  // No number was spent.
  Click("BtnIncluir");
  EXPECT_EQ(Text("EdtNumero"), "000002");
}

TEST_F(Duplicating, WithoutTheRightItIsSilent) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  mill_.TakeRight("TfmCadLoteTec", "A");
  EXPECT_EQ(Click("BtnDuplicar"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), Lines());
}

}  // namespace
}  // namespace test
