// What leaving a cell with Tab works out, the lookups, the client's restriction, and input that cannot be taken.
#include <algorithm>

#include "composition_mill.h"

namespace test {
namespace {

using host::ActResult;
using Lines = std::vector<std::string>;

constexpr const char* kAskColour = "Cor não cadastrada no Material. Deseja cadastrar?";

class Typing : public CompositionTest {
 protected:
  void SetUp() override {
    CompositionTest::SetUp();
    ASSERT_EQ(Load("M2"), ActResult::kDone);
    mill_.TakeStatements();
  }
  host::Grid& TheGrid() { return Screen().GrdComposi; }
  ActResult Key(std::string_view field, host::Key key) {
    const ActResult selected = mill_.Desk().SelectCell(TheGrid(), field);
    return selected == ActResult::kDone ? mill_.Desk().GridKey(TheGrid(), key) : selected;
  }
  std::int64_t LotsOf(std::string_view yarn, std::string_view colour) {
    return mill_
        .Scalar("SELECT COUNT(*) FROM {MAT_ITEN} WHERE CODIGO = '" + std::string(yarn) + "' AND COR = '" +
                std::string(colour) + "'")
        .AsInteger();
  }
};

// --- yarn ---------------------------------------------------------------------------------------------------------

TEST_F(Typing, AKnownYarnBringsItsData) {
  ASSERT_EQ(TypeCell("Codigo", "F1"), ActResult::kDone);
  EXPECT_EQ(Cell(1, "Descricao"), "Algodão penteado 30/1");
  EXPECT_EQ(Cell(1, "Custo"), "18,50");
  EXPECT_EQ(Cell(1, "NE"), "30");
  EXPECT_EQ(Cell(1, "Ordem"), "1");
  EXPECT_EQ(TheGrid().SelectedField(), "Milimetros");  // past what the program fills
}

TEST_F(Typing, AnUnknownYarnIsToldAndCleared) {
  ASSERT_EQ(TypeCell("Codigo", "F1"), ActResult::kDone);
  ASSERT_EQ(TypeCell("Codigo", "NADA"), ActResult::kDone);
  const auto shown = mill_.Person().TakeMessages();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].text, "Material não cadastrado.");
  EXPECT_EQ(shown[0].icon, host::Icon::kInformation);
  EXPECT_EQ(Cell(1, "Codigo"), "");
  EXPECT_EQ(Cell(1, "Custo"), "0,00");
  EXPECT_EQ(Cell(1, "NE"), "0");
  EXPECT_EQ(Cell(1, "Descricao"), "Algodão penteado 30/1");
}

TEST_F(Typing, NewRowsAreNumberedOn) {
  ASSERT_EQ(AppendYarn({{"Codigo", "F2"}}), ActResult::kDone);
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}}), ActResult::kDone);
  EXPECT_EQ(Cell(1, "Codigo"), "F2");
  EXPECT_EQ(Cell(2, "Ordem"), "2");
}

TEST_F(Typing, TheYarnLookupFillsTheCode) {
  mill_.Person().Pick("pqMat", "F2");
  ASSERT_EQ(Key("Codigo", host::Key::kF4), ActResult::kDone);
  EXPECT_EQ(Cell(1, "Codigo"), "F2");
  ASSERT_EQ(mill_.Desk().GridKey(TheGrid(), host::Key::kTab), ActResult::kDone);
  EXPECT_EQ(Cell(1, "NE"), "20");
}

TEST_F(Typing, TabOnAnEmptyGridDoesNothing) {
  ASSERT_EQ(Key("Codigo", host::Key::kTab), ActResult::kDone);
  EXPECT_EQ(Rows().RecordCount(), 0u);
  EXPECT_EQ(mill_.Messages(), Lines{});
}

TEST_F(Typing, EnterGoesOnLikeTab) {
  ASSERT_EQ(mill_.Desk().SelectCell(TheGrid(), "Codigo"), ActResult::kDone);
  ASSERT_EQ(mill_.Desk().TypeCell(TheGrid(), "F1"), ActResult::kDone);
  ASSERT_EQ(mill_.Desk().PressKey(Screen(), host::Key::kEnter), ActResult::kDone);
  EXPECT_EQ(Cell(1, "Descricao"), "Algodão penteado 30/1");
  EXPECT_EQ(TheGrid().SelectedField(), "Milimetros");
}

