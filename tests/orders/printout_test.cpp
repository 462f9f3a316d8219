// The printout of an order: what the layout gets to read, and what the person has on the screen before and afterwards.
#include <algorithm>

#include "app/books/check.h"
#include "order_mill.h"

namespace test {
namespace {

using Print = struct FakeEquipment::Print;

class Printout : public OrderTest {
 protected:
  Print Printed() {
    EXPECT_EQ(Click("BtnImprimir"), ActResult::kDone);
    EXPECT_EQ(mill_.Messages(), Lines());
    auto prints = mill_.Equipment().TakePrints();
    if (prints.size() != 1u) {
      ADD_FAILURE() << prints.size() << " prints";
      prints.resize(1);
    }
    return prints.front();
  }

  static Lines RowsOf(const Print& print, const std::string& dataset, const Lines& fields) {
    Lines lines;
    const auto found = print.data.find(dataset);
    if (found == print.data.end()) return {"no " + dataset};
    for (const PrintedRow& row : found->second) {
      std::string line;
      for (const std::string& field : fields) line += (line.empty() ? "" : " | ") + row.at(field).AsText();
      lines.push_back(line);
    }
    return lines;
  }

  Lines YarnsOnScreen() {
    Lines fields;
    for (std::size_t at = 0; at < Screen().TbFios.FieldCount(); ++at)
      fields.push_back(Screen().TbFios.FieldAt(at).Name());
    return Shown("TbFios", fields);
  }

