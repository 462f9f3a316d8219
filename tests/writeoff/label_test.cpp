// The roll's label: after the confirmation, on request, and what its layout may read and ask.
#include <set>

#include "host/errors.h"
#include "weighing_mill.h"

namespace test {
namespace {

using host::ActResult;
using BoxList = std::vector<Box>;
using Lines = std::vector<std::string>;

class Labels : public WeighingMill {
 protected:
  void AfterEveryRoll() { mill_.SetParameter("MAL", 50, "S"); }
  std::vector<struct FakeEquipment::Print> Prints() { return mill_.Equipment().TakePrints(); }
  ActResult PrintLabel() { return mill_.Desk().PickMenu(Screen(), "Imprimir Etiqueta"); }
  const PrintedRow& Current(const struct FakeEquipment::Print& print, const char* dataset) {
    return print.data.at(dataset).at(print.current.at(dataset) - 1);
  }
  void Defect(int roll, const char* code) {
    mill_.Insert("DEF_MOV", {{"CODIGO", code},
                             {"ARTIGO", "F1"},
                             {"QUANT", 1},
                             {"NUMERO", kOrder},
                             {"TIPO", "T"},
                             {"ROLO", roll},
                             {"LANCAMENTO", "9000" + std::to_string(++entries_)}});
  }
  void ChooseText() {
    ASSERT_EQ(mill_.Desk().Choose(dynamic_cast<host::Choice&>(*Screen().FindComponent("CbImpressao")), "Texto"),
              ActResult::kDone);
  }
  int entries_ = 0;
};

TEST_F(Labels, IsPrintedAfterEveryRollWhereTheParameterSaysSo) {
  AfterEveryRoll();
  ReservedOrder();
  Load();
  EXPECT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Roll("11"), ActResult::kDone);
  const auto prints = Prints();
  ASSERT_EQ(prints.size(), 2u);
  EXPECT_EQ(prints[0].report, "WEtqTecRolo");
  EXPECT_EQ(prints[0].kind, 'W');
  EXPECT_FALSE(prints[0].flags.preview);
  EXPECT_FALSE(prints[0].flags.show_dialog);
  EXPECT_EQ(Current(prints[0], "TbRolos").at("ORDEM").AsInteger(), 1);
  EXPECT_EQ(Current(prints[0], "TbRolos").at("QTDE").AsFloat(), 10);
  EXPECT_EQ(Current(prints[1], "TbRolos").at("ORDEM").AsInteger(), 2);
  EXPECT_EQ(Current(prints[1], "TbRolos").at("LOTE").AsText(), "0000012");
  EXPECT_EQ(Focused(), "EdtQtde");
  EXPECT_EQ(Boxes(), BoxList());
  // It is the operator's request that is logged.
  EXPECT_EQ(Log(), Lines({"BAIXA DE LOTE NR.: 000001 CODIGO: F1 QUANT: 10",
                          "BAIXA DE LOTE NR.: 000001 CODIGO: F1 QUANT: 11"}));
}

TEST_F(Labels, IsNotPrintedWithoutTheParameter) {
  for (const char* value : {"N", "", "s"}) {
    mill_.SetParameter("MAL", 50, value);
    if (mill_.Desk().Find("fmMovBaiTec") == nullptr) {
      ReservedOrder();
      Load();
    }
    EXPECT_EQ(Roll(value == std::string("N") ? "10" : value == std::string() ? "11" : "12"), ActResult::kDone);
    EXPECT_TRUE(Prints().empty()) << value;
  }
}

TEST_F(Labels, CostsTwoStatementsMore) {
  ReservedOrder();
  Load();
  Roll("10");
  mill_.TakeStatements();
  Roll("11");
  const std::size_t without = mill_.TakeStatements().size();
  AfterEveryRoll();
  Roll("12");
  mill_.TakeStatements();
  Prints();
  Roll("13");
  EXPECT_EQ(mill_.TakeStatements().size(), without + 2);
  EXPECT_EQ(Prints().size(), 1u);
}

TEST_F(Labels, OnlyARollThatWasWrittenHasOne) {
  AfterEveryRoll();
  ReservedOrder();
  Load();
  EXPECT_EQ(Roll("0"), ActResult::kDone);
  Type("EdtData", "11/03/2026");
  EXPECT_EQ(Roll("10"), ActResult::kRefused);
  Type("EdtData", "10/03/2026");
  const auto before = mill_.Db().BeforeStatement;
  mill_.Db().BeforeStatement = [&before](std::string_view sql) {
    before(sql);
    if (sql.starts_with("INSERT INTO TECELB")) throw host::DatabaseError("falha provocada", 0, std::string(sql));
  };
  EXPECT_EQ(Confirm(), ActResult::kDone);
  mill_.Db().BeforeStatement = before;
  EXPECT_EQ(Boxes().back(), Refusal("Erro na Gravação da Baixa\nfalha provocada"));
  EXPECT_TRUE(Prints().empty());
}

TEST_F(Labels, KnowsTheDefectsOfTheOrder) {
  AfterEveryRoll();
  mill_.Insert("DEFEITO", {{"CODIGO", "FUR"}, {"DESCRICAO", "Furo"}});
  ReservedOrder();
  Load();
  Roll("10");
  Defect(1, "FUR");
  Defect(1, "ZZZ");
  Prints();
  EXPECT_EQ(PrintLabel(), ActResult::kDone);
  const auto prints = Prints();
  ASSERT_EQ(prints.size(), 1u);
  std::set<std::string> defects;
  for (const PrintedRow& row : prints[0].data.at("QryDefeitos")) {
    EXPECT_EQ(row.at("ROLO").AsInteger(), 1);
    EXPECT_EQ(row.at("NUMERO").AsText(), kOrder);
    defects.insert(row.at("CODIGO").AsText() + "=" + row.at("DESCRICAO").AsText());
  }
  EXPECT_EQ(defects, std::set<std::string>({"FUR=Furo", "ZZZ="}));
}

TEST_F(Labels, KnowsTheFabric) {
  AfterEveryRoll();
  mill_.Exec("UPDATE {MATERIAL} SET COMPOSICAO = '60% algodão 40% poliéster' WHERE CODIGO = 'F1'");
  mill_.Exec("UPDATE {MAT_ITEN} SET BARRA = '7891234567895' WHERE CODIGO = 'F1' AND COR = '01'");
  ReservedOrder();
  Load();
  Roll("10");
  const auto prints = Prints();
  ASSERT_EQ(prints.size(), 1u);
  ASSERT_EQ(prints[0].data.at("QryEtiqueta").size(), 1u);
  const PrintedRow& fabric = prints[0].data.at("QryEtiqueta")[0];
  EXPECT_EQ(fabric.at("DESC_COR").AsText(), "Branco");
  EXPECT_EQ(fabric.at("COMPOSICAO").AsText(), "60% algodão 40% poliéster");
  EXPECT_EQ(fabric.at("LARGURA").AsFloat(), 1.8);
  EXPECT_EQ(fabric.at("GRAMATURA").AsFloat(), 160);
  EXPECT_EQ(fabric.at("BARRA").AsText(), "7891234567895");
  EXPECT_EQ(fabric.at("UNIDADE").AsText(), "KG");
}

TEST_F(Labels, OfWhatIsMeasuredInMetresIsInKilograms) {
  AfterEveryRoll();
  mill_.SetParameter("MAL", 70, "S");
  Order(kOrder, {{"FM", "01", 1000, ""}});
  Reserve("Y1", "D1", "L1", 60);
  Reserve("Y2", "D1", "L1", 60);
  Load();
  EXPECT_EQ(Roll("40"), ActResult::kDone);
  const auto prints = Prints();
  ASSERT_EQ(prints.size(), 1u);
  EXPECT_EQ(Current(prints[0], "TbRolos").at("QTDE").AsFloat(), 10);
  EXPECT_EQ(prints[0].data.at("QryEtiqueta")[0].at("UNIDADE").AsText(), "KG");
  EXPECT_TRUE(prints[0].data.at("QryEtiqueta")[0].at("BARRA").IsNull());
}

TEST_F(Labels, APrinterThatFailsNeverUndoesTheRoll) {
  AfterEveryRoll();
  ReservedOrder();
  Load();
  TickBarCode();
  mill_.Equipment().fail_next = "a impressora \"Zebra\" está desligada.";
  EXPECT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_EQ(Boxes(),
            BoxList({Refusal("A baixa foi gravada, mas a etiqueta não foi impressa: a impressora \"Zebra\" está "
                             "desligada.")}));
  EXPECT_EQ(Weights(), std::vector<double>({10}));
  EXPECT_EQ(Text("EdtQtde"), " 0,000");
  EXPECT_EQ(Focused(), "EdtBarra");
  ExpectBooksBalance();
  EXPECT_EQ(PrintLabel(), ActResult::kDone);
  EXPECT_EQ(Prints().size(), 1u);
}

TEST_F(Labels, WhateverTheDatabaseFailsAtAfterTheRollIsTold) {
  AfterEveryRoll();
  ReservedOrder();
  Load();
  Roll("10");
  Roll("11");
  mill_.TakeStatements();
  Roll("12");
  const auto all = static_cast<int>(mill_.TakeStatements().size());
  Prints();
  int after = 0;
  double weight = 1;
  for (int n = all - 3;; ++n) {
    const std::size_t before = Rolls().size();
    mill_.FailStatement(n);
    Roll(std::to_string(weight += 0.5).substr(0, 4));
    if (!mill_.StopFailing()) break;
    const auto boxes = Boxes();
    if (Rolls().size() == before) continue;
    ++after;
    ASSERT_FALSE(boxes.empty()) << n;
    EXPECT_EQ(boxes[0].text.substr(0, 20), "A baixa foi gravada,") << n;
    EXPECT_EQ(Focused(), "EdtQtde") << n;
    ExpectBooksBalance();
    for (const auto& print : Prints()) EXPECT_EQ(Current(print, "TbRolos").at("QTDE").AsFloat(), weight);
  }
  EXPECT_EQ(after, 5);  // three that load the order again, two of the label
  mill_.Person().TakeErrors();
}

// Another station wrote a roll between this one's write and its list.
TEST_F(Labels, IsOfTheRollWrittenHere) {
  AfterEveryRoll();
  ReservedOrder();
  Load();
  bool done = false;
  mill_.Db().BeforeStatement = [&, before = mill_.Db().BeforeStatement](std::string_view sql) {
    if (before) before(sql);
    if (done || sql.find("ORDER BY TECELB.NUMERO") == std::string_view::npos) return;
    done = true;
    mill_.Insert("TECELB", {{"NUMERO", kOrder}, {"ORDEM", 2}, {"CODIGO", "F1"}, {"COR", "01"}, {"QTDE", 99}});
  };
  EXPECT_EQ(Roll("10"), ActResult::kDone);
  mill_.Db().BeforeStatement = {};
  const auto prints = Prints();
  ASSERT_EQ(prints.size(), 1u);
  EXPECT_EQ(prints[0].data.at("TbRolos").size(), 2u);
  EXPECT_EQ(Current(prints[0], "TbRolos").at("QTDE").AsFloat(), 10);
}

// --- on request -----------------------------------------------------------------------------------------------------

TEST_F(Labels, OfTheRollSelected) {
  ReservedOrder();
  Load();
  for (const char* quantity : {"10", "11", "12"}) Roll(quantity);
  ASSERT_EQ(mill_.Desk().SelectRow(mill_.GridOf(Screen(), "TbRolos"), 2), ActResult::kDone);
  mill_.TakeStatements();
  EXPECT_EQ(PrintLabel(), ActResult::kDone);
  const auto prints = Prints();
  ASSERT_EQ(prints.size(), 1u);
  EXPECT_EQ(Current(prints[0], "TbRolos").at("ORDEM").AsInteger(), 2);
  EXPECT_EQ(Log().back(), "IMPRESSÃO DA ETIQUETA LOTE: 000001 ORDEM: 2");
  EXPECT_EQ(Value("SELECT CHAVE FROM TEC_LOG WHERE TEXTO STARTING WITH 'IMPRESS'").AsText(), kOrder);
  EXPECT_EQ(Value("SELECT OPERACAO FROM TEC_LOG WHERE TEXTO STARTING WITH 'IMPRESS'").AsInteger(), 3);
}

TEST_F(Labels, WithoutRollsThereIsNothingToPrint) {
  ReservedOrder();
  Load();
  PrintLabel();
  EXPECT_TRUE(Prints().empty());
  EXPECT_EQ(Log(), Lines());
  EXPECT_EQ(Boxes(), BoxList());
}

TEST_F(Labels, WhatWasNotPrintedIsNotLogged) {
  ReservedOrder();
  Load();
  Roll("10");
  mill_.Equipment().fail_next = "WEtqTecRolo.js, linha 12: x não existe.";
  EXPECT_EQ(PrintLabel(), ActResult::kFailed);
  EXPECT_EQ(mill_.Person().TakeErrors(), Lines({"WEtqTecRolo.js, linha 12: x não existe."}));
  EXPECT_EQ(Log(), Lines({"BAIXA DE LOTE NR.: 000001 CODIGO: F1 QUANT: 10"}));
  Boxes();
}

// --- how it is printed ----------------------------------------------------------------------------------------------

TEST_F(Labels, ThePrintTypeIsThatOfTheList) {
  AfterEveryRoll();
  ReservedOrder();
  Load();
  EXPECT_EQ(dynamic_cast<host::Choice&>(*Screen().FindComponent("CbImpressao")).Items(), Lines({"Windows", "Texto"}));
  ChooseText();
  Roll("10");
  auto prints = Prints();
  ASSERT_EQ(prints.size(), 1u);
  EXPECT_EQ(prints[0].kind, 'T');
  EXPECT_EQ(prints[0].unknown_functions, Screen().FindComponent("prTxReport"));
}

TEST_F(Labels, ThePrintTypeIsPresetByTheInstallation) {
  const auto preset = [this](const char* value) {
    mill_.SetParameter("SIS", 20, value);
    host::Screen& screen = mill_.Open("TfmMovBaiTec");
    auto text = dynamic_cast<host::Choice&>(*screen.FindComponent("CbImpressao")).SelectedText();
    mill_.Desk().CloseScreen(screen);
    return text;
  };
  EXPECT_EQ(preset("S"), "Texto");
  EXPECT_EQ(preset("N"), "Windows");
  EXPECT_EQ(preset(""), "Windows");
  EXPECT_EQ(preset("X"), "Windows");
}

TEST_F(Labels, LayoutsMayAskTheScreenForItsFunctions) {
  AfterEveryRoll();
  ReservedOrder();
  Load();
  Roll("10");
  const auto prints = Prints();
  ASSERT_EQ(prints.size(), 1u);
  ASSERT_EQ(prints[0].unknown_functions, Screen().FindComponent("RvEtiqueta"));
  for (const char* report : {"RvEtiqueta", "prTxReport"}) {
    const auto& asked = dynamic_cast<host::Report&>(*Screen().FindComponent(report));
    EXPECT_EQ(asked.OnUnknownFunction("RemoveAcento", {"maçã"}), "maaa");
    EXPECT_EQ(asked.OnUnknownFunction("ZeroE", {"7", "3"}), "007");
    EXPECT_EQ(asked.OnUnknownFunction("Soma", {"7", "3"}), std::nullopt);
  }
}

// --- with the defects register --------------------------------------------------------------------------------------

TEST_F(Labels, ComesAfterTheRegisterAndKnowsWhatWasEnteredThere) {
  AfterEveryRoll();
  mill_.SetParameter("MAL", 60, "S");
  mill_.Insert("DEFEITO", {{"CODIGO", "FUR"}, {"DESCRICAO", "Furo"}});
  ReservedOrder();
  Load();
  bool printed_before = true;
  mill_.Person().OnModal("TfmCadDefTec", [&](host::Screen&, host::Desk&) {
    printed_before = !Prints().empty();
    Defect(1, "FUR");
  });
  EXPECT_EQ(Roll("10"), ActResult::kDone);
  EXPECT_FALSE(printed_before);
  const auto prints = Prints();
  ASSERT_EQ(prints.size(), 1u);
  EXPECT_EQ(prints[0].data.at("QryDefeitos").size(), 1u);
  EXPECT_EQ(Focused(), "EdtQtde");
}

// --- unit aids ------------------------------------------------------------------------------------------------------

TEST_F(Labels, ConversionOfTheUnit) {
  mill_.Exec("UPDATE {MATERIAL} SET PESO = 0.35 WHERE CODIGO = 'F1'");
  ReservedOrder();
  Load();
  const auto converted = [this](const char* answer) {
    mill_.Person().Answer("Informe a quantidade:", answer);
    EXPECT_EQ(mill_.Desk().PickMenu(Screen(), "Conversão de unidade"), ActResult::kDone);
    return Text("EdtQtde");
  };
  EXPECT_EQ(converted("25"), " 8,750");
  for (const char* nothing : {"abc", "", "0", "-5", "1e3"}) EXPECT_EQ(converted(nothing), " 8,750") << nothing;
  mill_.Exec("UPDATE {MATERIAL} SET PESO = 0 WHERE CODIGO = 'F1'");
  EXPECT_EQ(converted("25"), " 0,000");
  Boxes();
}

TEST_F(Labels, ADoubleClickTakesWhatIsLeftAndForgetsTheLastWeight) {
  ReservedOrder();
  Load();
  Roll("50");
  ASSERT_EQ(mill_.Desk().DblClick(mill_.GridOf(Screen(), "TbItens")), ActResult::kDone);
  EXPECT_EQ(Text("EdtQtde"), " 50,000");
  EXPECT_EQ(Confirm(), ActResult::kDone);
  EXPECT_EQ(Weights(), std::vector<double>({50, 50}));
  EXPECT_EQ(Boxes(), BoxList());
}

}  // namespace
}  // namespace test