TEST_F(Typing, TheGridTellsWhatAWindowShows) {
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  std::vector<std::string> lookups;
  std::vector<std::string> totals;
  for (const host::GridColumn& column : TheGrid().Columns()) {
    EXPECT_GT(column.width, 0) << column.field;
    if (column.lookup) lookups.push_back(column.field);
    if (column.total) totals.push_back(column.field);
  }
  EXPECT_EQ(lookups, (Lines{"Codigo", "Regra", "01", "02"}));
  EXPECT_EQ(totals, Lines{"Perc"});
  for (const host::Component* component : Screen().Components()) {
    const auto* control = dynamic_cast<const host::Control*>(component);
    if (control == nullptr || control == &Screen().PcComposi) continue;
    const bool always = control == &Screen().btnGravar || control == &Screen().BtnFechar;
    EXPECT_EQ(control->Pages(), always ? nullptr : &Screen().PcComposi) << control->Name();
    EXPECT_TRUE(control->InSight()) << control->Name();
  }
}

// --- client -------------------------------------------------------------------------------------------------------

TEST_F(Typing, TheClientRestrictsBothMaterialLookups) {
  ASSERT_EQ(mill_.Type(Screen(), "edtCodCliente", "00002"), ActResult::kDone);
  EXPECT_EQ(Screen().LblCodCliente.Text(), "Malharia Bela Vista");
  EXPECT_EQ(Screen().PqCodMat.FilterText(), "CODCLI = '00002'");
  EXPECT_EQ(Screen().pqMat.FilterText(), "CODCLI = '00002'");
  // Another client's yarn is unknown now.
  ASSERT_EQ(TypeCell("Codigo", "F1"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{"Material não cadastrado."});
  ASSERT_EQ(TypeCell("Codigo", "F2"), ActResult::kDone);
  EXPECT_EQ(Cell(1, "NE"), "20");
  ASSERT_EQ(mill_.Type(Screen(), "edtCodCliente", ""), ActResult::kDone);
  EXPECT_EQ(Screen().PqCodMat.FilterText(), "");
  EXPECT_EQ(Screen().pqMat.FilterText(), "");
  EXPECT_EQ(Screen().LblCodCliente.Text(), "");
  ASSERT_EQ(TypeCell("Codigo", "F1"), ActResult::kDone);
  EXPECT_EQ(Cell(1, "NE"), "30");
}

TEST_F(Typing, AnUnknownClientIsToldAndTheRestrictionStays) {
  ASSERT_EQ(mill_.Type(Screen(), "edtCodCliente", "00002"), ActResult::kDone);
  ASSERT_EQ(mill_.Type(Screen(), "edtCodCliente", "77"), ActResult::kDone);
  const auto shown = mill_.Person().TakeMessages();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].text, "Cliente não Existe.");
  EXPECT_EQ(shown[0].icon, host::Icon::kInformation);
  EXPECT_EQ(Screen().pqMat.FilterText(), "CODCLI = '00002'");
}

TEST_F(Typing, TheRestrictionIsThisScreensOwn) {
  ASSERT_EQ(mill_.Type(Screen(), "edtCodCliente", "00002"), ActResult::kDone);
  ASSERT_EQ(TypeCell("Codigo", "F2"), ActResult::kDone);
  const host::Screen other(mill_.App(), "TfmOutra", "fmOutra", "Outra");
  host::Tabela& tables = mill_.App().GetTabela();
  tables.AbreTabela("tbMateriais", other);
  EXPECT_TRUE(tables.Dataset("tbMateriais", other).Locate("CODIGO", {"F1"}));
  EXPECT_FALSE(tables.Dataset("tbMateriais", Screen()).Locate("CODIGO", {"F1"}));
  tables.FechaTabela("tbMateriais", other);
}

