// What whoever shows the screens is told, and when.
#include <gtest/gtest.h>

#include "toy.h"

namespace {

using host::ActResult;
using host::Button;
using host::Edit;
using test::Notes;
using test::Toy;
using test::ToyScreen;

class ViewTest : public ::testing::Test {
 protected:
  ViewTest() { toy.environment.note_view = true; }
  void Knows(
      const std::string& screen_class, std::function<void(ToyScreen&)> setup = [](ToyScreen&) {}) {
    toy.environment.setups[screen_class] = std::move(setup);
  }

  Toy toy;
};

TEST_F(ViewTest, AScreenIsShownOnceItIsReady) {
  Knows("TfmA", [](ToyScreen& s) {
    auto& edit = s.Add<Edit>("EdtA", "A");
    s.Watch(edit);
    s.on_show = [&edit] { edit.SetFocus(); };
  });
  toy.desk.Open("TfmA");
  EXPECT_EQ(toy.TakeEvents(), "create A | show A | enter EdtA | settled | shown A");
}

TEST_F(ViewTest, AskedForAgainItIsShownAgain) {
  Knows("TfmA");
  Knows("TfmB");
  toy.desk.Open("TfmA");
  toy.desk.Open("TfmB");
  toy.notes.clear();
  toy.desk.Open("TfmA");
  EXPECT_EQ(toy.TakeEvents(), "shown A");
}

TEST_F(ViewTest, OneThatCannotBeCreatedWasNeverShown) {
  Knows("TfmA", [](ToyScreen& s) { s.on_create = [] { throw host::DatabaseError("sem tabela", 0, ""); }; });
  EXPECT_EQ(toy.desk.Open("TfmA"), nullptr);
  EXPECT_EQ(toy.TakeEvents(), "create A | let go A | gone A | end failed | error TfmA: sem tabela | settled");
  Knows("TfmB", [](ToyScreen& s) { s.on_show = [] { throw host::Abort(); }; });
  EXPECT_EQ(toy.desk.Open("TfmB"), nullptr);
  EXPECT_EQ(toy.TakeEvents(), "create B | show B | let go B | gone B | end aborted | settled");
  EXPECT_EQ(toy.desk.Open("TfmNada"), nullptr);
  EXPECT_EQ(toy.TakeEvents(), "end failed | error TfmNada: Tela desconhecida: TfmNada | settled");
}

TEST_F(ViewTest, OneThatClosesAtOnceIsNotShown) {
  Knows("TfmA", [](ToyScreen& s) { s.on_show = [&s] { s.Close(); }; });
  EXPECT_EQ(toy.desk.Open("TfmA"), nullptr);
  EXPECT_EQ(toy.TakeEvents(), "create A | show A | close A | let go A | gone A | settled");
}

TEST_F(ViewTest, ItIsLetGoOfWhileItIsStillThere) {
  Knows("TfmA");
  host::Screen* screen = toy.desk.Open("TfmA");
  toy.notes.clear();
  EXPECT_EQ(toy.desk.CloseScreen(*screen), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "close A | settled | let go A | gone A");
}

TEST_F(ViewTest, OneThatRefusesToCloseIsNotLetGoOf) {
  Knows("TfmA", [](ToyScreen& s) { s.on_close = [] { throw host::Abort(); }; });
  host::Screen* screen = toy.desk.Open("TfmA");
  toy.notes.clear();
  EXPECT_EQ(toy.desk.CloseScreen(*screen), ActResult::kRefused);
  EXPECT_EQ(toy.TakeEvents(), "close A | end aborted | settled");
}

TEST_F(ViewTest, AnActSettlesWhenTheFocusHasMovedAndTheClosedAreGone) {
  Knows("TfmA", [](ToyScreen& s) {
    auto& edit = s.Add<Edit>("EdtA", "A");
    s.Add<Button>("BtnGravar", "&Gravar", [&edit] { edit.SetFocus(); });
    s.Add<Button>("BtnFechar", "&Fechar", [&s] { s.Close(); });
    s.Watch(edit);
  });
  host::Screen* screen = toy.desk.Open("TfmA");
  const auto click = [&](const char* name) {
    auto& button = dynamic_cast<Button&>(*screen->FindComponent(name));
    toy.desk.Enter(button);
    toy.notes.clear();
    EXPECT_EQ(toy.desk.Click(button), ActResult::kDone);
  };
  click("BtnGravar");
  EXPECT_EQ(toy.TakeEvents(), "enter EdtA | settled");
  click("BtnFechar");
  EXPECT_EQ(toy.TakeEvents(), "close A | let go A | gone A | settled");
}

TEST_F(ViewTest, ARefusedAndAFailedActSettleToo) {
  Knows("TfmA");
  toy.desk.Open("TfmA");
  toy.notes.clear();
  EXPECT_EQ(toy.desk.Run("t", [] { throw host::Abort(); }), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Run("t", [] { throw host::DatabaseError("falhou", 0, ""); }), ActResult::kFailed);
  EXPECT_THROW(toy.desk.Run("t", [] { throw host::ActError("não há"); }), host::ActError);
  EXPECT_EQ(toy.TakeEvents(), "end aborted | settled | end failed | error t: falhou | settled | end failed | settled");
}

TEST_F(ViewTest, AModalScreenIsRunNotShownAndItsActsSettle) {
  Knows("TfmA");
  Knows("TfmFio", [this](ToyScreen& s) {
    s.Add<Button>("BtnBaixar", "Baixar", [this, &s] {
      toy.notes.emplace_back("took");
      s.Close();
    });
  });
  toy.environment.on_modal = [this](host::Screen& screen) {
    toy.desk.Click(dynamic_cast<Button&>(*screen.FindComponent("BtnBaixar")));
  };
  toy.desk.Open("TfmA");
  toy.notes.clear();
  toy.desk.Run("t", [this] {
    host::Screen& modal = toy.desk.Load("TfmFio");
    toy.desk.ShowModal(modal);
    toy.notes.emplace_back("back");
    toy.desk.Free(modal);
  });
  EXPECT_EQ(toy.TakeEvents(),
            "create Fio | show Fio | wait | settled | modal Fio | wait | settled | took | settled | back | "
            "close Fio | let go Fio | gone Fio | settled");
}

TEST_F(ViewTest, ALoadedScreenIsNotShown) {
  Knows("TfmFio");
  toy.desk.Run("t", [this] { toy.desk.Free(toy.desk.Load("TfmFio")); });
  EXPECT_EQ(toy.TakeEvents(), "create Fio | close Fio | let go Fio | gone Fio | settled");
}

TEST(View, WhenTheDeskEndsTheScreensAreLetGoOfLastOpenedFirst) {
  Notes notes;
  test::ToyHost host(notes);
  test::ToyEnvironment environment(host, notes);
  environment.note_view = true;
  environment.setups["TfmA"] = environment.setups["TfmB"] = [](ToyScreen&) {};
  {
    host::Desk desk(environment);
    desk.Open("TfmA");
    desk.Open("TfmB");
    notes.clear();
  }
  EXPECT_EQ(notes, (Notes{"let go B", "gone B", "let go A", "gone A"}));
}

}  // namespace
