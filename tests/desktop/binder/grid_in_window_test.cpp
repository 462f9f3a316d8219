// A grid among the inputs of a window.
#include <QApplication>
#include <QLabel>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

#include "app/desktop/grid/grid_panel.h"
#include "host/kit/dataset.h"
#include "host/kit/grid.h"
#include "tests/desktop/binder/toy_window.h"

namespace test {
namespace {

class GridInWindow : public WindowTest {
 protected:
  void SetUp() override {
    OpenTear([](ToyScreen& screen) {
      auto& rows = screen.Add<host::Dataset>(
          "TbItens",
          std::vector<host::FieldDef>{{"Codigo", host::FieldType::kText, 6}, {"Qtde", host::FieldType::kFloat}});
      for (const char* code : {"M1", "M2"}) {
        rows.Append();
        rows["Codigo"].Set(code);
        rows.Post();
      }
      rows.First();
      host::GridColumn code{"Codigo"};
      code.lookup = true;
      auto& grid = screen.Add<host::Grid>("GrdItens", rows, std::vector<host::GridColumn>{code, {"Qtde"}});
      dynamic_cast<host::PageControl&>(*screen.FindComponent("PgAbas")).Place(1, {&grid});
    });
  }
  QTableView* Table() { return Find<app::desktop::GridPanel>("GrdItens")->findChild<QTableView*>(); }
  void ClickCell(int row, int column) {
    const QRect cell = Table()->visualRect(Table()->model()->index(row, column));
    Click(*Table()->viewport(), cell.center());
  }
};

TEST_F(GridInWindow, FitsItsForm) { EXPECT_EQ(window_->Mismatches(), QStringList()); }

TEST_F(GridInWindow, GetsTheKeyboardByKeysAndTellsItsOwn) {
  Press(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(WindowTest::Focus(), "EdtDois");
  Part<host::Button>("BtnGravar").OnClick = [this] { Part<host::Grid>("GrdItens").SetFocus(); };
  Press(Qt::Key_F2);
  EXPECT_EQ(WindowTest::Focus(), "GrdItens");
  EXPECT_TRUE(window_->KeysHere().startsWith("Enter Avança   Esc Desfaz   F4 Pesquisa   Ctrl+Enter Sai da grade"))
      << window_->KeysHere().toStdString();
  Press(Qt::Key_Tab);
  EXPECT_EQ(Part<host::Grid>("GrdItens").SelectedField(), "Qtde");
  EXPECT_FALSE(window_->KeysHere().contains("F4"));
  Press(Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(Find<QTabWidget>("PgAbas")->currentIndex(), 0);
  EXPECT_EQ(WindowTest::Focus(), "EdtUm");
}

TEST_F(GridInWindow, IsEnteredByAClick) {
  ClickTab("PgAbas", 1);
  Events();
  ClickCell(1, 0);
  EXPECT_EQ(WindowTest::Focus(), "GrdItens");
  EXPECT_EQ(Part<host::Grid>("GrdItens").GetDataset().RecNo(), 2U);
}

TEST_F(GridInWindow, IsNotEnteredByAClickWhileAnInputRefusesToBeLeft) {
  ClickTab("PgAbas", 1);
  RefuseExit("EdtDois");
  ClickCell(1, 0);
  EXPECT_EQ(WindowTest::Focus(), "EdtDois");
  EXPECT_EQ(Part<host::Grid>("GrdItens").GetDataset().RecNo(), 1U);
}

TEST_F(GridInWindow, ThatRefusesToBeLeftKeepsTheKeyboard) {
  ClickTab("PgAbas", 1);
  ClickCell(0, 0);
  RefuseExit("GrdItens");
  Click("EdtCodigo");
  EXPECT_EQ(WindowTest::Focus(), "GrdItens");
  Press(Qt::Key_G, Qt::AltModifier);
  EXPECT_EQ(WindowTest::Focus(), "GrdItens");
}

TEST_F(GridInWindow, HidesAndShowsAsTheScreenSays) {
  ClickTab("PgAbas", 1);
  Part<host::Grid>("GrdItens").SetVisible(false);
  EXPECT_FALSE(Find("GrdItens")->isVisible());
  Part<host::Grid>("GrdItens").SetVisible(true);
  EXPECT_TRUE(Find("GrdItens")->isVisible());
}

TEST_F(GridInWindow, MayCloseTheScreenByADoubleClick) {
  ClickTab("PgAbas", 1);
  Part<host::Grid>("GrdItens").OnDblClick = [this] { screen_->Close(); };
  const QRect cell = Table()->visualRect(Table()->model()->index(0, 0));
  QWidget* viewport = Table()->viewport();
  QTest::mouseDClick(top_->windowHandle(), Qt::LeftButton, Qt::NoModifier, viewport->mapTo(top_.get(), cell.center()));
  EXPECT_EQ(window_, nullptr);
  Settle();
  EXPECT_EQ(top_->findChild<QTableView*>(), nullptr);
}

}  // namespace
}  // namespace test