  void Refused(const std::string& sentence) {
    const Lines stored = Everything();
    EXPECT_EQ(Click("BtnImprimir"), ActResult::kRefused);
    const auto shown = mill_.Person().TakeMessages();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, sentence);
    EXPECT_EQ(shown[0].title, "Ordens de Tecelagem");
    EXPECT_EQ(shown[0].icon, host::Icon::kInformation);
    EXPECT_TRUE(mill_.Equipment().TakePrints().empty());
    EXPECT_EQ(Everything(), stored);
  }
};

TEST_F(Printout, AsksForTheReportOfTheOrder) {
  Load(SavedOrder({{"F1", "01", "100"}}));
  const Print print = Printed();
  EXPECT_EQ(print.report, "WTecLoteCad");
  EXPECT_EQ(print.kind, 'W');
  EXPECT_TRUE(print.flags.preview);
  EXPECT_FALSE(print.flags.show_dialog);
  EXPECT_EQ(print.unknown_functions, &Screen().RvTecelagem);
}

TEST_F(Printout, HasHeaderItemAndFabric) {
  mill_.Insert("TABLIN", {{"CODIGO", "L1"}, {"DESCRICAO", "Malhas básicas"}});
  mill_.Exec("UPDATE {MATERIAL} SET LINHA = 'L1', DESCRICAO2 = 'Fio tinto, açaí' WHERE CODIGO = 'F1'");
  mill_.Exec("UPDATE {COMP_MATERIAL} SET DESPERDICIO = 2.5, RPM = 28 WHERE MATERIAL = 'F1'");
  mill_.Exec("UPDATE {CADCORTI} SET OBS = 'Só à vista' WHERE CODIGO = 'F1' AND CODCLI = 'M00001' AND COR = '02'");
  mill_.Exec("UPDATE {CADCORTI} SET OBS = 'Outra malharia' WHERE CODIGO = 'F1' AND CODCLI = 'M00002'");
  const std::string number = NewOrder();
  for (const auto& [input, text] : Cells{{"EdtFicha", "FX-9"},
                                         {"EdtPrazo", "30"},
                                         {"EdtMaquina", "MQ1"},
                                         {"EdtPonto", "0,25"},
                                         {"EdtFluxo", "FL1"},
                                         {"EdtRPM", "25"},
                                         {"EdtDeposito", "DF"},
                                         {"EdtObs", "Atenção: não lavar"}}) {
    ASSERT_EQ(Type(input, text), ActResult::kDone) << input;
  }
  ASSERT_EQ(AddItem("F1", "02", "100"), ActResult::kDone);
  ASSERT_EQ(mill_.Set(Screen(), "TbItens", {{"Pedido", "PV0001"}, {"Ciclos", "7"}, {"Obs", "com visão"}}),
            ActResult::kDone);
  ASSERT_EQ(Click("BtnGravar"), ActResult::kDone);
  Roll(number, "F1", "02", 1, 12.5);
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = 12.5");
  Load(number);
  const Print print = Printed();
  ASSERT_EQ(print.data.at("QryRelatorio").size(), 1u);
  const std::vector<std::pair<const char*, const char*>> expected = {{"NOME", "Malharia Aurora"},
                                                                     {"CODIGO", "F1"},
                                                                     {"DESCRICAO", "Meia malha 30/1 PV"},
                                                                     {"PESO_UNI", "1"},
                                                                     {"UNIDADE", "KG"},
                                                                     {"PEDIDO", "PV0001"},
                                                                     {"QTDE", "100"},
                                                                     {"QTDE_B", "12.5"},
                                                                     {"LARGURA", "1.75"},
                                                                     {"GRAMATURA", "165"},
                                                                     {"KG_ROLO", "22"},
                                                                     {"DESC_FLUXO", "Malha crua"},
                                                                     {"COR", "02"},
                                                                     {"DESCCOR", "Azul-marinho"},
                                                                     {"DESCMAQ", "Circular 30\" 28"},
                                                                     {"CUSTO", "6.5"},
                                                                     {"DESCRICAO2", "Fio tinto, açaí"},
                                                                     {"MALHARIA", "M00001"},
                                                                     {"PERIODO", "30"},
                                                                     {"OBSERVACAO", "Atenção: não lavar"},
                                                                     {"DT_INICIO", "10/03/2026"},
                                                                     {"FICHA", "FX-9"},
                                                                     {"MAQUINA", "MQ1"},
                                                                     {"FLUXO", "FL1"},
                                                                     {"RPM", "25"},
                                                                     {"TPONTO", "0.25"},
                                                                     {"SITUACAO", "A"},
                                                                     {"DEPOSITO", "DF"},
                                                                     {"DESC_DEP_ENT", "Depósito de malha"},
                                                                     {"LINHA", "L1"},
                                                                     {"DESC_LINHA", "Malhas básicas"},
                                                                     {"ALIMENTADORES", "96"},
                                                                     {"DESPERDICIO", "2.5"},
                                                                     {"DIAMETRO", "30"},
                                                                     {"FINURA", "28"},
                                                                     {"OBS_CUSTO_MALHA", "Só à vista"},
                                                                     {"CICLOS", "7"},
                                                                     {"RPM_MAT", "28"},
                                                                     {"OBS_ITEM", "com visão"}};
  const PrintedRow& row = print.data.at("QryRelatorio").front();
  for (const auto& [column, text] : expected) {
    ASSERT_TRUE(row.contains(column)) << column;
    EXPECT_EQ(row.at(column).AsText(), text) << column;
  }
  EXPECT_EQ(row.at("NUMERO").AsText(), number);
  EXPECT_EQ(row.size(), expected.size() + 1);
}

TEST_F(Printout, AnItemIsOneRowHoweverItsYarnsAreFed) {
  mill_.Exec("UPDATE {COMP_MATERIAL} SET LFA = ORDEM, ROCA = ORDEM * 10 WHERE MATERIAL = 'F1'");
  Load(SavedOrder({{"F1", "01", "100"}, {"F2", "02", "3"}}));
  const Print print = Printed();
  EXPECT_EQ(RowsOf(print, "QryRelatorio", {"CODIGO", "COR", "QTDE"}), (Lines{"F1 | 01 | 100", "F2 | 02 | 3"}));
  EXPECT_EQ(RowsOf(print, "TbFios", {"CODIGO", "COR", "CONSUMO"}), (Lines{"Y1 | CR | 60", "Y2 | CR | 40"}));
}

TEST_F(Printout, AnItemIsWovenOnceHoweverItsCompositionDisagrees) {
  mill_.Exec("UPDATE {COMP_MATERIAL} SET RPM = ORDEM * 10 WHERE MATERIAL = 'F1'");
  const std::string number = SavedOrder({{"F1", "01", "44"}});
  Load(number);
  const Print print = Printed();
  EXPECT_EQ(RowsOf(print, "QryRelatorio", {"CODIGO", "RPM_MAT"}).size(), 2u);
  EXPECT_EQ(RowsOf(print, "TbFios", {"CODIGO", "CONSUMO"}), (Lines{"Y1 | 26.4", "Y2 | 17.6"}));
  EXPECT_EQ(RowsOf(print, "TbRolos", {"NR"}), (Lines{"001", "002"}));
}

TEST_F(Printout, ListsTheYarnsOfAllItemsOnce) {
  Load(SavedOrder({{"F1", "01", "100"}, {"FM", "01", "1000"}, {"F2", "01", "9"}}));
  // 60 and 40 % of 100 kg; half of 1,000 m at 0.25 kg.
  const Lines yarns = {"Y1 | CR | 185", "Y2 | CR | 165"};
  EXPECT_EQ(RowsOf(Printed(), "TbFios", {"CODIGO", "COR", "CONSUMO"}), yarns);
  EXPECT_EQ(RowsOf(Printed(), "TbFios", {"CODIGO", "COR", "CONSUMO"}), yarns);
  EXPECT_EQ(Shown("TbFios", {"Codigo", "Cor", "Consumo"}), yarns);
}

TEST_F(Printout, ListsAsManyRollsAsTheItemsComeBackIn) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F1", "02", "22"}, {"F2", "01", "50"}});
  Load(number);
  const Print print = Printed();
  // 100 kg in rolls of 22 are five, 22 kg one; nobody knows what a roll of F2 weighs.
  EXPECT_EQ(RowsOf(print, "TbRolos", {"NUMERO", "NR", "CODIGO", "COR"}),
            (Lines{number + " | 001 | F1 | 01", number + " | 002 | F1 | 01", number + " | 003 | F1 | 01",
                   number + " | 004 | F1 | 01", number + " | 005 | F1 | 01", number + " | 006 | F1 | 02"}));
}

