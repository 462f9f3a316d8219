// Where the keyboard goes, and where an input that refuses to be left keeps it.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include "tests/desktop/binder/toy_window.h"

namespace test {
namespace {

class Focus : public WindowTest {};

TEST_F(Focus, StartsInTheFirstInput) {
  OpenTear();
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
}

TEST_F(Focus, EnterAndTabGoOnInTheOrderOfTheScreenAndShiftTabGoesBack) {
  OpenTear();
  Press(Qt::Key_Return);
  EXPECT_EQ(WindowTest::Focus(), "EdtQtde");
  EXPECT_EQ(Events(), "exit EdtCodigo | enter EdtQtde");
  Press(Qt::Key_Tab);
  EXPECT_EQ(WindowTest::Focus(), "EdtVoltas");
  Press(Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(WindowTest::Focus(), "EdtData");
  Press(Qt::Key_Tab, Qt::ShiftModifier);
  EXPECT_EQ(WindowTest::Focus(), "EdtVoltas");
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(WindowTest::Focus(), "EdtQtde");
  EXPECT_EQ(Events(),
            "exit EdtQtde | enter EdtVoltas | exit EdtVoltas | enter EdtData | exit EdtData | enter EdtVoltas | "
            "exit EdtVoltas | enter EdtQtde");
}

TEST_F(Focus, GoesOnWhereTheInputSaysAndByMouseWhereItWasAimed) {
  OpenTear([](ToyScreen& screen) {
    auto& quantity = dynamic_cast<host::Control&>(*screen.FindComponent("EdtQtde"));
    quantity.GoesOnTo = dynamic_cast<host::Control*>(screen.FindComponent("BtnGravar"));
  });
  for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return, Qt::Key_Enter}) {
    Click("EdtQtde");
    Press(key);
    EXPECT_EQ(WindowTest::Focus(), "BtnGravar");
  }
  Click("EdtQtde");
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  Click("EdtQtde");
  Events();
  Click("EdtUm");
  EXPECT_EQ(Events(), "exit EdtQtde | enter EdtUm");
  Part<host::Button>("BtnGravar").SetEnabled(false);
  Click("EdtQtde");
  Press(Qt::Key_Tab);
  EXPECT_EQ(WindowTest::Focus(), "EdtVoltas");
}

TEST_F(Focus, ReachesEveryInputByTabAndComesRound) {
  OpenTear();
  std::vector<std::string> order;
  for (int at = 0; at < 11; ++at) {
    order.push_back(WindowTest::Focus());
    Press(Qt::Key_Tab);
  }
  const std::vector<std::string> expected = {"EdtCodigo", "EdtQtde",   "EdtVoltas", "EdtData",
                                             "EdtObs",    "ChkAtivo",  "RgTipo",    "CbSituacao",
                                             "EdtUm",     "BtnGravar", "BtnFechar"};
  EXPECT_EQ(order, expected);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
}

TEST_F(Focus, SelectsAllTextOnEnteringByKeyboard) {
  OpenTear();
  Part<host::Edit>("EdtQtde").SetNumber(12.5);
  Press(Qt::Key_Return);
  EXPECT_EQ(Find<QLineEdit>("EdtQtde")->selectedText(), "12,50");
}

TEST_F(Focus, AClickEntersTheInputAndPutsTheCursorThere) {
  OpenTear();
  Part<host::Edit>("EdtUm").SetText("Meada");
  Click("EdtUm");
  EXPECT_EQ(WindowTest::Focus(), "EdtUm");
  EXPECT_EQ(Events(), "exit EdtCodigo | enter EdtUm");
  EXPECT_EQ(Find<QLineEdit>("EdtUm")->selectedText(), "");
  EXPECT_EQ(Find<QLineEdit>("EdtUm")->cursorPosition(), 5);
}

TEST_F(Focus, AClickIntoAMemoEntersIt) {
  OpenTear();
  Click("EdtObs");
  EXPECT_EQ(WindowTest::Focus(), "EdtObs");
}

TEST_F(Focus, ASecondClickInTheSameInputIsNoSecondEntering) {
  OpenTear();
  Click("EdtQtde");
  Events();
  Click("EdtQtde");
  EXPECT_EQ(Events(), "");
  EXPECT_EQ(WindowTest::Focus(), "EdtQtde");
}

TEST_F(Focus, AClickBesideTheInputsLeavesTheKeyboardWhereItIs) {
  OpenTear();
  Click("EdtQtde");
  Events();
  Click("LblDescricao");
  Click(*top_, QPoint(2, 2));
  Settle();
  EXPECT_EQ(WindowTest::Focus(), "EdtQtde");
  EXPECT_EQ(Events(), "");
}

class Refused : public WindowTest {};

TEST_F(Refused, ExitByTabKeepsTheFocusAndSelectsTheText) {
  OpenTear();
  RefuseExit("EdtCodigo");
  Type("ab");
  Press(Qt::Key_Tab);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  EXPECT_EQ(Events(), "refuse EdtCodigo | end aborted");
  EXPECT_EQ(Find<QLineEdit>("EdtCodigo")->selectedText(), "ab");
}

TEST_F(Refused, ExitByEnterKeepsTheFocus) {
  OpenTear();
  RefuseExit("EdtCodigo");
  Press(Qt::Key_Return);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
}

TEST_F(Refused, ExitByShiftTabKeepsTheFocus) {
  OpenTear();
  RefuseExit("EdtCodigo");
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
}

TEST_F(Refused, ExitByAClickIntoAnotherInputKeepsTheFocus) {
  OpenTear();
  RefuseExit("EdtCodigo");
  Type("ab");
  for (const char* elsewhere : {"EdtQtde", "EdtObs", "CbSituacao", "ChkAtivo", "RgTipo", "EdtUm"}) {
    Events();
    Click(elsewhere);
    EXPECT_EQ(WindowTest::Focus(), "EdtCodigo") << elsewhere;
  }
  EXPECT_FALSE(Part<host::CheckBox>("ChkAtivo").Checked());
  EXPECT_FALSE(Find<QCheckBox>("ChkAtivo")->isChecked());
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);  // the list did not open
  EXPECT_EQ(Shown("EdtCodigo"), "ab");
}