TEST_F(Typing, TheFabricAndClientLookupsFillTheirInputs) {
  ASSERT_EQ(mill_.Desk().Enter(Screen().EdtCodMat), ActResult::kDone);
  mill_.Person().Pick("PqCodMat", "M1");
  ASSERT_EQ(mill_.Desk().PressKey(Screen(), host::Key::kF4), ActResult::kDone);
  EXPECT_EQ(Screen().EdtCodMat.Text(), "M1");
  mill_.Person().Pick("PqCliente", "00001");
  ASSERT_EQ(mill_.Desk().Enter(Screen().edtCodCliente), ActResult::kDone);
  EXPECT_EQ(Rows().FieldCount(), 15u);  // left the code: loaded
  ASSERT_EQ(mill_.Desk().PressKey(Screen(), host::Key::kF4), ActResult::kDone);
  EXPECT_EQ(Screen().LblCodCliente.Text(), "Têxtil Aurora");
}

// --- knitting data ------------------------------------------------------------------------------------------------

TEST_F(Typing, FeedersGiveTheConsumptionAndClearTheShare) {
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"LFA", "250,5"}, {"Perc", "40"}}), ActResult::kDone);
  EXPECT_EQ(Cell(1, "Consumo"), "");
  ASSERT_EQ(TypeCell("ROCA", "2,5"), ActResult::kDone);
  EXPECT_EQ(Cell(1, "Consumo"), "0,1232");  // 250,5 x 0,59 x 2,5 / 3000
  EXPECT_EQ(Cell(1, "Perc"), "0,0000");
}

TEST_F(Typing, FeedersOfAYarnWithoutCountChangeNothing) {
  ASSERT_EQ(AppendYarn({{"Codigo", "F0"}, {"LFA", "250"}, {"Perc", "40"}}), ActResult::kDone);
  ASSERT_EQ(TypeCell("ROCA", "2"), ActResult::kDone);
  EXPECT_EQ(Cell(1, "Consumo"), "");
  EXPECT_EQ(Cell(1, "Perc"), "40,0000");
}

TEST_F(Typing, TheStitchGivesTheLengthButNoConsumption) {
  ASSERT_EQ(mill_.Type(Screen(), "EdtAgulhas", "2000"), ActResult::kDone);
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"LFA", "100"}, {"ROCA", "3"}}), ActResult::kDone);
  const std::string consumption = Cell(1, "Consumo");
  ASSERT_EQ(TypeCell("Milimetros", "2,75"), ActResult::kDone);
  EXPECT_EQ(Cell(1, "LFA"), "5500");
  EXPECT_EQ(Cell(1, "Consumo"), consumption);
}

TEST_F(Typing, TheStitchNeedsNeedlesAndALength) {
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"LFA", "100"}}), ActResult::kDone);
  ASSERT_EQ(TypeCell("Milimetros", "2,75"), ActResult::kDone);
  EXPECT_EQ(Cell(1, "LFA"), "100");
  ASSERT_EQ(mill_.Type(Screen(), "EdtAgulhas", "2000"), ActResult::kDone);
  ASSERT_EQ(TypeCell("Milimetros", "-1"), ActResult::kDone);
  EXPECT_EQ(Cell(1, "LFA"), "100");
}

// --- rules --------------------------------------------------------------------------------------------------------

TEST_F(Typing, ARuleGivesTheShare) {
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"Regra", "R1"}}), ActResult::kDone);
  EXPECT_EQ(Cell(1, "Desc_Regra"), "Um quarto da gramatura");
  EXPECT_EQ(Cell(1, "Perc"), "40,0000");  // a quarter of 160
}

TEST_F(Typing, AnUnknownRuleIsToldAndCleared) {
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"Regra", "R1"}}), ActResult::kDone);
  ASSERT_EQ(TypeCell("Regra", "XX"), ActResult::kDone);
  const auto shown = mill_.Person().TakeMessages();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].text, "Regra de cálculo inválida.");
  EXPECT_EQ(shown[0].icon, host::Icon::kInformation);
  EXPECT_EQ(Cell(1, "Regra"), "");
  EXPECT_EQ(Cell(1, "Desc_Regra"), "");
  EXPECT_EQ(Cell(1, "Perc"), "40,0000");
  ASSERT_EQ(TypeCell("Regra", ""), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{});
}

TEST_F(Typing, TheRuleLookupFillsRuleAndShare) {
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}}), ActResult::kDone);
  mill_.Person().Pick("PqRegra", "R1");
  ASSERT_EQ(Key("Regra", host::Key::kF4), ActResult::kDone);
  EXPECT_EQ(Cell(1, "Regra"), "R1");
  EXPECT_EQ(Cell(1, "Desc_Regra"), "Um quarto da gramatura");
  EXPECT_EQ(Cell(1, "Perc"), "40,0000");
}

