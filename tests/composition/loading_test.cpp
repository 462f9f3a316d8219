// A stored composition comes into the grid.
#include <algorithm>

#include "composition_mill.h"

namespace test {
namespace {

using host::ActResult;
using Lines = std::vector<std::string>;

class Loading : public CompositionTest {
 protected:
  Lines FieldNames() {
    Lines names;
    for (std::size_t at = 0; at < Rows().FieldCount(); ++at) names.push_back(Rows().FieldAt(at).Name());
    return names;
  }
};

TEST_F(Loading, TheScreenIsWhatTheMenuOpens) {
  EXPECT_EQ(Screen().ClassName(), "TFmCadComposi");
  EXPECT_EQ(Screen().Name(), "fmCadComposi");
  EXPECT_EQ(Screen().Caption(), "Cadastro de Composição");
  EXPECT_EQ(Screen().LblConsumo.Text(), "Consumo = ( ( LFA * 0.59 * ROCA ) / ( NE Malha * 100 ) )");
  EXPECT_EQ(Screen().EdtAgulhas.Caption(), "Nr de Agulhas");
  EXPECT_EQ(Screen().EdtDesperdicio.Caption(), "Fator Malharia");
  EXPECT_FALSE(Rows().Active());
}

TEST_F(Loading, OneColumnPerColourAfterTheFixedOnes) {
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  EXPECT_EQ(FieldNames(), (Lines{"Codigo", "Ordem", "Descricao", "Custo", "NE", "Milimetros", "Tensao", "LFA", "ROCA",
                                 "Consumo", "Perc", "Regra", "Desc_Regra", "01", "02"}));
  EXPECT_EQ(Rows()["01"].Def().caption, "01|Branco");
  EXPECT_EQ(Rows()["02"].Def().caption, "02|Preto");
  EXPECT_EQ(Screen().GrdComposi.Columns().size(), 15u);
  EXPECT_EQ(Rows()["Custo"].Def().format, "0.00");
  EXPECT_EQ(Rows()["Consumo"].Def().format, "0.0000");
  EXPECT_EQ(Rows()["Perc"].Def().format, "0.0000");
  EXPECT_EQ(Rows()["Codigo"].Def().width, 15u);
  EXPECT_EQ(Rows()["01"].Def().width, 6u);
}

TEST_F(Loading, AnotherFabricRebuildsTheColumns) {
  Store("M1", {.yarn = "F1"});
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  EXPECT_EQ(Rows().RecordCount(), 1u);
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  EXPECT_EQ(Rows().FieldCount(), 14u);
  EXPECT_EQ(Rows().RecordCount(), 0u);
  ASSERT_EQ(Load("M0"), ActResult::kDone);
  EXPECT_EQ(Rows().FieldCount(), 13u);
  EXPECT_EQ(Screen().GrdComposi.Columns().size(), 13u);
}

TEST_F(Loading, AStoredYarnIsOneRowWithItsColours) {
  Store("M1", {.yarn = "F1", .colour = "01", .yarn_colour = "CRU"});
  Store("M1", {.yarn = "F1", .colour = "02", .yarn_colour = "BCO"});
  mill_.Exec("UPDATE {COMP_MATERIAL} SET REGRA = 'R1'");
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  ASSERT_EQ(Rows().RecordCount(), 1u);
  EXPECT_EQ(Cell(1, "Codigo"), "F1");
  EXPECT_EQ(Cell(1, "Ordem"), "1");
  EXPECT_EQ(Cell(1, "Descricao"), "Algodão penteado 30/1");
  EXPECT_EQ(Cell(1, "Custo"), "18,50");
  EXPECT_EQ(Cell(1, "NE"), "30");
  EXPECT_EQ(Cell(1, "Milimetros"), "2,75");
  EXPECT_EQ(Cell(1, "Tensao"), "4,5");
  EXPECT_EQ(Cell(1, "Consumo"), "0,1967");  // 250 x 0,59 x 4 / 3000
  EXPECT_EQ(Cell(1, "Perc"), "100,0000");
  EXPECT_EQ(Cell(1, "Regra"), "R1");
  EXPECT_EQ(Cell(1, "Desc_Regra"), "Um quarto da gramatura");
  EXPECT_EQ(Cell(1, "01"), "CRU");
  EXPECT_EQ(Cell(1, "02"), "BCO");
  EXPECT_EQ(Screen().LblCodMat.Text(), "Meia malha 30/1");
  EXPECT_FALSE(Screen().HasUnsavedWork());
}

TEST_F(Loading, TheHeaderIsThatOfTheFirstRow) {
  Store("M1", {.yarn = "F1"});
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  EXPECT_EQ(Screen().EdtLargura.Text(), "1,8");
  EXPECT_EQ(Screen().EdtGramatura.Text(), "160");
  EXPECT_EQ(Screen().EdtDiametro.Text(), "30");
  EXPECT_EQ(Screen().EdtFinura.Text(), "24");
  EXPECT_EQ(Screen().EdtKgRolo.Text(), "21");
  EXPECT_EQ(Screen().EdtAgulhas.Text(), "2268");
  EXPECT_EQ(Screen().EdtDesperdicio.Text(), "2,5");
  EXPECT_EQ(Screen().EdtRPM.Text(), "32");
}

TEST_F(Loading, AFabricWithoutCompositionEmptiesTheHeaderButTheNeedles) {
  Store("M1", {.yarn = "F1"});
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  EXPECT_EQ(Screen().EdtAgulhas.Text(), "2268");
  for (const host::Edit* edit :
       {&Screen().EdtLargura, &Screen().EdtGramatura, &Screen().EdtDiametro, &Screen().EdtFinura, &Screen().EdtKgRolo,
        &Screen().EdtDesperdicio, &Screen().EdtRPM}) {
    EXPECT_EQ(edit->Text(), "") << edit->Name();
  }
}

TEST_F(Loading, RowsStandInTheOrderOfTheirPosition) {
  Store("M1", {.yarn = "F1", .position = 10});
  Store("M1", {.yarn = "F2", .position = 9});
  Store("M1", {.yarn = "F0", .position = 9});
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  ASSERT_EQ(Rows().RecordCount(), 3u);
  EXPECT_EQ(Cell(1, "Codigo") + Cell(2, "Codigo") + Cell(3, "Codigo"), "F0F2F1");
  EXPECT_EQ(Rows().RecNo(), 1u);
}

TEST_F(Loading, AYarnThatStandsTwiceIsTwoRows) {
  Store("M1", {.yarn = "F1", .position = 1, .percentage = 60});
  Store("M1", {.yarn = "F1", .position = 2, .percentage = 40});
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  ASSERT_EQ(Rows().RecordCount(), 2u);
  EXPECT_EQ(Cell(1, "Perc"), "60,0000");
  EXPECT_EQ(Cell(2, "Perc"), "40,0000");
}

TEST_F(Loading, ConsumptionNeedsLengthFeedersAndCount) {
  Store("M1", {.yarn = "F0", .position = 1});
  Store("M1", {.yarn = "F1", .position = 2, .lfa = 0});
  Store("M1", {.yarn = "F2", .position = 3, .roca = 0});
  Store("M1", {.yarn = "F2", .position = 4, .lfa = 100.5, .roca = 2.5});
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  EXPECT_EQ(Cell(1, "Consumo"), "");
  EXPECT_EQ(Cell(2, "Consumo"), "");
  EXPECT_EQ(Cell(3, "Consumo"), "");
  EXPECT_EQ(Cell(4, "Consumo"), "0,0741");  // fractions count: 100,5 x 0,59 x 2,5 / 2000
}

TEST_F(Loading, AColourTheFabricNoLongerHasIsDropped) {
  Store("M1", {.yarn = "F1", .colour = "01"});
  Store("M1", {.yarn = "F1", .colour = "99"});
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  EXPECT_EQ(Rows().FindField("99"), nullptr);
  EXPECT_EQ(Rows().RecordCount(), 1u);
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Composition("M1"), (Lines{"F1 1 01 CRU 100", "F1 1 02 ***** 100"}));
}

TEST_F(Loading, AnEmptyColourCountsAsZero) {
  mill_.Insert("CADCOR", {{"COR", "0"}, {"DESCRICAO", "Sem cor"}});
  mill_.Insert("MAT_ITEN", {{"CODIGO", "M2"}, {"COR", "0"}, {"DEPOSITO", "GERAL"}, {"LOTE", "000000"}});
  Store("M2", {.yarn = "F1", .colour = ""});
  Store("M2", {.yarn = "F2", .position = 2});
  mill_.Exec("UPDATE {COMP_MATERIAL} SET COR = NULL WHERE CODIGO = 'F2'");
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  EXPECT_EQ(Cell(1, "0"), "CRU");
  EXPECT_EQ(Cell(2, "0"), "CRU");
}

TEST_F(Loading, RowsOfAProductAreNotTheFabricsOwn) {
  Store("M1", {.yarn = "F1"});
  Store("M1", {.yarn = "F2", .position = 2});
  mill_.Exec("UPDATE {COMP_MATERIAL} SET PRODUTO = 'CAMISA' WHERE CODIGO = 'F2'");
  mill_.Exec("UPDATE {COMP_MATERIAL} SET PRODUTO = '' WHERE CODIGO = 'F1'");
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  EXPECT_EQ(Rows().RecordCount(), 1u);
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Composition("M1"), (Lines{"F1 1 01 CRU 100", "F1 1 02 ***** 100", "F2 2 01 CRU 100"}));
}

