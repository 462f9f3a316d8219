// The windows of the screens: from the menu, one each, in tabs or free, with the focus where the person is.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>

#include "app/desktop/screens/screen_area.h"
#include "app/desktop/shell/status_line.h"
#include "desktop/shell/toy_screens.h"
#include "desktop/support/desktop_mill.h"
#include "host/errors.h"

namespace {

using app::desktop::ScreenArea;
using test::Reply;
using test::ToyScreen;

class Windows : public ::testing::Test {
 protected:
  Windows() { test::Toys() = {}; }

  ToyScreen& Open(const char* name) { return dynamic_cast<ToyScreen&>(mill_.Open(name)); }
  ScreenArea& Area() { return *mill_.Window().findChild<ScreenArea*>(); }
  std::string Active() {
    const auto* active = Area().Active();
    return active != nullptr ? active->GetScreen().ClassName() : "";
  }
  std::string Focused() {
    const host::Control* focused = mill_.Desk().Focused();
    return focused != nullptr ? focused->Owner().ClassName() + "." + focused->Name() : "";
  }
  QMenu* Menu(const char* title) {
    for (QAction* action : mill_.Window().menuBar()->actions()) {
      if (action->text().remove(u'&') == QString::fromUtf8(title)) return action->menu();
    }
    return nullptr;
  }
  QStringList Entries(const char* title) {
    QStringList texts;
    for (const QAction* action : Menu(title)->actions()) {
      if (!action->isSeparator()) texts.append(action->text().remove(u'&'));
    }
    return texts;
  }
  void Pick(const char* title, const char* entry) {
    for (QAction* action : Menu(title)->actions()) {
      if (action->text().remove(u'&') != QString::fromUtf8(entry)) continue;
      action->trigger();
      test::Settle();
      return;
    }
    FAIL() << entry << " is not in the menu";
  }
  QString ActiveTab() {
    const auto* tabs = Area().findChild<QTabBar*>();
    return tabs->tabText(tabs->currentIndex());
  }

