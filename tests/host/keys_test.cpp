// F4 on an input, function keys of buttons, and what comes first when several want a key.
#include <gtest/gtest.h>

#include "toy.h"

namespace {

using host::ActError;
using host::ActResult;
using host::Button;
using host::Edit;
using host::EditKind;
using host::Grid;
using host::Key;
using test::Toy;
using test::ToyScreen;

class KeysTest : public ::testing::Test {
 protected:
  KeysTest() {
    screen = &toy.Open("TfmOrdem", [this](ToyScreen& s) {
      number = &s.Add<Edit>("EdtNumero", "Número");
      mill = &s.Add<Edit>("EdtMalharia", "Malharia");
      lookup = &s.Add<host::TPesquisa>("PqMalharia", "ENTIDADE", "CODCLI");
      remarks = &s.Add<Edit>("EdtObs", "Observações", EditKind::kMemo);
      items = &s.Add<host::Dataset>("TbItens", std::vector<host::FieldDef>{{"Codigo"}, {"Cor"}});
      grid = &s.Add<Grid>("GrdItens", *items, std::vector<host::GridColumn>{{"Codigo"}, {"Cor"}});
      pages = &s.Add<host::PageControl>("Paginas", std::vector<std::string>{"Um", "Dois"});
      confirm = &s.Add<Button>("BtnConfirma", "Confirmar", [this] { toy.notes.emplace_back("confirmed"); });
      mill->Lookup = lookup;
      lookup->OnFechaPesquisa = [this] { mill->SetText(lookup->RetornoPesquisa("CODCLI").AsText()); };
      confirm->Shortcut = Key::kF8;
    });
    toy.environment.lookup_answer = host::LookupRow{{"CODCLI", "000100"}};
  }
  ActResult Press(Key key) {
    toy.notes.clear();
    return toy.desk.PressKey(*screen, key);
  }
  std::size_t Lookups() const { return toy.environment.lookups.size(); }

