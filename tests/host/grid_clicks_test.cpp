// Keys, clicks, ticks and menus of a grid, and what its columns and dataset tell a view.
#include "grid_fixture.h"

namespace test {
namespace {

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
}  // namespace test
