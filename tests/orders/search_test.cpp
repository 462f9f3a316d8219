// The search on the tab "Acesso", and the way from its list to an order.
#include "order_mill.h"

namespace test {
namespace {

class Search : public OrderTest {
 protected:
  /// A stored order; texts in the order of the columns.
  void Order(const char* number, const char* day, const char* mill = "M00001") {
    mill_.Insert("TECEL", {{"NUMERO", number}, {"DT_INICIO", day}, {"MALHARIA", mill}, {"SITUACAO", "A"}});
  }
  void Item(const char* number, const char* code, const char* colour, double quantity, double written_off = 0,
            const host::Value& closed = {}) {
    mill_.Insert("TECEL_ITEN", {{"NUMERO", number},
                                {"CODIGO", code},
                                {"COR", colour},
                                {"QTDE", quantity},
                                {"QTDE_B", written_off},
                                {"BAIXADA", closed}});
  }
  void Header(const char* number, const char* column, const char* text) {
    mill_.Exec(std::string("UPDATE {TECEL} SET ") + column + " = '" + text + "' WHERE NUMERO = '" + number + "'");
  }
  /// Asks and hands back number, fabric, quantity and written off of each row.
  Lines Found() {
    EXPECT_EQ(Click("BtnAConsultar"), ActResult::kDone);
    EXPECT_EQ(mill_.Messages(), Lines());
    return Shown("TbAcesso", {"NUMERO", "CODIGO", "QTDE", "BAIXADO"});
  }
  Lines FoundWith(const char* input, const char* text) {
    EXPECT_EQ(Type(input, text), ActResult::kDone);
    const Lines found = Found();
    EXPECT_EQ(Type(input, ""), ActResult::kDone);
    return found;
  }
  void Choose(const char* caption) { EXPECT_EQ(mill_.Desk().Choose(Screen().RgASituacao, caption), ActResult::kDone); }
};

constexpr const char* kSelect =
    "SELECT DISTINCT TECEL.NUMERO, TECEL.MALHARIA, CLIENTE.NOME, TECEL_ITEN.CODIGO, MATERIAL.DESCRICAO, "
    "TECEL.MAQUINA, MAQUINA.DESCRICAO AS DES_MAQUINA, SUM(TECEL_ITEN.QTDE) AS QTDE, SUM(TECEL_ITEN.QTDE_B) AS BAIXADO, "
    "TECEL.DT_INICIO, TECEL.PERIODO FROM TECEL TECEL "
    "LEFT JOIN ENTIDADE CLIENTE ON (TECEL.MALHARIA = CLIENTE.CODCLI) "
    "LEFT JOIN MAQUINA MAQUINA ON (TECEL.MAQUINA = MAQUINA.MAQUINA) "
    "LEFT JOIN TECEL_ITEN TECEL_ITEN ON (TECEL.NUMERO = TECEL_ITEN.NUMERO) "
    "LEFT JOIN MATERIAL MATERIAL ON (MATERIAL.CODIGO = TECEL_ITEN.CODIGO) ";
constexpr const char* kPeriod = "WHERE TECEL.DT_INICIO >= '03/01/2026' AND TECEL.DT_INICIO <= '03/10/2026' ";
constexpr const char* kGroup =
    "GROUP BY TECEL.NUMERO, TECEL.MALHARIA, CLIENTE.NOME, TECEL_ITEN.CODIGO, MATERIAL.DESCRICAO, TECEL.MAQUINA, "
    "MAQUINA.DESCRICAO, TECEL.DT_INICIO, TECEL.PERIODO ORDER BY TECEL.NUMERO DESC";

TEST_F(Search, TheTabAsItOpens) {
  EXPECT_EQ(Screen().PageControl1.ActivePage(), 1);
  EXPECT_EQ(Text("EdtADe"), "01/03/2026");
  EXPECT_EQ(Text("EdtAAte"), "10/03/2026");
  EXPECT_EQ(Screen().RgASituacao.SelectedText(), "Todas");
  EXPECT_TRUE(Screen().TbAcesso.IsEmpty());
  const Cells captions = {{"EdtADe", "De"},
                          {"EdtAAte", "Até"},
                          {"EdtAMalharia", "Malharia"},
                          {"EdtAPrazo", "Prazo Entrega"},
                          {"EdtAMaquina", "Máquina"},
                          {"EdtAMaterial", "Material"},
                          {"EdtAFicha", "Ficha"},
                          {"EdtAFluxo", "Fluxo"},
                          {"EdtACor", "Cor"},
                          {"EdtAPedido", "Pedido"},
                          {"RgASituacao", "Situação"},
                          {"EdtAObs", "Observação"},
                          {"BtnAConsultar", "Consultar"}};
  for (const auto& [name, caption] : captions) {
    EXPECT_EQ(dynamic_cast<host::Control&>(*Screen().FindComponent(name)).Caption(), caption) << name;
  }
  EXPECT_EQ(Text("LblAPeriodo"), "Período");
  EXPECT_EQ(Screen().RgASituacao.Items(), (Lines{"Todas", "Pendentes", "Baixadas"}));
}

TEST_F(Search, ThePeriodAlone) {
  mill_.TakeStatements();
  EXPECT_EQ(Click("BtnAConsultar"), ActResult::kDone);
  EXPECT_EQ(mill_.TakeStatements(), Lines{std::string(kSelect) + kPeriod + kGroup});
}

TEST_F(Search, EveryConditionInItsPlace) {
  const Cells typed = {{"EdtADe", "05/02/2026"}, {"EdtAAte", "31/12/2026"}, {"EdtAMalharia", "M00001"},
                       {"EdtAPrazo", "30"},      {"EdtAMaquina", "MQ1"},    {"EdtAMaterial", "F1"},
                       {"EdtAFicha", "F-77"},    {"EdtAFluxo", "FL1"},      {"EdtACor", "02"},
                       {"EdtAPedido", "PV0001"}, {"EdtAObs", "d'água"}};
  for (const auto& [input, text] : typed) EXPECT_EQ(Type(input, text), ActResult::kDone) << input;
  const std::string before = std::string(kSelect) +
                             "WHERE TECEL.DT_INICIO >= '02/05/2026' AND TECEL.DT_INICIO <= '12/31/2026' "
                             "AND TECEL.MALHARIA = 'M00001' AND TECEL.PERIODO = '30' AND TECEL.MAQUINA = 'MQ1' "
                             "AND TECEL_ITEN.CODIGO = 'F1' AND TECEL.FICHA = 'F-77' AND TECEL.FLUXO = 'FL1' "
                             "AND TECEL_ITEN.COR = '02' AND TECEL_ITEN.PEDIDO = 'PV0001' ";
  const std::string after =
      std::string("AND UPPER(CAST(TECEL.OBSERVACAO AS VARCHAR(4000))) LIKE UPPER('%d''água%') ") + kGroup;
  const Cells states = {{"Todas", ""},
                        {"Pendentes",
                         "AND (TECEL_ITEN.BAIXADA <> 'S' OR TECEL_ITEN.BAIXADA IS NULL) "
                         "AND (TECEL_ITEN.QTDE-TECEL_ITEN.QTDE_B > 0) "},
                        {"Baixadas", "AND TECEL_ITEN.BAIXADA = 'S' "}};
  for (const auto& [caption, condition] : states) {
    Choose(caption.c_str());
    mill_.TakeStatements();
    EXPECT_EQ(Click("BtnAConsultar"), ActResult::kDone);
    EXPECT_EQ(mill_.TakeStatements(), Lines{before + condition + after}) << caption;
  }
}

TEST_F(Search, OneRowPerOrderAndFabricTheNewestFirst) {
  Order("000001", "2026-03-01");
  Item("000001", "F1", "01", 100, 10);
  Item("000001", "F1", "02", 50.5, 2.25);
  Item("000001", "F2", "01", 7);
  Order("000002", "2026-03-10");
  Item("000002", "F1", "01", 30);
  EXPECT_EQ(Found(), (Lines{"000002 | F1 | 30 | 0", "000001 | F1 | 150.5 | 12.25", "000001 | F2 | 7 | 0"}));
  EXPECT_EQ(Shown("TbAcesso", {"NUMERO", "MALHARIA", "NOME", "DESCRICAO", "DT_INICIO"})[0],
            "000002 | M00001 | Malharia Aurora | Meia malha 30/1 PV | 10/03/2026");
  // Quantities as people read them, with their sums.
  EXPECT_EQ(Screen().TbAcesso["QTDE"].DisplayText(), "30,000");
  for (const auto& column : Screen().DBGrid1.Columns()) {
    EXPECT_EQ(column.total, column.field == "QTDE" || column.field == "BAIXADO") << column.field;
  }
  EXPECT_TRUE(Screen().DBGrid1.ReadOnly());
}

TEST_F(Search, BothDaysOfThePeriodBelongToIt) {
  Order("000001", "2026-02-28");
  Order("000002", "2026-03-01");
  Order("000003", "2026-03-10");
  Order("000004", "2026-03-11");
  EXPECT_EQ(Found(), (Lines{"000003 |  |  | ", "000002 |  |  | "}));
  // An order without date has the zero date, which is also what an empty input asks for.
  Order("000005", "1899-12-30");
  Type("EdtADe", "");
  EXPECT_EQ(Found().size(), 4u);
  Type("EdtAAte", "");
  EXPECT_EQ(Found(), Lines{"000005 |  |  | "});
}

TEST_F(Search, AnOrderWithoutItemsIsListedOnceWithAnEmptyFabric) {
  Order("000001", "2026-03-05");
  EXPECT_EQ(Found(), Lines{"000001 |  |  | "});
  // Whatever is asked of the items leaves it out.
  EXPECT_EQ(FoundWith("EdtAMaterial", "F1"), Lines());
  Choose("Pendentes");
  EXPECT_EQ(Found(), Lines());
  Choose("Baixadas");
  EXPECT_EQ(Found(), Lines());
}

TEST_F(Search, PendingAndClosedItems) {
  Order("000001", "2026-03-05");
  Item("000001", "F1", "01", 100, 40);      // half done
  Item("000001", "F1", "02", 50, 10, "S");  // closed with a rest
  Item("000001", "F2", "01", 20, 20);       // complete, not closed
  Item("000001", "F2", "02", 20, 25, "N");  // more than complete
  Item("000001", "F3", "01", 30, 0, "N");   // not begun
  Item("000001", "FM", "01", 30, 30, "S");  // complete and closed
  Choose("Pendentes");
  EXPECT_EQ(Found(), (Lines{"000001 | F1 | 100 | 40", "000001 | F3 | 30 | 0"}));
  Choose("Baixadas");
  EXPECT_EQ(Found(), (Lines{"000001 | F1 | 50 | 10", "000001 | FM | 30 | 30"}));
  Choose("Todas");
  EXPECT_EQ(Found(), (Lines{"000001 | F1 | 150 | 50", "000001 | F2 | 40 | 45", "000001 | F3 | 30 | 0",
                            "000001 | FM | 30 | 30"}));
}

TEST_F(Search, EachFilterFindsItsOrder) {
  const char* numbers[] = {"000001", "000002"};
  for (const char* number : numbers) Order(number, "2026-03-05", "M00004");
  Item("000001", "F1", "02", 10);
  Item("000002", "F2", "01", 20);
  Header("000001", "MALHARIA", "M00001");
  Header("000001", "PERIODO", "30");
  Header("000001", "MAQUINA", "MQ1");
  Header("000001", "FICHA", "F-77");
  Header("000001", "FLUXO", "FL1");
  mill_.Exec("UPDATE {TECEL_ITEN} SET PEDIDO = 'PV0001' WHERE NUMERO = '000001'");
  const Cells filters = {{"EdtAMalharia", "M00001"}, {"EdtAPrazo", "30"},     {"EdtAMaquina", "MQ1"},
                         {"EdtAMaterial", "F1"},     {"EdtAFicha", "F-77"},   {"EdtAFluxo", "FL1"},
                         {"EdtACor", "02"},          {"EdtAPedido", "PV0001"}};
  for (const auto& [input, text] : filters) {
    EXPECT_EQ(FoundWith(input.c_str(), text.c_str()), Lines{"000001 | F1 | 10 | 0"}) << input;
    EXPECT_EQ(FoundWith(input.c_str(), "X"), Lines()) << input;
  }
  EXPECT_EQ(Found().size(), 2u);
  // Only the first one's machine has a description.
  EXPECT_EQ(Shown("TbAcesso", {"NUMERO", "MAQUINA", "DES_MAQUINA", "PERIODO"}),
            (Lines{"000002 |  |  | ", "000001 | MQ1 | Circular 30\" 28 | 30"}));
}

TEST_F(Search, TheFilterOfTheItemsActsBeforeTheSums) {
  Order("000001", "2026-03-05");
  Item("000001", "F1", "01", 100);
  Item("000001", "F1", "02", 11);
  EXPECT_EQ(FoundWith("EdtACor", "02"), Lines{"000001 | F1 | 11 | 0"});
}

TEST_F(Search, RemarksAreFoundAnywhereWithoutRegardToCase) {
  Order("000001", "2026-03-05");
  Order("000002", "2026-03-05");
  Header("000001", "OBSERVACAO", "Entregar à TARDE, com atenção");
  for (const char* text : {"entregar", "à tarde", "ATENÇÃO", "com"}) {
    EXPECT_EQ(FoundWith("EdtAObs", text), Lines{"000001 |  |  | "}) << text;
  }
  EXPECT_EQ(FoundWith("EdtAObs", "manhã"), Lines());
}

TEST_F(Search, DescriptionsAndLookupsOfTheFilters) {
  const std::vector<std::vector<std::string>> served = {
      {"EdtAMalharia", "LblAMalharia", "PqAMalharia", "ENTIDADE", "CODCLI", "M00002", "Malharia Boa Vista"},
      {"EdtAPrazo", "LblAPrazo", "PqAPrazo", "TABPRZ", "PRAZO", "30", "30 dias"},
      {"EdtAMaquina", "LblAMaquina", "PqAMaquina", "MAQUINA", "MAQUINA", "MQ2", "Circular 34\" 24"},
      {"EdtAMaterial", "LblAMaterial", "PqAMaterial", "MATERIAL", "CODIGO", "F9", "Piquet fora de linha"},
      {"EdtAFluxo", "LblAFluxo", "PqAFluxo", "FLUXOTIN", "CODIGO", "FL1", "Malha crua"},
      {"EdtACor", "LblACor", "PqACor", "CADCOR", "COR", "03", "Vermelho"}};
  for (const auto& row : served) {
    auto& input = dynamic_cast<host::Edit&>(*Screen().FindComponent(row[0]));
    const auto& lookup = dynamic_cast<host::TPesquisa&>(*Screen().FindComponent(row[2]));
    EXPECT_EQ(input.Lookup, &lookup);
    EXPECT_EQ(lookup.Table(), row[3]);
    EXPECT_EQ(lookup.KeyColumn(), row[4]);
    EXPECT_EQ(Type(row[0], "zzz"), ActResult::kDone);  // old orders may hold codes that are gone: nothing is refused
    EXPECT_EQ(Text(row[1]), "");
    mill_.Person().Pick(row[2], row[5]);
    EXPECT_EQ(mill_.Desk().Enter(input), ActResult::kDone);
    EXPECT_EQ(mill_.Desk().PressKey(Screen(), host::Key::kF4), ActResult::kDone);
    EXPECT_EQ(Text(row[0]), row[5]);
    EXPECT_EQ(Text(row[1]), row[6]);
  }
  EXPECT_EQ(mill_.Person().TakeUnexpected(), Lines());
}

TEST_F(Search, ASearchThatFailsKeepsTheList) {
  Order("000001", "2026-03-05");
  EXPECT_EQ(Found().size(), 1u);
  mill_.FailStatement(1);
  EXPECT_EQ(Click("BtnAConsultar"), ActResult::kFailed);
  EXPECT_TRUE(mill_.StopFailing());
  EXPECT_EQ(Errors(), Lines{"falha provocada"});
  EXPECT_EQ(Shown("TbAcesso", {"NUMERO"}), Lines{"000001"});
}

// --- from the list to the order ------------------------------------------------------------------------------------

class FromTheList : public Search {
 protected:
  void SetUp() override {
    Search::SetUp();
    for (const char* number : {"000001", "000002", "000003"}) {
      Order(number, "2026-03-05");
      Header(number, "FICHA", number);
    }
    Item("000001", "F1", "01", 10);
    Item("000001", "F2", "01", 10);
    Item("000002", "F1", "01", 20);
    Item("000003", "F1", "01", 30);
    EXPECT_EQ(Found().size(), 4u);  // 3, 2, 1 with F1, 1 with F2
  }
};

TEST_F(FromTheList, ADoubleClickPutsTheNumberInAndTheNextActLoadsTheOrder) {
  EXPECT_EQ(FocusedName(), "DBGrid1");
  ASSERT_EQ(mill_.Desk().SelectRow(Screen().DBGrid1, 2), ActResult::kDone);
  mill_.TakeStatements();
  EXPECT_EQ(mill_.Desk().DblClick(Screen().DBGrid1), ActResult::kDone);
  EXPECT_EQ(Screen().PageControl1.ActivePage(), 1);
  EXPECT_EQ(Text("EdtNumero"), "000002");
  EXPECT_EQ(FocusedName(), "EdtNumero");
  EXPECT_EQ(mill_.TakeStatements(), Lines());  // nothing is loaded yet
  EXPECT_EQ(mill_.Desk().PressKey(Screen(), host::Key::kEnter), ActResult::kDone);
  EXPECT_EQ(Text("EdtFicha"), "000002");
  EXPECT_EQ(Shown("TbItens", {"Codigo", "Qtde"}), Lines{"F1 | 20"});
}

TEST_F(FromTheList, EnterOpensTheRowUnderTheCursor) {
  ASSERT_EQ(mill_.Desk().SelectRow(Screen().DBGrid1, 3), ActResult::kDone);
  EXPECT_EQ(mill_.Desk().GridKey(Screen().DBGrid1, host::Key::kEnter), ActResult::kDone);
  EXPECT_EQ(Text("EdtNumero"), "000001");
  EXPECT_EQ(FocusedName(), "EdtNumero");
  EXPECT_EQ(Screen().PageControl1.ActivePage(), 1);
}

TEST_F(FromTheList, TheOrderOnTheScreenIsNotSavedUnderTheNumberPicked) {
  Load("000003");
  Type("EdtFicha", "mudou");
  ASSERT_EQ(mill_.Desk().SelectRow(Screen().DBGrid1, 2), ActResult::kDone);
  EXPECT_EQ(mill_.Desk().DblClick(Screen().DBGrid1), ActResult::kDone);
  EXPECT_EQ(Click("BtnGravar"), ActResult::kDone);
  EXPECT_EQ(Stored("SELECT * FROM {TECEL} ORDER BY NUMERO", {"NUMERO", "FICHA"}),
            (Lines{"000001 | 000001", "000002 | 000002", "000003 | 000003"}));
  EXPECT_EQ(Items("000002"), Lines{"F1 | 01 |  | 0 | 20 |  | 0 | 0 | "});
}

TEST_F(FromTheList, TheArrowsStepThroughTheList) {
  Load("000003");
  const auto step = [&](const char* arrow) {
    EXPECT_EQ(Click(arrow), ActResult::kDone);
    EXPECT_EQ(FocusedName(), "EdtNumero");
    return Text("EdtNumero");
  };
  EXPECT_EQ(step("SpeedButton4"), "000002");
  EXPECT_EQ(Text("EdtFicha"), "000003");  // not left yet
  EXPECT_EQ(step("SpeedButton4"), "000001");
  EXPECT_EQ(Text("EdtFicha"), "000002");
  EXPECT_EQ(step("SpeedButton4"), "000001");  // its second fabric
  EXPECT_EQ(step("SpeedButton4"), "000001");  // the end of the list
  EXPECT_EQ(step("SpeedButton1"), "000001");
  EXPECT_EQ(step("SpeedButton1"), "000002");
  EXPECT_EQ(step("SpeedButton1"), "000003");
  EXPECT_EQ(step("SpeedButton1"), "000003");  // its beginning
}

TEST_F(FromTheList, WithoutAListNothingHappens) {
  Load("000002");
  Type("EdtADe", "01/01/2020");
  Type("EdtAAte", "01/02/2020");
  EXPECT_EQ(Found(), Lines());
  mill_.Desk().Enter(Screen().EdtFicha);
  for (const char* arrow : {"SpeedButton1", "SpeedButton4"}) {
    EXPECT_EQ(Click(arrow), ActResult::kDone);
    EXPECT_EQ(Text("EdtNumero"), "000002");
    EXPECT_EQ(FocusedName(), arrow);
  }
  EXPECT_EQ(mill_.Desk().DblClick(Screen().DBGrid1), ActResult::kDone);
  EXPECT_EQ(Text("EdtNumero"), "000002");
  EXPECT_EQ(Screen().PageControl1.ActivePage(), 0);
}

}  // namespace
}  // namespace test
