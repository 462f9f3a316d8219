// Actions, screens and modal screens.
#include "host/kit/desk.h"

#include <gtest/gtest.h>

#include "toy.h"

namespace {

using host::ActError;
using host::ActResult;
using host::Button;
using host::Edit;
using host::Screen;
using test::Toy;
using test::ToyScreen;

TEST(Actions, AreBracketed) {
  Toy toy;
  EXPECT_EQ(toy.desk.Run("t", [&] { toy.notes.emplace_back("act"); }), ActResult::kDone);
  EXPECT_EQ(toy.Take(), "begin | act | end");
}

TEST(Actions, AnAbortEndsSilently) {
  Toy toy;
  EXPECT_EQ(toy.desk.Run("t", [] { throw host::Abort(); }), ActResult::kRefused);
  EXPECT_EQ(toy.Take(), "begin | end aborted");
}

TEST(Actions, AnErrorIsUndoneBeforeItIsTold) {
  Toy toy;
  EXPECT_EQ(toy.desk.Run("Ordens", [] { throw host::DatabaseError("falhou", 1, "SELECT"); }), ActResult::kFailed);
  EXPECT_EQ(toy.Take(), "begin | end failed | error Ordens: falhou");
  EXPECT_EQ(toy.desk.Run("Ordens", [] { throw host::InputError("Regra não existe."); }), ActResult::kFailed);
  EXPECT_EQ(toy.Take(), "begin | end failed | error Ordens: Regra não existe.");
}

TEST(Actions, AFailedCommitIsTold) {
  Toy toy;
  toy.environment.fail_commit = true;
  EXPECT_EQ(toy.desk.Run("t", [] {}), ActResult::kFailed);
  EXPECT_EQ(toy.notes.back(), "error t: sem disco");
  EXPECT_EQ(toy.desk.Run("t", [] {}), ActResult::kDone);
  EXPECT_FALSE(toy.desk.InAction());
}

TEST(Actions, AnActionInsideBelongsToTheOuterOne) {
  Toy toy;
  bool went_on = false;
  const ActResult result = toy.desk.Run("outer", [&] {
    EXPECT_TRUE(toy.desk.InAction());
    toy.desk.Run("inner", [] {});
    toy.desk.Run("inner", [] { throw host::Abort(); });
    went_on = true;
  });
  EXPECT_EQ(result, ActResult::kRefused);
  EXPECT_FALSE(went_on);
  EXPECT_EQ(toy.Take(), "begin | end aborted");
}

TEST(Actions, AMistakeOfTheDriverIsUndoneAndGoesOn) {
  Toy toy;
  EXPECT_THROW(toy.desk.Run("t", [] { throw ActError("não há"); }), ActError);
  EXPECT_EQ(toy.Take(), "begin | end failed");
  EXPECT_FALSE(toy.desk.InAction());
}

TEST(Screens, AreCreatedShownAndBroughtForward) {
  Toy toy;
  toy.environment.setups["TfmA"] = [](ToyScreen&) {};
  toy.environment.setups["TfmB"] = [](ToyScreen&) {};
  Screen* first = toy.desk.Open("TfmA");
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(toy.TakeEvents(), "create A | show A");
  Screen* second = toy.desk.Open("TfmB");
  toy.TakeEvents();
  EXPECT_EQ(toy.desk.Open("tfma"), first);
  EXPECT_EQ(toy.TakeEvents(), "");
  EXPECT_EQ(toy.desk.Screens().back().get(), first);
  EXPECT_EQ(toy.desk.Find("fmb"), second);
  EXPECT_EQ(toy.desk.Find("TfmB"), second);
  EXPECT_EQ(toy.desk.Find("TfmC"), nullptr);
}

TEST(Screens, AnUnknownClassIsTold) {
  Toy toy;
  EXPECT_EQ(toy.desk.Open("TfmNada"), nullptr);
  EXPECT_EQ(toy.Take(), "begin | end failed | error TfmNada: Tela desconhecida: TfmNada");
  EXPECT_EQ(toy.desk.Run("t", [&] { toy.desk.Load("TfmNada"); }), ActResult::kFailed);
}

TEST(Screens, AFailedCreationLeavesNothing) {
  Toy toy;
  toy.environment.setups["TfmA"] = [](ToyScreen& screen) {
    screen.on_create = [] { throw host::DatabaseError("sem tabela", 0, ""); };
  };
  EXPECT_EQ(toy.desk.Open("TfmA"), nullptr);
  EXPECT_EQ(toy.Take(), "begin | create A | gone A | end failed | error TfmA: sem tabela");
  EXPECT_TRUE(toy.desk.Screens().empty());
  toy.environment.setups["TfmA"] = [](ToyScreen& screen) { screen.on_show = [] { throw host::Abort(); }; };
  EXPECT_EQ(toy.desk.Open("TfmA"), nullptr);
  EXPECT_TRUE(toy.desk.Screens().empty());
}

TEST(Screens, ThePersonClosesOne) {
  Toy toy;
  ToyScreen& screen = toy.Open("TfmA", [](ToyScreen& s) { s.Watch(s.Add<Edit>("EdtA", "A")); });
  toy.desk.Enter(dynamic_cast<Edit&>(*screen.FindComponent("EdtA")));
  toy.Take();
  EXPECT_EQ(toy.desk.CloseScreen(screen), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "exit EdtA | close A | gone A");
  EXPECT_EQ(toy.desk.Focused(), nullptr);
}

TEST(Screens, ARefusedExitOrCloseKeepsItOpen) {
  Toy toy;
  ToyScreen& screen =
      toy.Open("TfmA", [](ToyScreen& s) { s.Add<Edit>("EdtA", "A").OnExit = [] { throw host::Abort(); }; });
  auto& edit = dynamic_cast<Edit&>(*screen.FindComponent("EdtA"));
  toy.desk.Enter(edit);
  EXPECT_EQ(toy.desk.CloseScreen(screen), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Focused(), &edit);
  edit.OnExit = {};
  screen.on_close = [] { throw host::Abort(); };
  EXPECT_EQ(toy.desk.CloseScreen(screen), ActResult::kRefused);
  EXPECT_EQ(toy.desk.Find("TfmA"), &screen);
}

TEST(Screens, OneThatAskedToCloseGoesWhenTheActionEnds) {
  Toy toy;
  ToyScreen& screen = toy.Open("TfmA", [&toy](ToyScreen& s) {
    s.Add<Button>("BtnFechar", "&Fechar", [&s, &toy] {
      s.Close();
      toy.notes.emplace_back("still here " + s.Caption());
    });
  });
  EXPECT_EQ(toy.desk.Click(dynamic_cast<Button&>(*screen.FindComponent("BtnFechar"))), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "still here A | close A | gone A");
  EXPECT_TRUE(toy.desk.Screens().empty());
}

TEST(Screens, AFreedOneLivesUntilTheOutermostActionEnds) {
  Toy toy;
  toy.environment.setups["TfmFio"] = [](ToyScreen&) {};
  toy.desk.Run("t", [&] {
    Screen& loaded = toy.desk.Load("TfmFio");
    EXPECT_EQ(&toy.desk.Load("TfmFio"), &loaded);
    toy.desk.Free(loaded);
    EXPECT_EQ(toy.desk.Find("TfmFio"), nullptr);
    EXPECT_EQ(loaded.Caption(), "Fio");
    Screen& another = toy.desk.Load("TfmFio");
    EXPECT_NE(&another, &loaded);
    toy.desk.Free(another);
    toy.desk.Free(another);
    toy.notes.emplace_back("ending");
  });
  EXPECT_EQ(toy.TakeEvents(), "create Fio | create Fio | ending | close Fio | gone Fio | close Fio | gone Fio");
}

TEST(Screens, AFreedOneGoesAlsoWhenTheDriverMadeAMistake) {
  Toy toy;
  host::Screen& screen = toy.Open("TfmA");
  EXPECT_THROW(toy.desk.Run("t",
                            [&] {
                              toy.desk.Free(screen);
                              throw host::ActError("no such button");
                            }),
               host::ActError);
  EXPECT_TRUE(toy.desk.Screens().empty());
}

TEST(Screens, OutsideAnActionAFreedOneGoesAtOnce) {
  Toy toy;
  ToyScreen& screen = toy.Open("TfmA");
  toy.desk.Free(screen);
  EXPECT_EQ(toy.TakeEvents(), "close A | gone A");
}

TEST(Screens, TheLastOpenedGoesFirstWhenTheProgramEnds) {
  test::Notes notes;
  test::ToyHost host(notes);
  test::ToyEnvironment environment(host, notes);
  environment.setups["TfmA"] = environment.setups["TfmB"] = [](ToyScreen&) {};
  {
    host::Desk desk(environment);
    desk.Open("TfmA");
    desk.Open("TfmB");
    notes.clear();
  }
  EXPECT_EQ(notes, (test::Notes{"gone B", "gone A"}));
}

// --- modal screens ---------------------------------------------------------------------------------------------------

class ModalTest : public ::testing::Test {
 protected:
  ModalTest() {
    opener = &toy.Open("TfmBaixa", [this](ToyScreen& s) {
      s.Watch(s.Add<Edit>("EdtLote", "Lote"));
      s.Add<Button>("BtnConfirma", "Confirmar", [this] {
        Screen& modal = toy.desk.Load("TfmFio");
        toy.host.ShowModal(modal);
        toy.notes.push_back(modal.CloseRequested() ? "back, asks" : "back");
        if (after_modal) after_modal();
        toy.host.Free(modal);
      });
      s.Watch(Part<Button>(s, "BtnConfirma"));
    });
    toy.environment.setups["TfmFio"] = [this](ToyScreen& s) {
      s.Watch(s.Add<Edit>("EdtDeposito", "Depósito"));
      s.Add<Button>("BtnBaixar", "Baixar", [this, &s] {
        if (on_take) on_take();
        s.Close();
      });
      s.Add<Button>("BtnNada", "Nada", [this] {
        if (on_nothing) on_nothing();
      });
    };
  }
  template <typename T>
  T& Part(Screen& screen, const char* name) {
    return dynamic_cast<T&>(*screen.FindComponent(name));
  }
  ActResult Confirm() { return toy.desk.Click(Part<Button>(*opener, "BtnConfirma")); }