TEST_F(Refused, ExitAsksOncePerClick) {
  OpenTear();
  RefuseExit("EdtCodigo");
  Click("EdtQtde");
  EXPECT_EQ(Events(), "refuse EdtCodigo | end aborted");
  Click("BtnGravar");
  EXPECT_EQ(Events(), "refuse EdtCodigo | end aborted");
}

TEST_F(Refused, ExitByARadioButtonKeepsFocusAndChoice) {
  OpenTear();
  RefuseExit("EdtCodigo");
  QRadioButton* wool = Find("RgTipo")->findChildren<QRadioButton*>()[1];
  Click(*wool, QPoint(6, wool->height() / 2));
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  EXPECT_EQ(Part<host::RadioGroup>("RgTipo").Selected(), 0);
  EXPECT_FALSE(wool->isChecked());
}

TEST_F(Refused, ExitByAButtonKeepsTheFocusAndIsNoClick) {
  OpenTear();
  RefuseExit("EdtCodigo");
  Click("BtnGravar");
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  EXPECT_EQ(Events(), "refuse EdtCodigo | end aborted");
}

TEST_F(Refused, ExitByAnUnderlinedLetterKeepsTheFocusAndIsNoClick) {
  OpenTear();
  RefuseExit("EdtCodigo");
  Press(Qt::Key_G, Qt::AltModifier);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  EXPECT_EQ(Events(), "refuse EdtCodigo | end aborted");
  Press(Qt::Key_A, Qt::AltModifier);
  EXPECT_EQ(Events(), "refuse EdtCodigo | end aborted");
  EXPECT_FALSE(Find<QCheckBox>("ChkAtivo")->isChecked());
}

TEST_F(Refused, ExitByAFunctionKeyKeepsTheFocusAndIsNoClick) {
  OpenTear();
  RefuseExit("EdtCodigo");
  Press(Qt::Key_F2);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  EXPECT_EQ(Events(), "refuse EdtCodigo | end aborted");
}

TEST_F(Refused, ExitByATabKeepsPageAndFocus) {
  OpenTear();
  RefuseExit("EdtCodigo");
  ClickTab("PgAbas", 1);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  EXPECT_EQ(Find<QTabWidget>("PgAbas")->currentIndex(), 0);
  EXPECT_EQ(Part<host::PageControl>("PgAbas").ActivePage(), 0);
}

TEST_F(Refused, ExitThatSendsThePersonElsewhereMovesTheKeyboardThere) {
  OpenTear();
  Part<host::Edit>("EdtCodigo").OnExit = [this] {
    Part<host::Edit>("EdtData").SetFocus();
    throw host::Abort();
  };
  Press(Qt::Key_Tab);
  EXPECT_EQ(WindowTest::Focus(), "EdtData");
}

