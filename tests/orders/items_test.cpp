// The rules of the item grid.
#include "order_mill.h"

namespace test {
namespace {

class ItemGrid : public OrderTest {
 protected:
  ActResult Cell(const char* field, const char* text) {
    host::Grid& grid = Screen().DBGrid6;
    ActResult result = mill_.Desk().SelectCell(grid, field);
    if (result == ActResult::kDone) result = mill_.Desk().TypeCell(grid, text);
    if (result == ActResult::kDone) result = mill_.Desk().GridKey(grid, host::Key::kTab);
    return result;
  }

  void ExpectBox(const char* message) {
    const auto shown = mill_.Person().TakeMessages();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, message);
    EXPECT_EQ(shown[0].title, "Ordens de Tecelagem");
    EXPECT_EQ(shown[0].icon, host::Icon::kInformation);
  }

  // An order of F1 in colour 01 and 02, the first with a roll that the screen does not yet show.
  std::string WithRoll() {
    const std::string number = SavedOrder({{"F1", "01", "100"}, {"F1", "02", "50"}});
    Roll(number, "F1", "01", 1, 10);
    Load(number);
    Stand("TbItens", {{"Cor", "01"}});
    return number;
  }
};

TEST_F(ItemGrid, ACodeBringsTheFabric) {
  NewOrder();
  EXPECT_EQ(Cell("Codigo", "F1"), ActResult::kDone);
  EXPECT_EQ(Shown("TbItens", {"Codigo"}), Lines());  // still in the row's buffer
  host::Dataset& items = Screen().TbItens;
  EXPECT_EQ(items["Descricao"].AsText(), "Meia malha 30/1 PV");
  EXPECT_EQ(items["Unidade"].AsText(), "KG");
  EXPECT_EQ(items["Peso"].AsFloat(), 1);
  EXPECT_EQ(items["Largura"].AsFloat(), 1.75);
  EXPECT_EQ(items["Gramatura"].AsFloat(), 165);
  EXPECT_EQ(items["KgRolo"].AsFloat(), 22);
  EXPECT_EQ(items["Custo"].AsFloat(), 5);
}

TEST_F(ItemGrid, WithoutCompositionTheMaterialGivesTheMeasures) {
  mill_.Exec("UPDATE {MATERIAL} SET LARGURA = 1.5, GRAMATURA = 300 WHERE CODIGO = 'F2'");
  NewOrder();
  EXPECT_EQ(Cell("Codigo", "F2"), ActResult::kDone);
  host::Dataset& items = Screen().TbItens;
  EXPECT_EQ(items["Largura"].AsFloat(), 1.5);
  EXPECT_EQ(items["Gramatura"].AsFloat(), 300);
  EXPECT_EQ(items["KgRolo"].AsFloat(), 0);
}

TEST_F(ItemGrid, AnUnknownMaterialIsRefused) {
  NewOrder();
  EXPECT_EQ(Cell("Codigo", "NADA"), ActResult::kRefused);
  ExpectBox("Material não cadastrado.");
  EXPECT_EQ(Screen().TbItens["Codigo"].AsText(), "");
  EXPECT_EQ(FocusedName(), "DBGrid6");
}

TEST_F(ItemGrid, AnInactiveMaterialIsRefusedUnlessTheOrderHasIt) {
  const std::string number = SavedOrder({{"F1", "01", "10"}});
  NewOrder();
  EXPECT_EQ(Cell("Codigo", "F9"), ActResult::kRefused);
  ExpectBox("Material Inativo.");
  mill_.Desk().CancelRow(Screen().DBGrid6);
  mill_.Exec("UPDATE {MATERIAL} SET ATIVO = 'N' WHERE CODIGO = 'F1'");
  Load(number);
  EXPECT_EQ(Cell("Codigo", "F1"), ActResult::kDone);
  // Stored is the code, in whatever colour.
  EXPECT_EQ(AddItem("F1", "02", "10"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines());
}

TEST_F(ItemGrid, WithoutAPriceTheCodeIsRefusedAndTheRowKeepsWhatItShowed) {
  const std::string number = SavedOrder({{"F1", "01", "10"}});
  mill_.Exec("DELETE FROM {CADCORTI} WHERE CODIGO = 'F2'");
  Load(number);
  EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Custo", "0"}}), ActResult::kDone);
  EXPECT_EQ(Cell("Codigo", "F2"), ActResult::kRefused);
  ExpectBox("Não é possível continuar.\nCadastre o custo da malha primeiro para continuar.");
  EXPECT_EQ(Screen().TbItens["Codigo"].AsText(), "F1");
  EXPECT_EQ(Screen().TbItens["Descricao"].AsText(), "Meia malha 30/1 PV");
  EXPECT_EQ(Screen().TbItens["Custo"].AsFloat(), 0);
}

TEST_F(ItemGrid, ARecodedRowKeepsTheFormerFabricsCost) {
  NewOrder();
  EXPECT_EQ(AddItem("F1", "01", "10"), ActResult::kDone);
  EXPECT_EQ(Cell("Codigo", "F2"), ActResult::kDone);
  EXPECT_EQ(Screen().TbItens["Descricao"].AsText(), "Moletom sem composição");
  EXPECT_EQ(Screen().TbItens["Custo"].AsFloat(), 5);
}

TEST_F(ItemGrid, ColoursAreThoseInStock) {
  NewOrder();
  mill_.TakeStatements();
  EXPECT_EQ(AddItem("F1", "03", "10"), ActResult::kRefused);
  ExpectBox("Cor não cadastrada.");
  EXPECT_EQ(Screen().TbItens["Cor"].AsText(), "");
  EXPECT_EQ(mill_.TakeStatements("INNER JOIN CADCOR"),
            Lines{"SELECT DISTINCT CADCOR.DESCRICAO, MAT_ITEN.COR FROM MAT_ITEN MAT_ITEN INNER JOIN CADCOR CADCOR ON "
                  "(MAT_ITEN.COR = CADCOR.COR) WHERE MAT_ITEN.CODIGO = 'F1'"});
  EXPECT_EQ(Cell("Cor", "02"), ActResult::kDone);
  EXPECT_EQ(Screen().TbItens["DescCor"].AsText(), "Azul-marinho");
}

TEST_F(ItemGrid, AnEmptyColourCellIsRefusedWhenLeft) {
  NewOrder();
  EXPECT_EQ(Cell("Codigo", "F1"), ActResult::kDone);
  EXPECT_EQ(Cell("Cor", ""), ActResult::kRefused);
  ExpectBox("Cor não cadastrada.");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  ExpectBox("Cor não cadastrada.");
  EXPECT_EQ(FocusedName(), "DBGrid6");
  EXPECT_EQ(mill_.Desk().GridKey(Screen().DBGrid6, host::Key::kEscape), ActResult::kDone);
  EXPECT_TRUE(Screen().TbItens.IsEmpty());
}

TEST_F(ItemGrid, ARowWithoutColourDisappearsWhenPosted) {
  NewOrder();
  EXPECT_EQ(mill_.Append(Screen(), "TbItens", {{"Codigo", "F1"}, {"Qtde", "10"}}), ActResult::kDone);
  EXPECT_EQ(Screen().TbItens.RecordCount(), 0u);
  EXPECT_FALSE(Screen().TbItens.InEdit());
  EXPECT_EQ(mill_.Append(Screen(), "TbItens", {{"Qtde", "10"}}), ActResult::kDone);
  EXPECT_EQ(Screen().TbItens.RecordCount(), 0u);
}

TEST_F(ItemGrid, EmptyingTheCodeOfARowBringsItBack) {
  const std::string number = SavedOrder({{"F1", "01", "10"}});
  Load(number);
  EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Codigo", ""}, {"Qtde", "77"}}), ActResult::kDone);
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Cor", "Qtde"}), Lines{"F1 | 01 | 10"});
}

TEST_F(ItemGrid, TheColoursPriceReplacesTheTypedOneOnlyOnNewItems) {
  const std::string number = NewOrder();
  EXPECT_EQ(mill_.Append(Screen(), "TbItens", {{"Codigo", "F1"}, {"Custo", "99"}, {"Cor", "02"}, {"Qtde", "1"}}),
            ActResult::kDone);
  EXPECT_EQ(Shown("TbItens", {"Custo"}), Lines{"6.5"});
  EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Custo", "7"}}), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  Load(number);
  EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Cor", "02"}}), ActResult::kDone);
  EXPECT_EQ(Shown("TbItens", {"Custo"}), Lines{"7"});
  // Colour 01 has no price of its own: what was typed stays.
  EXPECT_EQ(mill_.Append(Screen(), "TbItens", {{"Codigo", "F1"}, {"Custo", "99"}, {"Cor", "01"}}), ActResult::kDone);
  EXPECT_EQ(Shown("TbItens", {"Custo"}), (Lines{"7", "99"}));
}

TEST_F(ItemGrid, AWrittenOffItemKeepsItsCode) {
  WithRoll();
  EXPECT_EQ(Cell("Qtde", "120"), ActResult::kDone);
  mill_.TakeStatements();
  EXPECT_EQ(Cell("Codigo", "F2"), ActResult::kRefused);
  ExpectBox("Produto já possui quantidade baixada. Impossível Continuar.");
  EXPECT_EQ(mill_.TakeStatements("TECELB"),
            Lines{"SELECT SUM(QTDE) QTDE_B FROM TECELB WHERE NUMERO = '000001' AND CODIGO = 'F1' AND COR = '01'"});
  // The whole edit of the row is given up, the quantity typed before too.
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Cor", "Qtde"}).front(), "F1 | 01 | 100");
  EXPECT_FALSE(Screen().TbItens.InEdit());
}

TEST_F(ItemGrid, AWrittenOffItemKeepsItsColour) {
  WithRoll();
  EXPECT_EQ(Cell("Cor", "02"), ActResult::kRefused);
  ExpectBox("Produto já possui quantidade baixada. Impossível Continuar.");
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Cor"}).front(), "F1 | 01");
  // Retyping what is there is no change.
  EXPECT_EQ(Cell("Cor", "01"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines());
}

TEST_F(ItemGrid, AnItemWithoutRollsMayChangeItsKey) {
  WithRoll();
  Stand("TbItens", {{"Cor", "02"}});
  EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Codigo", "F2"}}), ActResult::kDone);
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Cor"}), (Lines{"F1 | 01", "F2 | 02"}));
}

TEST_F(ItemGrid, AnAppendedRowRemembersNothingOfTheRowBefore) {
  WithRoll();
  EXPECT_EQ(AddItem("F2", "01", "5"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines());
  EXPECT_EQ(Shown("TbItens", {"Codigo", "CodAnt", "CorAnt"}).back(), "F2 |  | ");
  // Coming back to it is an entry.
  Stand("TbItens", {{"Codigo", "F1"}, {"Cor", "02"}});
  Stand("TbItens", {{"Codigo", "F2"}});
  EXPECT_EQ(Shown("TbItens", {"Codigo", "CodAnt", "CorAnt"}).back(), "F2 | F2 | 01");
}

TEST_F(ItemGrid, AWrittenOffItemCannotBeDeletedAnyOtherCan) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F1", "02", "50"}});
  Load(number);
  Roll(number, "F1", "02", 1, 5);
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 10 WHERE COR = '01'");
  Load(number);
  Stand("TbItens", {{"Cor", "01"}});
  EXPECT_EQ(mill_.Desk().DeleteRow(Screen().DBGrid6), ActResult::kRefused);
  ExpectBox("Lote com baixas. Impossível excluir.");
  // The row's own field decides, not the rolls.
  Stand("TbItens", {{"Cor", "02"}});
  EXPECT_EQ(mill_.Desk().DeleteRow(Screen().DBGrid6), ActResult::kDone);
  EXPECT_EQ(Shown("TbItens", {"Cor"}), Lines{"01"});
}

TEST_F(ItemGrid, ASecondRowOfTheSameCodeAndColourIsRefused) {
  NewOrder();
  EXPECT_EQ(AddItem("F1", "01", "10"), ActResult::kDone);
  EXPECT_EQ(AddItem("F1", "01", "20"), ActResult::kRefused);
  ExpectBox("Este material já está na ordem com esta cor.");
  EXPECT_TRUE(Screen().TbItens.InEdit());
  EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Cor", "02"}}), ActResult::kDone);
  EXPECT_EQ(Shown("TbItens", {"Cor", "Qtde"}), (Lines{"01 | 10", "02 | 20"}));
  EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Cor", "01"}}), ActResult::kRefused);
  ExpectBox("Este material já está na ordem com esta cor.");
  EXPECT_EQ(mill_.Desk().CancelRow(Screen().DBGrid6), ActResult::kDone);
  // Editing a row without touching its key is no second row.
  EXPECT_EQ(mill_.Set(Screen(), "TbItens", {{"Qtde", "21"}}), ActResult::kDone);
}

TEST_F(ItemGrid, NothingLeavesAnEmptyGrid) {
  NewOrder();
  mill_.Desk().Enter(Screen().DBGrid6);
  EXPECT_EQ(mill_.Desk().SelectCell(Screen().DBGrid6, "Cor"), ActResult::kDone);
  EXPECT_EQ(mill_.Desk().SelectCell(Screen().DBGrid6, "Qtde"), ActResult::kDone);
  EXPECT_TRUE(Screen().TbItens.IsEmpty());
  EXPECT_EQ(mill_.Messages(), Lines());
}

}  // namespace
}  // namespace test