TEST_F(Loading, AnUnknownFabricIsToldAndTheGridStays) {
  Store("M1", {.yarn = "F1"});
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  ASSERT_EQ(Load("NADA"), ActResult::kDone);
  const auto shown = mill_.Person().TakeMessages();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].title, "Cadastro de Composição");
  EXPECT_EQ(shown[0].text, "Material não encontrado.");
  EXPECT_EQ(shown[0].icon, host::Icon::kInformation);
  EXPECT_EQ(Rows().RecordCount(), 1u);
  EXPECT_EQ(Screen().LblCodMat.Text(), "");
}

TEST_F(Loading, AnEmptyCodeLoadsNothing) {
  ASSERT_EQ(Load(""), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{});
  EXPECT_FALSE(Rows().Active());
}

TEST_F(Loading, ColoursWithOddNamesGetTheirOwnColumns) {
  const Lines odd = {"NE", "perc", "a1", "A1", "Ç;x", "O'B", "CODIGO"};
  for (const auto& colour : odd) {
    mill_.Insert("CADCOR", {{"COR", colour}, {"DESCRICAO", "Cor " + colour}});
    mill_.Insert("MAT_ITEN", {{"CODIGO", "M2"}, {"COR", colour}, {"DEPOSITO", "GERAL"}, {"LOTE", "000000"}});
  }
  int nth = 0;
  for (const auto& colour : odd) {
    Store("M2", {.yarn = "F1", .colour = colour, .yarn_colour = "Y" + std::to_string(++nth)});
  }
  Store("M2", {.yarn = "F1", .colour = "01", .yarn_colour = "Y0"});
  ASSERT_EQ(Load("M2"), ActResult::kDone) << Error();
  EXPECT_EQ(Rows().FieldCount(), 13u + 8u);
  EXPECT_EQ(Cell(1, "NE"), "30");
  EXPECT_EQ(Cell(1, "Cor NE"), "Y1");
  EXPECT_EQ(Rows()["Cor NE"].Def().caption, "NE|Cor NE");
  ASSERT_EQ(Save(), ActResult::kDone) << Error();
  const auto stored = Composition("M2");
  EXPECT_EQ(stored.size(), 8u);
  nth = 0;
  for (const auto& colour : odd) {
    const std::string line = "F1 1 " + colour + " Y" + std::to_string(++nth) + " 100";
    EXPECT_NE(std::ranges::find(stored, line), stored.end()) << line;
  }
}

