// A table from the clipboard: read, checked, typed row by row.
#include <gtest/gtest.h>

#include "app/desktop/grid/table_paste.h"
#include "grid_fixture.h"
#include "host/errors.h"

namespace {

using app::desktop::Paste;
using app::desktop::Pasted;
using app::desktop::PastedRows;
using app::desktop::PlanPaste;
using app::desktop::ReadPasted;
using app::desktop::TypePaste;

TEST(ReadPastedTest, LinesAndTabs) {
  EXPECT_EQ(ReadPasted("a\tb\n\tc\n"), (PastedRows{{"a", "b"}, {"", "c"}}));
  EXPECT_EQ(ReadPasted("a\tb\r\nc\td\r\n\t\r\n"), (PastedRows{{"a", "b"}, {"c", "d"}}));
  EXPECT_EQ(ReadPasted("a\n\nb"), (PastedRows{{"a"}, {""}, {"b"}}));
  EXPECT_EQ(ReadPasted("  "), PastedRows());
  EXPECT_EQ(ReadPasted(""), PastedRows());
}

TEST(ReadPastedTest, ACellInQuotesHoldsAnything) {
  EXPECT_EQ(ReadPasted("\"a\tb\nc \"\"d\"\"\"\t2\n"), (PastedRows{{"a\tb\nc \"d\"", "2"}}));
  // A quote inside a cell is only a quote, and one that never closes ends with the text.
  EXPECT_EQ(ReadPasted("2\" tubo\tx"), (PastedRows{{"2\" tubo", "x"}}));
  EXPECT_EQ(ReadPasted("\"a\tb"), (PastedRows{{"a\tb"}}));
}

class PasteTest : public test::GridTest {
 protected:
  /// What the plan objects to; empty when nothing.
  std::string Objection(const std::vector<int>& columns, const std::vector<std::string>& captions,
                        const PastedRows& rows) {
    try {
      PlanPaste(*grid_, columns, captions, rows);
      return "";
    } catch (const host::InputError& error) {
      return error.what();
    }
  }
};

TEST_F(PasteTest, ARepeatedLineOfCaptionsIsLeftOut) {
  const Paste paste = PlanPaste(*grid_, {0, 2}, {"Código", "Cor"}, {{"codigo", "COR"}, {"A", "01"}});
  EXPECT_EQ(paste.rows, (PastedRows{{"A", "01"}}));
  EXPECT_EQ(paste.fields, (std::vector<std::string>{"Codigo", "Cor"}));
  // A single line is never captions: a code may be called "Código".
  EXPECT_EQ(PlanPaste(*grid_, {0}, {"Código"}, {{"Código"}}).rows.size(), 1u);
}

TEST_F(PasteTest, WhatCannotBeTypedIsRefusedBeforeAnything) {
  EXPECT_EQ(Objection({0, 1}, {"Código", "Descrição"}, {{"A", "Malha"}}),
            "A coluna \"Descrição\" não pode ser digitada; nada foi colado.");
  EXPECT_EQ(Objection({0, 1}, {"Código", "Descrição"}, {{"A"}}), "");
  EXPECT_EQ(Objection({5, 6}, {"Data", "Sel"}, {{"", "S", "x"}}),
            "A tabela a colar tem 3 colunas, e da célula escolhida em diante há 2.");
  EXPECT_EQ(Objection({6}, {"Sel"}, {{"Sim"}, {"talvez"}}),
            "Linha 2: \"talvez\" não serve para \"Sel\", que aceita S ou N; nada foi colado.");
  grid_->SetReadOnly(true);
  EXPECT_EQ(Objection({0}, {"Código"}, {{"A"}}), "A coluna \"Código\" não pode ser digitada; nada foi colado.");
}

TEST_F(PasteTest, ChecksTakeWhatPeopleWriteForYesAndNo) {
  EXPECT_EQ(PlanPaste(*grid_, {6}, {"Sel"}, {{"Sim"}, {"não"}, {" X "}, {""}, {"1"}, {"FALSO"}}).rows,
            (PastedRows{{"S"}, {"N"}, {"S"}, {"N"}, {"S"}, {"N"}}));
}

TEST_F(PasteTest, RowsOfTheListAreTypedOverAndNewOnesAppended) {
  Three();
  const Paste paste{{"Cor", "Qtde"}, {{"02", "1,5"}, {"03", "1.000"}, {"04", "2"}}};
  // The list may show the rows in another order: B is typed first, then A.
  const Pasted pasted = TypePaste(toy_.desk, *grid_, paste, {items_->IdAt(2), items_->IdAt(1)});
  EXPECT_FALSE(pasted.stopped);
  EXPECT_EQ(pasted.rows, 3u);
  EXPECT_EQ(items_->ValueAt(2, 3).AsText(), "02");
  EXPECT_EQ(items_->ValueAt(2, 4).AsFloat(), 1.5);
  EXPECT_EQ(items_->ValueAt(1, 3).AsText(), "03");
  ASSERT_EQ(items_->RecordCount(), 4u);
  EXPECT_EQ(items_->ValueAt(4, 4).AsFloat(), 2);
  EXPECT_EQ(items_->State(), host::DatasetState::kBrowse);
}

TEST_F(PasteTest, TheFirstRefusalStopsItAndWhatWasAcceptedStays) {
  Three();
  const Paste paste{{"Codigo", "Cor"}, {{"D", "01"}, {"X", "02"}, {"E", "03"}}};
  const Pasted pasted = TypePaste(toy_.desk, *grid_, paste, {});
  EXPECT_TRUE(pasted.stopped);
  EXPECT_EQ(pasted.rows, 1u);
  EXPECT_EQ(items_->RecordCount(), 4u);
  EXPECT_EQ(items_->State(), host::DatasetState::kInsert);
  EXPECT_EQ(Stands(), " Codigo");
  EXPECT_NE(Events().find("box Ordem: Material não cadastrado."), std::string::npos);
}

TEST_F(PasteTest, ANewRowThatGivesItselfUpStopsItToo) {
  const Pasted pasted = TypePaste(toy_.desk, *grid_, {{"Codigo", "Cor"}, {{"D", "01"}, {"E", ""}}}, {});
  EXPECT_TRUE(pasted.stopped);
  EXPECT_EQ(pasted.rows, 1u);
  EXPECT_EQ(items_->RecordCount(), 1u);
}

TEST_F(PasteTest, ARowThatIsBegunIsFilled) {
  ASSERT_EQ(toy_.desk.GridKey(*grid_, host::Key::kDown), host::ActResult::kDone);
  ASSERT_EQ(items_->State(), host::DatasetState::kInsert);
  const Pasted pasted = TypePaste(toy_.desk, *grid_, {{"Codigo", "Cor"}, {{"D", "01"}, {"E", "02"}}}, {});
  EXPECT_FALSE(pasted.stopped);
  EXPECT_EQ(items_->RecordCount(), 2u);
}

}  // namespace