TEST_F(Printout, TheListOfRollsEndsWhereItsNumbersDo) {
  Load(SavedOrder({{"F1", "01", "999999999999"}, {"F1", "02", "100"}}));
  const Lines numbers = RowsOf(Printed(), "TbRolos", {"NR"});
  ASSERT_EQ(numbers.size(), 9999u);
  EXPECT_EQ(numbers[999], "1000");
  EXPECT_EQ(numbers.back(), "9999");
}

TEST_F(Printout, HasTheStitchPatternsInTheirOrder) {
  const auto pattern = [&](const char* fabric, const char* colour, int order, const char* yarn, double needles) {
    mill_.Insert("RAPORT", {{"MATERIAL", fabric},
                            {"COR", colour},
                            {"ORDEM", order},
                            {"CODIGO", yarn},
                            {"COR_I", "CR"},
                            {"MILIMETROS", needles},
                            {"OBSERVACAO", "meia malha, repetição"}});
  };
  pattern("F1", "01", 2, "Y2", 3.1);
  pattern("F1", "01", 1, "Y1", 2.9);
  pattern("F1", "02", 1, "Y1", 2.9);
  pattern("F3", "01", 1, "Y1", 2.9);
  mill_.Insert("CADRAPORT", {{"CODIGO", "Y1"}, {"MILIMETROS", 2.9}, {"ALIMENTADORES", 48}});
  Load(SavedOrder({{"F1", "01", "100"}, {"F2", "01", "10"}}));
  const Print print = Printed();
  EXPECT_EQ(RowsOf(print, "QryRaport",
                   {"MATERIAL", "COR", "ORDEM", "CODIGO", "DESCRICAO", "COR_I", "DESC_COR", "MILIMETROS",
                    "ALIMENTADORES", "OBSERVACAO"}),
            (Lines{"F1 | 01 | 1 | Y1 | Fio 30/1 algodão | CR | Cru | 2.9 | 48 | meia malha, repetição",
                   "F1 | 01 | 2 | Y2 | Fio 24/1 poliéster | CR | Cru | 3.1 |  | meia malha, repetição"}));
}

