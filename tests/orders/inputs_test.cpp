// The order screen as it opens, its inputs and its lookups.
#include <algorithm>

#include "app/services/tables.h"
#include "host/errors.h"
#include "order_mill.h"

namespace test {
namespace {

class Inputs : public OrderTest {
 protected:
  Lines Captions(const host::Grid& grid) {
    Lines captions;
    for (const auto& column : grid.Columns()) {
      captions.push_back(column.caption.empty() ? grid.GetDataset()[column.field].Def().caption : column.caption);
    }
    return captions;
  }

  std::size_t OpenDatasets() { return dynamic_cast<app::services::Tables&>(mill_.App().GetTabela()).OpenCount(); }

  /// Types what the check refuses: the message is shown in the screen's box, and the focus stays.
  void ExpectRefused(const char* input, const char* text, const char* message) {
    EXPECT_EQ(Type(input, text), ActResult::kRefused) << text;
    const auto shown = mill_.Person().TakeMessages();
    ASSERT_EQ(shown.size(), 1u) << text;
    EXPECT_EQ(shown[0].text, message);
    EXPECT_EQ(shown[0].title, "Ordens de Tecelagem");
    EXPECT_EQ(shown[0].icon, host::Icon::kInformation);
    EXPECT_EQ(FocusedName(), input);
    // The person empties the input and goes on: an empty one is not checked.
    mill_.TakeStatements();
    EXPECT_EQ(Type(input, ""), ActResult::kDone);
    EXPECT_EQ(mill_.TakeStatements(), Lines());
  }
};

TEST_F(Inputs, TheScreenOpens) {
  EXPECT_EQ(Screen().ClassName(), "TfmCadLoteTec");
  EXPECT_EQ(Screen().Name(), "fmCadLoteTec");
  EXPECT_EQ(Screen().Caption(), "Ordens de Tecelagem");
  EXPECT_EQ(Screen().PageControl1.Pages(), (Lines{"Acesso", "Manutenção"}));
  EXPECT_EQ(Screen().PageControl1.ActivePage(), 1);
  EXPECT_EQ(Screen().PageControl2.Pages(), (Lines{"Itens", "Observações"}));
  EXPECT_EQ(Text("EdtData"), "10/03/2026");
  EXPECT_EQ(Text("EdtNumero"), "");
}

TEST_F(Inputs, CaptionsOfInputsAndButtons) {
  const Cells expected = {{"EdtNumero", "Número"},      {"EdtMalharia", "Malharia"},   {"EdtData", "Data"},
                          {"EdtFicha", "Ficha Lote"},   {"EdtPrazo", "Prazo Entrega"}, {"EdtMaquina", "Máquina"},
                          {"EdtPonto", "Tam. Ponto"},   {"EdtFluxo", "Fluxo"},         {"EdtRPM", "RPM"},
                          {"EdtDeposito", "Depósito"},  {"EdtObs", "Observações"},     {"BtnIncluir", "Incluir"},
                          {"BtnGravar", "&Gravar"},     {"BtnExcluir", "&Excluir"},    {"BtnConsultar", "Consultar"},
                          {"BtnDuplicar", "&Duplicar"}, {"BtnFechar", "&Fechar"}};
  for (const auto& [name, caption] : expected) {
    const auto* control = dynamic_cast<host::Control*>(Screen().FindComponent(name));
    ASSERT_NE(control, nullptr) << name;
    EXPECT_EQ(control->Caption(), caption);
  }
}

TEST_F(Inputs, ColumnsOfTheGrids) {
  EXPECT_EQ(Captions(Screen().DBGrid6),
            (Lines{"Código", "Descrição", "Uni.", "Pedido", "Cor", "Desc. Cor", "Qtde.", "Ciclos", "Qtde. Baixa",
                   "Baixada", "Custo", "Largura", "Gramatura", "Kg/Rolo", "Rolos", "Observação"}));
  EXPECT_EQ(Captions(Screen().GrdFios),
            (Lines{"Código", "Descrição", "Cor", "Desc. Cor", "LFA", "Roca", "Uni.", "Consumo", "NE", "Qtde. OC",
                   "Estoque", "Consumo Total", "Aliment.", "Den", "Tex", "DTex"}));
  EXPECT_EQ(Captions(Screen().GrdEstoque),
            (Lines{"Sel.", "Lote", "Depósito", "Desc. Depósito", "Estoque", "Reservar", "Reservadas", "Baixa Reserva",
                   "Reserva OF", "Fornecedor", "Fornecedor NF", "Local", "Obs.", "Partida", "Sequência", "Tonalidade",
                   "Largura"}));
  EXPECT_TRUE(Screen().GrdFios.ReadOnly());
}

TEST_F(Inputs, SharedDatasetsAreOpenWhileTheScreenIs) {
  for (const char* name : {"tbEntidade", "tbPedido", "tbMateriais", "tbCompMaterial", "tbDeposito", "tbCor"}) {
    EXPECT_NO_THROW(mill_.App().GetTabela().Dataset(name, Screen())) << name;
  }
  EXPECT_EQ(OpenDatasets(), 6u);
  EXPECT_EQ(Click("BtnFechar"), ActResult::kDone);
  EXPECT_EQ(mill_.Desk().Find("fmCadLoteTec"), nullptr);
  EXPECT_EQ(OpenDatasets(), 0u);
}

TEST_F(Inputs, AnOpeningThatFailsLeavesNothingOpen) {
  Click("BtnFechar");
  mill_.FailStatement(1);
  EXPECT_EQ(mill_.Desk().Open("TfmCadLoteTec"), nullptr);
  EXPECT_TRUE(mill_.StopFailing());
  EXPECT_EQ(OpenDatasets(), 0u);
  EXPECT_NE(mill_.Desk().Open("TfmCadLoteTec"), nullptr);
}

TEST_F(Inputs, WhatIsTypedIsChecked) {
  ExpectRefused("EdtMalharia", "M99999", "Cliente não encontrado.");
  ExpectRefused("EdtMalharia", "M00002", "Malharia inativa ou bloqueada. Impossível continuar.");
  ExpectRefused("EdtMalharia", "M00003", "Malharia inativa ou bloqueada. Impossível continuar.");
  ExpectRefused("EdtPrazo", "99", "Prazo não encontrado.");
  ExpectRefused("EdtMaquina", "MQ9", "Máquina não encontrada.");
  ExpectRefused("EdtFluxo", "FL9", "Fluxo Inválido.");
  ExpectRefused("EdtDeposito", "D9", "Depósito não encontrado.");
}

TEST_F(Inputs, TheMillIsAskedForByItsStatement) {
  mill_.TakeStatements();
  EXPECT_EQ(Type("EdtMalharia", "M00001"), ActResult::kDone);
  EXPECT_EQ(mill_.TakeStatements("BLOQUEIO"),
            Lines{"SELECT CODCLI, ATIVO, BLOQUEIO FROM ENTIDADE WHERE CODCLI = 'M00001'"});
}

TEST_F(Inputs, AMillWithoutMarksOrPricesMayBeTyped) {
  mill_.Exec("UPDATE {ENTIDADE} SET ATIVO = NULL, BLOQUEIO = NULL WHERE CODCLI = 'M00004'");
  EXPECT_EQ(Type("EdtMalharia", "M00004"), ActResult::kDone);
  EXPECT_EQ(Text("LblMalharia"), "Malharia Diamante");
}

TEST_F(Inputs, DescriptionsFollowTheTyping) {
  const std::vector<std::vector<std::string>> inputs = {{"EdtMalharia", "LblMalharia", "M00001", "Malharia Aurora"},
                                                        {"EdtPrazo", "LblPrazo", "30", "30 dias"},
                                                        {"EdtMaquina", "LblMaquina", "MQ1", "Circular 30\" 28"},
                                                        {"EdtFluxo", "LblFluxo", "FL1", "Malha crua"},
                                                        {"EdtDeposito", "LblDeposito", "D1", "Depósito de fios"}};
  for (const auto& input : inputs) {
    auto& edit = dynamic_cast<host::Edit&>(*Screen().FindComponent(input[0]));
    EXPECT_EQ(mill_.Desk().Enter(edit), ActResult::kDone);
    EXPECT_EQ(mill_.Desk().TypeInto(edit, input[2]), ActResult::kDone);
    EXPECT_EQ(Text(input[1]), input[3]);
    EXPECT_EQ(mill_.Desk().TypeInto(edit, "zzz"), ActResult::kDone);
    EXPECT_EQ(Text(input[1]), "");
    EXPECT_EQ(mill_.Desk().TypeInto(edit, input[2]), ActResult::kDone);
    EXPECT_EQ(mill_.Desk().TypeInto(edit, ""), ActResult::kDone);
    EXPECT_EQ(Text(input[1]), "");
  }
}

// --- lookups -------------------------------------------------------------------------------------------------------

TEST_F(Inputs, TheFiltersOfTheLookups) {
  EXPECT_EQ(Screen().PqMalharia.FilterText(),
            " CODCLI IN (SELECT DISTINCT CADCORTI.CODCLI FROM CADCORTI_001 CADCORTI WHERE CADCORTI.TIPO = 'C') AND "
            "COALESCE(ATIVO,'S') <> 'N'  AND COALESCE(BLOQUEIO,'N') <> 'S'");
  EXPECT_EQ(Screen().PqMaterial.FilterText(),
            "CODIGO IN (SELECT DISTINCT CADCORTI.CODIGO FROM CADCORTI_001 CADCORTI WHERE CADCORTI.TIPO = 'C') AND "
            "ATIVO <> 'N'");
}

TEST_F(Inputs, LookupsServeTheirInputs) {
  const std::vector<std::vector<std::string>> served = {{"EdtMalharia", "PqMalharia", "ENTIDADE", "CODCLI", "M00001"},
                                                        {"EdtPrazo", "PqPrazo", "TABPRZ", "PRAZO", "30"},
                                                        {"EdtMaquina", "PqMaquina", "MAQUINA", "CODIGO", "MQ2"},
                                                        {"EdtFluxo", "PqFluxo", "FLUXOTIN", "CODIGO", "FL1"},
                                                        {"EdtDeposito", "PqDeposito", "DEPOSITO", "CODIGO", "DF"}};
  for (const auto& row : served) {
    const auto& lookup = dynamic_cast<host::TPesquisa&>(*Screen().FindComponent(row[1]));
    EXPECT_EQ(lookup.Table(), row[2]);
    EXPECT_EQ(lookup.KeyColumn(), row[3]);
    mill_.Person().Pick(row[1], row[4]);
    EXPECT_EQ(mill_.Desk().Enter(dynamic_cast<host::Edit&>(*Screen().FindComponent(row[0]))), ActResult::kDone);
    EXPECT_EQ(mill_.Desk().PressKey(Screen(), host::Key::kF4), ActResult::kDone);
    EXPECT_EQ(Text(row[0]), row[4]);
  }
  EXPECT_EQ(mill_.Person().TakeUnexpected(), Lines());
}

TEST_F(Inputs, TheLookupOffersOnlyMillsThatMayWeave) {
  for (const char* mill : {"M00002", "M00003", "M00004", "F0001"}) {
    mill_.Person().Pick("PqMalharia", mill);
    EXPECT_EQ(mill_.Desk().OpenLookup(Screen().PqMalharia), ActResult::kDone);
    EXPECT_EQ(Text("EdtMalharia"), "") << mill;
  }
  EXPECT_EQ(mill_.Person().TakeUnexpected().size(), 4u);
  mill_.Exec("UPDATE {ENTIDADE} SET ATIVO = NULL, BLOQUEIO = NULL WHERE CODCLI = 'M00001'");
  mill_.Person().Pick("PqMalharia", "M00001");
  EXPECT_EQ(mill_.Desk().OpenLookup(Screen().PqMalharia), ActResult::kDone);
  EXPECT_EQ(Text("EdtMalharia"), "M00001");
}

TEST_F(Inputs, TheMaterialLookupHidesWhatTypingAccepts) {
  mill_.Exec("UPDATE {MATERIAL} SET ATIVO = NULL WHERE CODIGO = 'F1'");
  NewOrder();
  mill_.Desk().SelectCell(Screen().DBGrid6, "Codigo");
  for (const char* hidden : {"F1", "F9", "Y1"}) mill_.Person().Pick("PqMaterial", hidden);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(mill_.Desk().GridKey(Screen().DBGrid6, host::Key::kF4), ActResult::kDone);
  EXPECT_EQ(mill_.Person().TakeUnexpected().size(), 3u);
  EXPECT_TRUE(Screen().TbItens.IsEmpty());
  EXPECT_EQ(AddItem("F1", "01", "1"), ActResult::kDone);
}

TEST_F(Inputs, LookupsOfTheItemGrid) {
  NewOrder();
  host::Grid& grid = Screen().DBGrid6;
  mill_.Desk().SelectCell(grid, "Codigo");
  mill_.Person().Pick("PqMaterial", "F1");
  EXPECT_EQ(mill_.Desk().GridKey(grid, host::Key::kF4), ActResult::kDone);
  EXPECT_EQ(Screen().TbItens["Codigo"].AsText(), "F1");
  EXPECT_EQ(mill_.Desk().SelectCell(grid, "Cor"), ActResult::kDone);
  EXPECT_EQ(Screen().TbItens["Descricao"].AsText(), "Meia malha 30/1 PV");
  mill_.Person().Pick("PqCor", "03");  // in no stock of the fabric
  EXPECT_EQ(mill_.Desk().GridKey(grid, host::Key::kF4), ActResult::kDone);
  EXPECT_EQ(Screen().TbItens["Cor"].AsText(), "");
  mill_.Person().Pick("PqCor", "02");
  EXPECT_EQ(mill_.Desk().GridKey(grid, host::Key::kF4), ActResult::kDone);
  EXPECT_EQ(Screen().TbItens["Cor"].AsText(), "02");
  EXPECT_EQ(Screen().PqCor.FilterText(),
            "COR IN (SELECT DISTINCT MAT_ITEN.COR  FROM MAT_ITEN_001 MAT_ITEN WHERE MAT_ITEN.CODIGO = 'F1')");
  // No lookup anywhere else.
  mill_.Person().TakeUnexpected();
  mill_.Desk().SelectCell(grid, "Qtde");
  EXPECT_EQ(mill_.Desk().GridKey(grid, host::Key::kF4), ActResult::kDone);
  EXPECT_EQ(mill_.Person().TakeUnexpected(), Lines());
}

TEST_F(Inputs, EnterGoesToTheNextInput) {
  mill_.Desk().Enter(Screen().EdtMalharia);
  EXPECT_EQ(mill_.Desk().PressKey(Screen(), host::Key::kEnter), ActResult::kDone);
  EXPECT_EQ(FocusedName(), "EdtData");
  // In the remarks it is a new line, on a button a click.
  mill_.Desk().Enter(Screen().EdtObs);
  EXPECT_EQ(mill_.Desk().PressKey(Screen(), host::Key::kEnter), ActResult::kDone);
  EXPECT_EQ(FocusedName(), "EdtObs");
  mill_.Desk().Enter(Screen().BtnIncluir);
  EXPECT_EQ(mill_.Desk().PressKey(Screen(), host::Key::kEnter), ActResult::kDone);
  EXPECT_EQ(Text("EdtNumero"), "000001");
}

TEST_F(Inputs, AWrongCodeKeepsThePersonFromTheButtons) {
  NewOrder();
  mill_.Desk().Enter(Screen().EdtFluxo);
  mill_.Desk().TypeInto(Screen().EdtFluxo, "FL9");
  EXPECT_EQ(Click("BtnGravar"), ActResult::kRefused);
  EXPECT_EQ(mill_.Messages(), Lines{"Fluxo Inválido."});
  EXPECT_EQ(FocusedName(), "EdtFluxo");
  EXPECT_EQ(mill_.Scalar("SELECT COUNT(*) FROM {TECEL}").AsInteger(), 0);
}

}  // namespace
}  // namespace test