TEST_F(Loading, AColourThatIsNotRegisteredHasNoColumn) {
  mill_.Insert("MAT_ITEN", {{"CODIGO", "M2"}, {"COR", "ZZ"}, {"DEPOSITO", "GERAL"}, {"LOTE", "000000"}});
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  EXPECT_EQ(Rows().FieldCount(), 14u);
}

TEST_F(Loading, SendsTheseStatements) {
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  const auto sent = mill_.TakeStatements();
  const std::string colours =
      "SELECT DISTINCT CADCOR.COR, CADCOR.DESCRICAO FROM MAT_ITEN MAT_ITEN LEFT JOIN CADCOR CADCOR ON (MAT_ITEN.COR = "
      "CADCOR.COR) WHERE MAT_ITEN.CODIGO = 'M1'";
  const std::string rows =
      "SELECT COMP_MATERIAL.MATERIAL, COMP_MATERIAL.CODIGO, COMP_MATERIAL.PERC, COMP_MATERIAL.TENSAO, "
      "MATERIAL.DESCRICAO, COMP_MATERIAL.COR, COMP_MATERIAL.COR_I, COMP_MATERIAL.ORDEM, CADCOR.DESCRICAO AS DESCCOR, "
      "COMP_MATERIAL.LFA, COMP_MATERIAL.ROCA, COMP_MATERIAL.LARGURA, COMP_MATERIAL.GRAMATURA, "
      "COMP_MATERIAL.DIAMETRO, COMP_MATERIAL.FINURA, COMP_MATERIAL.KG_ROLO, MATERIAL.REPOSICAO AS CUSTO, "
      "COMP_MATERIAL.COMP_PONTO, COMP_MATERIAL.ALIMENTADORES, MATERIAL.NE, COMP_MATERIAL.DESPERDICIO, "
      "COMP_MATERIAL.RPM, COMP_MATERIAL.REGRA, TNG_REGRA.DESCRICAO AS DESC_REGRA FROM COMP_MATERIAL COMP_MATERIAL "
      "LEFT JOIN MATERIAL MATERIAL ON (COMP_MATERIAL.CODIGO = MATERIAL.CODIGO) LEFT JOIN CADCOR CADCOR ON "
      "(COMP_MATERIAL.COR = CADCOR.COR) LEFT JOIN TNG_REGRA TNG_REGRA ON (COMP_MATERIAL.REGRA = TNG_REGRA.CODIGO) "
      "WHERE COMP_MATERIAL.MATERIAL = 'M1' AND (COMP_MATERIAL.PRODUTO = '' OR COMP_MATERIAL.PRODUTO IS NULL) ORDER BY "
      "COMP_MATERIAL.CODIGO, COMP_MATERIAL.COR";
  const auto colours_at = std::ranges::find(sent, colours);
  ASSERT_NE(colours_at, sent.end());
  EXPECT_NE(std::find(colours_at, sent.end(), rows), sent.end());
}