TEST_F(Printout, FabricsWithQuotesAndAccentsArePrinted) {
  mill_.Insert("MATERIAL", {{"CODIGO", "O'AÇO"}, {"DESCRICAO", "Malha d'água"}, {"UNIDADE", "KG"}, {"PESO", 1}});
  mill_.Insert("MAT_ITEN", {{"CODIGO", "O'AÇO"}, {"COR", "01"}, {"DEPOSITO", "DF"}, {"LOTE", "000000"}});
  mill_.Insert("CADCORTI", {{"TIPO", "C"}, {"CODIGO", "O'AÇO"}, {"CODCLI", "M00001"}, {"COR", "0"}, {"CUSTO", 1}});
  mill_.Insert("RAPORT", {{"MATERIAL", "O'AÇO"}, {"COR", "01"}, {"ORDEM", 1}, {"CODIGO", "Y1"}, {"COR_I", "CR"}});
  Load(SavedOrder({{"O'AÇO", "01", "10"}}));
  const Print print = Printed();
  EXPECT_EQ(RowsOf(print, "QryRelatorio", {"CODIGO", "DESCRICAO"}), Lines{"O'AÇO | Malha d'água"});
  EXPECT_EQ(RowsOf(print, "QryRaport", {"MATERIAL"}), Lines{"O'AÇO"});
}

TEST_F(Printout, OfAnOrderWithoutItemsIsItsHeader) {
  mill_.Insert("TECEL", {{"NUMERO", "000777"}, {"MALHARIA", "M00001"}, {"SITUACAO", "A"}});
  Load("000777");
  const Print print = Printed();
  EXPECT_EQ(RowsOf(print, "QryRelatorio", {"NUMERO", "NOME", "CODIGO"}), Lines{"000777 | Malharia Aurora | "});
  EXPECT_EQ(RowsOf(print, "TbFios", {"CODIGO"}), Lines());
  EXPECT_EQ(RowsOf(print, "QryRaport", {"MATERIAL"}), Lines());
  EXPECT_EQ(RowsOf(print, "TbRolos", {"NR"}), Lines());
  for (const std::string& sql : mill_.TakeStatements()) EXPECT_EQ(sql.find("IN ()"), std::string::npos) << sql;
}

TEST_F(Printout, OfALockedOrderIsNoDifferentAndLeavesItLocked) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  mill_.Exec("UPDATE {TECEL} SET SITUACAO = 'B'");
  Load(number);
  EXPECT_EQ(RowsOf(Printed(), "QryRelatorio", {"CODIGO", "SITUACAO"}), Lines{"F1 | B"});
  EXPECT_FALSE(Screen().DBGrid6.Enabled());
}

TEST_F(Printout, WritesNothing) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"FM", "01", "1000"}});
  Load(number);
  const Lines stored = Everything();
  mill_.TakeStatements();
  Printed();
  for (const std::string& sql : mill_.TakeStatements()) {
    EXPECT_TRUE(sql.starts_with("SELECT") || sql.find("TEC_TRAVA") != std::string::npos) << sql;
  }
  EXPECT_EQ(Everything(), stored);
  EXPECT_EQ(mill_.Scalar("SELECT SITUACAO FROM {TECEL}").AsText(), "A");
  EXPECT_EQ(app::books::CheckBooks(mill_.Db()), Lines());
}

