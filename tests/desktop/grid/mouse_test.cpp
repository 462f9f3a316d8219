// The mouse in a grid.
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include "app/desktop/grid/cell_delegate.h"
#include "grid_fixture.h"

namespace {

using test::Press;
using test::Settle;

class MouseTest : public test::GridTest {
 protected:
  void SetUp() override {
    Three();
    Show();
  }
  void Drag(int from_row, std::string_view from, int to_row, std::string_view to) {
    QTest::mousePress(View().viewport(), Qt::LeftButton, {}, Middle(from_row, from));
    const QPoint end = Middle(to_row, to);
    for (int step = 1; step <= 4; ++step) {
      const QPoint at = Middle(from_row, from) + (end - Middle(from_row, from)) * step / 4;
      QMouseEvent move(QEvent::MouseMove, QPointF(at), QPointF(View().viewport()->mapToGlobal(at)), Qt::NoButton,
                       Qt::LeftButton, {});
      QApplication::sendEvent(View().viewport(), &move);
    }
    QTest::mouseRelease(View().viewport(), Qt::LeftButton, {}, end);
    Settle();
  }
  std::string Block() const {
    const app::desktop::Block block = View().Marked();
    std::string text = std::to_string(block.top) + "-" + std::to_string(block.bottom);
    for (const int column : block.columns) text += " " + grid_->Columns()[static_cast<std::size_t>(column)].field;
    return text;
  }
};

TEST_F(MouseTest, AClickLeavesOneCellAndStandsOnAnother) {
  grid_->OnClick = [this] { toy_.notes.push_back("click " + Stands()); };
  Click(2, "Qtde");
  EXPECT_EQ(Events(), "left Codigo | click C Qtde");
  EXPECT_EQ(Cursor(), "C Qtde");
  Click(2, "Qtde");
  EXPECT_EQ(Events(), "click C Qtde");
}

TEST_F(MouseTest, TheKeyboardIsWantedBeforeAnythingElse) {
  toy_.desk.Enter(*number_);
  toy_.notes.clear();
  Click(1, "Cor");
  // The grid is entered at its cursor, which the click then leaves.
  EXPECT_EQ(Events(), "exit EdtNumero | left Codigo");
  EXPECT_EQ(Cursor(), "B Cor");
  EXPECT_TRUE(panel_->HasKeyboard());
}

TEST_F(MouseTest, AnInputThatDoesNotLetGoKeepsThePerson) {
  toy_.desk.Enter(*number_);
  number_->OnExit = [this] { screen_->Refuse("Número inválido.", *number_); };
  toy_.notes.clear();
  Click(1, "Cor");
  EXPECT_EQ(Events(), "box Ordem: Número inválido. | end aborted");
  EXPECT_EQ(toy_.desk.Focused(), number_);
  EXPECT_EQ(Stands(), "A Codigo");
}

TEST_F(MouseTest, ARefusedRowKeepsTheCursor) {
  items_->BeforePost = [this] { screen_->Refuse("Falta a cor."); };
  items_->Edit();
  Click(2, "Qtde");
  EXPECT_EQ(Cursor(), "A Codigo");
  EXPECT_EQ(Stands(), "A Codigo");
}

TEST_F(MouseTest, ADoubleClickChoosesOrOpensTheEditor) {
  DoubleClick(1, "Cor");
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(Editor()->text().toStdString(), "azul");
  Press(Qt::Key_Escape);
  grid_->OnDblClick = [this] { toy_.notes.push_back("chosen " + Stands()); };
  Events();
  DoubleClick(2, "Cor");
  EXPECT_EQ(Events(), "left Cor | chosen C Cor");
  EXPECT_EQ(Editor(), nullptr);
}

TEST_F(MouseTest, AClickOnTheBoxTicksIt) {
  Click(1, "Sel");
  EXPECT_EQ(items_->ValueAt(2, 0).AsText(), "S");
  EXPECT_EQ(Cursor(), "B Sel");
  Click(1, "Sel");
  EXPECT_EQ(items_->ValueAt(2, 0).AsText(), "N");
  // Beside the box the cell is only stood on.
  const QRect cell = View().visualRect(View().model()->index(2, Column("Sel")));
  QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, QPoint(cell.left() + 2, cell.center().y()));
  Settle();
  EXPECT_EQ(Cursor(), "C Sel");
  EXPECT_EQ(items_->ValueAt(3, 0).AsText(), "");
}