TEST_F(Loading, AFailingStatementLeavesTheScreenAsItWas) {
  Store("M1", {.yarn = "F1"});
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  int failures = 0;
  for (int nth = 1;; ++nth) {
    ASSERT_LT(nth, 20);
    ASSERT_EQ(mill_.Desk().Enter(Screen().EdtCodMat), ActResult::kDone);
    ASSERT_EQ(mill_.Desk().TypeInto(Screen().EdtCodMat, "M2"), ActResult::kDone);
    mill_.FailStatement(nth);
    const ActResult left = mill_.Desk().Leave();
    if (!mill_.StopFailing()) break;
    ++failures;
    EXPECT_EQ(left, ActResult::kFailed);
    EXPECT_NE(Error().find("falha provocada"), std::string::npos);
    EXPECT_EQ(Rows().RecordCount(), 1u) << nth;
    EXPECT_EQ(Cell(1, "Codigo"), "F1");
    EXPECT_EQ(Screen().EdtKgRolo.Text(), "21");
    ASSERT_EQ(Load("M1"), ActResult::kDone);
  }
  EXPECT_EQ(failures, 4);  // the fabric, the hold on it, its colours, its rows
  EXPECT_EQ(Rows().FieldCount(), 14u);
}

TEST_F(Loading, AGridThatCouldNotBeLoadedIsNeverStoredUnderTheNewCode) {
  Store("M1", {.yarn = "F1"});
  Store("M2", {.yarn = "F2", .percentage = 100});
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  ASSERT_EQ(mill_.Desk().Enter(Screen().EdtCodMat), ActResult::kDone);
  ASSERT_EQ(mill_.Desk().TypeInto(Screen().EdtCodMat, "M2"), ActResult::kDone);
  mill_.FailStatement(3);
  ASSERT_EQ(mill_.Desk().Leave(), ActResult::kFailed);
  mill_.StopFailing();
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Composition("M2"), Lines{"F2 1 01 CRU 100"});
}

}  // namespace
}  // namespace test