// --- the screen ------------------------------------------------------------------------------------------------------

TEST_F(Printout, LeavesYarnsLotsAndWhatIsTickedAsTheyWere) {
  const std::string number = SavedOrder({{"F1", "01", "100"}, {"F3", "01", "10"}});
  Load(number);
  Stand("TbFios", {{"Codigo", "Y2"}});
  Type("EdtFilDeposito", "");
  Stand("TbEstoque", {{"Codigo", "Y2"}, {"Lote", "L3"}});
  ASSERT_EQ(mill_.Set(Screen(), "TbEstoque", {{"Sel", "S"}, {"Qtde_Res", "12"}}), ActResult::kDone);
  // Elsewhere the stock moves and the order's fabric gets another yarn: what is on the screen was loaded before.
  mill_.Exec("UPDATE {MAT_ITEN} SET QTDE = 1 WHERE CODIGO = 'Y2' AND LOTE = 'L1'");
  mill_.Exec("UPDATE {COMP_MATERIAL} SET CODIGO = 'Y3' WHERE MATERIAL = 'F3' AND CODIGO = 'Y1'");
  const Lines yarns = YarnsOnScreen();
  const Lines lots = Shown("TbEstoque", {"Codigo", "Lote", "Deposito", "Sel", "Qtde_Res"});
  const std::string lot = Screen().TbEstoque["Lote"].AsText();
  mill_.Person().Answer("alterações não gravadas", "yes");
  EXPECT_EQ(Click("BtnImprimir"), ActResult::kDone);
  mill_.Messages();
  const auto prints = mill_.Equipment().TakePrints();
  ASSERT_EQ(prints.size(), 1u);
  EXPECT_EQ(RowsOf(prints[0], "TbFios", {"CODIGO", "QTDE"}), (Lines{"Y1 | 180", "Y2 | 41", "Y3 | 85"}));
  EXPECT_EQ(YarnsOnScreen(), yarns);
  EXPECT_EQ(Screen().TbFios["Codigo"].AsText(), "Y2");
  EXPECT_EQ(Shown("TbEstoque", {"Codigo", "Lote", "Deposito", "Sel", "Qtde_Res"}), lots);
  EXPECT_EQ(Screen().TbEstoque["Lote"].AsText(), lot);
  EXPECT_FALSE(Screen().QryRelatorio.Active());
  EXPECT_TRUE(Screen().HasUnsavedWork());
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Reservations(number), Lines{"Y2 | CR | D2 | L3 | 12 | 0 | T |  | "});
}

TEST_F(Printout, OfUnsavedChangesIsAskedAboutAndShowsWhatIsStored) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  Stand("TbItens", {{"Codigo", "F1"}});
  ASSERT_EQ(mill_.Set(Screen(), "TbItens", {{"Qtde", "250"}}), ActResult::kDone);
  ASSERT_EQ(AddItem("F2", "01", "5"), ActResult::kDone);
  ASSERT_EQ(Type("EdtFicha", "nova"), ActResult::kDone);
  const Lines items = Shown("TbItens", {"Codigo", "Qtde"});
  EXPECT_EQ(Click("BtnImprimir"), ActResult::kDone);  // No is the default
  EXPECT_EQ(mill_.Messages(), Lines{"A ordem tem alterações não gravadas, que não sairão na impressão.\n"
                                    "Deseja imprimir assim mesmo?"});
  EXPECT_TRUE(mill_.Equipment().TakePrints().empty());
  mill_.Person().Answer("Deseja imprimir assim mesmo?", "yes");
  EXPECT_EQ(Click("BtnImprimir"), ActResult::kDone);
  mill_.Messages();
  const auto prints = mill_.Equipment().TakePrints();
  ASSERT_EQ(prints.size(), 1u);
  EXPECT_EQ(RowsOf(prints[0], "QryRelatorio", {"CODIGO", "QTDE", "FICHA"}), Lines{"F1 | 100 | "});
  EXPECT_EQ(RowsOf(prints[0], "TbFios", {"CODIGO", "CONSUMO"}), (Lines{"Y1 | 60", "Y2 | 40"}));
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Qtde"}), items);
  EXPECT_EQ(Text("EdtFicha"), "nova");
  EXPECT_TRUE(Screen().HasUnsavedWork());
}

