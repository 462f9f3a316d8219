// Moving and typing in a grid.
#include "grid_fixture.h"

namespace test {
namespace {

TEST_F(GridTest, AnAppendedRowIsTypedCellByCellAndPosted) {
  EXPECT_EQ(toy.desk.AppendRow(*grid, {{"Codigo", "M1"}, {"Cor", "01"}, {"Qtde", "1.000,5"}}), ActResult::kDone);
  EXPECT_EQ(
      toy.TakeEvents(),
      "enter GrdItens | scroll  | tab Codigo | colexit Codigo | tab Cor | colexit Cor | tab Qtde | colexit Qtde | "
      "post M1");
  EXPECT_EQ(items->State(), DatasetState::kBrowse);
  EXPECT_EQ((*items)["Qtde"].AsFloat(), 1000.5);
  EXPECT_EQ(grid->SelectedField(), "Ciclos");
  EXPECT_EQ(toy.desk.AppendRow(*grid, {{"Codigo", "M2"}, {"Cor", "01"}}), ActResult::kDone);
  EXPECT_EQ(items->RecordCount(), 2u);
}

TEST_F(GridTest, ARowThatGivesItselfUpDisappearsWithoutAnError) {
  EXPECT_EQ(toy.desk.AppendRow(*grid, {{"Codigo", "M1"}}), ActResult::kDone);
  EXPECT_EQ(items->RecordCount(), 0u);
  EXPECT_EQ(items->State(), DatasetState::kBrowse);
}

TEST_F(GridTest, ARefusedCellStopsTheRowWithTheFormerValue) {
  EXPECT_EQ(toy.desk.AppendRow(*grid, {{"Codigo", "X"}, {"Cor", "01"}}), ActResult::kRefused);
  EXPECT_EQ(items->State(), DatasetState::kInsert);
  EXPECT_EQ(grid->SelectedField(), "Codigo");
  EXPECT_TRUE((*items)["Codigo"].IsNull());
  EXPECT_EQ(toy.desk.CancelRow(*grid), ActResult::kDone);
  EXPECT_EQ(items->RecordCount(), 0u);
}

TEST_F(GridTest, ARefusedCellOfAStoredRowGetsItsValueBackWithoutEvents) {
  Three();
  toy.desk.SelectCell(*grid, "Codigo");
  int changes = 0;
  (*items)["Codigo"].OnChange = [&changes](host::Field&) { ++changes; };
  EXPECT_EQ(toy.desk.TypeCell(*grid, "X"), ActResult::kDone);
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kTab), ActResult::kRefused);
  EXPECT_EQ((*items)["Codigo"].AsText(), "A");
  EXPECT_EQ(items->State(), DatasetState::kEdit);
  EXPECT_EQ(grid->SelectedField(), "Codigo");
  EXPECT_EQ(changes, 1);
}

TEST_F(GridTest, TheCellComesBackToWhatItHeldOnArrival) {
  Three();
  toy.desk.SelectCell(*grid, "Codigo");
  toy.desk.TypeCell(*grid, "Z");
  toy.desk.TypeCell(*grid, "X");
  EXPECT_EQ(toy.desk.SelectCell(*grid, "Qtde"), ActResult::kRefused);
  EXPECT_EQ((*items)["Codigo"].AsText(), "A");
  EXPECT_EQ(toy.desk.SelectCell(*grid, "Qtde"), ActResult::kDone);
}

TEST_F(GridTest, WhatALookupPutInAnEmptyGridVanishesWhenRefused) {
  toy.desk.Enter(*grid);
  grid->OnKeyDown = [this](Key key) {
    if (key != Key::kF4) return;
    items->Edit();
    (*items)["Codigo"].Set("X");
  };
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kF4), ActResult::kDone);
  EXPECT_EQ((*items)["Codigo"].AsText(), "X");
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kTab), ActResult::kRefused);
  EXPECT_TRUE((*items)["Codigo"].IsNull());
}

