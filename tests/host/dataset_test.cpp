#include "host/kit/dataset.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <stdexcept>
#include <tuple>

#include "host/errors.h"
#include "toy.h"

namespace {

using host::Dataset;
using host::DatasetCursor;
using host::DatasetState;
using host::Field;
using host::FieldType;
using host::Value;

// A query's result that the test wrote down.
class WrittenResult : public host::TTIQuery {
 public:
  WrittenResult(std::vector<std::string> names, std::vector<std::vector<Value>> rows)
      : names_(std::move(names)), rows_(std::move(rows)) {}

  void Open() override {}
  void ExecSQL() override {}
  void SetParam(std::size_t /*element*/, std::string_view /*name*/, const Value& /*value*/) override {}
  void ExecBatch(std::size_t /*count*/) override {}
  bool Eof() const override { return at_ >= rows_.size(); }
  void Next() override { ++at_; }
  void First() override { at_ = 0; }
  std::size_t RecordCount() const override { return rows_.size(); }
  std::size_t FieldCount() const override { return names_.size(); }
  std::string FieldName(std::size_t index) const override { return names_.at(index); }
  bool HasField(std::string_view name) const override {
    return std::find(names_.begin(), names_.end(), name) != names_.end();
  }
  const Value& FieldByName(std::string_view name) const override {
    const auto found = std::find(names_.begin(), names_.end(), name);
    return rows_.at(at_).at(static_cast<std::size_t>(found - names_.begin()));
  }

 private:
  std::vector<std::string> names_;
  std::vector<std::vector<Value>> rows_;
  std::size_t at_ = 0;
};

class DatasetTest : public ::testing::Test {
 protected:
  DatasetTest() {
    data.BeforePost = [this] { notes.emplace_back("before"); };
    data.AfterPost = [this] { notes.emplace_back("after"); };
    data.BeforeDelete = [this] { notes.emplace_back("delete"); };
    data.AfterInsert = [this] { notes.emplace_back("insert"); };
    data.AfterScroll = [this] { notes.push_back("scroll " + data["Codigo"].AsText()); };
  }

  void Add(const char* code, const char* colour, double quantity) {
    data.Append();
    data["Codigo"].Set(code);
    data["Cor"].Set(colour);
    data["Qtde"].Set(quantity);
    data.Post();
  }
  void Three() {
    Add("B", "01", 1);
    Add("A", "02", 2);
    Add("C", "03", 3);
    notes.clear();
  }
  std::string Codes() {
    std::string codes;
    for (std::size_t row = 1; row <= data.RecordCount(); ++row) codes += data.ValueAt(row, 0).AsText();
    return codes;
  }
  std::string Take() {
    std::string text;
    for (const std::string& note : notes) text += (text.empty() ? "" : "|") + note;
    notes.clear();
    return text;
  }

