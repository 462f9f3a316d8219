// What nobody should type, in every place where something can be typed: told, refused, and nothing lost.
#include <string>

#include "order_mill.h"

namespace test {
namespace {

class BadInput : public OrderTest {
 protected:
  /// The text is refused with one box that speaks of it; the input keeps what it had.
  void ExpectRefused(const char* input, const std::string& text) {
    auto& edit = dynamic_cast<host::Edit&>(*Screen().FindComponent(input));
    ASSERT_EQ(mill_.Desk().Enter(edit), ActResult::kDone);
    const std::string before = edit.Text();
    EXPECT_EQ(mill_.Desk().TypeInto(edit, text), ActResult::kRefused) << input << ": " << text;
    EXPECT_EQ(mill_.Messages().size(), 1u) << input << ": " << text;
    EXPECT_EQ(edit.Text(), before) << input << ": " << text;
    EXPECT_EQ(Errors(), Lines());
  }

  void ExpectCellRefused(const char* dataset, const char* field, const std::string& text) {
    host::Grid& grid = mill_.GridOf(Screen(), dataset);
    ASSERT_EQ(mill_.Desk().SelectCell(grid, field), ActResult::kDone) << field;
    const std::string before = grid.GetDataset()[field].AsText();
    EXPECT_EQ(mill_.Desk().TypeCell(grid, text), ActResult::kRefused) << field << ": " << text;
    EXPECT_EQ(mill_.Messages().size(), 1u) << field << ": " << text;
    EXPECT_EQ(grid.GetDataset()[field].AsText(), before) << field << ": " << text;
  }
};

const Lines kNoNumbers = {"abc", "1e400", "1e3", "nan", "inf", "--5", "1,2,3", "12x", "0x10", "9999999999999999999"};
constexpr const char* kOutsideTheCharset = "中文";

TEST_F(BadInput, TextInNumberInputs) {
  NewOrder();
  for (const char* input : {"EdtPonto", "EdtRPM"}) {
    for (const auto& text : kNoNumbers) ExpectRefused(input, text);
  }
}

TEST_F(BadInput, TextInNumberCells) {
  NewOrder();
  AddItem("F1", "01", "10");
  for (const char* field : {"Qtde", "Custo", "Ciclos"}) {
    for (const auto& text : kNoNumbers) ExpectCellRefused("TbItens", field, text);
  }
  ExpectCellRefused("TbItens", "Ciclos", "1,5");
  ExpectCellRefused("TbItens", "Ciclos", "99999999999");
  EXPECT_EQ(Shown("TbItens", {"Qtde", "Custo"}), Lines{"10 | 5"});
}

TEST_F(BadInput, TextInTheReservation) {
  Load(SavedOrder({{"F1", "01", "100"}}));
  for (const auto& text : kNoNumbers) ExpectCellRefused("TbEstoque", "Qtde_Res", text);
}

TEST_F(BadInput, CommaAndPointAreDecimalSigns) {
  const std::string number = NewOrder();
  Type("EdtPonto", "2.755");
  EXPECT_EQ(Text("EdtPonto"), "2,755");
  Type("EdtPonto", "2,755");
  EXPECT_EQ(Text("EdtPonto"), "2,755");
  EXPECT_EQ(
      mill_.Append(Screen(), "TbItens", {{"Codigo", "F1"}, {"Cor", "01"}, {"Qtde", "1.234,5"}, {"Custo", "0.25"}}),
      ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items(number), Lines{"F1 | 01 |  | 0.25 | 1234.5 |  | 0 | 0 | "});
}

TEST_F(BadInput, LargeAndNegativeNumbersReachTheTableUnharmed) {
  const std::string number = NewOrder();
  Type("EdtRPM", "-3");
  EXPECT_EQ(mill_.Append(Screen(), "TbItens",
                         {{"Codigo", "F1"}, {"Cor", "01"}, {"Qtde", "-12,5"}, {"Custo", "999999999999"}}),
            ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items(number), Lines{"F1 | 01 |  | 999999999999 | -12.5 |  | 0 | 0 | "});
  Load(number);
  EXPECT_EQ(Shown("TbItens", {"Qtde", "Qtde_Rolo"}), Lines{"-12.5 | 0"});
  EXPECT_EQ(Shown("TbFios", {"Consumo"}), (Lines{"-7.5", "-5"}));
}

TEST_F(BadInput, DatesThatDoNotExist) {
  NewOrder();
  for (const char* text : {"31/02/2026", "29/02/2025", "00/01/2026", "10/13/2026", "hoje", "2026-03-10x", "1/1"}) {
    ExpectRefused("EdtData", text);
  }
  EXPECT_EQ(Text("EdtData"), "10/03/2026");
}

TEST_F(BadInput, TextsThatAreTooLong) {
  NewOrder();
  const std::string forty(40, 'x');
  for (const char* input : {"EdtNumero", "EdtMalharia", "EdtPrazo", "EdtMaquina", "EdtFluxo", "EdtDeposito", "EdtFicha",
                            "EdtFilDeposito", "EdtFilLote", "EdtFilLocal"}) {
    ExpectRefused(input, forty);
  }
  ExpectRefused("EdtObs", std::string(4001, 'x'));
  Type("EdtMalharia", "M00001");
  AddItem("F1", "01", "10");
  ExpectCellRefused("TbItens", "Codigo", forty);
  ExpectCellRefused("TbItens", "Cor", forty);
  ExpectCellRefused("TbItens", "Pedido", forty);
  ExpectCellRefused("TbItens", "Obs", std::string(201, 'x'));
}

TEST_F(BadInput, CharactersTheDatabaseCannotHold) {
  NewOrder();
  for (const char* input : {"EdtNumero", "EdtMalharia", "EdtPrazo", "EdtMaquina", "EdtFluxo", "EdtDeposito", "EdtFicha",
                            "EdtObs", "EdtFilDeposito", "EdtFilLote", "EdtFilLocal"}) {
    ExpectRefused(input, kOutsideTheCharset);
  }
  Type("EdtMalharia", "M00001");
  AddItem("F1", "01", "10");
  for (const char* field : {"Codigo", "Cor", "Pedido", "Obs"}) ExpectCellRefused("TbItens", field, kOutsideTheCharset);
}

TEST_F(BadInput, QuotesAndSemicolonsAreOnlyText) {
  const std::string number = NewOrder();
  const std::string nasty = "a'; DROP--\"{x}";
  for (const char* input : {"EdtFicha", "EdtObs"}) EXPECT_EQ(Type(input, nasty), ActResult::kDone);
  EXPECT_EQ(mill_.Append(Screen(), "TbItens",
                         {{"Codigo", "F1"}, {"Cor", "01"}, {"Qtde", "1"}, {"Pedido", "a';b\"{T},"}, {"Obs", nasty}}),
            ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(mill_.Messages(), Lines());
  EXPECT_EQ(Items(number), Lines{"F1 | 01 | a';b\"{T}, | 5 | 1 |  | 0 | 0 | " + nasty});
  Load(number);
  EXPECT_EQ(Text("EdtFicha"), nasty);
  EXPECT_EQ(Text("EdtObs"), nasty);
}

TEST_F(BadInput, QuotesAndSemicolonsInCodes) {
  NewOrder();
  const Cells codes = {{"EdtMalharia", "Cliente não encontrado."},
                       {"EdtPrazo", "Prazo não encontrado."},
                       {"EdtMaquina", "Máquina não encontrada."},
                       {"EdtFluxo", "Fluxo Inválido."},
                       {"EdtDeposito", "Depósito não encontrado."}};
  for (const auto& [input, message] : codes) {
    for (const char* text : {"';--", "a,b", "a;b", "%", "\"x\"", "{T}"}) {
      EXPECT_EQ(Type(input, text), ActResult::kRefused) << input << text;
      EXPECT_EQ(mill_.Messages(), Lines{message}) << input << text;
      EXPECT_EQ(Type(input, ""), ActResult::kDone);
    }
  }
  EXPECT_EQ(Type("EdtMalharia", "M00001"), ActResult::kDone);
  for (const char* text : {"';--", "a,b", "a;b", "%"}) {
    EXPECT_EQ(AddItem(text, "01", "1"), ActResult::kRefused);
    EXPECT_EQ(mill_.Messages(), Lines{"Material não cadastrado."}) << text;
    mill_.Desk().CancelRow(Screen().DBGrid6);
    EXPECT_EQ(AddItem("F1", text, "1"), ActResult::kRefused);
    EXPECT_EQ(mill_.Messages(), Lines{"Cor não cadastrada."}) << text;
    mill_.Desk().CancelRow(Screen().DBGrid6);
  }
  EXPECT_EQ(Errors(), Lines());
}

TEST_F(BadInput, AnOrderNumberOfAnyText) {
  for (const char* text : {"a'b", "a;b", "a,b", "%", "ção"}) {
    EXPECT_EQ(Type("EdtNumero", text), ActResult::kDone);
    EXPECT_EQ(Type("EdtMalharia", "M00001"), ActResult::kDone);
    EXPECT_EQ(AddItem("F1", "01", "1"), ActResult::kDone);
    EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
    EXPECT_EQ(mill_.Messages(), Lines()) << text;
    Load(text);
    EXPECT_EQ(Shown("TbItens", {"Codigo"}), Lines{"F1"}) << text;
    EXPECT_EQ(Shown("TbFios", {"Consumo"}), (Lines{"0.6", "0.4"})) << text;
  }
  // Not one of them was in the way of the sequence.
  EXPECT_EQ(Click("BtnIncluir"), ActResult::kDone);
  EXPECT_EQ(Text("EdtNumero"), "000001");
}

TEST_F(BadInput, UnknownCodesEverywhere) {
  const std::string number = SavedOrder({{"F1", "01", "10"}});
  // What was registered once may be gone when the order comes back.
  mill_.Exec(
      "UPDATE {TECEL} SET MALHARIA = 'GONE', MAQUINA = 'GONE', FLUXO = 'GONE', PERIODO = 'GONE', DEPOSITO = "
      "'GONE'");
  mill_.Exec("UPDATE {TECEL_ITEN} SET CODIGO = 'GONE', COR = 'GONE'");
  Load(number);
  EXPECT_EQ(Text("EdtMalharia"), "GONE");
  EXPECT_EQ(Text("LblMalharia"), "");
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Descricao", "Cor", "DescCor"}), Lines{"GONE |  | GONE | "});
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items(number), Lines{"GONE | GONE |  | 5 | 10 |  | 0 | 0 | "});
}

TEST_F(BadInput, NullsEverywhere) {
  mill_.Exec("INSERT INTO {TECEL} (NUMERO) VALUES ('000050')");
  mill_.Exec("INSERT INTO {TECEL_ITEN} (NUMERO, CODIGO, COR) VALUES ('000050', 'F2', '01')");
  Load("000050");
  EXPECT_EQ(Text("EdtData"), "");
  EXPECT_EQ(Text("EdtMalharia"), "");
  EXPECT_TRUE(Screen().DBGrid6.Enabled());
  // A stored order without mill that still has none keeps it: no price is asked for. One that gets a mill needs it.
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items("000050"), Lines{"F2 | 01 |  | 0 | 0 |  | 0 | 0 | "});
  mill_.Exec("UPDATE {TECEL} SET MALHARIA = NULL");
  Load("000050");
  Type("EdtMalharia", "M00004");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages().size(), 1u);
  Type("EdtMalharia", "M00001");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Items("000050"), Lines{"F2 | 01 |  | 0 | 0 |  | 0 | 0 | "});
}

}  // namespace
}  // namespace test