TEST_F(Printout, IsRefusedWithoutANumber) {
  Refused("Informe o número da ordem.");
  EXPECT_EQ(FocusedName(), "EdtNumero");
}

TEST_F(Printout, IsRefusedForAnOrderThatIsNotStored) {
  const std::string number = NewOrder();
  ASSERT_EQ(AddItem("F1", "01", "10"), ActResult::kDone);
  Refused("A ordem " + number + " não está gravada. Grave-a antes de imprimir.");
  EXPECT_EQ(Shown("TbItens", {"Codigo"}), Lines{"F1"});
}

TEST_F(Printout, IsRefusedForAnOrderThatSomebodyDeleted) {
  const std::string number = SavedOrder({{"F1", "01", "100"}});
  Load(number);
  const Lines yarns = YarnsOnScreen();
  mill_.Exec("DELETE FROM {TECEL}");
  Refused("A ordem " + number + " não está gravada. Grave-a antes de imprimir.");
  EXPECT_EQ(YarnsOnScreen(), yarns);
}

TEST_F(Printout, ThatFailsIsToldAndChangesNothing) {
  Load(SavedOrder({{"F1", "01", "100"}, {"FM", "01", "10"}}));
  Stand("TbFios", {{"Codigo", "Y2"}});
  const Lines yarns = YarnsOnScreen();
  mill_.Equipment().fail_next = "Não há impressora.";
  EXPECT_EQ(Click("BtnImprimir"), ActResult::kFailed);
  EXPECT_EQ(Errors(), Lines{"Não há impressora."});
  EXPECT_EQ(YarnsOnScreen(), yarns);
  EXPECT_EQ(Screen().TbFios["Codigo"].AsText(), "Y2");
  EXPECT_FALSE(Screen().QryRelatorio.Active());
  mill_.Messages();
  Printed();
}

TEST_F(Printout, FailingAtAnyStatementPrintsNothingAndLeavesTheScreen) {
  mill_.Insert("RAPORT", {{"MATERIAL", "F1"}, {"COR", "01"}, {"ORDEM", 1}, {"CODIGO", "Y1"}, {"COR_I", "CR"}});
  Load(SavedOrder({{"F1", "01", "100"}, {"FM", "01", "10"}}));
  Stand("TbFios", {{"Codigo", "Y2"}});
  const Lines yarns = YarnsOnScreen();
  const Lines lots = Shown("TbEstoque", {"Codigo", "Lote", "Deposito"});
  const Lines stored = Everything();
  int failed = 0;
  for (int n = 1;; ++n) {
    ASSERT_LT(n, 50);
    mill_.FailStatement(n);
    const ActResult result = Click("BtnImprimir");
    if (!mill_.StopFailing()) {
      EXPECT_EQ(result, ActResult::kDone);
      break;
    }
    ++failed;
    EXPECT_EQ(result, ActResult::kFailed) << n;
    EXPECT_EQ(Errors(), Lines{"falha provocada"}) << n;
    mill_.Messages();
    EXPECT_TRUE(mill_.Equipment().TakePrints().empty()) << n;
    EXPECT_EQ(YarnsOnScreen(), yarns) << n;
    EXPECT_EQ(Screen().TbFios["Codigo"].AsText(), "Y2") << n;
    EXPECT_EQ(Shown("TbEstoque", {"Codigo", "Lote", "Deposito"}), lots) << n;
    EXPECT_EQ(Everything(), stored) << n;
  }
  EXPECT_GE(failed, 5);
  EXPECT_EQ(mill_.Equipment().TakePrints().size(), 1u);
}

}  // namespace
}  // namespace test