  Toy toy;
  ToyScreen* screen = nullptr;
  Edit* number = nullptr;
  Edit* mill = nullptr;
  host::TPesquisa* lookup = nullptr;
  Edit* remarks = nullptr;
  host::Dataset* items = nullptr;
  Grid* grid = nullptr;
  host::PageControl* pages = nullptr;
  Button* confirm = nullptr;
};

// --- lookups ---------------------------------------------------------------------------------------------------------

TEST_F(KeysTest, F4OpensTheLookupOfTheInput) {
  toy.desk.Enter(*mill);
  EXPECT_EQ(Press(Key::kF4), ActResult::kDone);
  EXPECT_EQ(toy.environment.lookups, std::vector<std::string>{"PqMalharia"});
  EXPECT_EQ(mill->Text(), "000100");
  EXPECT_EQ(toy.desk.Focused(), mill);
}

TEST_F(KeysTest, F4ElsewhereOpensNothing) {
  EXPECT_EQ(Press(Key::kF4), ActResult::kDone);  // nobody has the focus
  toy.desk.Enter(*number);
  EXPECT_EQ(Press(Key::kF4), ActResult::kDone);
  toy.desk.Enter(*grid);
  EXPECT_EQ(Press(Key::kF4), ActResult::kDone);
  toy.desk.Enter(*confirm);
  EXPECT_EQ(Press(Key::kF4), ActResult::kDone);
  EXPECT_EQ(Press(Key::kF3), ActResult::kDone);
  EXPECT_EQ(Lookups(), 0u);
}

TEST_F(KeysTest, AnInputThatCannotBeTypedIntoOpensNoLookup) {
  mill->SetReadOnly(true);
  toy.desk.Enter(*mill);
  EXPECT_EQ(Press(Key::kF4), ActResult::kDone);
  mill->SetReadOnly(false);
  mill->SetEnabled(false);
  EXPECT_EQ(Press(Key::kF4), ActResult::kDone);
  mill->SetEnabled(true);
  mill->SetVisible(false);
  EXPECT_EQ(Press(Key::kF4), ActResult::kDone);
  EXPECT_EQ(Lookups(), 0u);
}

TEST_F(KeysTest, TheScreenOrARefusalComesBeforeTheLookup) {
  toy.desk.Enter(*mill);
  screen->on_key = [](Key key) { return key == Key::kF4; };
  EXPECT_EQ(Press(Key::kF4), ActResult::kDone);
  screen->on_key = {};
  mill->OnKeyDown = [](Key) { throw host::Abort(); };
  EXPECT_EQ(Press(Key::kF4), ActResult::kRefused);
  mill->OnKeyDown = [this](Key) { number->SetFocus(); };
  EXPECT_EQ(Press(Key::kF4), ActResult::kDone);
  EXPECT_EQ(toy.desk.Focused(), number);
  EXPECT_EQ(Lookups(), 0u);
}

TEST_F(KeysTest, AnUnansweredLookupChangesNothing) {
  toy.environment.lookup_answer.reset();
  mill->SetText("000200");
  toy.desk.Enter(*mill);
  EXPECT_EQ(Press(Key::kF4), ActResult::kDone);
  EXPECT_EQ(Lookups(), 1u);
  EXPECT_EQ(mill->Text(), "000200");
}

// --- function keys of buttons ----------------------------------------------------------------------------------------

TEST_F(KeysTest, AFunctionKeyPressesItsButtonWhereverTheFocusIs) {
  EXPECT_EQ(Press(Key::kF8), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "confirmed");
  for (host::Control* control : std::initializer_list<host::Control*>{number, mill, remarks, confirm}) {
    toy.desk.Enter(*control);
    EXPECT_EQ(Press(Key::kF8), ActResult::kDone);
    EXPECT_EQ(toy.TakeEvents(), "confirmed") << control->Name();
    EXPECT_EQ(toy.desk.Focused(), confirm) << control->Name();
  }
  EXPECT_EQ(Press(Key::kF9), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "");
}

TEST_F(KeysTest, FromAGridTheCellIsLeftFirst) {
  items->Append();
  grid->OnColExit = [this] { toy.notes.push_back("colexit " + (*items)["Codigo"].AsText()); };
  grid->OnExit = [this] { toy.notes.emplace_back("exit"); };
  toy.desk.Enter(*grid);
  toy.desk.TypeCell(*grid, "M1");
  EXPECT_EQ(Press(Key::kF8), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "colexit M1 | exit | confirmed");
  grid->OnColExit = [] { throw host::Abort(); };
  toy.desk.Enter(*grid);
  EXPECT_EQ(Press(Key::kF8), ActResult::kRefused);
  EXPECT_EQ(toy.TakeEvents(), "end aborted");
  EXPECT_EQ(toy.desk.Focused(), grid);
}

TEST_F(KeysTest, ARefusedExitIsNotPassedByAFunctionKey) {
  mill->OnExit = [this] { screen->Refuse("Cliente não encontrado."); };
  toy.desk.Enter(*mill);
  EXPECT_EQ(Press(Key::kF8), ActResult::kRefused);
  EXPECT_EQ(toy.TakeEvents(), "box Ordem: Cliente não encontrado. | end aborted");
  EXPECT_EQ(toy.desk.Focused(), mill);
}

TEST_F(KeysTest, AButtonThatCannotBePressedIsNotPressed) {
  toy.desk.Enter(*number);
  confirm->SetEnabled(false);
  EXPECT_EQ(Press(Key::kF8), ActResult::kDone);
  confirm->SetEnabled(true);
  confirm->SetVisible(false);
  EXPECT_EQ(Press(Key::kF8), ActResult::kDone);
  confirm->SetVisible(true);
  confirm->StandOn(*pages, 1);
  EXPECT_EQ(Press(Key::kF8), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "");
  EXPECT_EQ(toy.desk.Focused(), number);
  EXPECT_EQ(pages->ActivePage(), 0);
  pages->SetActivePage(1);
  EXPECT_EQ(Press(Key::kF8), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "confirmed");
}

TEST_F(KeysTest, TheScreenComesBeforeTheButtonAlsoInAGrid) {
  screen->on_key = [](Key key) { return key == Key::kF8; };
  toy.desk.Enter(*number);
  EXPECT_EQ(Press(Key::kF8), ActResult::kDone);
  toy.desk.Enter(*grid);
  EXPECT_EQ(Press(Key::kF8), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "");
  screen->on_key = {};
  grid->OnKeyDown = [](Key) { throw host::Abort(); };
  EXPECT_EQ(Press(Key::kF8), ActResult::kRefused);
  EXPECT_EQ(toy.TakeEvents(), "end aborted");
}

TEST_F(KeysTest, TheLookupComesBeforeAButtonOfTheSameKey) {
  confirm->Shortcut = Key::kF4;
  toy.desk.Enter(*mill);
  EXPECT_EQ(Press(Key::kF4), ActResult::kDone);
  EXPECT_EQ(Lookups(), 1u);
  EXPECT_EQ(toy.TakeEvents(), "wait");
  toy.desk.Enter(*number);
  EXPECT_EQ(Press(Key::kF4), ActResult::kDone);
  EXPECT_EQ(Lookups(), 1u);
  EXPECT_EQ(toy.TakeEvents(), "confirmed");
}

TEST_F(KeysTest, ButtonsWithoutAFunctionKeyHearNone) {
  confirm->Shortcut = Key::kNone;
  EXPECT_EQ(Press(Key::kNone), ActResult::kDone);
  EXPECT_EQ(Press(Key::kF8), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "");
}

// --- grids and menus -------------------------------------------------------------------------------------------------

TEST_F(KeysTest, InAReadOnlyGridTabAndEnterGoOn) {
  items->Append();
  items->Post();
  grid->SetReadOnly(true);
  grid->OnExit = [this] { toy.notes.emplace_back("exit"); };
  toy.desk.Enter(*grid);
  EXPECT_EQ(Press(Key::kEnter), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "exit");
  EXPECT_EQ(toy.desk.Focused(), confirm);
  toy.desk.Enter(*grid);
  EXPECT_EQ(Press(Key::kTab), ActResult::kDone);
  EXPECT_EQ(toy.desk.Focused(), confirm);
  EXPECT_EQ(grid->SelectedColumn(), 0);
  grid->OnKeyDown = [](Key) { throw host::Abort(); };
  toy.desk.Enter(*grid);
  EXPECT_EQ(Press(Key::kEnter), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Focused(), grid);
}

TEST_F(KeysTest, TheMenuOfTheFocusedControlComesFirst) {
  auto& of_number = screen->Add<host::PopupMenu>("PopNumero");
  auto& of_mill = screen->Add<host::PopupMenu>("PopMalharia");
  of_number.Add("Copiar1", "&Copiar", [this] { toy.notes.emplace_back("number"); });
  of_mill.Add("Copiar2", "Copiar", [this] { toy.notes.emplace_back("mill"); });
  number->Popup = &of_number;
  mill->Popup = &of_mill;
  toy.desk.Enter(*mill);
  toy.notes.clear();
  EXPECT_EQ(toy.desk.PickMenu(*screen, "Copiar"), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "mill");
  EXPECT_EQ(toy.desk.Focused(), mill);
  toy.desk.Enter(*confirm);
  toy.notes.clear();
  EXPECT_EQ(toy.desk.PickMenu(*screen, "Copiar"), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "number");
  of_number.Find("Copiar1")->visible = false;
  EXPECT_THROW(toy.desk.PickMenu(*screen, "Copiar"), ActError);
}

}  // namespace
