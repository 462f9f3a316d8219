// Typing into a cell.
#include <QInputMethodEvent>
#include <QTest>

#include "grid_fixture.h"

namespace {

using host::DatasetState;
using test::Press;
using test::Settle;
using test::TypeText;

class EditorTest : public test::GridTest {
 protected:
  void SetUp() override {
    Three();
    Show();
  }
  void Go(std::string_view field) {
    station_.Do([this, field] { return toy_.desk.SelectCell(*grid_, field); });
    toy_.notes.clear();
  }
  std::string Text() const { return Editor() == nullptr ? "closed" : Editor()->text().toStdString(); }
};

TEST_F(EditorTest, ACharacterOpensTheCellAndReplacesWhatStoodThere) {
  Go("Cor");
  TypeText(QStringLiteral("açã"));
  EXPECT_EQ(Text(), "açã");
  EXPECT_EQ((*items_)["Cor"].AsText(), "Verde");
  EXPECT_TRUE(station_.GetTyping().Open());
  EXPECT_TRUE(panel_->HasKeyboard());
  Press(Qt::Key_Tab);
  EXPECT_EQ(Text(), "closed");
  EXPECT_FALSE(station_.GetTyping().Open());
  EXPECT_EQ((*items_)["Cor"].AsText(), "açã");
  EXPECT_EQ(Cursor(), "A Qtde");
  EXPECT_EQ(Events(), "left Cor");
  EXPECT_EQ(Cell(0, "Cor"), "açã");
}

TEST_F(EditorTest, F2OpensWithTheTextAndEscPutsItBack) {
  Go("Cor");
  Press(Qt::Key_F2);
  EXPECT_EQ(Text(), "Verde");
  TypeText(QStringLiteral("x"));
  EXPECT_EQ(Text(), "x");
  Press(Qt::Key_Escape);
  EXPECT_EQ(Text(), "closed");
  EXPECT_EQ((*items_)["Cor"].AsText(), "Verde");
  EXPECT_EQ(items_->State(), DatasetState::kBrowse);
  EXPECT_TRUE(View().hasFocus());
}

TEST_F(EditorTest, LookingAtANumberDoesNotRoundIt) {
  items_->Edit();
  (*items_)["Qtde"].Set(1.23456);
  items_->Post();
  Settle();
  EXPECT_EQ(Cell(0, "Qtde"), "1,23");
  Go("Qtde");
  Press(Qt::Key_F2);
  EXPECT_EQ(Text(), "1,23456");
  Press(Qt::Key_Return);
  EXPECT_EQ((*items_)["Qtde"].AsFloat(), 1.23456);
  EXPECT_EQ(items_->State(), DatasetState::kBrowse);
}

TEST_F(EditorTest, NumbersAreTypedAsPeopleWriteThem) {
  Go("Qtde");
  TypeText(QStringLiteral("1.234,5"));
  Press(Qt::Key_Return);
  EXPECT_EQ((*items_)["Qtde"].AsFloat(), 1234.5);
  EXPECT_EQ(Cell(0, "Qtde"), "1234,50");
  EXPECT_EQ(Cursor(), "A Ciclos");
}

TEST_F(EditorTest, WhatIsNoNumberIsToldAndTheCellKeepsItsValue) {
  Go("Qtde");
  TypeText(QStringLiteral("muito"));
  Press(Qt::Key_Tab);
  EXPECT_NE(Events().find("box Ordem:"), std::string::npos);
  EXPECT_EQ(Text(), "closed");
  EXPECT_EQ((*items_)["Qtde"].AsFloat(), 30);
  EXPECT_EQ(Cursor(), "A Qtde");
  EXPECT_TRUE(panel_->HasKeyboard());
}

TEST_F(EditorTest, ACellRefusedAtItsExitGetsItsValueBackAndKeepsTheCursor) {
  TypeText(QStringLiteral("X"));
  Press(Qt::Key_Return);
  EXPECT_EQ(Events(), "left Codigo | box Ordem: Material não cadastrado. | end aborted");
  EXPECT_EQ(Cell(0, "Codigo"), "A");
  EXPECT_EQ(Cursor(), "A Codigo");
  EXPECT_EQ(Text(), "closed");
  EXPECT_TRUE(View().hasFocus());
}

TEST_F(EditorTest, ArrowsUpAndDownHandOverAndChangeTheRow) {
  Go("Cor");
  TypeText(QStringLiteral("novo"));
  Press(Qt::Key_Down);
  EXPECT_EQ(Cursor(), "B Cor");
  EXPECT_EQ(Cell(0, "Cor"), "novo");
  EXPECT_EQ(items_->State(), DatasetState::kBrowse);
}

TEST_F(EditorTest, AFunctionKeySettlesFirst) {
  grid_->OnKeyDown = [this](host::Key key) {
    if (key == host::Key::kF5) toy_.notes.push_back("F5 with " + (*items_)["Cor"].AsText());
  };
  Go("Cor");
  TypeText(QStringLiteral("novo"));
  Press(Qt::Key_F5);
  EXPECT_EQ(Events(), "F5 with novo");
}

TEST_F(EditorTest, AClickElsewhereHandsOver) {
  Go("Cor");
  TypeText(QStringLiteral("novo"));
  Click(2, "Qtde");
  EXPECT_EQ(Text(), "closed");
  EXPECT_EQ(Cell(0, "Cor"), "novo");
  EXPECT_EQ(Cursor(), "C Qtde");
}

TEST_F(EditorTest, ARefusedTextKeepsTheClickFromActing) {
  Go("Qtde");
  TypeText(QStringLiteral("muito"));
  Click(2, "Cor");
  EXPECT_EQ(Cursor(), "A Qtde");
  EXPECT_EQ(Cell(0, "Qtde"), "30,00");
}

TEST_F(EditorTest, AnyOtherActOfThePersonHandsOver) {
  Go("Cor");
  TypeText(QStringLiteral("novo"));
  station_.Do([this] { return toy_.desk.Click(*save_); });
  EXPECT_EQ((*items_)["Cor"].AsText(), "novo");
  EXPECT_EQ(Text(), "closed");
}

TEST_F(EditorTest, TheFirstRowBeginsWithTheFirstCharacter) {
  items_->Empty();
  Settle();
  EXPECT_EQ(View().model()->rowCount(), 0);
  TypeText(QStringLiteral("D"));
  EXPECT_EQ(Text(), "D");
  EXPECT_TRUE(View().viewport()->rect().contains(Editor()->geometry()));
  Press(Qt::Key_Tab);
  EXPECT_EQ(Codes(), "D");
  EXPECT_EQ(items_->State(), DatasetState::kInsert);
  EXPECT_EQ(Cursor(), "D Descricao");
  Press(Qt::Key_Tab);
  TypeText(QStringLiteral("01"));
  Press(Qt::Key_Down);
  EXPECT_EQ(items_->RecordCount(), 1u);
  EXPECT_EQ(View().currentIndex().row(), 1);
}

TEST_F(EditorTest, NothingOpensWhereNobodyTypes) {
  Go("Descricao");
  TypeText(QStringLiteral("x"));
  Press(Qt::Key_F2);
  EXPECT_EQ(Text(), "closed");
  items_->Close();
  Settle();
  TypeText(QStringLiteral("x"));
  EXPECT_EQ(Text(), "closed");
}

TEST_F(EditorTest, ATextIsAsLongAsItsField) {
  TypeText(QStringLiteral("1234567"));
  EXPECT_EQ(Text(), "12345");
}

TEST_F(EditorTest, AComposedLetterOpensTheCell) {
  Go("Cor");
  QInputMethodEvent letter;
  letter.setCommitString(QStringLiteral("ê"));
  QApplication::sendEvent(&View(), &letter);
  EXPECT_EQ(Text(), "ê");
}

TEST_F(EditorTest, SpaceTicksAndPostsTheRow) {
  Go("Sel");
  int posts = 0;
  items_->AfterPost = [&posts] { ++posts; };
  Press(Qt::Key_Space);
  EXPECT_EQ((*items_)["Sel"].AsText(), "S");
  EXPECT_EQ(posts, 1);
  EXPECT_EQ(Events(), "left Sel");
  EXPECT_EQ(Cursor(), "A Sel");
  EXPECT_EQ(items_->State(), DatasetState::kBrowse);
  Press(Qt::Key_Space);
  EXPECT_EQ((*items_)["Sel"].AsText(), "N");
  // Letters do not open a check box, and Delete takes the tick away.
  TypeText(QStringLiteral("q"));
  EXPECT_EQ(Text(), "closed");
  Press(Qt::Key_Space);
  Press(Qt::Key_Delete);
  EXPECT_EQ((*items_)["Sel"].AsText(), "N");
}

TEST_F(EditorTest, ATickInANewRowDoesNotPostIt) {
  Press(Qt::Key_Insert);
  TypeText(QStringLiteral("D"));
  Press(Qt::Key_Tab);
  Press(Qt::Key_End);
  Press(Qt::Key_Space);
  EXPECT_EQ((*items_)["Sel"].AsText(), "S");
  EXPECT_EQ(items_->State(), DatasetState::kInsert);
  EXPECT_EQ((*items_)["Codigo"].AsText(), "D");
}

TEST_F(EditorTest, ATickThatIsRefusedIsTakenBack) {
  (*items_)["Sel"].OnValidate = [this](host::Field&) { screen_->Refuse("Item baixado."); };
  Go("Sel");
  Press(Qt::Key_Space);
  EXPECT_EQ((*items_)["Sel"].AsText(), "");
  EXPECT_EQ(View().currentIndex().data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
}

TEST_F(EditorTest, TheEditorStaysOverItsCell) {
  Go("Cor");
  TypeText(QStringLiteral("n"));
  View().setColumnWidth(0, View().columnWidth(0) + 50);
  EXPECT_EQ(Editor()->geometry().topLeft(), View().visualRect(View().currentIndex()).topLeft());
}

TEST_F(EditorTest, APanelThatGoesLeavesNothingBeingTyped) {
  Go("Cor");
  TypeText(QStringLiteral("n"));
  window_.reset();
  EXPECT_FALSE(station_.GetTyping().Open());
  items_->First();
  Settle();
}

}  // namespace
