// What a person may type into the composition screen that cannot be taken, or that only looks dangerous.
#include "composition_mill.h"

namespace test {
namespace {

using host::ActResult;
using Lines = std::vector<std::string>;

constexpr const char* kAskColour = "Cor não cadastrada no Material. Deseja cadastrar?";

class BadInput : public CompositionTest {
 protected:
  void SetUp() override {
    CompositionTest::SetUp();
    ASSERT_EQ(Load("M2"), ActResult::kDone);
  }
};

TEST_F(BadInput, NumbersThatAreNoneAreRefusedWithAReason) {
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"LFA", "5"}}), ActResult::kDone);
  for (const char* text : {"abc", "1e400", "nan", "inf", "1,2,3", "12345678901234567890"}) {
    for (const char* edit : {"EdtLargura", "EdtGramatura", "EdtDiametro", "EdtFinura", "EdtKgRolo", "EdtAgulhas",
                             "EdtDesperdicio", "EdtRPM"}) {
      ASSERT_EQ(mill_.Type(Screen(), edit, "7"), ActResult::kDone);
      EXPECT_EQ(mill_.Type(Screen(), edit, text), ActResult::kRefused) << edit << " " << text;
      EXPECT_EQ(mill_.Text(Screen(), edit), "7") << edit << " " << text;
      EXPECT_EQ(mill_.Messages().size(), 1u) << edit << " " << text;
    }
    for (const char* field : {"Milimetros", "Tensao", "LFA", "ROCA", "Perc"}) {
      ASSERT_EQ(mill_.Desk().SelectCell(Screen().GrdComposi, field), ActResult::kDone);
      const std::string before = Cell(1, field);
      EXPECT_EQ(mill_.Desk().TypeCell(Screen().GrdComposi, text), ActResult::kRefused) << field << " " << text;
      EXPECT_EQ(Cell(1, field), before) << field << " " << text;
      EXPECT_EQ(mill_.Messages().size(), 1u) << field << " " << text;
    }
  }
}

TEST_F(BadInput, CommaAndPointAreBothDecimalSigns) {
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"LFA", "5,25"}, {"Tensao", "1.5"}}), ActResult::kDone);
  EXPECT_EQ(Cell(1, "LFA"), "5,25");
  EXPECT_EQ(Cell(1, "Tensao"), "1,5");
}

TEST_F(BadInput, TextsThatAreTooLongOrCannotBeStoredAreRefusedWithAReason) {
  const std::string long_text(40, 'X');
  for (const std::string& text : {long_text, std::string("日本"), std::string("Fio ☃")}) {
    for (const char* edit : {"EdtCodMat", "edtCodCliente"}) {
      const std::string before = mill_.Text(Screen(), edit);
      EXPECT_EQ(mill_.Type(Screen(), edit, text), ActResult::kRefused) << edit << " " << text;
      EXPECT_EQ(mill_.Text(Screen(), edit), before);
      EXPECT_EQ(mill_.Messages().size(), 1u);
    }
    ASSERT_EQ(Load("M2"), ActResult::kDone);
    ASSERT_EQ(AppendYarn({{"Codigo", "F1"}}), ActResult::kDone);
    for (const char* field : {"Codigo", "Regra", "01"}) {
      ASSERT_EQ(mill_.Desk().SelectCell(Screen().GrdComposi, field), ActResult::kDone);
      const std::string before = Cell(1, field);
      EXPECT_EQ(mill_.Desk().TypeCell(Screen().GrdComposi, text), ActResult::kRefused) << field << " " << text;
      EXPECT_EQ(Cell(1, field), before);
      EXPECT_EQ(mill_.Messages().size(), 1u);
    }
  }
}

TEST_F(BadInput, QuotesAndSemicolonsAreOrdinaryCharacters) {
  for (const char* text : {"a'b", "';--", "\"x\"", "a;b", "{X}", ":A", "?", "%"}) {
    EXPECT_EQ(Load(text), ActResult::kDone) << text;
    EXPECT_EQ(mill_.Messages(), Lines{"Material não encontrado."}) << text;
    EXPECT_EQ(mill_.Type(Screen(), "edtCodCliente", text), ActResult::kDone) << text;
    EXPECT_EQ(mill_.Messages(), Lines{"Cliente não Existe."}) << text;
  }
  ASSERT_EQ(Load("M2"), ActResult::kDone);
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"Perc", "100"}}), ActResult::kDone);
  for (const char* text : {"a'b", "';-", "\"x\"", "a;b", "{X}", ":A", "?", "%"}) {
    EXPECT_EQ(TypeCell("01", text), ActResult::kDone) << text;
    EXPECT_EQ(mill_.Messages(), Lines{kAskColour}) << text;
  }
  for (const char* text : {"a'b", "';-", "a;b", "?"}) {
    EXPECT_EQ(TypeCell("Regra", text), ActResult::kDone) << text;
    EXPECT_EQ(mill_.Messages(), Lines{"Regra de cálculo inválida."}) << text;
  }
  ASSERT_EQ(TypeCell("01", "a'b;c"), ActResult::kDone);
  mill_.Messages();
  ASSERT_EQ(Save(), ActResult::kDone) << Error();
  EXPECT_EQ(Composition("M2"), Lines{"F1 1 01 a'b;c 100"});
}

TEST_F(BadInput, AnOddFabricCodeIsStoredUnderItself) {
  mill_.Insert("MATERIAL", {{"CODIGO", "O'B;{X}:A?"}, {"DESCRICAO", "Código estranho"}});
  mill_.Insert("MAT_ITEN", {{"CODIGO", "O'B;{X}:A?"}, {"COR", "01"}, {"DEPOSITO", "GERAL"}, {"LOTE", "000000"}});
  ASSERT_EQ(Load("O'B;{X}:A?"), ActResult::kDone) << Error();
  EXPECT_EQ(Screen().LblCodMat.Text(), "Código estranho");
  ASSERT_EQ(AppendYarn({{"Codigo", "F1"}, {"Perc", "100"}}), ActResult::kDone);
  ASSERT_EQ(Save(), ActResult::kDone) << Error();
  EXPECT_EQ(mill_.Scalar("SELECT MATERIAL FROM {COMP_MATERIAL}").AsText(), "O'B;{X}:A?");
  EXPECT_EQ(Log().at(0),
            "CADASTRO DE COMPOSICAO: INCLUSAO DA COMPOSICAO DO MATERIAL O'B;{X}:A? DO CLIENTE  [0, O'B;{X}:A?]");
}

}  // namespace
}  // namespace test