TEST_F(Typing, ARuleThatCannotBeWorkedOutIsToldAndTheScreenGoesOn) {
  mill_.Exec("UPDATE {MATERIAL} SET GRAMATURA = 0 WHERE CODIGO = 'M2'");
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"Perc", "12"}}), ActResult::kDone);
  EXPECT_EQ(TypeCell("Regra", "R1"), ActResult::kFailed);
  EXPECT_NE(Error(), "");
  EXPECT_EQ(Cell(1, "Perc"), "12,0000");
  ASSERT_EQ(TypeCell("Regra", ""), ActResult::kDone);
  ASSERT_EQ(TypeCell("Perc", "100"), ActResult::kDone);
  mill_.Messages();
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Composition("M2"), Lines{"F1 1 01 ***** 100"});
}

// --- yarn colours -------------------------------------------------------------------------------------------------

TEST_F(Typing, ARegisteredYarnColourIsTakenSilently) {
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"01", "BCO"}}), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{});
}

TEST_F(Typing, AMissingYarnColourIsRegisteredOnYes) {
  mill_.Person().Answer(kAskColour, "yes");
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"01", "99"}}), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{kAskColour});
  const auto rows = mill_.Rows("SELECT * FROM {MAT_ITEN} WHERE CODIGO = 'F1' AND COR = '99'");
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].at("LOTE").AsText(), "000000");
  EXPECT_EQ(rows[0].at("DEPOSITO").AsText(), "GERAL");
  EXPECT_EQ(rows[0].at("QTDE").AsFloat(), 0);
  EXPECT_EQ(rows[0].at("PRECO_MED").AsFloat(), 0);
  const auto sent = mill_.TakeStatements();
  EXPECT_NE(std::ranges::find(sent,
                              "INSERT INTO MAT_ITEN (CODIGO, COR, LOTE, QTDE, QTDE_R, QTD_MINIMA, DEPOSITO, PRECO_MED) "
                              "VALUES ('F1','99','000000',0,0,0,'GERAL',0)"),
            sent.end());
}

TEST_F(Typing, AMissingYarnColourStaysInItsCellAfterNo) {
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"Perc", "100"}, {"01", "99"}}), ActResult::kDone);
  EXPECT_EQ(mill_.Person().TakeMessages().at(0).icon, host::Icon::kQuestion);
  EXPECT_EQ(LotsOf("F1", "99"), 0);
  ASSERT_EQ(Save(), ActResult::kDone);
  EXPECT_EQ(Composition("M2"), Lines{"F1 1 01 99 100"});
}

TEST_F(Typing, RegisteringAYarnColourNeedsTheRightOfTheMaterials) {
  mill_.TakeRight("TfmMateriais", "A");
  mill_.Person().Answer(kAskColour, "yes");
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"Perc", "100"}, {"01", "99"}}), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{kAskColour});
  EXPECT_EQ(LotsOf("F1", "99"), 0);
  EXPECT_EQ(Cell(1, "01"), "99");
}

TEST_F(Typing, NoColourIsNeverAsked) {
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"01", "*****"}}), ActResult::kDone);
  ASSERT_EQ(TypeCell("01", ""), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines{});
}

TEST_F(Typing, FixedCellsAreNoColours) {
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"Perc", "100"}}), ActResult::kDone);
  mill_.TakeStatements();
  for (const char* field : {"Ordem", "Descricao", "Custo", "NE", "Tensao", "LFA", "Consumo", "Perc", "Desc_Regra"}) {
    ASSERT_EQ(Key(field, host::Key::kTab), ActResult::kDone) << field;
    ASSERT_EQ(Key(field, host::Key::kF4), ActResult::kDone) << field;
  }
  EXPECT_EQ(mill_.TakeStatements(), Lines{});
  EXPECT_EQ(mill_.Messages(), Lines{});
}

