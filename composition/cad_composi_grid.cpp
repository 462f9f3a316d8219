// Typing in the composition grid: what leaving a cell with Tab works out, the lookups behind F4, and the grid's menu.
#include "composition/cad_composi.h"
#include "composition/consumption.h"
#include "host/errors.h"
#include "host/text.h"
#include "weaving/deposits.h"
#include "weaving/yarn_colour.h"

namespace composition {
void TFmCadComposi::DBGridKeyDown(host::Key key) {
  const std::string field = GrdComposi.SelectedField();
  if (field.empty()) return;
  if (key == host::Key::kF4) {
    OpenLookupOf(field);
  } else if (key == host::Key::kTab || key == host::Key::kEnter) {  // Enter goes on like Tab
    if (!TbComposi.IsEmpty()) LeaveCell(field);
    PassReadOnlyColumns();
  }
}

// --- Tab ----------------------------------------------------------------------------------------------------------

void TFmCadComposi::LeaveCell(std::string_view field) {
  if (field == "Codigo") {
    LeaveYarn();
  } else if (field == "ROCA") {
    LeaveFeeders();
  } else if (field == "Regra") {
    LeaveRule();
  } else if (field == "Milimetros") {
    LeaveStitch();
  } else if (const FabricColour* colour = ColourOfField(colours_, field)) {
    LeaveYarnColour(*colour);
  }
}

// The cursor goes to the next cell that can be typed into; what the program fills is stepped over.
void TFmCadComposi::PassReadOnlyColumns() {
  const auto& columns = GrdComposi.Columns();
  for (int next = GrdComposi.SelectedColumn() + 1; next < static_cast<int>(columns.size()); ++next) {
    if (columns[static_cast<std::size_t>(next)].read_only) continue;
    GrdComposi.SelectColumn(next);
    return;
  }
}

void TFmCadComposi::LeaveYarn() {
  TbComposi.Post();
  TbComposi.Edit();
  host::SharedDataset& materials = GetHost().GetTabela().Dataset("tbMateriais", *this);
  materials.SetFilter(pqMat.FilterText());
  if (materials.Locate("CODIGO", {TbComposi["Codigo"].AsText()})) {
    TbComposi["Descricao"].Set(materials.FieldByName("DESCRICAO"));
    TbComposi["Custo"].Set(materials.FieldByName("REPOSICAO"));
    TbComposi["NE"].Set(materials.FieldByName("NE"));
    return;
  }
  TbComposi["Codigo"].Set("");
  TbComposi["Custo"].Set(0);
  TbComposi["NE"].Set(0);
  Inform("Material não cadastrado.");
}

void TFmCadComposi::LeaveFeeders() {
  TbComposi.Post();
  TbComposi.Edit();
  // The share is worked out for all yarns together, when the composition is stored.
  if (SetConsumption(TbComposi)) TbComposi["Perc"].Set(0);
}

void TFmCadComposi::LeaveRule() {
  TbComposi.Post();
  TbComposi.Edit();
  const std::string rule = TbComposi["Regra"].AsText();
  if (rule.empty()) return;
  host::Funcoes& funcoes = Services();
  if (funcoes.Existe("TNG_REGRA", "CODIGO", funcoes.Aspas(rule), Connection())) {
    TbComposi["Desc_Regra"].Set(
        funcoes.Busca_Valor("TNG_REGRA", "CODIGO", "DESCRICAO", funcoes.Aspas(rule), true, true));
    ApplyRule(rule);
    return;
  }
  TbComposi["Regra"].Set("");
  TbComposi["Desc_Regra"].Set("");
  Inform("Regra de cálculo inválida.");
}

void TFmCadComposi::LeaveStitch() {
  TbComposi.Post();
  TbComposi.Edit();
  const auto length = CourseLength(TbComposi["Milimetros"].AsFloat(), EdtAgulhas.Number());
  if (length) TbComposi["LFA"].Set(*length);
}

void TFmCadComposi::LeaveYarnColour(const FabricColour& colour) {
  TbComposi.Post();
  TbComposi.Edit();
  const std::string yarn_colour = TbComposi[colour.field].AsText();
  if (host::Trim(yarn_colour).empty() || yarn_colour == weaving::kNoYarnColour) return;
  const std::string yarn = TbComposi["Codigo"].AsText();
  if (store_.YarnHasColour(yarn, yarn_colour)) return;
  // Without a Yes, or without the right, the colour stays in the cell all the same: the yarn may be registered later.
  if (!Confirm("Cor não cadastrada no Material. Deseja cadastrar?")) return;
  if (!Services().Acessa("TfmMateriais", "A", "0")) return;
  store_.RegisterYarnColour(yarn, yarn_colour, weaving::FirstDeposit(Services()));
  Connection().CommitRetaining();
}

void TFmCadComposi::ApplyRule(const std::string& rule) {
  TbComposi["Perc"].Set(Services().CalculaPercRegra(rule, EdtCodMat.Text()));
}

// --- F4 -----------------------------------------------------------------------------------------------------------

void TFmCadComposi::OpenLookupOf(std::string_view field) {
  if (field == "Codigo") {
    pqMat.Open();
  } else if (field == "Regra") {
    PqRegra.Open();
  } else if (ColourOfField(colours_, field) != nullptr) {
    const std::string yarn = TbComposi.IsEmpty() ? std::string() : TbComposi["Codigo"].AsText();
    PqCor.SetStatement(store_.ColoursOfYarn(yarn));
    PqCor.Open();
  }
}

void TFmCadComposi::pqMatFechaPesquisa() {
  if (!TbComposi.Active()) return;
  TbComposi.Edit();
  TbComposi["Codigo"].Set(pqMat.RetornoPesquisa("CODIGO").AsText());
}

void TFmCadComposi::PqRegraFechaPesquisa() {
  if (!TbComposi.Active()) return;
  const std::string rule = PqRegra.RetornoPesquisa("CODIGO").AsText();
  TbComposi.Edit();
  TbComposi["Regra"].Set(rule);
  TbComposi["Desc_Regra"].Set(PqRegra.RetornoPesquisa("DESCRICAO").AsText());
  if (!rule.empty()) ApplyRule(rule);
}

void TFmCadComposi::PqCorFechaPesquisa() {
  if (!TbComposi.Active()) return;
  const FabricColour* colour = ColourOfField(colours_, GrdComposi.SelectedField());
  if (colour == nullptr) return;
  TbComposi.Edit();
  TbComposi[colour->field].Set(PqCor.RetornoPesquisa("COR").AsText());
}

// --- menu ---------------------------------------------------------------------------------------------------------

void TFmCadComposi::ppManutencaoPopup() {
  if (TbComposi.FieldCount() == 0) throw host::Abort();
}

void TFmCadComposi::LocalizarCor1Click() {
  pqMatLocaliza.SetStatement(store_.ComposedColours(EdtCodMat.Text()));
  pqMatLocaliza.Open();
}

void TFmCadComposi::pqMatLocalizaFechaPesquisa() {
  const FabricColour* colour = FindColour(colours_, pqMatLocaliza.RetornoPesquisa("COR").AsText());
  if (colour != nullptr) GrdComposi.SelectColumn(GrdComposi.ColumnOf(colour->field));
}

}  // namespace composition
