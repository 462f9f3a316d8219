// Moving and typing in a grid.
#include <gtest/gtest.h>

#include <utility>

#include "toy.h"

namespace {

using host::ActError;
using host::ActResult;
using host::Dataset;
using host::DatasetState;
using host::Edit;
using host::FieldType;
using host::Grid;
using host::Key;
using test::Toy;
using test::ToyScreen;

class GridTest : public ::testing::Test {
 protected:
  GridTest() {
    screen = &toy.Open("TfmOrdem", [this](ToyScreen& s) {
      edit = &s.Add<Edit>("EdtNumero", "Número");
      items = &s.Add<Dataset>("TbItens", std::vector<host::FieldDef>{{"Sel", FieldType::kText, 1},
                                                                     {"Codigo", FieldType::kText, 5, "", "Código"},
                                                                     {"Descricao", FieldType::kText, 20},
                                                                     {"Cor", FieldType::kText, 6},
                                                                     {"Qtde", FieldType::kFloat, 0, "0.00"},
                                                                     {"Ciclos", FieldType::kInteger},
                                                                     {"Data", FieldType::kDate}});
      grid = &s.Add<Grid>("GrdItens", *items,
                          std::vector<host::GridColumn>{{"Codigo"},
                                                        {"Descricao", "", 0, true},
                                                        {"Cor"},
                                                        {"Qtde"},
                                                        {"Ciclos"},
                                                        {"Data"},
                                                        {"Sel", "", 0, false, true}});
      s.Watch(*edit);
      s.Watch(*grid);
    });
    items->BeforePost = [this] {
      if ((*items)["Cor"].AsText().empty()) items->Cancel();
    };
    items->AfterPost = [this] { toy.notes.push_back("post " + (*items)["Codigo"].AsText()); };
    items->AfterScroll = [this] { toy.notes.push_back("scroll " + (*items)["Codigo"].AsText()); };
    grid->OnColExit = [this] {
      toy.notes.push_back("colexit " + grid->SelectedField());
      if (grid->SelectedField() == "Codigo" && (*items)["Codigo"].AsText() == "X")
        screen->Refuse("Material não cadastrado.");
    };
    grid->OnKeyDown = [this](Key key) {
      if (key == Key::kTab) toy.notes.push_back("tab " + grid->SelectedField());
      if (key == Key::kF4) toy.notes.push_back("F4 " + grid->SelectedField());
    };
  }
  void Three() {
    for (const char* code : {"A", "B", "C"}) {
      items->Append();
      (*items)["Codigo"].Set(code);
      (*items)["Cor"].Set("01");
      (*items)["Qtde"].Set(10);
      items->Post();
    }
    items->First();
    toy.notes.clear();
  }
  std::string Codes() {
    std::string codes;
    for (std::size_t row = 1; row <= items->RecordCount(); ++row) codes += items->ValueAt(row, 1).AsText();
    return codes;
  }

  Toy toy;
  ToyScreen* screen = nullptr;
  Edit* edit = nullptr;
  Dataset* items = nullptr;
  Grid* grid = nullptr;
};

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

TEST_F(GridTest, KeysReachTheGridAndThenTheScreen) {
  Three();
  screen->on_key = [this](Key) {
    toy.notes.emplace_back("screen");
    return true;
  };
  toy.desk.Enter(*grid);
  toy.TakeEvents();
  toy.desk.PressKey(*screen, Key::kF4);
  EXPECT_EQ(toy.TakeEvents(), "F4 Codigo | screen");
}

TEST_F(GridTest, ClicksAndDoubleClicks) {
  Three();
  grid->OnClick = [this] { toy.notes.push_back("click " + (*items)["Codigo"].AsText()); };
  grid->OnDblClick = [this] { toy.notes.push_back("dblclick " + (*items)["Codigo"].AsText()); };
  EXPECT_EQ(toy.desk.ClickRow(*grid, 2), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "enter GrdItens | scroll B | click B");
  EXPECT_EQ(toy.desk.DblClick(*grid), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "dblclick B");
}

TEST_F(GridTest, ItsMenuKnowsTheSelectedColumn) {
  Three();
  auto& menu = screen->Add<host::PopupMenu>("PopupMenu1");
  menu.Add("Metros", "Calcular Metros", [this] { toy.notes.emplace_back("metres"); });
  menu.OnPopup = [this, &menu] { menu.Find("Metros")->visible = grid->SelectedField() == "Qtde"; };
  grid->Popup = &menu;
  toy.desk.SelectCell(*grid, "Cor");
  EXPECT_THROW(toy.desk.PickMenu(*screen, "Calcular Metros"), ActError);
  toy.desk.SelectCell(*grid, "Qtde");
  toy.TakeEvents();
  EXPECT_EQ(toy.desk.PickMenu(*screen, "Calcular Metros"), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "metres");
}

TEST_F(GridTest, ColumnsFollowFieldsThatWereRebuilt) {
  items->CreateFields({{"Codigo", FieldType::kText, 15}, {"01", FieldType::kText, 6}});
  grid->SetColumns({{"Codigo"}, {"01", "01|Azul"}});
  items->BeforePost = {};
  grid->OnColExit = {};
  EXPECT_EQ(toy.desk.AppendRow(*grid, {{"Codigo", "F1"}, {"01", "AZ"}}), ActResult::kDone);
  EXPECT_EQ((*items)["01"].AsText(), "AZ");
  grid->SetColumns({});
  EXPECT_EQ(grid->SelectedColumn(), -1);
  EXPECT_EQ(grid->SelectedField(), "");
  EXPECT_THROW(toy.desk.TypeCell(*grid, "x"), ActError);
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kTab), ActResult::kDone);
}

