// Fields and rows that a dataset takes from a query's result.
#include <algorithm>
#include <memory>
#include <utility>

#include "dataset_fixture.h"

namespace {

using host::FieldType;
using host::Value;
using test::DatasetTest;

// A query's result that the test wrote down.
class WrittenResult : public host::TTIQuery {
 public:
  WrittenResult(std::vector<std::string> names, std::vector<std::vector<Value>> rows)
      : names_(std::move(names)), rows_(std::move(rows)) {}

  void Open() override {}
  void ExecSQL() override {}
  std::size_t RowsAffected() override { return 0; }
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
    return Field(static_cast<std::size_t>(found - names_.begin()));
  }
  const Value& Field(std::size_t column) const override { return rows_.at(at_).at(column); }

 private:
  std::vector<std::string> names_;
  std::vector<std::vector<Value>> rows_;
  std::size_t at_ = 0;
};

// One that can part with its rows, and tells whether it was asked to.
class GivingResult : public WrittenResult {
 public:
  GivingResult(std::vector<std::string> names, std::vector<std::vector<Value>> rows, bool& asked)
      : WrittenResult(std::move(names), std::move(rows)), asked_(asked) {}
  host::RowSet TakeRows() override {
    asked_ = true;
    return WrittenResult::TakeRows();
  }

 private:
  bool& asked_;
};

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

// Joins bring columns of one name: a fabric's composition and its dyed one's.
TEST_F(DatasetTest, LaterColumnsOfOneNameGetNamesOfTheirOwn) {
  WrittenResult query({"CODIGO", "COMPOSICAO", "composicao", "QTDE", "COMPOSICAO", "QTDE_1", "QTDE"},
                      {{"M1", "100 % CO", "50 % CO 50 % PES", 1, Value(), 2, 3.5}});
  data.LoadFrom(query);
  std::string names;
  for (std::size_t at = 0; at < data.FieldCount(); ++at) names += data.FieldAt(at).Name() + " ";
  EXPECT_EQ(names, "CODIGO COMPOSICAO composicao_1 QTDE COMPOSICAO_2 QTDE_1 QTDE_2 ");
  EXPECT_EQ(data["COMPOSICAO"].AsText(), "100 % CO");
  EXPECT_EQ(data["COMPOSICAO_1"].AsText(), "50 % CO 50 % PES");
  EXPECT_TRUE(data["COMPOSICAO_2"].IsNull());
  EXPECT_EQ(data["QTDE_1"].AsInteger(), 2);
  EXPECT_EQ(data["QTDE_2"].AsFloat(), 3.5);
  EXPECT_EQ(data["QTDE"].Def().type, FieldType::kInteger);
  EXPECT_EQ(data["QTDE_2"].Def().type, FieldType::kFloat);
}

TEST_F(DatasetTest, ALoadLeavesTheQueryItsRows) {
  WrittenResult query({"CODIGO"}, {{"A"}, {"B"}});
  query.Next();
  data.LoadFrom(query);
  EXPECT_EQ(Take(), "scroll A");
  EXPECT_TRUE(query.Eof());
  query.First();
  EXPECT_EQ(query.FieldByName("CODIGO").AsText(), "A");
  EXPECT_EQ(query.RecordCount(), 2u);
}

TEST_F(DatasetTest, HandedOverAQueryLoadsAsOneThatIsCopied) {
  const std::vector<std::string> names = {"CODIGO", "QTDE", "MIX", "QTDE"};
  const std::vector<std::vector<Value>> rows = {{"A", 1, 1, "x"}, {"B", 2.5, "y", Value()}, {Value(), Value(), 3, "z"}};
  WrittenResult copied(names, rows);
  data.LoadFrom(copied);
  host::Dataset taken(screen, "TbTomada");
  bool asked = false;
  auto giving = std::make_unique<GivingResult>(names, rows, asked);
  giving->Next();
  taken.LoadFrom(std::unique_ptr<host::TTIQuery>(std::move(giving)));
  EXPECT_TRUE(asked);
  ASSERT_EQ(taken.FieldCount(), data.FieldCount());
  ASSERT_EQ(taken.RecordCount(), data.RecordCount());
  EXPECT_EQ(taken.RecNo(), 1u);
  for (std::size_t field = 0; field < data.FieldCount(); ++field) {
    EXPECT_EQ(taken.FieldAt(field).Name(), data.FieldAt(field).Name());
    EXPECT_EQ(taken.FieldAt(field).Def().type, data.FieldAt(field).Def().type);
    for (std::size_t row = 1; row <= data.RecordCount(); ++row) {
      EXPECT_EQ(taken.ValueAt(row, field), data.ValueAt(row, field)) << field << '/' << row;
    }
  }
  EXPECT_EQ(taken["MIX"].Get(), Value("1"));
  EXPECT_EQ(taken["QTDE"].Get(), Value(1.0));
}

TEST_F(DatasetTest, NothingFoundLoadsFieldsWithoutRows) {
  bool asked = false;
  data.LoadFrom(std::make_unique<GivingResult>(std::vector<std::string>{"CODIGO", "CODIGO"},
                                               std::vector<std::vector<Value>>(), asked));
  EXPECT_TRUE(data.Active());
  EXPECT_TRUE(data.IsEmpty());
  EXPECT_EQ(data.FieldCount(), 2u);
  EXPECT_NE(data.FindField("CODIGO_1"), nullptr);
}

}  // namespace
