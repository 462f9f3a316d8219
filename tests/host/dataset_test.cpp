// The cursor, editing, order and filter of an in-memory dataset.
#include "host/kit/dataset.h"

#include <algorithm>
#include <stdexcept>

#include "dataset_fixture.h"
#include "host/errors.h"

namespace {

using host::DatasetCursor;
using host::DatasetState;
using host::Value;
using test::DatasetTest;

TEST_F(DatasetTest, StartsEmptyAndOpen) {
  EXPECT_TRUE(data.Active());
  EXPECT_TRUE(data.IsEmpty());
  EXPECT_TRUE(data.Eof());
  EXPECT_TRUE(data.Bof());
  EXPECT_EQ(data.RecNo(), 0u);
  EXPECT_EQ(data.CurrentId(), 0u);
  EXPECT_TRUE(data["Codigo"].IsNull());
  data.First();
  data.Next();
  data.Delete();
  EXPECT_EQ(Take(), "");
}

TEST_F(DatasetTest, AppendingFiresInsertThenArrivesOnTheNewRow) {
  data.Append();
  EXPECT_EQ(Take(), "insert|scroll ");
  EXPECT_EQ(data.State(), DatasetState::kInsert);
  EXPECT_FALSE(data.IsEmpty());
  EXPECT_EQ(data.RecordCount(), 0u);
  data["Codigo"].Set("A");
  const std::size_t id = data.CurrentId();
  data.Post();
  EXPECT_EQ(Take(), "before|after");
  EXPECT_EQ(data.CurrentId(), id);
  EXPECT_EQ(data.RecordCount(), 1u);
}

TEST_F(DatasetTest, MovingTellsEachArrivalOnce) {
  Three();
  data.First();
  EXPECT_EQ(Take(), "scroll B");
  data.First();
  EXPECT_EQ(Take(), "");
  data.Next();
  data.Next();
  EXPECT_FALSE(data.Eof());
  EXPECT_EQ(Take(), "scroll A|scroll C");
  data.Next();
  EXPECT_TRUE(data.Eof());
  EXPECT_EQ(Take(), "");
  data.Prior();
  EXPECT_FALSE(data.Eof());
  EXPECT_EQ(data.RecNo(), 2u);
  data.Last();
  EXPECT_TRUE(data.Eof());
  data.GoTo(1);
  EXPECT_EQ(data["Codigo"].AsText(), "B");
  data.GoTo(9);
  EXPECT_EQ(data.RecNo(), 1u);
}

TEST_F(DatasetTest, ARowReachedWhileNobodyListenedIsToldNext) {
  const auto listening = data.AfterScroll;
  data.AfterScroll = {};
  Add("A", "01", 1);
  notes.clear();
  data.AfterScroll = listening;
  data.First();
  EXPECT_EQ(Take(), "scroll A");
}

TEST_F(DatasetTest, WalkingVisitsEveryRowOnce) {
  Three();
  std::string seen;
  for (data.First(); !data.Eof(); data.Next()) seen += data["Codigo"].AsText();
  EXPECT_EQ(seen, "BAC");
}

TEST_F(DatasetTest, MovingPostsTheRowInEditFirst) {
  Three();
  data.First();
  data.Edit();
  data["Qtde"].Set(9.0);
  notes.clear();
  data.Next();
  EXPECT_EQ(Take(), "before|after|scroll A");
  data.First();
  EXPECT_EQ(data["Qtde"].AsFloat(), 9.0);
}

TEST_F(DatasetTest, AnAbortInBeforePostStaysOnTheRowInEdit) {
  Three();
  data.First();
  data.BeforePost = [] { throw host::Abort(); };
  data.Edit();
  data["Qtde"].Set(9.0);
  EXPECT_THROW(data.Next(), host::Abort);
  EXPECT_EQ(data.State(), DatasetState::kEdit);
  EXPECT_EQ(data["Codigo"].AsText(), "B");
  EXPECT_EQ(data["Qtde"].AsFloat(), 9.0);
  EXPECT_THROW(data.SetFiltered(true), host::Abort);
  EXPECT_FALSE(data.Filtered());
  data.Cancel();
  EXPECT_EQ(data["Qtde"].AsFloat(), 1.0);
}

TEST_F(DatasetTest, CancelInBeforePostPostsNothing) {
  Three();
  data.BeforePost = [this] {
    if (data["Cor"].AsText().empty()) data.Cancel();
  };
  data.Last();
  data.Append();
  data["Codigo"].Set("D");
  notes.clear();
  data.Post();
  EXPECT_EQ(Take(), "scroll C");
  EXPECT_EQ(data.State(), DatasetState::kBrowse);
  EXPECT_EQ(Codes(), "BAC");
}

TEST_F(DatasetTest, BeforePostMayChangeFieldsAndReadPostedRowsBesides) {
  Three();
  double others = 0;
  data.BeforePost = [this, &others] {
    for (DatasetCursor all(data); !all.Eof(); all.Next()) others += all.FieldByName("Qtde").AsFloat();
    data["Qtde"].Set(others);
  };
  data.Append();
  data["Codigo"].Set("D");
  data["Qtde"].Set(100.0);
  data.Post();
  EXPECT_EQ(others, 6.0);
  EXPECT_EQ(data["Qtde"].AsFloat(), 6.0);
}

TEST_F(DatasetTest, CancelOfAnAppendedRowReturnsToTheRowBefore) {
  Three();
  data.GoTo(2);
  data.Append();
  notes.clear();
  data.Cancel();
  EXPECT_EQ(Take(), "scroll A");
  EXPECT_EQ(data.RecNo(), 2u);
  data.Append();
  data.Delete();
  EXPECT_EQ(data.RecordCount(), 3u);
  EXPECT_EQ(std::count(notes.begin(), notes.end(), "delete"), 0);
}

TEST_F(DatasetTest, DeleteGoesToTheNextRow) {
  Three();
  data.GoTo(2);
  notes.clear();
  data.Delete();
  EXPECT_EQ(Take(), "delete|scroll C");
  EXPECT_EQ(Codes(), "BC");
  data.Delete();
  EXPECT_EQ(data["Codigo"].AsText(), "B");
  data.Delete();
  EXPECT_TRUE(data.Eof());
  EXPECT_TRUE(data.IsEmpty());
}

TEST_F(DatasetTest, AnAbortInBeforeDeleteKeepsTheRow) {
  Three();
  data.BeforeDelete = [] { throw host::Abort(); };
  EXPECT_THROW(data.Delete(), host::Abort);
  EXPECT_EQ(data.RecordCount(), 3u);
}

TEST_F(DatasetTest, EmptyKeepsStructureFilterAndIndex) {
  data.SetIndex("Codigo");
  data.SetFilter("Qtde > 0");
  data.SetFiltered(true);
  Three();
  data.Edit();
  data.Empty();
  EXPECT_TRUE(data.IsEmpty());
  EXPECT_EQ(data.State(), DatasetState::kBrowse);
  EXPECT_EQ(std::count(notes.begin(), notes.end(), "delete"), 0);
  Three();
  Add("D", "", 0);
  EXPECT_EQ(Codes(), "ABC");
}

TEST_F(DatasetTest, TheIndexOrdersAndTheCursorStaysOnItsRow) {
  Three();
  data.GoTo(1);
  notes.clear();
  data.SetIndex("Codigo");
  EXPECT_EQ(Codes(), "ABC");
  EXPECT_EQ(data["Codigo"].AsText(), "B");
  EXPECT_EQ(data.RecNo(), 2u);
  EXPECT_EQ(Take(), "");
  data.Edit();
  data["Codigo"].Set("Z");
  data.Post();
  EXPECT_EQ(Codes(), "ACZ");
  EXPECT_EQ(data.RecNo(), 3u);
  data.SetIndex("");
  EXPECT_EQ(Codes(), "ZAC");
  EXPECT_THROW(data.SetIndex("Nada"), std::out_of_range);
}

TEST_F(DatasetTest, TheIndexPutsNothingFirstAndNumbersByValue) {
  data.SetIndex("Ordem;Codigo");
  const auto add = [this](const char* code, const Value& order) {
    data.Append();
    data["Codigo"].Set(code);
    data["Ordem"].Set(order);
    data.Post();
  };
  add("A", 10);
  add("B", 9);
  add("D", Value());
  add("C", Value());
  add("E", 10);
  EXPECT_EQ(Codes(), "CDBAE");
}

TEST_F(DatasetTest, TheFilterHidesRowsAndIsAppliedAgainOnPost) {
  Three();
  data.GoTo(1);
  data.SetFilter("Qtde > 1");
  EXPECT_EQ(data.RecordCount(), 3u);  // not switched on yet
  notes.clear();
  data.SetFiltered(true);
  EXPECT_EQ(Codes(), "AC");
  EXPECT_EQ(Take(), "scroll A");
  data.Edit();
  data["Qtde"].Set(0.5);
  notes.clear();
  data.Post();
  EXPECT_EQ(Take(), "before|after|scroll C");
  EXPECT_EQ(Codes(), "C");
  data.SetFiltered(false);
  EXPECT_EQ(Codes(), "BAC");
  EXPECT_EQ(data["Codigo"].AsText(), "C");
}

TEST_F(DatasetTest, AWrongFilterLeavesTheOldOne) {
  Three();
  data.SetFilter("Qtde > 2");
  data.SetFiltered(true);
  EXPECT_THROW(data.SetFilter("Nome = 'x'"), host::InputError);
  EXPECT_EQ(data.FilterText(), "Qtde > 2");
  EXPECT_EQ(Codes(), "C");
  data.SetFilter("");
  EXPECT_EQ(Codes(), "BAC");
}

TEST_F(DatasetTest, LocateFindsByValuesAndOtherwiseStays) {
  Three();
  data.GoTo(3);
  EXPECT_TRUE(data.Locate("codigo;COR", {"A", "02"}));
  EXPECT_EQ(data.RecNo(), 2u);
  EXPECT_FALSE(data.Locate("Codigo;Cor", {"A", "03"}));
  EXPECT_FALSE(data.Locate("Codigo", {"a"}));
  EXPECT_EQ(data.RecNo(), 2u);
  EXPECT_TRUE(data.Locate("Qtde", {3}));
  EXPECT_TRUE(data.Locate("Obs", {""}));
  EXPECT_EQ(data.RecNo(), 1u);
  EXPECT_TRUE(data.Locate("Ordem;Codigo", {Value(), "C"}));
  EXPECT_THROW(data.Locate("Nada", {"A"}), std::out_of_range);
}

TEST_F(DatasetTest, LocateLooksOnlyAtVisibleRows) {
  Three();
  data.SetFilter("Qtde > 1");
  data.SetFiltered(true);
  EXPECT_FALSE(data.Locate("Codigo", {"B"}));
  EXPECT_TRUE(data.Locate("Codigo", {"C"}));
}

TEST_F(DatasetTest, ASecondCursorSeesAllPostedRowsInOrder) {
  Three();
  data.SetIndex("Codigo");
  data.SetFilter("Qtde > 2");
  data.SetFiltered(true);
  const std::size_t stood_on = data.CurrentId();
  std::string seen;
  DatasetCursor cursor(data);
  EXPECT_EQ(cursor.RecordCount(), 3u);
  for (; !cursor.Eof(); cursor.Next()) seen += cursor.FieldByName("codigo").AsText();
  EXPECT_EQ(seen, "ABC");
  EXPECT_EQ(data.CurrentId(), stood_on);
  EXPECT_TRUE(cursor.FieldByName("Codigo").IsNull());
  EXPECT_THROW(cursor.FieldByName("Nada"), std::out_of_range);
}

TEST_F(DatasetTest, ASecondCursorSurvivesAppendsAndDeletes) {
  Three();
  DatasetCursor cursor(data);
  data.Locate("Codigo", {"A"});
  data.Delete();
  Add("D", "04", 4);
  std::string seen;
  for (; !cursor.Eof(); cursor.Next()) seen += cursor.FieldByName("Codigo").AsText();
  EXPECT_EQ(seen, "BCD");
  Add("E", "05", 5);
  EXPECT_FALSE(cursor.Eof());
  EXPECT_EQ(cursor.FieldByName("Codigo").AsText(), "E");
}

TEST_F(DatasetTest, WhoeverShowsTheRowsSeesTheRowInEdit) {
  Three();
  data.GoTo(2);
  data.Edit();
  data["Codigo"].Set("X");
  EXPECT_EQ(Codes(), "BXC");
  data.Cancel();
  EXPECT_EQ(Codes(), "BAC");
  data.Append();
  data["Codigo"].Set("N");
  EXPECT_EQ(data.RecNo(), 4u);
  EXPECT_EQ(data.ValueAt(4, 0).AsText(), "N");
  EXPECT_THROW(data.ValueAt(5, 0), std::out_of_range);
}

}  // namespace
