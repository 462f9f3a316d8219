// An input that says itself where Tab and Enter lead.
#include <gtest/gtest.h>

#include "toy.h"

namespace {

using host::ActResult;
using host::Button;
using host::Edit;
using host::Grid;
using host::Key;
using test::Toy;
using test::ToyScreen;

/// Remarks, then what stands between them and the button that a price is confirmed with.
class GoesOn : public ::testing::Test {
 protected:
  GoesOn() {
    screen = &toy.Open("TfmPreco", [this](ToyScreen& s) {
      pages = &s.Add<host::PageControl>("Paginas", std::vector<std::string>{"Acesso", "Manutenção"});
      price = &s.Add<Edit>("EdtCusto", "Custo");
      remarks = &s.Add<Edit>("EdtObs", "Observação");
      include = &s.Add<Button>("BtnIncluir", "&Incluir", [this] { toy.notes.emplace_back("included"); });
      confirm = &s.Add<Button>("BtnConfirma", "&Confirmar", [this] { toy.notes.emplace_back("confirmed"); });
      give_up = &s.Add<Button>("BtnDesistir", "&Desistir", [this] { toy.notes.emplace_back("gave up"); });
      remarks->GoesOnTo = confirm;
      for (host::Control* control : std::initializer_list<host::Control*>{price, remarks, include, confirm, give_up}) {
        s.Watch(*control);
      }
    });
    toy.desk.Enter(*remarks);
    toy.notes.clear();
  }
  host::Control* After(Key key) {
    EXPECT_EQ(toy.desk.PressKey(*screen, key), ActResult::kDone);
    return toy.desk.Focused();
  }

  Toy toy;
  ToyScreen* screen = nullptr;
  host::PageControl* pages = nullptr;
  Edit* price = nullptr;
  Edit* remarks = nullptr;
  Button* include = nullptr;
  Button* confirm = nullptr;
  Button* give_up = nullptr;
};

TEST_F(GoesOn, TabAndEnterLeadThere) {
  EXPECT_EQ(After(Key::kTab), confirm);
  EXPECT_EQ(toy.TakeEvents(), "exit EdtObs | enter BtnConfirma");
  toy.desk.Enter(*remarks);
  toy.notes.clear();
  EXPECT_EQ(After(Key::kEnter), confirm);
  EXPECT_EQ(toy.TakeEvents(), "exit EdtObs | enter BtnConfirma");
  EXPECT_EQ(After(Key::kTab), give_up);
}

TEST_F(GoesOn, AScreenThatMovesTheFocusByItselfObeysToo) {
  screen->on_key = [this](Key key) {
    if (key == Key::kEnter) toy.desk.MoveFocus(*screen, false);
    return key == Key::kEnter;
  };
  EXPECT_EQ(After(Key::kEnter), confirm);
}

TEST_F(GoesOn, AClickGoesWhereItWasAimed) {
  EXPECT_EQ(toy.desk.Click(*give_up), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "exit EdtObs | enter BtnDesistir | gave up");
  toy.desk.Enter(*remarks);
  EXPECT_EQ(toy.desk.Enter(*include), ActResult::kDone);
  EXPECT_EQ(toy.desk.Focused(), include);
}

TEST_F(GoesOn, ShiftTabGoesBack) {
  EXPECT_EQ(toy.desk.MoveFocus(*screen, true), ActResult::kDone);
  EXPECT_EQ(toy.desk.Focused(), price);
}

TEST_F(GoesOn, WhereTheFocusCannotGoTheNextOneIsTaken) {
  confirm->SetEnabled(false);
  EXPECT_EQ(After(Key::kTab), include);
  confirm->SetEnabled(true);
  confirm->SetVisible(false);
  toy.desk.Enter(*remarks);
  EXPECT_EQ(After(Key::kTab), include);
  confirm->SetVisible(true);
  confirm->StandOn(*pages, 1);
  toy.desk.Enter(*remarks);
  EXPECT_EQ(After(Key::kTab), include);
  EXPECT_EQ(pages->ActivePage(), 0);
}

TEST_F(GoesOn, AnotherScreensControlIsNoWayOn) {
  Button* elsewhere = nullptr;
  toy.Open("TfmOutra", [&](ToyScreen& s) { elsewhere = &s.Add<Button>("BtnOk", "OK"); });
  remarks->GoesOnTo = elsewhere;
  toy.desk.Enter(*remarks);
  EXPECT_EQ(After(Key::kTab), include);
}

TEST_F(GoesOn, AnExitThatRefusesKeepsTheFocus) {
  remarks->OnExit = [] { throw host::Abort(); };
  EXPECT_EQ(toy.desk.PressKey(*screen, Key::kTab), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Focused(), remarks);
}

TEST_F(GoesOn, AReadOnlyGridObeys) {
  auto& rows = screen->Add<host::Dataset>("TbPrecos", std::vector<host::FieldDef>{{"Codigo"}});
  auto& grid = screen->Add<Grid>("DBGrid2", rows, std::vector<host::GridColumn>{{"Codigo"}});
  grid.SetReadOnly(true);
  grid.GoesOnTo = price;
  toy.desk.Enter(grid);
  EXPECT_EQ(After(Key::kEnter), price);
}

}  // namespace
