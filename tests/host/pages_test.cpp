// Controls on pages: out of sight they are passed over, and whoever goes to one turns the pages to it.
#include <gtest/gtest.h>

#include "toy.h"

namespace {

using host::ActError;
using host::ActResult;
using host::Button;
using host::Edit;
using host::Key;
using host::PageControl;
using test::Toy;
using test::ToyScreen;

class PagesTest : public ::testing::Test {
 protected:
  PagesTest() {
    screen = &toy.Open("TfmOrdem", [this](ToyScreen& s) {
      number = &s.Add<Edit>("EdtNumero", "Número");
      outer = &s.Add<PageControl>("Paginas", std::vector<std::string>{"Acesso", "Manutenção"});
      search = &s.Add<Edit>("EdtBusca", "Busca");
      mill = &s.Add<Edit>("EdtMalharia", "Malharia");
      inner = &s.Add<PageControl>("Detalhes", std::vector<std::string>{"Itens", "Observações"});
      code = &s.Add<Edit>("EdtCodigo", "Código");
      remarks = &s.Add<Edit>("EdtObs", "Observações");
      save = &s.Add<Button>("BtnGravar", "&Gravar", [this] { toy.notes.emplace_back("saved"); });
      outer->Place(0, {search});
      outer->Place(1, {mill, inner});
      inner->Place(0, {code});
      inner->Place(1, {remarks});
      for (host::Control* control : std::initializer_list<host::Control*>{number, search, mill, code, remarks, save}) {
        s.Watch(*control);
      }
    });
  }
  std::string Pages() const { return std::to_string(outer->ActivePage()) + "/" + std::to_string(inner->ActivePage()); }
  /// Names of the controls that Tab passes through, from the one that has the focus until it comes round.
  std::string Round(bool back = false) {
    const host::Control* start = toy.desk.Focused();
    std::string names;
    do {
      toy.desk.MoveFocus(*screen, back);
      names += (names.empty() ? "" : " ") + toy.desk.Focused()->Name();
    } while (toy.desk.Focused() != start && names.size() < 200);
    return names;
  }

  Toy toy;
  ToyScreen* screen = nullptr;
  Edit* number = nullptr;
  PageControl* outer = nullptr;
  Edit* search = nullptr;
  Edit* mill = nullptr;
  PageControl* inner = nullptr;
  Edit* code = nullptr;
  Edit* remarks = nullptr;
  Button* save = nullptr;
};

TEST_F(PagesTest, TheControlKnowsItsPage) {
  EXPECT_EQ(number->Pages(), nullptr);
  EXPECT_EQ(remarks->Pages(), inner);
  EXPECT_EQ(remarks->Page(), 1);
  EXPECT_TRUE(number->InSight());
  EXPECT_TRUE(search->InSight());
  EXPECT_FALSE(mill->InSight());
  EXPECT_FALSE(code->InSight()) << "its own page is the active one, but the pages around it are not in sight";
  outer->SetActivePage(1);
  EXPECT_TRUE(code->InSight());
  EXPECT_FALSE(remarks->InSight());
  code->SetVisible(false);
  EXPECT_FALSE(code->InSight());
}

TEST_F(PagesTest, TabPassesOverWhatIsOutOfSight) {
  toy.desk.Enter(*number);
  EXPECT_EQ(Round(), "EdtBusca BtnGravar EdtNumero");
  outer->SetActivePage(1);
  EXPECT_EQ(Round(), "EdtMalharia EdtCodigo BtnGravar EdtNumero");
  inner->SetActivePage(1);
  EXPECT_EQ(Round(), "EdtMalharia EdtObs BtnGravar EdtNumero");
  EXPECT_EQ(Round(true), "BtnGravar EdtObs EdtMalharia EdtNumero");
  EXPECT_EQ(Pages(), "1/1") << "Tab turns no pages";
}

TEST_F(PagesTest, TabGoesOnFromAControlThatCameOutOfSight) {
  toy.desk.Enter(*search);
  outer->SetActivePage(1);
  toy.TakeEvents();
  EXPECT_EQ(toy.desk.PressKey(*screen, Key::kTab), ActResult::kDone);
  EXPECT_EQ(toy.desk.Focused(), mill);
  EXPECT_EQ(toy.TakeEvents(), "exit EdtBusca | enter EdtMalharia");
}

TEST_F(PagesTest, TabPassesOverWhatCannotBeTypedInto) {
  search->SetReadOnly(true);
  toy.desk.Enter(*number);
  EXPECT_EQ(Round(), "BtnGravar EdtNumero");
  // The program may point at it all the same.
  search->SetFocus();
  EXPECT_EQ(toy.desk.Focused(), search);
  toy.desk.PressKey(*screen, Key::kEnter);
  EXPECT_EQ(toy.desk.Focused(), save);
}

TEST_F(PagesTest, EnteringTurnsThePagesTheOutermostFirst) {
  outer->OnViewChange = [this] { toy.notes.push_back("outer " + Pages()); };
  inner->OnViewChange = [this] { toy.notes.push_back("inner " + Pages()); };
  EXPECT_EQ(toy.desk.Enter(*remarks), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "outer 1/0 | inner 1/1 | enter EdtObs");
  EXPECT_TRUE(remarks->InSight());
  toy.desk.Leave();
  EXPECT_EQ(toy.desk.Type(*search, "1"), ActResult::kDone);
  EXPECT_EQ(Pages(), "0/1");
}

TEST_F(PagesTest, TheProgramsFocusTurnsThePages) {
  save->OnClick = [this] { screen->Refuse("Informe a malharia.", *mill); };
  EXPECT_EQ(toy.desk.Click(*save), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Focused(), mill);
  EXPECT_EQ(Pages(), "1/0");
}

TEST_F(PagesTest, ARefusedExitIsTurnedBackTo) {
  toy.desk.Enter(*search);
  search->OnExit = [this] { screen->Refuse("Nada encontrado."); };
  outer->SetActivePage(1);
  EXPECT_EQ(toy.desk.Enter(*mill), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Focused(), search);
  EXPECT_EQ(Pages(), "0/0");
}

TEST_F(PagesTest, APageIsChosenOnlyWhenTheInputIsLeft) {
  toy.desk.Enter(*search);
  search->OnExit = [this] { screen->Refuse("Nada encontrado."); };
  EXPECT_EQ(toy.desk.ChoosePage(*outer, "Manutenção"), ActResult::kRefused);
  EXPECT_EQ(Pages(), "0/0");
  search->OnExit = {};
  EXPECT_EQ(toy.desk.ChoosePage(*outer, "Manutenção"), ActResult::kDone);
  EXPECT_EQ(Pages(), "1/0");
  EXPECT_EQ(toy.desk.Focused(), nullptr);
}

TEST_F(PagesTest, WhatStandsOnHiddenOrDisabledPagesIsOutOfReach) {
  outer->SetActivePage(1);
  outer->SetVisible(false);
  EXPECT_FALSE(code->InSight());
  EXPECT_THROW(toy.desk.Enter(*code), ActError);
  code->SetFocus();
  EXPECT_EQ(toy.desk.Focused(), nullptr);
  toy.desk.Enter(*number);
  EXPECT_EQ(Round(), "BtnGravar EdtNumero");
  outer->SetVisible(true);
  outer->SetEnabled(false);
  EXPECT_THROW(toy.desk.Type(*mill, "1"), ActError);
  EXPECT_EQ(Round(), "BtnGravar EdtNumero");
  outer->SetEnabled(true);
  EXPECT_EQ(toy.desk.Type(*mill, "1"), ActResult::kDone);
}

}  // namespace
