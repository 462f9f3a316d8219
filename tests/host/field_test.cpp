// Fields: what they take, how they show it, and how they come about.
#include <stdexcept>

#include "dataset_fixture.h"
#include "host/errors.h"

namespace {

using host::DatasetState;
using host::Field;
using host::FieldType;
using host::Value;
using test::DatasetTest;

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

}  // namespace