TEST_F(Refused, TheReleaseOfARefusedPressDoesNothing) {
  OpenTear();
  RefuseExit("EdtCodigo");
  Part<host::Edit>("EdtUm").SetText("Meada de lã");
  auto* line = Find<QLineEdit>("EdtUm");
  QWindow* window = top_->windowHandle();
  const QPoint from = line->mapTo(top_.get(), QPoint(4, line->height() / 2));
  QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, from);
  QTest::mouseMove(window, from + QPoint(60, 0));
  QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, from + QPoint(60, 0));
  EXPECT_EQ(line->selectedText(), "");
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
}

class Box : public WindowTest {};

TEST_F(Box, ShownByARefusedExitDoesNotLoseTheFocus) {
  OpenTear();
  RefuseWithBox("EdtCodigo");
  Press(Qt::Key_Tab);
  EXPECT_EQ(boxes_, 1);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  EXPECT_TRUE(top_->isActiveWindow());
  Click("EdtQtde");
  EXPECT_EQ(boxes_, 2);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  Click("BtnGravar");
  EXPECT_EQ(boxes_, 3);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  Press(Qt::Key_G, Qt::AltModifier);
  EXPECT_EQ(boxes_, 4);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  ClickTab("PgAbas", 1);
  EXPECT_EQ(boxes_, 5);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  EXPECT_EQ(Find<QTabWidget>("PgAbas")->currentIndex(), 0);
  Type("x");
  EXPECT_EQ(Shown("EdtCodigo"), "x");
}

TEST_F(Box, ShownByARefusedExitLeavesTheTextSelectedAlsoWhereTheScreenMovesOn) {
  OpenTear();
  RefuseWithBox("EdtCodigo");
  Type("ab");
  Press(Qt::Key_Tab);
  EXPECT_EQ(Find<QLineEdit>("EdtCodigo")->selectedText(), "ab");
  Press(Qt::Key_End);
  EXPECT_EQ(Find<QLineEdit>("EdtCodigo")->selectedText(), "");
  // The key itself is done; the way on that it asked for is refused.
  screen_->on_key = [this](host::Key key) {
    if (key == host::Key::kEnter) toy_.desk.MoveFocus(*screen_, false);
    return key == host::Key::kEnter;
  };
  Press(Qt::Key_Return);
  EXPECT_EQ(boxes_, 2);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  EXPECT_EQ(Find<QLineEdit>("EdtCodigo")->selectedText(), "ab");
}

// The release of the press went to the box, so the press itself must not stay half done.
TEST_F(Box, ShownByAnExitThatAgreesMovesTheFocusButIsNoClick) {
  OpenTear();
  RefuseWithBox("EdtCodigo", false);
  auto* tick = Find<QCheckBox>("ChkAtivo");
  const QPoint mark(8, tick->height() / 2);
  Click(*tick, mark);
  EXPECT_EQ(boxes_, 1);
  EXPECT_EQ(WindowTest::Focus(), "ChkAtivo");
  EXPECT_FALSE(tick->isDown());
  EXPECT_FALSE(Part<host::CheckBox>("ChkAtivo").Checked());
  Click(*tick, mark);
  EXPECT_TRUE(Part<host::CheckBox>("ChkAtivo").Checked());
  EXPECT_TRUE(tick->isChecked());
}

TEST_F(Box, NothingIsDoneWhileItStands) {
  OpenTear();
  bool inside = true;
  Part<host::Edit>("EdtCodigo").OnExit = [&] {
    inside = station_.Do([] { return host::ActResult::kDone; });
    Part<host::Edit>("EdtQtde").SetNumber(3);
    EXPECT_EQ(Shown("EdtQtde"), "3,00");  // what the screen changes shows at once
  };
  Press(Qt::Key_Tab);
  EXPECT_FALSE(inside);
}

class Moves : public WindowTest {};

TEST_F(Moves, ToTheInputThatTheScreenAsksFor) {
  OpenTear();
  Part<host::Button>("BtnGravar").OnClick = [this] { Part<host::Edit>("EdtData").SetFocus(); };
  Click("BtnGravar");
  EXPECT_EQ(WindowTest::Focus(), "EdtData");
}

TEST_F(Moves, ToTheNextInputWhenItsOwnIsDisabledOrHidden) {
  OpenTear();
  Part<host::Edit>("EdtQtde").OnExit = {};
  Click("EdtQtde");
  Part<host::Button>("BtnGravar").OnClick = [this] { Part<host::Button>("BtnGravar").SetEnabled(false); };
  Press(Qt::Key_F2);
  EXPECT_FALSE(Find("BtnGravar")->isEnabled());
  EXPECT_EQ(WindowTest::Focus(), "BtnFechar");
  Part<host::Button>("BtnFechar").OnClick = [this] { Part<host::Button>("BtnFechar").SetVisible(false); };
  Click("BtnFechar");
  EXPECT_FALSE(Find("BtnFechar")->isVisible());
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
}

