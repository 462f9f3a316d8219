// Where the controls of the screen stand, how they are reached, and what the grids show of their numbers.
#include <set>

#include "order_mill.h"

namespace test {
namespace {

class Pages : public OrderTest {
 protected:
  std::string PageOf(const host::Control& control) {
    if (control.Pages() == nullptr) return "";
    return control.Pages()->Pages()[static_cast<std::size_t>(control.Page())];
  }
};

TEST_F(Pages, EveryControlStandsOnOne) {
  const std::set<std::string> search = {
      "EdtADe",      "EdtAAte",      "EdtAMalharia", "EdtAPrazo",   "EdtAMaquina",  "EdtAMaterial",  "EdtAFicha",
      "EdtAFluxo",   "EdtACor",      "EdtAPedido",   "RgASituacao", "EdtAObs",      "BtnAConsultar", "DBGrid1",
      "LblAPeriodo", "LblAMalharia", "LblAPrazo",    "LblAMaquina", "LblAMaterial", "LblAFluxo",     "LblACor"};
  std::size_t on_search = 0;
  for (const host::Component* component : Screen().Components()) {
    const auto* control = dynamic_cast<const host::Control*>(component);
    if (control == nullptr) continue;
    std::string expected = search.contains(control->Name()) ? "Acesso" : "Manutenção";
    if (control->Name() == "PageControl1") expected = "";
    if (control->Name() == "DBGrid6") expected = "Itens";
    if (control->Name() == "EdtObs") expected = "Observações";
    EXPECT_EQ(PageOf(*control), expected) << control->Name();
    if (expected == "Acesso") ++on_search;
  }
  EXPECT_EQ(on_search, search.size());
}

TEST_F(Pages, TabGoesThroughWhatIsInSight) {
  mill_.Desk().Enter(Screen().EdtDeposito);
  EXPECT_EQ(mill_.Desk().PressKey(Screen(), host::Key::kTab), ActResult::kDone);
  EXPECT_EQ(FocusedName(), "DBGrid6");
  EXPECT_EQ(mill_.Desk().ChoosePage(Screen().PageControl2, "Observações"), ActResult::kDone);
  mill_.Desk().Enter(Screen().EdtDeposito);
  EXPECT_EQ(mill_.Desk().PressKey(Screen(), host::Key::kTab), ActResult::kDone);
  EXPECT_EQ(FocusedName(), "EdtObs");
  EXPECT_EQ(mill_.Desk().ChoosePage(Screen().PageControl1, "Acesso"), ActResult::kDone);
  Lines order;
  for (int i = 0; i < 14; ++i) {
    EXPECT_EQ(mill_.Desk().MoveFocus(Screen(), false), ActResult::kDone);
    order.push_back(FocusedName());
  }
  EXPECT_EQ(order, (Lines{"EdtADe", "EdtAAte", "EdtAMalharia", "EdtAPrazo", "EdtAMaquina", "EdtAMaterial", "EdtAFicha",
                          "EdtAFluxo", "EdtACor", "EdtAPedido", "RgASituacao", "EdtAObs", "BtnAConsultar", "DBGrid1"}));
}

TEST_F(Pages, FunctionKeys) {
  mill_.Desk().Enter(Screen().EdtMalharia);
  EXPECT_EQ(mill_.Desk().PressKey(Screen(), host::Key::kF2), ActResult::kDone);
  EXPECT_EQ(Text("EdtNumero"), "000001");
  mill_.Person().Pick("PqNumero", "000009");
  mill_.Insert("TECEL", {{"NUMERO", "000009"}, {"DT_INICIO", "2026-03-02"}});
  EXPECT_EQ(mill_.Desk().PressKey(Screen(), host::Key::kF3), ActResult::kDone);
  EXPECT_EQ(Text("EdtNumero"), "000009");
  // On the other tab the same key searches.
  EXPECT_EQ(mill_.Desk().Enter(Screen().EdtAFicha), ActResult::kDone);
  EXPECT_EQ(mill_.Desk().PressKey(Screen(), host::Key::kF3), ActResult::kDone);
  EXPECT_EQ(Shown("TbAcesso", {"NUMERO"}), Lines{"000009"});
}

TEST_F(Pages, KeysOfTheGridsAreTold) {
  EXPECT_TRUE(Screen().KeyHints().empty());
  mill_.Desk().Enter(Screen().DBGrid1);
  ASSERT_EQ(Screen().KeyHints().size(), 1u);
  EXPECT_EQ(Screen().KeyHints()[0].key, host::Key::kEnter);
  mill_.Desk().Enter(Screen().DBGrid6);
  ASSERT_EQ(Screen().KeyHints().size(), 1u);
  EXPECT_EQ(Screen().KeyHints()[0].key, host::Key::kDelete);
}

TEST_F(Pages, EveryInputWithALookupHasItAtHand) {
  std::set<std::string> served;
  for (const host::Component* component : Screen().Components()) {
    const auto* input = dynamic_cast<const host::Edit*>(component);
    if (input != nullptr && input->Lookup != nullptr) served.insert(input->Name() + " " + input->Lookup->Name());
  }
  EXPECT_EQ(served, (std::set<std::string>{"EdtNumero PqNumero", "EdtMalharia PqMalharia", "EdtPrazo PqPrazo",
                                           "EdtMaquina PqMaquina", "EdtFluxo PqFluxo", "EdtDeposito PqDeposito",
                                           "EdtAMalharia PqAMalharia", "EdtAPrazo PqAPrazo", "EdtAMaquina PqAMaquina",
                                           "EdtAMaterial PqAMaterial", "EdtAFluxo PqAFluxo", "EdtACor PqACor"}));
}

TEST_F(Pages, MarksOfTheColumns) {
  const auto marked = [](const host::Grid& grid, bool host::GridColumn::*mark) {
    Lines fields;
    for (const auto& column : grid.Columns()) {
      if (column.*mark) fields.push_back(column.field);
    }
    return fields;
  };
  EXPECT_EQ(marked(Screen().DBGrid6, &host::GridColumn::lookup), (Lines{"Codigo", "Cor"}));
  EXPECT_EQ(marked(Screen().DBGrid6, &host::GridColumn::total), (Lines{"Qtde", "Qtde_B", "Qtde_Rolo"}));
  EXPECT_EQ(marked(Screen().GrdFios, &host::GridColumn::total), Lines{"Consumo"});
  EXPECT_EQ(marked(Screen().GrdEstoque, &host::GridColumn::total),
            (Lines{"Qtde", "Qtde_Res", "Qtde_Reservado", "Qtde_B", "Saldo_Reserva"}));
}

TEST_F(Pages, NumbersAsPeopleReadThem) {
  const std::string number = SavedOrder({{"F1", "01", "1250,5"}});
  Load(number);
  const auto shown = [](const host::Dataset& rows, const char* field) { return rows[field].DisplayText(); };
  EXPECT_EQ(shown(Screen().TbItens, "Qtde"), "1250,500");
  EXPECT_EQ(shown(Screen().TbItens, "Qtde_B"), "0,000");
  EXPECT_EQ(shown(Screen().TbItens, "Custo"), "5,0000");
  EXPECT_EQ(shown(Screen().TbItens, "Largura"), "1,75");
  EXPECT_EQ(shown(Screen().TbItens, "Ciclos"), "0");
  EXPECT_EQ(shown(Screen().TbItens, "Qtde_Rolo"), "57");
  EXPECT_EQ(shown(Screen().TbFios, "Consumo"), "750,3");
  EXPECT_EQ(shown(Screen().TbFios, "Consumo_Total"), "750,300");
  EXPECT_EQ(shown(Screen().TbFios, "Qtde"), "180,000");
  EXPECT_EQ(shown(Screen().TbEstoque, "Qtde"), "100,000");
}

}  // namespace
}  // namespace test