TEST_F(GridTest, AnAbortThatGaveTheRowUpLeavesItAsItWas) {
  Three();
  (*items)["Codigo"].OnValidate = [this](host::Field&) {
    items->Cancel();
    screen->Refuse("Produto já possui quantidade baixada.");
  };
  toy.desk.SelectCell(*grid, "Qtde");
  toy.desk.TypeCell(*grid, "99");
  toy.desk.SelectCell(*grid, "Codigo");
  EXPECT_EQ(toy.desk.TypeCell(*grid, "Z"), ActResult::kRefused);
  EXPECT_EQ(items->State(), DatasetState::kBrowse);
  EXPECT_EQ((*items)["Codigo"].AsText(), "A");
  EXPECT_EQ((*items)["Qtde"].AsFloat(), 10);
}

TEST_F(GridTest, AChangeHandlerThatRefusesPutsTheCellBack) {
  Three();
  (*items)["Cor"].OnChange = [](host::Field&) { throw host::Abort(); };
  toy.desk.SelectCell(*grid, "Cor");
  EXPECT_EQ(toy.desk.TypeCell(*grid, "02"), ActResult::kRefused);
  EXPECT_EQ((*items)["Cor"].AsText(), "01");
  EXPECT_TRUE(items->InEdit());
}

TEST_F(GridTest, TabLeavesTheCellForTheNextAndStaysOnTheLast) {
  Three();
  toy.desk.SelectCell(*grid, "Data");
  toy.notes.clear();
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kTab), ActResult::kDone);
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kTab), ActResult::kDone);
  EXPECT_EQ(grid->SelectedField(), "Sel");
  EXPECT_EQ(toy.TakeEvents(), "tab Data | colexit Data | tab Sel | colexit Sel");
  toy.desk.SelectCell(*grid, "Codigo");
  toy.desk.PressKey(*screen, Key::kEnter);
  EXPECT_EQ(grid->SelectedField(), "Descricao");
}

TEST_F(GridTest, AHandlerMaySendThePersonToAColumn) {
  Three();
  grid->OnColExit = [this] { grid->SelectColumn(grid->ColumnOf("Data")); };
  toy.desk.GridKey(*grid, Key::kTab);
  EXPECT_EQ(grid->SelectedField(), "Data");
}

TEST_F(GridTest, AKeyMaySendThePersonToAColumnAfterTheCellAgreed) {
  Three();
  grid->OnKeyDown = [this](Key) { grid->SelectColumn(grid->ColumnOf("Qtde")); };
  toy.desk.SelectCell(*grid, "Codigo");
  toy.TakeEvents();
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kTab), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "colexit Codigo");
  EXPECT_EQ(grid->SelectedField(), "Qtde");
  toy.desk.SelectCell(*grid, "Codigo");
  toy.desk.TypeCell(*grid, "X");
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kTab), ActResult::kRefused);
  EXPECT_EQ(grid->SelectedField(), "Codigo");
  EXPECT_EQ((*items)["Codigo"].AsText(), "A");
}

TEST_F(GridTest, AScreenMayPostInTheTabAndEditAgain) {
  Three();
  grid->OnKeyDown = [this](Key key) {
    if (key != Key::kTab) return;
    items->Post();
    items->Edit();
    (*items)["Descricao"].Set("achado");
  };
  toy.desk.SelectCell(*grid, "Codigo");
  toy.desk.TypeCell(*grid, "Q");
  toy.TakeEvents();
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kTab), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "post Q | colexit Codigo");
  EXPECT_EQ(items->State(), DatasetState::kEdit);
  EXPECT_EQ(toy.desk.SelectRow(*grid, 2), ActResult::kDone);
  EXPECT_EQ(items->ValueAt(1, 2).AsText(), "achado");
}

TEST_F(GridTest, AnotherControlLeavesTheCellButNotTheRow) {
  Three();
  toy.desk.SelectCell(*grid, "Qtde");
  toy.desk.TypeCell(*grid, "20");
  toy.TakeEvents();
  EXPECT_EQ(toy.desk.Enter(*edit), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "colexit Qtde | exit GrdItens | enter EdtNumero");
  EXPECT_EQ(items->State(), DatasetState::kEdit);
  EXPECT_EQ((*items)["Qtde"].AsFloat(), 20);
}

TEST_F(GridTest, ARefusedCellKeepsTheFocusInTheGrid) {
  Three();
  toy.desk.SelectCell(*grid, "Codigo");
  toy.desk.TypeCell(*grid, "X");
  EXPECT_EQ(toy.desk.Type(*edit, "1"), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Focused(), grid);
  EXPECT_EQ(edit->Text(), "");
  EXPECT_EQ((*items)["Codigo"].AsText(), "A");
}

