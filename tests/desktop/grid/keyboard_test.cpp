// The keyboard in a grid: from cell to cell, row to row, and out of it.
#include <QScrollBar>
#include <QShortcut>

#include "grid_fixture.h"

namespace {

using app::desktop::GridView;
using host::ActResult;
using host::DatasetState;
using test::Press;
using test::Settle;

class KeyboardTest : public test::GridTest {
 protected:
  void SetUp() override {
    Three();
    Show();
  }
};

TEST_F(KeyboardTest, TheViewShowsWhereTheScreenStands) {
  EXPECT_EQ(Cursor(), "A Codigo");
  EXPECT_TRUE(panel_->HasKeyboard());
  station_.Do([this] { return toy_.desk.SelectRow(*grid_, 3); });
  EXPECT_EQ(Cursor(), "C Codigo");
  grid_->SelectColumn(Column("Qtde"));
  Settle();
  EXPECT_EQ(Cursor(), "C Qtde");
}

TEST_F(KeyboardTest, ArrowsMoveTheDatasetThroughTheDesk) {
  Press(Qt::Key_Down);
  EXPECT_EQ(Events(), "left Codigo");
  EXPECT_EQ(Stands(), "B Codigo");
  EXPECT_EQ(Cursor(), "B Codigo");
  Press(Qt::Key_Right);
  EXPECT_EQ(Cursor(), "B Descricao");
  EXPECT_EQ(Stands(), "B Descricao");
  Press(Qt::Key_Left);
  Press(Qt::Key_Left);
  EXPECT_EQ(Cursor(), "B Codigo");
  Press(Qt::Key_Up);
  EXPECT_EQ(Cursor(), "A Codigo");
  Press(Qt::Key_Up);
  EXPECT_EQ(Cursor(), "A Codigo");
}

TEST_F(KeyboardTest, HomeEndAndPages) {
  for (int row = 0; row < 60; ++row) Add("N" + std::to_string(row), "01", 1);
  items_->First();
  Settle();
  Press(Qt::Key_End);
  EXPECT_EQ(Cursor(), "A Sel");
  Press(Qt::Key_Home);
  EXPECT_EQ(Cursor(), "A Codigo");
  Press(Qt::Key_PageDown);
  const std::size_t page = items_->RecNo();
  EXPECT_GT(page, 4u);
  EXPECT_LT(page, 30u);
  Press(Qt::Key_PageDown);
  EXPECT_EQ(items_->RecNo(), 2 * page - 1);
  Press(Qt::Key_PageUp);
  EXPECT_EQ(items_->RecNo(), page);
  Press(Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ(Cursor(), "N59 Codigo");
  EXPECT_TRUE(View().viewport()->rect().contains(View().visualRect(View().currentIndex())));
  Press(Qt::Key_PageDown);
  EXPECT_EQ(items_->State(), DatasetState::kBrowse);
  Press(Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(Cursor(), "A Codigo");
}

TEST_F(KeyboardTest, TabAndEnterGoToTheNextCellWithTheScreensRules) {
  Press(Qt::Key_Tab);
  EXPECT_EQ(Events(), "left Codigo");
  EXPECT_EQ(Cursor(), "A Descricao");
  Press(Qt::Key_Return);
  EXPECT_EQ(Cursor(), "A Cor");
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(Cursor(), "A Descricao");
  // The kit decides where the last column leads: it stays.
  Press(Qt::Key_End);
  Press(Qt::Key_Tab);
  EXPECT_EQ(Cursor(), "A Sel");
  EXPECT_EQ(toy_.desk.Focused(), grid_);
}

TEST_F(KeyboardTest, AHandlerSendsThePersonElsewhere) {
  grid_->OnKeyDown = [this](host::Key key) {
    if (key == host::Key::kEnter) grid_->SelectColumn(Column("Qtde"));
  };
  Press(Qt::Key_Return);
  EXPECT_EQ(Cursor(), "A Qtde");
}

TEST_F(KeyboardTest, DownOnTheLastRowBeginsANewOne) {
  Press(Qt::Key_Down);
  Press(Qt::Key_Down);
  Press(Qt::Key_Down);
  EXPECT_EQ(items_->State(), DatasetState::kInsert);
  EXPECT_EQ(View().model()->rowCount(), 4);
  EXPECT_EQ(View().currentIndex().row(), 3);
  // Nothing was typed: it gives itself up on the way back, one row up.
  Press(Qt::Key_Up);
  EXPECT_EQ(items_->State(), DatasetState::kBrowse);
  EXPECT_EQ(Cursor(), "C Codigo");
  EXPECT_EQ(View().model()->rowCount(), 3);
}

TEST_F(KeyboardTest, EscGivesTheRowUp) {
  Press(Qt::Key_Insert);
  EXPECT_EQ(items_->State(), DatasetState::kInsert);
  EXPECT_EQ(View().currentIndex().row(), 3);
  Press(Qt::Key_Escape);
  EXPECT_EQ(items_->State(), DatasetState::kBrowse);
  EXPECT_EQ(Codes(), "ABC");
}

TEST_F(KeyboardTest, CtrlDeleteDeletesTheRowAndDeleteEmptiesTheCell) {
  Press(Qt::Key_Right);
  Press(Qt::Key_Right);
  Press(Qt::Key_Delete);
  EXPECT_EQ((*items_)["Cor"].AsText(), "");
  EXPECT_EQ(items_->State(), DatasetState::kEdit);
  Press(Qt::Key_Escape);
  EXPECT_EQ((*items_)["Cor"].AsText(), "Verde");
  Press(Qt::Key_Delete, Qt::ControlModifier);
  EXPECT_EQ(Codes(), "BC");
  EXPECT_EQ(Cursor(), "B Cor");
  // A read-only cell keeps what it holds.
  Press(Qt::Key_Left);
  Press(Qt::Key_Delete);
  EXPECT_EQ((*items_)["Descricao"].AsText(), "Malha B");
  EXPECT_EQ(items_->State(), DatasetState::kBrowse);
}

TEST_F(KeyboardTest, ARefusedDeletionKeepsTheRow) {
  items_->BeforeDelete = [this] { screen_->Refuse("Item baixado."); };
  Press(Qt::Key_Delete, Qt::ControlModifier);
  EXPECT_EQ(Events(), "box Ordem: Item baixado. | end aborted");
  EXPECT_EQ(Codes(), "ABC");
}

TEST_F(KeyboardTest, FunctionKeysGoToTheGrid) {
  Press(Qt::Key_F4);
  EXPECT_EQ(Events(), "F4 Codigo");
  Press(Qt::Key_F12);
  EXPECT_EQ(Events(), "");
  save_->Shortcut = host::Key::kF5;
  save_->OnClick = [this] { toy_.notes.push_back("saved"); };
  Press(Qt::Key_F5);
  EXPECT_EQ(Events(), "left Codigo | saved");
}

TEST_F(KeyboardTest, F2IsTheScreensWhereNoCellOpens) {
  save_->Shortcut = host::Key::kF2;
  save_->OnClick = [this] { toy_.notes.push_back("saved"); };
  Press(Qt::Key_F2);
  ASSERT_NE(Editor(), nullptr);
  Press(Qt::Key_Escape);
  Press(Qt::Key_Right);
  Events();
  Press(Qt::Key_F2);
  EXPECT_EQ(Events(), "left Descricao | saved");
}

TEST_F(KeyboardTest, CtrlTabAndCtrlEnterLeadOutOfTheGrid) {
  Press(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(toy_.desk.Focused(), save_);
  toy_.desk.Enter(*grid_);
  Press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(toy_.desk.Focused(), number_);
  toy_.desk.Enter(*grid_);
  Press(Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(toy_.desk.Focused(), save_);
}

TEST_F(KeyboardTest, ThePagesOfTheScreenAreTurnedFromWithinTheGrid) {
  int turned = 0;
  QShortcut turn(QKeySequence(Qt::CTRL | Qt::Key_PageDown), window_.get());
  QObject::connect(&turn, &QShortcut::activated, &turn, [&turned] { ++turned; });
  Press(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(turned, 1);
  test::TypeText(QStringLiteral("D"));
  Press(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(turned, 2);
  EXPECT_EQ(Stands(), "A Codigo");
}

TEST_F(KeyboardTest, ARefusedExitKeepsThePersonInTheGrid) {
  grid_->OnExit = [] { throw host::Abort(); };
  Press(Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(toy_.desk.Focused(), grid_);
  EXPECT_EQ(Cursor(), "A Codigo");
}

TEST_F(KeyboardTest, EnterChoosesInAListToChooseFrom) {
  grid_->SetReadOnly(true);
  grid_->OnDblClick = [this] { toy_.notes.push_back("chosen " + Stands()); };
  Press(Qt::Key_Down);
  Events();
  Press(Qt::Key_Return);
  EXPECT_EQ(Events(), "chosen B Codigo");
  EXPECT_EQ(Cursor(), "B Codigo");
}

TEST_F(KeyboardTest, InAReadOnlyListNothingIsTypedOrAppended) {
  grid_->SetReadOnly(true);
  test::TypeText(QStringLiteral("7"));
  EXPECT_EQ(Editor(), nullptr);
  Press(Qt::Key_F2);
  EXPECT_EQ(Editor(), nullptr);
  Press(Qt::Key_Insert);
  Press(Qt::Key_End, Qt::ControlModifier);
  Press(Qt::Key_Down);
  EXPECT_EQ(items_->State(), DatasetState::kBrowse);
  EXPECT_EQ(Cursor(), "C Codigo");
}

TEST_F(KeyboardTest, ALockedGridIsLookedAtAndCopiedOnly) {
  grid_->SetEnabled(false);
  toy_.desk.Leave();
  Settle();
  View().setFocus();
  Press(Qt::Key_Down);
  Press(Qt::Key_Right);
  EXPECT_EQ(Cursor(), "B Descricao");
  EXPECT_EQ(Stands(), "A Codigo");
  Press(Qt::Key_Delete, Qt::ControlModifier);
  Press(Qt::Key_Insert);
  test::TypeText(QStringLiteral("z"));
  EXPECT_EQ(Codes(), "ABC");
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_TRUE(View().isEnabled());
  EXPECT_NE(Menu().find("Exportar CSV..."), std::string::npos);
  EXPECT_EQ(Menu().find("Colar"), std::string::npos);
  Press(Qt::Key_Tab);
  EXPECT_NE(toy_.desk.Focused(), nullptr);
}

TEST_F(KeyboardTest, TwoHundredChangesAreReadOnce) {
  Settle();
  const int before = static_cast<app::desktop::GridModel*>(View().model())->Readings();
  station_.Do([this] {
    return toy_.desk.Run("carga", [this] {
      for (int row = 0; row < 200; ++row) Add("N" + std::to_string(row), "01", row);
    });
  });
  EXPECT_EQ(static_cast<app::desktop::GridModel*>(View().model())->Readings(), before + 1);
  EXPECT_EQ(View().model()->rowCount(), 203);
  // Outside any act the event loop does it.
  for (int row = 0; row < 200; ++row) Add("P" + std::to_string(row), "01", row);
  Settle();
  EXPECT_EQ(static_cast<app::desktop::GridModel*>(View().model())->Readings(), before + 2);
  EXPECT_EQ(View().model()->rowCount(), 403);
}

TEST_F(KeyboardTest, MovingTheCursorReadsNothingAgain) {
  Press(Qt::Key_Down);
  const int before = static_cast<app::desktop::GridModel*>(View().model())->Readings();
  Press(Qt::Key_Up);
  Press(Qt::Key_Right);
  EXPECT_EQ(static_cast<app::desktop::GridModel*>(View().model())->Readings(), before);
}

TEST_F(KeyboardTest, WhatAPersonScrolledToStaysWhileRowsChange) {
  for (int row = 0; row < 100; ++row) Add("N" + std::to_string(row), "01", 1);
  items_->First();
  Settle();
  View().verticalScrollBar()->setValue(40);
  items_->Edit();
  (*items_)["Qtde"].Set(5);
  items_->Post();
  Settle();
  EXPECT_EQ(View().verticalScrollBar()->value(), 40);
  EXPECT_EQ(Cursor(), "A Codigo");
}

TEST_F(KeyboardTest, OtherColumnsAreTakenUp) {
  grid_->SetColumns({{.field = "Cor", .caption = "01|AZUL"}, {.field = "Qtde"}});
  Settle();
  EXPECT_EQ(View().model()->columnCount(), 2);
  EXPECT_EQ(View().model()->headerData(0, Qt::Horizontal).toString().toStdString(), "01\nAZUL");
  EXPECT_EQ(View().currentIndex().column(), 0);
  items_->Close();
  Settle();
  EXPECT_EQ(View().model()->rowCount(), 0);
  EXPECT_EQ(Cursor(), "-");
}

TEST_F(KeyboardTest, AScreenThatGoesTakesTheGridAlong) {
  grid_->OnDblClick = [this] { screen_->Close(); };
  toy_.desk.SelectCell(*grid_, "Qtde");
  QObject::connect(&station_, &app::desktop::Station::Settled, panel_, [this] {
    if (toy_.desk.Screens().empty()) window_.reset();
  });
  grid_->SetReadOnly(true);
  GridView& view = View();
  QObject gone;
  bool destroyed = false;
  QObject::connect(&view, &QObject::destroyed, &gone, [&destroyed] { destroyed = true; });
  // The window lets go first, as the real one does when the desk says that the screen goes.
  panel_->LetGo();
  Press(Qt::Key_Return);
  EXPECT_FALSE(destroyed);
  EXPECT_EQ(view.model()->columnCount(), 0);
  view.grab();
  Press(Qt::Key_Down);
  Press(Qt::Key_F4);
  EXPECT_EQ(panel_->GetGrid(), nullptr);
}

}  // namespace