  Toy toy;
  ToyScreen* opener = nullptr;
  host::Handler on_take;
  host::Handler on_nothing;
  host::Handler after_modal;
};

TEST_F(ModalTest, WaitsForThePersonAndGoesOn) {
  toy.environment.on_modal = [this](Screen& screen) {
    EXPECT_EQ(toy.desk.Modal(), &screen);
    EXPECT_EQ(toy.desk.Focused(), nullptr);
    EXPECT_EQ(toy.desk.Click(Part<Button>(screen, "BtnBaixar")), ActResult::kDone);
    EXPECT_TRUE(screen.CloseRequested());
  };
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(toy.desk.Modal(), nullptr);
  EXPECT_EQ(toy.desk.Focused(), &Part<Button>(*opener, "BtnConfirma"));
  EXPECT_EQ(toy.Take(),
            "begin | enter BtnConfirma | end | begin | create Fio | show Fio | wait | modal Fio | wait | back | end | "
            "begin | close Fio | end | gone Fio");
}

TEST_F(ModalTest, WorkDoneInItIsDurableWhileItStaysOpen) {
  toy.environment.on_modal = [this](Screen& screen) {
    toy.notes.clear();
    on_nothing = [this] { toy.notes.emplace_back("worked"); };
    toy.desk.Click(Part<Button>(screen, "BtnNada"));
    // Entering the button was an act too.
    EXPECT_EQ(toy.notes, (test::Notes{"begin", "end", "wait", "begin", "worked", "end", "wait"}));
    toy.notes.clear();
    on_take = [this] { toy.notes.emplace_back("taken"); };
    toy.desk.Click(Part<Button>(screen, "BtnBaixar"));
    EXPECT_EQ(toy.notes, (test::Notes{"begin", "end", "wait", "begin", "end", "wait", "begin", "taken", "end"}));
  };
  EXPECT_EQ(Confirm(), ActResult::kDone);
}

TEST_F(ModalTest, AnAbortInItEndsOnlyTheInnerAct) {
  toy.environment.on_modal = [this](Screen& screen) {
    on_nothing = [] { throw host::Abort(); };
    toy.desk.Enter(Part<Button>(screen, "BtnNada"));
    toy.notes.clear();
    EXPECT_EQ(toy.desk.Click(Part<Button>(screen, "BtnNada")), ActResult::kRefused);
    EXPECT_EQ(toy.notes, (test::Notes{"begin", "end aborted", "wait"}));
    screen.Close();
  };
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(toy.TakeEvents(), "end aborted | wait | back | close Fio | gone Fio");
}

TEST_F(ModalTest, AnErrorInItIsUndoneAndToldAndTheOuterGoesOn) {
  toy.environment.on_modal = [this](Screen& screen) {
    on_nothing = [] { throw host::DatabaseError("falhou", 0, ""); };
    toy.desk.Enter(Part<Button>(screen, "BtnNada"));
    toy.notes.clear();
    EXPECT_EQ(toy.desk.Click(Part<Button>(screen, "BtnNada")), ActResult::kFailed);
    EXPECT_EQ(toy.notes, (test::Notes{"begin", "end failed", "error Fio: falhou"}));
  };
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(toy.desk.Modal(), nullptr);
}

TEST_F(ModalTest, AnAbortOfTheOpenerAfterItEndsTheWholeAction) {
  after_modal = [] { throw host::Abort(); };
  EXPECT_EQ(Confirm(), ActResult::kRefused);
  EXPECT_FALSE(toy.desk.InAction());
  EXPECT_EQ(toy.desk.Modal(), nullptr);
}

TEST_F(ModalTest, OtherScreensAreOutOfReachMeanwhile) {
  toy.environment.on_modal = [this](Screen& screen) {
    EXPECT_THROW(toy.desk.Type(Part<Edit>(*opener, "EdtLote"), "1"), ActError);
    EXPECT_THROW(toy.desk.CloseScreen(*opener), ActError);
    EXPECT_THROW(toy.desk.Open("TfmBaixa"), ActError);
    EXPECT_EQ(toy.desk.Type(Part<Edit>(screen, "EdtDeposito"), "01"), ActResult::kDone);
  };
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(Part<Edit>(*opener, "EdtLote").Text(), "");
}

TEST_F(ModalTest, ClosedByItsWindowItComesBackWithoutTakingAnything) {
  toy.environment.on_modal = [this](Screen& screen) {
    toy.desk.Enter(Part<Edit>(screen, "EdtDeposito"));
    EXPECT_EQ(toy.desk.CloseScreen(screen), ActResult::kDone);
    toy.notes.clear();
  };
  Confirm();
  EXPECT_EQ(toy.TakeEvents(), "back | close Fio | gone Fio");
}

TEST_F(ModalTest, TheFocusAskedForOnShowIsThereForThePerson) {
  auto setup = toy.environment.setups["TfmFio"];
  toy.environment.setups["TfmFio"] = [this, setup](ToyScreen& s) {
    setup(s);
    s.on_show = [this, &s] { Part<Edit>(s, "EdtDeposito").SetFocus(); };
  };
  toy.environment.on_modal = [this](Screen& screen) {
    EXPECT_EQ(toy.desk.Focused(), &Part<Edit>(screen, "EdtDeposito"));
  };
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(toy.desk.Focused(), &Part<Button>(*opener, "BtnConfirma"));
}

TEST_F(ModalTest, OneThatClosesOnShowNeverWaits) {
  toy.environment.setups["TfmFio"] = [](ToyScreen& s) { s.on_show = [&s] { s.Close(); }; };
  Confirm();
  EXPECT_EQ(toy.TakeEvents(), "enter BtnConfirma | create Fio | show Fio | back | close Fio | gone Fio");
}

TEST_F(ModalTest, ARequestToCloseFromBeforeIsForgotten) {
  bool ran = false;
  toy.environment.on_modal = [&ran](Screen&) { ran = true; };
  toy.desk.Run("t", [this] {
    Screen& modal = toy.desk.Load("TfmFio");
    modal.Close();
    toy.desk.ShowModal(modal);
    toy.desk.Free(modal);
  });
  EXPECT_TRUE(ran);
}

TEST_F(ModalTest, ModalScreensNest) {
  toy.environment.setups["TfmDois"] = [](ToyScreen& s) { s.Add<Button>("BtnFechar", "Fechar", [&s] { s.Close(); }); };
  toy.environment.on_modal = [this](Screen& screen) {
    if (screen.ClassName() == "TfmDois") {
      EXPECT_THROW(toy.desk.Click(Part<Button>(*toy.desk.Find("TfmFio"), "BtnNada")), ActError);
      toy.desk.Click(Part<Button>(screen, "BtnFechar"));
      return;
    }
    on_nothing = [this] {
      Screen& inner = toy.desk.Load("TfmDois");
      toy.desk.ShowModal(inner);
      toy.desk.Free(inner);
    };
    EXPECT_EQ(toy.desk.Click(Part<Button>(screen, "BtnNada")), ActResult::kDone);
    EXPECT_EQ(toy.desk.Modal(), &screen);
    EXPECT_EQ(toy.desk.Focused(), &Part<Button>(screen, "BtnNada"));
    toy.desk.CloseScreen(screen);
  };
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(toy.desk.Screens().size(), 1u);
}

TEST_F(ModalTest, ShownOutsideAnActionItMakesItsOwn) {
  Screen& modal = toy.desk.Load("TfmFio");
  toy.notes.clear();
  toy.desk.ShowModal(modal);
  EXPECT_EQ(toy.Take(), "begin | show Fio | wait | modal Fio | end");
}

}  // namespace
