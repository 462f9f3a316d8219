// Copying, pasting and exporting from the window.
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

#include "desktop/support/boxes.h"
#include "grid_fixture.h"

namespace {

using test::Press;
using test::Settle;

class OutputTest : public test::GridTest {
 protected:
  void SetUp() override {
    Three();
    Show();
  }
  static std::string Clipboard() { return QGuiApplication::clipboard()->text().toStdString(); }
  void Paste(const char* text) {
    QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
    Press(Qt::Key_V, Qt::ControlModifier);
  }
  void Go(std::size_t row, std::string_view field) {
    station_.Do([this, row, field] { return toy_.desk.ClickCell(*grid_, row, field); });
    toy_.notes.clear();
  }
};

TEST_F(OutputTest, OneCellIsCopiedBareAndABlockWithItsCaptions) {
  Go(1, "Qtde");
  Press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(Clipboard(), "30,00");
  Press(Qt::Key_Down, Qt::ShiftModifier);
  Press(Qt::Key_Left, Qt::ShiftModifier);
  Press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(Clipboard(), "Cor\tQtde\nVerde\t30,00\nazul\t10,00\n");
}

TEST_F(OutputTest, WhatIsCopiedIsWhatIsShown) {
  ClickHeader("Qtde");
  View().horizontalHeader()->moveSection(Column("Qtde"), 0);
  Press(Qt::Key_A, Qt::ControlModifier);
  Menu(QStringLiteral("Copiar"));
  EXPECT_EQ(Clipboard(),
            "Qtde\tCódigo\tDescricao\tCor\tCiclos\tData\tSel\n"
            "10,00\tB\tMalha B\tazul\t1\t15/01/2026\tN\n"
            "20,00\tC\tMalha C\tÂmbar\t2\t\tN\n"
            "30,00\tA\tMalha A\tVerde\t3\t01/02/2026\tN\n");
}

TEST_F(OutputTest, ACopiedBlockIsPastedBack) {
  Go(1, "Cor");
  Press(Qt::Key_Right, Qt::ShiftModifier);
  Press(Qt::Key_Down, Qt::ShiftModifier);
  Press(Qt::Key_C, Qt::ControlModifier);
  Go(2, "Cor");
  Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Cell(1, "Cor") + Cell(1, "Qtde"), "Verde30,00");
  EXPECT_EQ(Cell(2, "Cor") + Cell(2, "Qtde"), "azul10,00");
  EXPECT_EQ(Codes(), "ABC");
}

TEST_F(OutputTest, OneCellIsPastedAsIfTyped) {
  Go(2, "Qtde");
  Paste("1.000,5\n");
  EXPECT_EQ(Cell(1, "Qtde"), "1000,50");
  EXPECT_EQ(items_->State(), host::DatasetState::kEdit);
  EXPECT_EQ(Cursor(), "B Qtde");
  Go(3, "Sel");
  Paste("sim");
  EXPECT_EQ(items_->ValueAt(3, 0).AsText(), "S");
}

TEST_F(OutputTest, ATableGoesOnBelowTheLastRow) {
  Go(3, "Cor");
  grid_->SetColumns({{.field = "Codigo"}, {.field = "Cor"}, {.field = "Qtde"}});
  Settle();
  Go(3, "Codigo");
  Paste("C2\t02\t5\r\nD\t03\t6\r\nE\t04\t7\r\n");
  EXPECT_EQ(Codes(), "ABC2DE");
  EXPECT_EQ(Cell(4, "Qtde"), "7,00");
  EXPECT_EQ(Events().find("box"), std::string::npos);
}

TEST_F(OutputTest, InASortedListTheRowsAreFilledAsTheyStand) {
  ClickHeader("Qtde");
  Go(2, "Cor");
  EXPECT_EQ(Codes(), "BCA");
  Paste("um\ndois\ntres");
  EXPECT_EQ(Cell(0, "Cor") + Cell(1, "Cor") + Cell(2, "Cor"), "umdoistres");
}

TEST_F(OutputTest, AReadOnlyColumnIsRefusedBeforeAnythingIsTyped) {
  Go(1, "Codigo");
  Paste("D\tMalha D\nE\tMalha E");
  EXPECT_NE(Events().find("box Ordem: A coluna \"Descricao\" não pode ser digitada; nada foi colado."),
            std::string::npos);
  EXPECT_EQ(Codes(), "ABC");
}

TEST_F(OutputTest, AStoppedPasteSaysAtWhichRow) {
  grid_->SetColumns({{.field = "Codigo"}, {.field = "Cor"}});
  Settle();
  Go(1, "Codigo");
  Paste("D\t01\nX\t02\nF\t03");
  const std::string events = Events();
  EXPECT_NE(events.find("box Ordem: Material não cadastrado."), std::string::npos) << events;
  EXPECT_NE(events.find("box Ordem: A colagem parou na linha 2 de 3; as anteriores foram aceitas."), std::string::npos);
  EXPECT_EQ(Codes(), "DBC");
  EXPECT_EQ(Cursor(), "B Codigo");
}

TEST_F(OutputTest, AFileIsAskedForAndTheFolderRemembered) {
  QTemporaryDir folder;
  test::Boxes boxes;
  QString proposed;
  boxes.ExpectDialog(QStringLiteral("Exportar"), [&](QWidget& box) {
    auto* name = box.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    proposed = name->text();
    name->setText(folder.filePath(QStringLiteral("itens")));
    QTest::keyClick(name, Qt::Key_Return);
  });
  Menu(QStringLiteral("Exportar CSV..."));
  EXPECT_TRUE(boxes.Met());
  EXPECT_EQ(proposed.toStdString(), "Ordem.csv");
  QFile file(folder.filePath(QStringLiteral("itens.csv")));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_TRUE(file.readAll().contains("A;Malha A;Verde;30,00;3;01/02/2026;N"));
  boxes.ExpectDialog(QStringLiteral("Exportar"), [&](QWidget& box) {
    EXPECT_EQ(dynamic_cast<QFileDialog&>(box).directory().absolutePath(), QDir(folder.path()).absolutePath());
    dynamic_cast<QFileDialog&>(box).reject();
  });
  Menu(QStringLiteral("Exportar planilha (.xlsx)..."));
  EXPECT_TRUE(boxes.Met());
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("itens.csv"));
}

TEST_F(OutputTest, AFileThatCannotBeWrittenIsTold) {
  QTemporaryDir folder;
  ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("itens.xlsx.part")));
  test::Boxes boxes;
  boxes.ExpectDialog(QStringLiteral("Exportar"), [&](QWidget& box) {
    auto* name = box.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    name->setText(folder.filePath(QStringLiteral("itens.xlsx")));
    QTest::keyClick(name, Qt::Key_Return);
  });
  Menu(QStringLiteral("Exportar planilha (.xlsx)..."));
  EXPECT_NE(Events().find("box Ordem: Não foi possível gravar o arquivo"), std::string::npos);
}

}  // namespace