TEST_F(GridTest, AnotherRowLeavesTheCellAndPosts) {
  Three();
  toy.desk.SelectCell(*grid, "Qtde");
  toy.desk.TypeCell(*grid, "20");
  toy.TakeEvents();
  EXPECT_EQ(toy.desk.SelectRow(*grid, 3), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "colexit Qtde | post A | scroll C");
  EXPECT_EQ(toy.desk.SelectRow(*grid, 3), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "");
  EXPECT_THROW(toy.desk.SelectRow(*grid, 4), ActError);
  EXPECT_THROW(toy.desk.SelectRow(*grid, 0), ActError);
}

TEST_F(GridTest, ARowIsFoundAlthoughPostingMovesIt) {
  Three();
  items->SetIndex("Codigo");
  toy.desk.SelectCell(*grid, "Codigo");
  toy.desk.TypeCell(*grid, "Z");
  EXPECT_EQ(toy.desk.SelectRow(*grid, 2), ActResult::kDone);
  EXPECT_EQ(Codes(), "BCZ");
  EXPECT_EQ((*items)["Codigo"].AsText(), "B");
}

TEST_F(GridTest, ARefusedPostStaysOnTheRow) {
  Three();
  items->BeforePost = [] { throw host::Abort(); };
  toy.desk.SelectCell(*grid, "Qtde");
  toy.desk.TypeCell(*grid, "20");
  EXPECT_EQ(toy.desk.SelectRow(*grid, 2), ActResult::kRefused);
  EXPECT_EQ(items->RecNo(), 1u);
  EXPECT_TRUE(items->InEdit());
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kEscape), ActResult::kDone);
  EXPECT_EQ((*items)["Qtde"].AsFloat(), 10);
}

TEST_F(GridTest, DownGoesOnAndAppendsAfterTheLast) {
  Three();
  toy.desk.SelectCell(*grid, "Cor");
  toy.desk.GridKey(*grid, Key::kDown);
  toy.desk.GridKey(*grid, Key::kDown);
  EXPECT_EQ((*items)["Codigo"].AsText(), "C");
  EXPECT_EQ(grid->SelectedField(), "Cor");
  toy.desk.GridKey(*grid, Key::kDown);
  EXPECT_EQ(items->State(), DatasetState::kInsert);
  EXPECT_EQ(grid->SelectedField(), "Codigo");  // a new row begins at its first cell that is typed
  toy.desk.GridKey(*grid, Key::kDown);         // the row without colour gives itself up
  EXPECT_EQ(items->State(), DatasetState::kBrowse);
  EXPECT_EQ(items->RecordCount(), 3u);
  toy.desk.GridKey(*grid, Key::kUp);
  EXPECT_EQ((*items)["Codigo"].AsText(), "B");
  grid->SetReadOnly(true);
  toy.desk.SelectRow(*grid, 3);
  toy.desk.GridKey(*grid, Key::kDown);
  EXPECT_EQ(items->State(), DatasetState::kBrowse);
}

TEST_F(GridTest, TypingIntoAnEmptyGridAppends) {
  toy.desk.SelectCell(*grid, "Cor");
  EXPECT_EQ(toy.desk.TypeCell(*grid, "01"), ActResult::kDone);
  EXPECT_EQ(items->State(), DatasetState::kInsert);
}