  test::DesktopMill mill_;
};

TEST_F(Windows, TheMenuHasTheScreensByHeading) {
  EXPECT_EQ(Entries("Ordens"), (QStringList{"Tela um", "Tela três"}));
  EXPECT_EQ(Entries("Baixas"), QStringList{"Tela dois"});
  EXPECT_FALSE(mill_.IsInMenu("TfmToyModal"));
  QStringList headings;
  for (const QAction* action : mill_.Window().menuBar()->actions()) headings.append(action->text().remove(u'&'));
  EXPECT_EQ(headings.mid(0, 3), (QStringList{"Arquivo", "Ordens", "Baixas"}));
  EXPECT_EQ(headings.mid(headings.size() - 2), (QStringList{"Janela", "Ajuda"}));
}

TEST_F(Windows, MnemonicsOfTheMenuBarAreUnique) {
  QSet<QChar> letters;
  for (const QAction* action : mill_.Window().menuBar()->actions()) {
    const QString text = action->text();
    const qsizetype at = text.indexOf(u'&');
    ASSERT_GE(at, 0) << text.toStdString();
    EXPECT_FALSE(letters.contains(text[at + 1].toLower())) << text.toStdString();
    letters.insert(text[at + 1].toLower());
  }
}

// The toy answers to Alt+U; the help menu, which has the same letter, gives it up meanwhile.
TEST_F(Windows, TheMenuGivesUpTheLettersOfTheWindowInFront) {
  const auto help = [this] { return mill_.Window().menuBar()->actions().last()->text(); };
  EXPECT_EQ(help(), "Aj&uda");
  ToyScreen& screen = Open("TfmToyUm");
  EXPECT_EQ(help(), "Ajuda");
  int clicks = 0;
  test::Toys().first = [&clicks](host::Screen&) { ++clicks; };
  test::Press(Qt::Key_U, Qt::AltModifier);
  EXPECT_TRUE(test::WaitFor([&clicks] { return clicks > 0; }));
  mill_.ClickOn(screen, "BtnFechar");
  EXPECT_EQ(help(), "Aj&uda");
}

TEST_F(Windows, AScreenOpensFromTheMenuWithTheFocusInItsFirstInput) {
  ToyScreen& screen = Open("TfmToyUm");
  EXPECT_TRUE(mill_.WindowOf(screen).isVisible());
  EXPECT_EQ(Focused(), "TfmToyUm.EdtNome");
  test::TypeText(QStringLiteral("João"));
  EXPECT_EQ(screen.EdtNome.Text(), "João");
}

TEST_F(Windows, OpenedAgainItComesForwardAsItIs) {
  ToyScreen& first = Open("TfmToyUm");
  test::TypeText("abc");
  Open("TfmToyDois");
  EXPECT_EQ(Active(), "TfmToyDois");
  EXPECT_EQ(Focused(), "TfmToyDois.EdtNome");
  EXPECT_EQ(&Open("TfmToyUm"), &first);
  EXPECT_EQ(Active(), "TfmToyUm");
  EXPECT_EQ(Focused(), "TfmToyUm.EdtNome");
  EXPECT_EQ(first.EdtNome.Text(), "abc");
  EXPECT_EQ(Area().Frames().size(), 2);
  EXPECT_EQ(ActiveTab(), "Tela um");
}

TEST_F(Windows, TheFocusFollowsTheWindowThatThePersonTurnsTo) {
  Open("TfmToyUm");
  test::Press(Qt::Key_Tab);  // to the first button
  EXPECT_EQ(Focused(), "TfmToyUm.BtnUm");
  Open("TfmToyDois");
  test::Press(Qt::Key_Tab, Qt::ControlModifier);
  ASSERT_TRUE(test::WaitFor([this] { return Focused().starts_with("TfmToyUm"); })) << Focused();
  EXPECT_EQ(Active(), "TfmToyUm");
  EXPECT_EQ(Focused(), "TfmToyUm.BtnUm");
}

// The input that is left by turning to another window refuses: its window comes back.
TEST_F(Windows, AnInputThatRefusesKeepsItsWindowInFront) {
  Open("TfmToyDois");
  Open("TfmToyUm");
  test::TypeText("x");
  mill_.ExpectBox("Nome inválido.");
  Area().activateNextSubWindow();
  ASSERT_TRUE(test::WaitFor([this] { return mill_.GetBoxes().Met() && Active() == "TfmToyUm"; }));
  test::Settle();
  EXPECT_EQ(Active(), "TfmToyUm");
  EXPECT_EQ(Focused(), "TfmToyUm.EdtNome");
}

TEST_F(Windows, TheWindowListNumbersThemAndTicksTheOneInFront) {
  Open("TfmToyUm");
  Open("TfmToyDois");
  const QList<QAction*> actions = Menu("Janela")->actions();
  const QAction* first = actions[actions.size() - 2];
  const QAction* second = actions[actions.size() - 1];
  EXPECT_EQ(first->text(), "&1 Tela um");
  EXPECT_FALSE(first->isChecked());
  EXPECT_EQ(second->text(), "&2 Tela dois");
  EXPECT_TRUE(second->isChecked());
  actions[actions.size() - 2]->trigger();
  test::Settle();
  EXPECT_EQ(Active(), "TfmToyUm");
}

TEST_F(Windows, WithoutWindowsThereIsNothingToCloseOrTurnTo) {
  for (const char* entry : {"Próxima", "Fechar", "Fechar todas"}) {
    for (const QAction* action : Menu("Janela")->actions()) {
      if (action->text().remove(u'&') == QString::fromUtf8(entry)) {
        EXPECT_FALSE(action->isEnabled()) << entry;
      }
    }
  }
}

TEST_F(Windows, TabsOrFreeIsRemembered) {
  EXPECT_EQ(Area().viewMode(), QMdiArea::TabbedView);
  Open("TfmToyUm");
  Open("TfmToyDois");
  Pick("Janela", "Janelas livres");
  EXPECT_EQ(Area().viewMode(), QMdiArea::SubWindowView);
  EXPECT_FALSE(Area().Frames()[0]->isMaximized());
  EXPECT_GT(Area().Frames()[0]->height(), Area().height() / 2);
  EXPECT_TRUE(Area().Frames()[1]->isMaximized());  // it always opens so
  Open("TfmToyTres");
  EXPECT_FALSE(Area().Frames()[2]->isMaximized());
  EXPECT_GT(Area().Frames()[2]->height(), Area().height() / 2);
  mill_.RestartWindow();
  EXPECT_EQ(Area().viewMode(), QMdiArea::SubWindowView);
  Pick("Janela", "Em abas");
  mill_.RestartWindow();
  EXPECT_EQ(Area().viewMode(), QMdiArea::TabbedView);
}

TEST_F(Windows, FKeysReachTheScreen) {
  ToyScreen& screen = Open("TfmToyUm");
  std::vector<host::Key> keys;
  screen.EdtNome.OnKeyDown = [&keys](host::Key key) { keys.push_back(key); };
  for (int number = 0; number < 12; ++number) test::Press(static_cast<Qt::Key>(Qt::Key_F1 + number));
  ASSERT_EQ(keys.size(), 12u);
  EXPECT_EQ(keys.front(), host::Key::kF1);
  EXPECT_EQ(keys.back(), host::Key::kF12);
}

// --- closing -------------------------------------------------------------------------------------------------------

TEST_F(Windows, TheCloseButtonOfTheTabClosesTheScreen) {
  Open("TfmToyUm");
  Area().Frames()[0]->close();
  test::Settle();
  EXPECT_EQ(mill_.Desk().Find("TfmToyUm"), nullptr);
  EXPECT_TRUE(Area().subWindowList().isEmpty());
}

TEST_F(Windows, TheOneBelowGetsTheFocusWhenAScreenCloses) {
  Open("TfmToyUm");
  ToyScreen& second = Open("TfmToyDois");
  mill_.ClickOn(second, "BtnFechar");
  EXPECT_EQ(mill_.Desk().Find("TfmToyDois"), nullptr);
  ASSERT_TRUE(test::WaitFor([this] { return Focused() == "TfmToyUm.EdtNome"; })) << Focused();
  EXPECT_EQ(Active(), "TfmToyUm");
}

TEST_F(Windows, UnsavedWorkIsAskedAboutHoweverTheScreenIsClosed) {
  ToyScreen& screen = Open("TfmToyUm");
  test::TypeText("abc");
  const QString question = "Há dados não gravados em \"Tela um\". Deseja fechar mesmo assim?";
  const std::vector<std::function<void()>> ways = {
      [this] { Area().Frames()[0]->close(); },    [this] { test::Press(Qt::Key_W, Qt::ControlModifier); },
      [this] { Pick("Janela", "Fechar todas"); }, [this, &screen] { mill_.ClickOn(screen, "BtnFechar"); },
      [this] { mill_.Window().close(); },
  };
  for (const auto& close : ways) {
    mill_.ExpectBox(question, Reply::kNo);
    close();
    EXPECT_TRUE(mill_.GetBoxes().Met());
    ASSERT_EQ(mill_.Desk().Find("TfmToyUm"), &screen);
    EXPECT_TRUE(mill_.Window().isVisible());
    EXPECT_EQ(screen.EdtNome.Text(), "abc");
  }
  const std::vector<test::ShownBox> boxes = mill_.GetBoxes().Take();
  ASSERT_EQ(boxes.size(), ways.size());
  for (const test::ShownBox& box : boxes) {
    EXPECT_EQ(box.text, question);
    EXPECT_EQ(box.title, "Tela um");
    EXPECT_EQ(box.default_button, "Não");
  }
  mill_.ExpectBox(question, Reply::kYes);
  mill_.ClickOn(screen, "BtnFechar");
  EXPECT_EQ(mill_.Desk().Find("TfmToyUm"), nullptr);
}

TEST_F(Windows, ClosingTheProgramClosesEveryScreen) {
  Open("TfmToyUm");
  test::TypeText("abc");
  Open("TfmToyDois");
  int closed = 0;
  test::Toys().close = [&closed](host::Screen&) { ++closed; };
  mill_.ExpectBox("\"Tela um\"", Reply::kYes);
  EXPECT_TRUE(mill_.Window().close());
  EXPECT_EQ(closed, 2);
  EXPECT_TRUE(mill_.Desk().Screens().empty());
  EXPECT_FALSE(mill_.Window().ChangeUserWanted());
}

TEST_F(Windows, AScreenThatRefusesToCloseStaysAndSoDoesTheProgram) {
  ToyScreen& screen = Open("TfmToyUm");
  test::Toys().close = [](host::Screen& closing) { closing.Refuse("Ainda não."); };
  mill_.ExpectBox("Ainda não.");
  Area().Frames()[0]->close();
  EXPECT_EQ(mill_.Desk().Find("TfmToyUm"), &screen);
  mill_.ExpectBox("Ainda não.");
  EXPECT_FALSE(mill_.Window().close());
  EXPECT_TRUE(mill_.Window().isVisible());
  test::Toys().close = {};
}

TEST_F(Windows, ChangingTheUserClosesTheWindowAndSaysWhy) {
  Open("TfmToyUm");
  Pick("Arquivo", "Trocar usuário...");
  EXPECT_FALSE(mill_.Window().isVisible());
  EXPECT_TRUE(mill_.Window().ChangeUserWanted());
}

// --- the status bar ------------------------------------------------------------------------------------------------

TEST_F(Windows, TheStatusBarTellsCompanyUserAndDatabase) {
  EXPECT_EQ(mill_.Status("StatusCompany"), "Empresa 001");
  EXPECT_EQ(mill_.Status("StatusUser"), QString::fromStdString(mill_.GetMill().App().GetFuncoes().vUsuario()));
  const QString path = QString::fromStdString(mill_.GetMill().Path());
  EXPECT_EQ(mill_.Status("StatusDatabase"), path.mid(path.lastIndexOf(u'/') + 1));
}

TEST_F(Windows, BusyShowsWhileTheActRunsAndNoLonger) {
  ToyScreen& screen = Open("TfmToyUm");
  QString during;
  bool waiting = false;
  test::Toys().first = [&](host::Screen& toy) {
    toy.GetHost().GetFuncoes().Ocupado(true, toy, "Calculando...");
    during = mill_.Status("StatusBusy");
    waiting = QApplication::overrideCursor() != nullptr;
    throw host::InputError("Não deu.");  // and nobody says that it is over
  };
  mill_.ExpectBox("Não deu.");
  mill_.ClickOn(screen, "BtnUm");
  EXPECT_EQ(during, "Calculando...");
  EXPECT_TRUE(waiting);
  EXPECT_EQ(mill_.Status("StatusBusy"), "");
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Windows, ALostConnectionStandsInTheStatusBar) {
  auto* status = mill_.Window().findChild<app::desktop::StatusLine*>();
  EXPECT_EQ(mill_.Status("StatusConnection"), "");
  status->ShowConnected(false);
  EXPECT_EQ(mill_.Status("StatusConnection"), "sem conexão");
  ToyScreen& screen = Open("TfmToyUm");  // an act that reaches the database: it is there again
  mill_.ClickOn(screen, "BtnUm");
  EXPECT_EQ(mill_.Status("StatusConnection"), "");
}

TEST_F(Windows, WhatIsNotPossibleStandsInTheStatusBar) {
  ToyScreen& screen = Open("TfmToyUm");
  screen.BtnUm.SetEnabled(false);
  EXPECT_FALSE(mill_.GetStation().Do([&] { return mill_.Desk().Click(screen.BtnUm); }));
  EXPECT_EQ(mill_.StatusMessage(), "BtnUm está desabilitado.");
}

}  // namespace
