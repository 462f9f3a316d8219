// Sorting, widths and order of the columns, the filter line, the totals.
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include "app/desktop/grid/column_memory.h"
#include "app/desktop/grid/filter_line.h"
#include "grid_fixture.h"

namespace {

using host::DatasetState;
using test::Press;
using test::Settle;
using test::TypeText;
using test::WaitFor;

class ColumnsTest : public test::GridTest {
 protected:
  void SetUp() override {
    Three();
    Show();
  }
  QHeaderView& Header() const { return *View().horizontalHeader(); }
  QLineEdit& Filter() const { return *panel_->findChild<QLineEdit*>(QStringLiteral("grid_filter")); }
  bool FilterShown() const { return Filter().isVisible(); }
  void FilterBy(const char* words) {
    Press(Qt::Key_F, Qt::ControlModifier);
    TypeText(QString::fromUtf8(words));
    Press(Qt::Key_Return);
  }
  void Many() {
    for (int row = 0; row < 40; ++row) Add("N" + std::to_string(row), row % 2 == 0 ? "par" : "ímpar", row);
    items_->First();
    Settle();
  }
};

TEST_F(ColumnsTest, AHeaderSortsUpDownAndNotAtAll) {
  ClickHeader("Cor");
  EXPECT_EQ(Codes(), "CBA");
  EXPECT_EQ(Cursor(), "A Codigo");
  ClickHeader("Cor");
  EXPECT_EQ(Codes(), "ABC");
  EXPECT_EQ(Header().sortIndicatorOrder(), Qt::DescendingOrder);
  EXPECT_TRUE(Header().isSortIndicatorShown());
  ClickHeader("Cor");
  EXPECT_EQ(Header().sortIndicatorSection(), -1);
  ClickHeader("Qtde");
  EXPECT_EQ(Codes(), "BCA");
  ClickHeader("Data");
  EXPECT_EQ(Codes(), "CBA");
  // The dataset keeps its order.
  EXPECT_EQ(items_->ValueAt(1, 1).AsText(), "A");
}

TEST_F(ColumnsTest, BesideASearchOfTheScreenALongListFiltersOnlyWhenAsked) {
  panel_->SetFilterOnRequest();
  Many();
  EXPECT_FALSE(FilterShown());
  FilterBy("impar");
  EXPECT_TRUE(FilterShown());
  EXPECT_EQ(View().model()->rowCount(), 20);
}

TEST_F(ColumnsTest, ALongTextGivesWaySoThatEveryColumnIsInSight) {
  panel_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
  Settle();
  const auto room_for = [this](int width) {
    window_->resize(window_->width() + width - View().viewport()->width(), window_->height());
    Settle();
  };
  room_for(200);
  const int natural = Header().length();
  const int text = Header().sectionSize(Column("Descricao"));
  ASSERT_GT(natural, 200);
  room_for(natural - 10);
  EXPECT_EQ(Header().length(), natural - 10);
  EXPECT_EQ(Header().sectionSize(Column("Descricao")), text - 10);
}

TEST_F(ColumnsTest, WithoutRoomForBothTheRowsComeBeforeTheirSums) {
  EXPECT_TRUE(Totals().isVisible());
  panel_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
  Settle();
  const QSize usual = window_->size();
  const int row = View().verticalHeader()->defaultSectionSize();
  window_->resize(usual.width(), 4 * row);
  Settle();
  EXPECT_FALSE(Totals().isVisible());
  window_->resize(usual);
  Settle();
  EXPECT_TRUE(Totals().isVisible());
}

TEST_F(ColumnsTest, InASortedListTheArrowsFollowTheList) {
  ClickHeader("Qtde");
  Press(Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(Cursor(), "B Codigo");
  Press(Qt::Key_Down);
  EXPECT_EQ(Cursor(), "C Codigo");
  Press(Qt::Key_Down);
  EXPECT_EQ(Cursor(), "A Codigo");
  Press(Qt::Key_Up);
  EXPECT_EQ(Cursor(), "C Codigo");
  EXPECT_EQ(Stands(), "C Codigo");
}

TEST_F(ColumnsTest, BelowTheLastRowOfASortedListANewOneBegins) {
  ClickHeader("Qtde");
  Press(Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ(Cursor(), "A Codigo");
  Press(Qt::Key_Down);
  EXPECT_EQ(items_->State(), DatasetState::kInsert);
  EXPECT_EQ(View().currentIndex().row(), 3);
  TypeText(QStringLiteral("D"));
  Press(Qt::Key_Right);
  Press(Qt::Key_Tab);
  Press(Qt::Key_Tab);
  TypeText(QStringLiteral("01"));
  Press(Qt::Key_Tab);
  TypeText(QStringLiteral("15"));
  Press(Qt::Key_Tab);
  EXPECT_EQ(Codes(), "BCAD");
  Press(Qt::Key_Up);
  EXPECT_EQ(Codes(), "BDCA");
}

TEST_F(ColumnsTest, AnEditedRowFindsItsPlaceWhenItIsLeft) {
  ClickHeader("Qtde");
  station_.Do([this] { return toy_.desk.SelectCell(*grid_, "Qtde"); });
  TypeText(QStringLiteral("1"));
  Press(Qt::Key_Tab);
  EXPECT_EQ(Codes(), "BCA");
  Press(Qt::Key_Up);
  EXPECT_EQ(Codes(), "ABC");
  EXPECT_EQ(Cursor(), "C Ciclos");
}

TEST_F(ColumnsTest, ARefusedTextKeepsTheOldOrder) {
  station_.Do([this] { return toy_.desk.SelectCell(*grid_, "Qtde"); });
  TypeText(QStringLiteral("muito"));
  ClickHeader("Cor");
  EXPECT_EQ(Codes(), "ABC");
  EXPECT_EQ(Header().sortIndicatorSection(), -1);
}

TEST_F(ColumnsTest, WidthsOrderAndSortingAreKept) {
  View().setColumnWidth(Column("Cor"), 177);
  Header().moveSection(Header().visualIndex(Column("Qtde")), 0);
  ClickHeader("Qtde");
  ClickHeader("Qtde");
  Rebuild();
  EXPECT_EQ(View().columnWidth(Column("Cor")), 177);
  EXPECT_EQ(Header().logicalIndex(0), Column("Qtde"));
  EXPECT_EQ(Codes(), "ACB");
  EXPECT_EQ(Header().sortIndicatorOrder(), Qt::DescendingOrder);
  // Another grid or another class of screens has its own.
  EXPECT_EQ(settings_.values.size(), 1u);
  EXPECT_EQ(settings_.values.begin()->first, "Grades/TfmOrdem.GrdItens/Colunas");
}

TEST_F(ColumnsTest, WhatIsKeptIsOfNoUseToOtherColumns) {
  View().setColumnWidth(Column("Cor"), 177);
  Rebuild();
  grid_->SetColumns({{.field = "Codigo"}, {.field = "Cor"}});
  Rebuild();
  EXPECT_NE(View().columnWidth(Column("Cor")), 177);
  settings_.values.begin()->second = "{\"columns\": 7";
  Rebuild();
  EXPECT_EQ(View().model()->columnCount(), 2);
}

TEST_F(ColumnsTest, TheMenuPutsWidthsAndOrderBack) {
  const int before = View().columnWidth(Column("Cor"));
  View().setColumnWidth(Column("Cor"), before + 60);
  Header().moveSection(0, 3);
  Menu(QStringLiteral("Larguras padrão"));
  EXPECT_EQ(View().columnWidth(Column("Cor")), before);
  EXPECT_EQ(Header().logicalIndex(0), 0);
  Rebuild();
  EXPECT_EQ(View().columnWidth(Column("Cor")), before);
}

TEST_F(ColumnsTest, TheColumnsUseTheRoomOfTheWindow) {
  const int narrow = View().columnWidth(Column("Descricao"));
  window_->resize(1300, 400);
  Settle();
  EXPECT_GT(View().columnWidth(Column("Descricao")), narrow);
  EXPECT_EQ(Header().length(), View().viewport()->width());
}

TEST_F(ColumnsTest, MovedColumnsAreWalkedAsTheyStand) {
  Header().moveSection(Header().visualIndex(Column("Qtde")), 1);
  Press(Qt::Key_Right);
  EXPECT_EQ(Cursor(), "A Qtde");
  Press(Qt::Key_Right);
  EXPECT_EQ(Cursor(), "A Descricao");
}

TEST_F(ColumnsTest, ALongListHasAFilterLine) {
  EXPECT_FALSE(FilterShown());
  Many();
  EXPECT_TRUE(FilterShown());
  items_->Empty();
  Settle();
  EXPECT_FALSE(FilterShown());
}

TEST_F(ColumnsTest, TheFilterShowsRowsWithAllItsWords) {
  Many();
  FilterBy("IMPAR n1");
  EXPECT_EQ(Codes(), "N1N11N13N15N17N19");
  EXPECT_EQ(items_->RecordCount(), 43u);
  // The cursor's row was not among them: the person stands on the first that is.
  EXPECT_EQ(Cursor(), "N1 Codigo");
  EXPECT_TRUE(View().hasFocus());
  Press(Qt::Key_Down);
  EXPECT_EQ(Stands(), "N11 Codigo");
  EXPECT_EQ(panel_->findChild<app::desktop::FilterLine*>()->findChildren<QLabel*>().last()->text().toStdString(),
            "6 de 43 linhas");
}

TEST_F(ColumnsTest, TypingFiltersByItselfAndEscShowsAllAgain) {
  Press(Qt::Key_F, Qt::ControlModifier);
  EXPECT_TRUE(FilterShown());
  EXPECT_TRUE(panel_->HasKeyboard());
  TypeText(QStringLiteral("verde"));
  EXPECT_TRUE(WaitFor([this] { return Codes() == "A"; }));
  Press(Qt::Key_Escape);
  EXPECT_EQ(Codes(), "ABC");
  EXPECT_FALSE(FilterShown());
  EXPECT_TRUE(View().hasFocus());
}

TEST_F(ColumnsTest, ActsMeanwhileLeaveTheKeyboardInTheFilterLine) {
  Press(Qt::Key_F, Qt::ControlModifier);
  station_.Do([this] { return toy_.desk.SelectRow(*grid_, 2); });
  EXPECT_TRUE(Filter().hasFocus());
}

TEST_F(ColumnsTest, AClickIntoTheFilterLineLeavesTheInputBefore) {
  Many();
  toy_.desk.Enter(*number_);
  Events();
  QTest::mouseClick(&Filter(), Qt::LeftButton);
  Settle();
  EXPECT_EQ(Events(), "exit EdtNumero");
  EXPECT_EQ(toy_.desk.Focused(), grid_);
  EXPECT_TRUE(Filter().hasFocus());
}

TEST_F(ColumnsTest, ANewRowIsSeenWhateverTheFilter) {
  FilterBy("verde");
  EXPECT_EQ(Codes(), "A");
  Press(Qt::Key_Down);
  EXPECT_EQ(items_->State(), DatasetState::kInsert);
  EXPECT_EQ(View().model()->rowCount(), 2);
  EXPECT_EQ(View().currentIndex().row(), 1);
}

TEST_F(ColumnsTest, TheSumsAreThoseOfTheRowsShown) {
  EXPECT_TRUE(Totals().isVisible());
  EXPECT_EQ(Totals().TextOf(Column("Qtde")).toStdString(), "60,00");
  EXPECT_EQ(Totals().TextOf(Column("Ciclos")).toStdString(), "6");
  EXPECT_EQ(Totals().TextOf(Column("Codigo")).toStdString(), "");
  EXPECT_EQ(Totals().Heading().toStdString(), "Soma   3 linhas");
  FilterBy("malha azul");
  EXPECT_EQ(Totals().TextOf(Column("Qtde")).toStdString(), "10,00");
  EXPECT_EQ(Totals().Heading().toStdString(), "Soma   1 de 3 linhas");
}

TEST_F(ColumnsTest, TheSumsFollowWhatIsTyped) {
  station_.Do([this] { return toy_.desk.SelectCell(*grid_, "Qtde"); });
  TypeText(QStringLiteral("0,1"));
  Press(Qt::Key_Down);
  TypeText(QStringLiteral("0,2"));
  Press(Qt::Key_Down);
  TypeText(QStringLiteral("0"));
  Press(Qt::Key_Tab);
  EXPECT_EQ(Totals().TextOf(Column("Qtde")).toStdString(), "0,30");
}

TEST_F(ColumnsTest, WithoutSumsThereIsNoLineForThem) {
  grid_->SetColumns({{.field = "Codigo"}});
  Settle();
  EXPECT_FALSE(Totals().isVisible());
}

TEST_F(ColumnsTest, CellsAreAlignedAndReadOnlyOnesAreMarked) {
  const auto* model = View().model();
  EXPECT_TRUE(model->index(0, Column("Qtde")).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
  EXPECT_TRUE(model->index(0, Column("Ciclos")).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
  EXPECT_TRUE(model->index(0, Column("Cor")).data(Qt::TextAlignmentRole).toInt() & Qt::AlignLeft);
  EXPECT_EQ(Cell(0, "Data"), "01/02/2026");
  EXPECT_EQ(Cell(0, "Sel"), "");
  EXPECT_TRUE(model->index(0, Column("Descricao")).data(app::desktop::GridModel::kReadOnlyRole).toBool());
  EXPECT_FALSE(model->index(0, Column("Cor")).data(app::desktop::GridModel::kReadOnlyRole).toBool());
  // Darker than a cell that is typed into.
  const QImage shown = View().viewport()->grab().toImage();
  const auto ground = [&](std::string_view field) {
    const QRect cell = View().visualRect(model->index(1, Column(field)));
    const qreal scale = shown.devicePixelRatio();
    return shown.pixelColor((QPointF(cell.right() - 3, cell.top() + 2) * scale).toPoint()).lightness();
  };
  EXPECT_LT(ground("Descricao"), ground("Cor"));
}

}  // namespace