TEST_F(GridTest, CellsAreCheckedByTheirFields) {
  Three();
  const auto refused = [this](const char* field, const char* text) {
    toy.desk.SelectCell(*grid, field);
    toy.TakeEvents();
    EXPECT_EQ(toy.desk.TypeCell(*grid, text), ActResult::kRefused) << field;
    return toy.TakeEvents();
  };
  EXPECT_EQ(refused("Codigo", "123456"), "box Ordem: O campo \"Código\" aceita no máximo 5 caracteres. | end aborted");
  EXPECT_EQ(refused("Qtde", "1e400"), "box Ordem: O campo \"Qtde\" aceita somente números. | end aborted");
  EXPECT_EQ(refused("Ciclos", "1,5"), "box Ordem: O campo \"Ciclos\" aceita somente números inteiros. | end aborted");
  EXPECT_EQ(refused("Data", "31/02/2026"),
            "box Ordem: O campo \"Data\" aceita somente datas, como 31/12/2026. | end aborted");
  EXPECT_EQ(refused("Cor", "☃"), "box Ordem: O caractere \"☃\" não pode ser gravado. | end aborted");
  EXPECT_EQ(items->State(), DatasetState::kBrowse);
  toy.desk.SelectCell(*grid, "Ciclos");
  EXPECT_EQ(toy.desk.TypeCell(*grid, "1.000,0"), ActResult::kDone);
  EXPECT_EQ((*items)["Ciclos"].AsInteger(), 1000);
  toy.desk.SelectCell(*grid, "Data");
  EXPECT_EQ(toy.desk.TypeCell(*grid, "1/3/26"), ActResult::kDone);
  EXPECT_EQ((*items)["Data"].AsDate(), host::Date::FromParts(2026, 3, 1));
  EXPECT_EQ(toy.desk.TypeCell(*grid, ""), ActResult::kDone);
  EXPECT_TRUE((*items)["Data"].IsNull());
}

TEST_F(GridTest, TicksAreYesOrNo) {
  Three();
  EXPECT_EQ(toy.desk.SetRow(*grid, {{"Sel", "S"}}), ActResult::kDone);
  EXPECT_EQ((*items)["Sel"].AsText(), "S");
  EXPECT_EQ(toy.desk.SetRow(*grid, {{"Sel", ""}}), ActResult::kDone);
  EXPECT_EQ((*items)["Sel"].AsText(), "N");
  EXPECT_THROW(toy.desk.SetRow(*grid, {{"Sel", "X"}}), ActError);
}

TEST_F(GridTest, WhatIsReadOnlyOrAbsentCannotBeTyped) {
  Three();
  EXPECT_THROW(toy.desk.SetRow(*grid, {{"Qtde", "5"}, {"Descricao", "x"}}), ActError);
  EXPECT_EQ((*items)["Qtde"].AsFloat(), 10);  // nothing happened, the first cell included
  EXPECT_THROW(toy.desk.AppendRow(*grid, {{"Nada", "x"}}), ActError);
  EXPECT_THROW(toy.desk.SelectCell(*grid, "Nada"), ActError);
  grid->SetReadOnly(true);
  toy.desk.SelectCell(*grid, "Qtde");
  EXPECT_THROW(toy.desk.TypeCell(*grid, "5"), ActError);
  EXPECT_THROW(toy.desk.AppendRow(*grid, {}), ActError);
  EXPECT_THROW(toy.desk.DeleteRow(*grid), ActError);
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kDelete), ActResult::kDone);
  EXPECT_EQ(items->RecordCount(), 3u);
  EXPECT_EQ(toy.desk.SelectRow(*grid, 2), ActResult::kDone);
  grid->SetReadOnly(false);
  grid->SetEnabled(false);
  EXPECT_THROW(toy.desk.SelectRow(*grid, 1), ActError);
}

TEST_F(GridTest, SettingCellsPostsTheRow) {
  Three();
  toy.desk.SelectRow(*grid, 2);
  toy.TakeEvents();
  EXPECT_EQ(toy.desk.SetRow(*grid, {{"Cor", "02"}, {"Qtde", "5"}}), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "tab Cor | colexit Cor | tab Qtde | colexit Qtde | post B");
  EXPECT_EQ(items->RecNo(), 2u);
  items->Empty();
  EXPECT_THROW(toy.desk.SetRow(*grid, {{"Cor", "02"}}), ActError);
}

TEST_F(GridTest, RowsAreDeletedUnlessTheScreenRefuses) {
  Three();
  EXPECT_EQ(toy.desk.DeleteRow(*grid), ActResult::kDone);
  EXPECT_EQ(Codes(), "BC");
  items->BeforeDelete = [this] { screen->Refuse("Lote com baixas. Impossível excluir."); };
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kDelete), ActResult::kRefused);
  EXPECT_EQ(Codes(), "BC");
  items->BeforeDelete = {};
  toy.desk.GridKey(*grid, Key::kDelete);
  toy.desk.DeleteRow(*grid);
  EXPECT_THROW(toy.desk.DeleteRow(*grid), ActError);
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kDelete), ActResult::kDone);
}

}  // namespace
}  // namespace test