TEST_F(MouseTest, ABoxThatNobodyTicksIsLeftAlone) {
  grid_->SetReadOnly(true);
  Click(1, "Sel");
  EXPECT_EQ(items_->ValueAt(2, 0).AsText(), "");
  EXPECT_EQ(Cursor(), "B Sel");
}

TEST_F(MouseTest, TheLookupButtonIsF4) {
  Click(1, "Codigo");
  Events();
  const QRect cell = View().visualRect(View().model()->index(1, Column("Codigo")));
  QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, app::desktop::CellDelegate::LookupButtonOf(cell).center());
  Settle();
  EXPECT_EQ(Events(), "F4 Codigo");
}

TEST_F(MouseTest, DraggingMarksABlockAndMovesNothing) {
  Drag(0, "Cor", 2, "Ciclos");
  EXPECT_EQ(Block(), "0-2 Cor Qtde Ciclos");
  EXPECT_EQ(Stands(), "A Cor");
  EXPECT_EQ(View().selectionModel()->selectedIndexes().size(), 9);
  Press(Qt::Key_Down);
  EXPECT_EQ(Block(), "1-1 Cor");
  EXPECT_EQ(View().selectionModel()->selectedIndexes().size(), 1);
}

TEST_F(MouseTest, ShiftMarksABlock) {
  Click(1, "Qtde");
  Click(0, "Cor", Qt::ShiftModifier);
  EXPECT_EQ(Block(), "0-1 Cor Qtde");
  EXPECT_EQ(Stands(), "B Qtde");
  Press(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(Block(), "1-1 Cor Qtde");
  Press(Qt::Key_Right, Qt::ShiftModifier);
  Press(Qt::Key_End, Qt::ShiftModifier | Qt::ControlModifier);
  EXPECT_EQ(Block(), "1-2 Qtde Ciclos Data Sel");
  Press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(View().Marked().columns.size(), 7u);
  EXPECT_EQ(View().Marked().bottom, 2);
  Press(Qt::Key_Left);
  EXPECT_EQ(Block(), "1-1 Cor");
}

TEST_F(MouseTest, TheWheelScrollsOnly) {
  for (int row = 0; row < 100; ++row) Add("N" + std::to_string(row), "01", 1);
  items_->First();
  Settle();
  const QPointF at = Middle(1, "Cor");
  QWheelEvent wheel(at, View().viewport()->mapToGlobal(at), {}, QPoint(0, -240), Qt::NoButton, {}, Qt::NoScrollPhase,
                    false);
  QApplication::sendEvent(View().viewport(), &wheel);
  Settle();
  EXPECT_GT(View().verticalScrollBar()->value(), 0);
  EXPECT_EQ(Stands(), "A Codigo");
}

TEST_F(MouseTest, TheScreensOwnEntriesStandFirstInTheMenu) {
  popup_->Add("MnMetros", "Calcular Metros", [this] { toy_.notes.push_back("metros of " + Stands()); });
  popup_->Add("MnOutro", "Outro", {}).visible = false;
  popup_->OnPopup = [this] { toy_.notes.push_back("popup"); };
  grid_->Popup = popup_;
  EXPECT_EQ(Menu(),
            "Calcular Metros|Copiar|Colar|Filtrar|Exportar planilha (.xlsx)...|Exportar CSV...|Larguras padrão");
  Events();
  Menu(QStringLiteral("Calcular Metros"));
  EXPECT_NE(Events().find("metros of A Codigo"), std::string::npos);
  // A menu that must not open leaves the list's own entries.
  popup_->OnPopup = [] { throw host::Abort(); };
  EXPECT_EQ(Menu(), "Copiar|Colar|Filtrar|Exportar planilha (.xlsx)...|Exportar CSV...|Larguras padrão");
}

TEST_F(MouseTest, TheRightButtonStandsOnTheCellUnlessItIsMarked) {
  QTest::mouseClick(View().viewport(), Qt::RightButton, {}, Middle(1, "Qtde"));
  Settle();
  EXPECT_EQ(Cursor(), "B Qtde");
  Drag(0, "Cor", 1, "Qtde");
  QTest::mouseClick(View().viewport(), Qt::RightButton, {}, Middle(1, "Qtde"));
  Settle();
  EXPECT_EQ(Block(), "0-1 Cor Qtde");
}

}  // namespace