TEST_F(Moves, NowhereWhenEverythingIsDisabledAndTheKeysStillReachTheScreen) {
  OpenTear();
  host::Key seen = host::Key::kNone;
  screen_->on_key = [&](host::Key key) {
    seen = key;
    return key == host::Key::kF9;
  };
  Part<host::Button>("BtnGravar").OnClick = [this] {
    for (host::Component* component : screen_->Components()) {
      auto* control = dynamic_cast<host::Control*>(component);
      if (control != nullptr && control->Focusable()) control->SetEnabled(false);
    }
  };
  Click("BtnGravar");
  Press(Qt::Key_F9);
  EXPECT_EQ(seen, host::Key::kF9);
}

TEST_F(Moves, ToTheInputOfAnUnderlinedCaption) {
  OpenTear();
  Click("EdtData");
  Events();
  Press(Qt::Key_C, Qt::AltModifier);
  EXPECT_EQ(WindowTest::Focus(), "EdtCodigo");
  EXPECT_EQ(Events(), "exit EdtData | enter EdtCodigo");
}

TEST_F(Moves, WithTheDeskWhenQtGivesTheKeyboardElsewhere) {
  OpenTear();
  Find("EdtData")->setFocus(Qt::OtherFocusReason);
  Settle();
  EXPECT_EQ(WindowTest::Focus(), "EdtData");
  EXPECT_EQ(Events(), "exit EdtCodigo | enter EdtData");
  RefuseExit("EdtData");
  Find("EdtCodigo")->setFocus(Qt::OtherFocusReason);
  Settle();
  EXPECT_EQ(WindowTest::Focus(), "EdtData");
}

TEST_F(Moves, BackIntoAWindowThatIsTurnedToAgain) {
  OpenTear();
  Click("EdtVoltas");
  QWidget other;
  other.setFocusPolicy(Qt::StrongFocus);
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other, 2000));
  other.setFocus();
  EXPECT_EQ(QApplication::focusWidget(), &other);
  Events();
  top_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(top_.get(), 2000));
  window_->TakeFocus();
  EXPECT_EQ(WindowTest::Focus(), "EdtVoltas");
  EXPECT_EQ(Events(), "");
}

TEST_F(Moves, BetweenTwoScreensAndBackToTheInputThatHadIt) {
  OpenTear();
  Click("EdtData");
  ToyScreen* first = screen_;
  ToyScreen& second = toy_.Open("TfmCor", [](ToyScreen& screen) {
    screen.Add<host::Edit>("EdtCor", "Cor");
    screen.Add<host::Edit>("EdtTom", "Tom");
  });
  QMdiArea area;
  area.resize(700, 700);
  area.addSubWindow(top_.release());
  auto* window = new app::desktop::ScreenWindow(station_, second, DrawForm(second));
  QMdiSubWindow* frame = area.addSubWindow(window);
  area.show();
  area.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&area, 2000));
  area.setActiveSubWindow(frame);
  window->TakeFocus();
  ASSERT_NE(toy_.desk.Focused(), nullptr);
  EXPECT_EQ(toy_.desk.Focused()->Name(), "EdtCor");
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "EdtCor");
  // The exit of the other screen's input refuses: the keyboard stays there.
  auto& colour = dynamic_cast<host::Edit&>(*second.FindComponent("EdtCor"));
  bool refuse = true;
  colour.OnExit = [&] {
    if (refuse) throw host::Abort();
  };
  window_->TakeFocus();
  EXPECT_EQ(toy_.desk.Focused(), &colour);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "EdtCor");
  refuse = false;
  window_->TakeFocus();
  EXPECT_EQ(toy_.desk.Focused(), first->FindComponent("EdtData"));
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "EdtData");
  // A click on the title or the border of the active one does not take the keyboard out of its input.
  const QMdiSubWindow* around = area.subWindowList().front();
  for (const QPoint at : {QPoint(around->width() / 2, 8), QPoint(1, around->height() / 3)}) {
    const QPoint in_area = around->mapTo(&area, at);
    ASSERT_TRUE(area.viewport()->geometry().contains(in_area));
    QTest::mouseClick(area.windowHandle(), Qt::LeftButton, Qt::NoModifier, in_area);
    Settle();
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "EdtData");
  }
}

}  // namespace
}  // namespace test