TEST_F(GridTest, AClickOnACellLeavesTheFormerCellOnce) {
  Three();
  ASSERT_EQ(toy.desk.SelectCell(*grid, "Cor"), ActResult::kDone);
  grid->OnClick = [this] { toy.notes.push_back("click " + grid->SelectedField()); };
  toy.notes.clear();
  EXPECT_EQ(toy.desk.ClickCell(*grid, 3, "Qtde"), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "colexit Cor | scroll C | click Qtde");
  EXPECT_EQ(toy.desk.ClickCell(*grid, 3, "Qtde"), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "click Qtde");
  EXPECT_THROW(toy.desk.ClickCell(*grid, 4, "Qtde"), ActError);
  EXPECT_THROW(toy.desk.ClickCell(*grid, 1, "Nada"), ActError);
}

TEST_F(GridTest, AClickIsRefusedWithTheCellThatIsNotLeft) {
  Three();
  ASSERT_EQ(toy.desk.SelectCell(*grid, "Codigo"), ActResult::kDone);
  ASSERT_EQ(toy.desk.TypeCell(*grid, "X"), ActResult::kDone);
  EXPECT_EQ(toy.desk.ClickCell(*grid, 3, "Qtde"), ActResult::kRefused);
  EXPECT_EQ(items->RecNo(), 1u);
  EXPECT_EQ(grid->SelectedField(), "Codigo");
  EXPECT_EQ((*items)["Codigo"].AsText(), "A");
}

TEST_F(GridTest, ATickLeavesTheCellAndPostsTheRow) {
  Three();
  ASSERT_EQ(toy.desk.SelectCell(*grid, "Sel"), ActResult::kDone);
  toy.notes.clear();
  EXPECT_EQ(toy.desk.TickCell(*grid, true), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "colexit Sel | post A");
  EXPECT_EQ(items->ValueAt(1, 0).AsText(), "S");
  EXPECT_EQ(grid->SelectedField(), "Sel");
  EXPECT_EQ(toy.desk.TickCell(*grid, false), ActResult::kDone);
  EXPECT_EQ(items->ValueAt(1, 0).AsText(), "N");
}

TEST_F(GridTest, ATickInANewRowLeavesItOpen) {
  Three();
  items->Append();
  ASSERT_EQ(toy.desk.SelectCell(*grid, "Sel"), ActResult::kDone);
  EXPECT_EQ(toy.desk.TickCell(*grid, true), ActResult::kDone);
  EXPECT_EQ(items->State(), DatasetState::kInsert);
  EXPECT_EQ((*items)["Sel"].AsText(), "S");
}

TEST_F(GridTest, UpFromANewRowThatGivesItselfUpGoesOneRowUp) {
  Three();
  toy.desk.SelectRow(*grid, 3);
  ASSERT_EQ(toy.desk.GridKey(*grid, Key::kDown), ActResult::kDone);
  ASSERT_EQ(items->State(), DatasetState::kInsert);
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kUp), ActResult::kDone);
  EXPECT_EQ(items->State(), DatasetState::kBrowse);
  EXPECT_EQ(items->RecNo(), 3u);
  EXPECT_EQ(toy.desk.GridKey(*grid, Key::kUp), ActResult::kDone);
  EXPECT_EQ(items->RecNo(), 2u);
}

TEST_F(GridTest, ADatasetCountsItsChangesAndNotItsMoves) {
  Three();
  std::size_t seen = items->Changes();
  const auto grew = [&] { return items->Changes() > std::exchange(seen, items->Changes()); };
  items->Last();
  items->First();
  items->Locate("Codigo", {"B"});
  EXPECT_FALSE(grew());
  items->Edit();
  EXPECT_FALSE(grew());
  (*items)["Qtde"].Set(11);
  EXPECT_TRUE(grew());
  items->Post();
  EXPECT_TRUE(grew());
  items->Append();
  EXPECT_TRUE(grew());
  items->Cancel();
  EXPECT_TRUE(grew());
  items->SetFilter("Codigo <> 'A'");
  items->SetFiltered(true);
  EXPECT_TRUE(grew());
  items->SetIndex("Codigo");
  EXPECT_TRUE(grew());
  items->Delete();
  EXPECT_TRUE(grew());
  items->Empty();
  EXPECT_TRUE(grew());
  items->Close();
  EXPECT_TRUE(grew());
}

}  // namespace