TEST_F(Typing, TheColourLookupOffersTheYarnsColours) {
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}}), ActResult::kDone);
  mill_.TakeStatements();
  mill_.Person().Pick("PqCor", "BCO");
  ASSERT_EQ(Key("01", host::Key::kF4), ActResult::kDone);
  EXPECT_EQ(Cell(1, "01"), "BCO");
  const auto sent = mill_.TakeStatements("SELECT COR, DESCRICAO FROM (");
  ASSERT_FALSE(sent.empty());
  EXPECT_NE(
      sent.back().find("FROM (SELECT COR, DESCRICAO FROM ( SELECT CADCOR.COR, CADCOR.DESCRICAO FROM MAT_ITEN MAT_ITEN "
                       "LEFT JOIN CADCOR CADCOR ON (MAT_ITEN.COR = CADCOR.COR) WHERE MAT_ITEN.CODIGO = 'F1' "
                       "GROUP BY CADCOR.COR, CADCOR.DESCRICAO ) AS MAT_ITEN WHERE 1 = 1"),
      std::string::npos)
      << sent.back();
}

// --- menu ---------------------------------------------------------------------------------------------------------

TEST_F(Typing, LocalizarCorSelectsTheColumn) {
  Store("M1", {.yarn = "F1", .colour = "01"});
  Store("M1", {.yarn = "F1", .colour = "02"});
  ASSERT_EQ(Load("M1"), ActResult::kDone);
  mill_.TakeStatements();
  mill_.Person().Pick("pqMatLocaliza", "02");
  ASSERT_EQ(mill_.Desk().PickMenu(Screen(), "Localizar Cor"), ActResult::kDone);
  EXPECT_EQ(TheGrid().SelectedField(), "02");
  const auto sent = mill_.TakeStatements("SELECT * FROM(");
  ASSERT_FALSE(sent.empty());
  EXPECT_NE(sent.back().find("FROM (SELECT * FROM( SELECT DISTINCT CADCOR.COR , CADCOR.DESCRICAO FROM COMP_MATERIAL "
                             "COMP_MATERIAL INNER JOIN CADCOR CADCOR ON (COMP_MATERIAL.COR = CADCOR.COR) "
                             "WHERE COMP_MATERIAL.MATERIAL = 'M1' ) AS COMP_MATERIAL WHERE 1=1"),
            std::string::npos)
      << sent.back();
}

TEST_F(Typing, AStoredColourWithoutColumnSelectsNothing) {
  Store("M2", {.yarn = "F1", .colour = "02"});
  ASSERT_EQ(mill_.Desk().SelectCell(TheGrid(), "LFA"), ActResult::kDone);
  mill_.Person().Pick("pqMatLocaliza", "02");
  ASSERT_EQ(mill_.Desk().PickMenu(Screen(), "Localizar Cor"), ActResult::kDone);
  EXPECT_EQ(TheGrid().SelectedField(), "LFA");
}

TEST_F(CompositionTest, TheMenuStaysShutWithoutAGrid) {
  EXPECT_EQ(mill_.Desk().PickMenu(Screen(), "Localizar Cor"), ActResult::kRefused);
  EXPECT_EQ(mill_.Person().TakeUnexpected(), Lines{});
}

// --- failures ----------------------------------------------------------------------------------------------------

TEST_F(Typing, AFailingStatementInACellIsToldAndTheRowStays) {
  const std::vector<std::pair<std::string, std::string>> cells = {{"Codigo", "F2"}, {"Regra", "R1"}, {"01", "99"}};
  for (const auto& [field, text] : cells) {
    for (int nth = 1;; ++nth) {
      ASSERT_LT(nth, 10);
      ASSERT_EQ(Load("M2"), ActResult::kDone);
      ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"Perc", "12"}}), ActResult::kDone);
      mill_.Exec("DELETE FROM {MAT_ITEN} WHERE COR = '99'");
      if (field == "01") mill_.Person().Answer(kAskColour, "yes");
      mill_.FailStatement(nth);
      const ActResult typed = TypeCell(field, text);
      const bool failed = mill_.StopFailing();
      mill_.Messages();
      if (!failed) {
        EXPECT_EQ(typed, ActResult::kDone);
        break;
      }
      EXPECT_EQ(typed, ActResult::kFailed) << field << " " << nth;
      EXPECT_NE(Error().find("falha provocada"), std::string::npos);
      EXPECT_EQ(Cell(1, field), text) << nth;
      EXPECT_EQ(LotsOf("F1", "99"), 0);
      mill_.Person().TakeUnexpected();
    }
  }
}

}  // namespace
}  // namespace test
