// Fields: what they take, how they show it, and how they come about.
#include <algorithm>
#include <stdexcept>

#include "dataset_fixture.h"
#include "host/errors.h"

namespace {

using host::DatasetState;
using host::Field;
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

}  // namespace