  test::Notes notes;
  test::ToyHost toy{notes};
  test::ToyScreen screen{toy, "Toy", notes};
  Dataset data{screen,
               "TbItens",
               {{"Codigo", FieldType::kText, 5},
                {"Cor", FieldType::kText, 6},
                {"Qtde", FieldType::kFloat, 0, "0.00"},
                {"Ordem", FieldType::kInteger},
                {"Data", FieldType::kDate},
                {"Obs", FieldType::kMemo}}};
};

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

TEST_F(DatasetTest, FieldsConvertWhatIsPutIn) {
  data.Append();
  data["Codigo"].Set("çãéíóúü");
  EXPECT_EQ(data["Codigo"].AsText(), "çãéíó");
  data["Qtde"].Set("1,5");
  EXPECT_EQ(data["Qtde"].AsFloat(), 1.5);
  data["Qtde"].Set("doze");
  EXPECT_TRUE(data["Qtde"].IsNull());
  data["Qtde"].Set("");
  EXPECT_TRUE(data["Qtde"].IsNull());
  data["Qtde"].Set(7);
  EXPECT_TRUE(data["Qtde"].Get().IsNumber());
  EXPECT_FALSE(data["Qtde"].Get().IsInteger());
  data["Ordem"].Set(2.5);
  EXPECT_EQ(data["Ordem"].Get(), Value(3));
  data["Data"].Set("10/03/2026");
  EXPECT_TRUE(data["Data"].Get().IsDate());
  data["Data"].Set("x");
  EXPECT_TRUE(data["Data"].IsNull());
  data["Cor"].Set(12.5);
  EXPECT_EQ(data["Cor"].AsText(), "12.5");
  data["Cor"].Set(Value());
  EXPECT_TRUE(data["Cor"].IsNull());
}

TEST_F(DatasetTest, FieldsShowTheirFormat) {
  data.Append();
  data["Qtde"].Set(10.005);
  EXPECT_EQ(data["Qtde"].DisplayText(), "10,01");
  data["Qtde"].SetFormat("");
  EXPECT_EQ(data["Qtde"].DisplayText(), "10,005");
  EXPECT_EQ(data["Data"].DisplayText(), "");
  data["Data"].Set(*host::Date::FromParts(2026, 3, 1));
  EXPECT_EQ(data["Data"].DisplayText(), "01/03/2026");
  EXPECT_EQ(data["Codigo"].Def().caption, "Codigo");
  data["Codigo"].SetCaption("Código");
  EXPECT_EQ(data.FieldAt(0).Def().caption, "Código");
}

TEST_F(DatasetTest, WritingOutsideAnEditIsAMistake) {
  EXPECT_THROW(data["Codigo"].Set("A"), std::logic_error);
  Three();
  EXPECT_THROW(data["Codigo"].Set("A"), std::logic_error);
  EXPECT_THROW(data["Nada"], std::out_of_range);
  EXPECT_EQ(data.FindField("Nada"), nullptr);
}

TEST_F(DatasetTest, ValidateThenChangeAndARefusedValueGoesBack) {
  Three();
  data.GoTo(1);
  data["Codigo"].OnValidate = [this](Field& field) {
    notes.push_back("validate " + field.AsText());
    if (field.AsText() == "X") throw host::Abort();
  };
  data["Codigo"].OnChange = [this](Field& field) { notes.push_back("change " + field.AsText()); };
  data.Edit();
  notes.clear();
  data["Codigo"].Set("N");
  EXPECT_EQ(Take(), "validate N|change N");
  EXPECT_THROW(data["Codigo"].Set("X"), host::Abort);
  EXPECT_EQ(Take(), "validate X");
  EXPECT_EQ(data["Codigo"].AsText(), "N");
  EXPECT_TRUE(data.InEdit());
}

TEST_F(DatasetTest, ValidateMayGiveTheWholeRowUp) {
  Three();
  data.GoTo(1);
  data["Codigo"].OnValidate = [this](Field&) {
    data.Cancel();
    throw host::Abort();
  };
  data.Edit();
  data["Qtde"].Set(50.0);
  EXPECT_THROW(data["Codigo"].Set("X"), host::Abort);
  EXPECT_EQ(data.State(), DatasetState::kBrowse);
  EXPECT_EQ(data["Codigo"].AsText(), "B");
  EXPECT_EQ(data["Qtde"].AsFloat(), 1.0);
}

TEST_F(DatasetTest, RebuiltFieldsDropRowsHandlersFilterAndIndex) {
  Three();
  data["Codigo"].OnValidate = [](Field&) { throw host::Abort(); };
  data.SetFilter("Qtde > 2");
  data.SetFiltered(true);
  data.SetIndex("Codigo");
  data.CreateFields({{"Codigo", FieldType::kText, 15}, {"01", FieldType::kText, 6}});
  EXPECT_TRUE(data.IsEmpty());
  EXPECT_EQ(data.FieldCount(), 2u);
  EXPECT_FALSE(data.Filtered());
  data.Append();
  data["Codigo"].Set("F1");
  data["01"].Set("AZ");
  data.Post();
  EXPECT_EQ(data["01"].AsText(), "AZ");
}

TEST_F(DatasetTest, CloseDropsTheRowsAndNothingCanBeAppended) {
  Three();
  data.Close();
  EXPECT_FALSE(data.Active());
  EXPECT_TRUE(data.IsEmpty());
  EXPECT_THROW(data.Append(), std::logic_error);
}

TEST_F(DatasetTest, LoadsAQuerysResult) {
  Three();
  notes.clear();
  WrittenResult query(
      {"CODIGO", "QTDE", "ORDEM", "DATA", "NADA", "MIX"},
      {{"A", 1, 1, Value(), Value(), 1}, {"B", 2.5, 2, *host::Date::FromParts(2026, 3, 1), Value(), "x"}});
  data.LoadFrom(query);
  EXPECT_EQ(Take(), "scroll A");
  EXPECT_EQ(data.RecordCount(), 2u);
  EXPECT_EQ(data["QTDE"].Def().type, FieldType::kFloat);
  EXPECT_EQ(data["ORDEM"].Def().type, FieldType::kInteger);
  EXPECT_EQ(data["DATA"].Def().type, FieldType::kDate);
  EXPECT_EQ(data["NADA"].Def().type, FieldType::kText);
  EXPECT_EQ(data["MIX"].AsText(), "1");
  data.Next();
  EXPECT_EQ(data["Data"].AsText(), "01/03/2026");
  WrittenResult nothing({"CODIGO"}, {});
  data.LoadFrom(nothing);
  EXPECT_TRUE(data.Eof());
  EXPECT_TRUE(data.Active());
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

// Whatever is done, the view is what filter and index say of the rows, and the cursor stands on a row of it.
class RandomEdits : public DatasetTest, public ::testing::WithParamInterface<unsigned> {};

TEST_P(RandomEdits, KeepOrderCountAndCursor) {
  std::mt19937 random(GetParam());
  const auto below = [&random](std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
  };
  std::vector<std::pair<std::string, double>> rows;  // what must be there: code and quantity, in order of arrival
  std::vector<std::size_t> ids;
  data.AfterScroll = {};
  bool filtered = false;
  std::string index;
  for (int step = 0; step < 600; ++step) {
    const std::string code(1, static_cast<char>('A' + below(26)));
    const auto quantity = static_cast<double>(below(10));
    switch (below(7)) {
      case 0:
      case 1:
        data.Append();
        ids.push_back(data.CurrentId());
        data["Codigo"].Set(code);
        data["Qtde"].Set(quantity);
        data.Post();
        rows.emplace_back(code, quantity);
        break;
      case 2:
        if (data.RecordCount() == 0) break;
        data.GoTo(1 + below(data.RecordCount()));
        {
          const auto at = static_cast<std::size_t>(std::find(ids.begin(), ids.end(), data.CurrentId()) - ids.begin());
          data.Edit();
          data["Codigo"].Set(code);
          data["Qtde"].Set(quantity);
          if (below(3) == 0) {
            data.Cancel();
          } else {
            rows.at(at) = {code, quantity};
            data.Post();
          }
        }
        break;
      case 3:
        if (data.RecordCount() == 0) break;
        data.GoTo(1 + below(data.RecordCount()));
        {
          const auto at = std::find(ids.begin(), ids.end(), data.CurrentId()) - ids.begin();
          data.Delete();
          rows.erase(rows.begin() + at);
          ids.erase(ids.begin() + at);
        }
        break;
      case 4:
        filtered = !filtered;
        data.SetFilter("Qtde > 4");
        data.SetFiltered(filtered);
        break;
      case 5:
        index = below(2) == 0 ? "Codigo" : below(2) == 0 ? "Qtde;Codigo" : "";
        data.SetIndex(index);
        break;
      default:
        data.Append();
        data.Cancel();
        break;
    }
    auto expected = rows;
    if (filtered) std::erase_if(expected, [](const auto& row) { return row.second <= 4; });
    if (index == "Codigo") {
      std::stable_sort(expected.begin(), expected.end(),
                       [](const auto& l, const auto& r) { return l.first < r.first; });
    } else if (index == "Qtde;Codigo") {
      std::stable_sort(expected.begin(), expected.end(), [](const auto& l, const auto& r) {
        return std::tie(l.second, l.first) < std::tie(r.second, r.first);
      });
    }
    std::vector<std::pair<std::string, double>> shown;
    for (std::size_t row = 1; row <= data.RecordCount(); ++row) {
      shown.emplace_back(data.ValueAt(row, 0).AsText(), data.ValueAt(row, 2).AsFloat());
    }
    ASSERT_EQ(shown, expected) << "step " << step;
    ASSERT_EQ(DatasetCursor(data).RecordCount(), rows.size());
    ASSERT_EQ(data.CurrentId() != 0, data.RecordCount() != 0);
    ASSERT_EQ(data.IdAt(data.RecNo()), data.CurrentId());
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEdits, ::testing::Range(1u, 9u));

}  // namespace
