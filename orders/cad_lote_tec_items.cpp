// The rules of the item grid.
#include "host/text.h"
#include "orders/cad_lote_tec.h"

namespace orders {
namespace {

std::size_t FieldIndex(const host::Dataset& dataset, std::string_view name) {
  std::size_t index = 0;
  while (!host::SameName(dataset.FieldAt(index).Name(), name)) ++index;
  return index;
}

}  // namespace

void TfmCadLoteTec::DBGrid6KeyDown(host::Key key) {
  if (key != host::Key::kF4) return;
  if (host::SameName(DBGrid6.SelectedField(), "Codigo")) PqMaterial.Open();
  if (host::SameName(DBGrid6.SelectedField(), "Cor")) {
    BuscaCores();
    PqCor.Open();
  }
}

void TfmCadLoteTec::DBGrid6ColExit() {
  if (TbItens.IsEmpty()) return;
  TbItens.Edit();
  const std::string column = DBGrid6.SelectedField();
  if (host::SameName(column, "Codigo") && !TbItens["Codigo"].AsText().empty()) LeaveCode();
  if (host::SameName(column, "Cor")) LeaveColour();
}

// All is asked before anything is put in: a refusal leaves the row as it was.
void TfmCadLoteTec::LeaveCode() {
  const std::string code = TbItens["Codigo"].AsText();
  host::SharedDataset& materials = GetHost().GetTabela().Dataset("tbMateriais", *this);
  if (!materials.Locate("CODIGO", {code})) Refuse("Material não cadastrado.");
  if (materials.FieldByName("ATIVO").AsText() == "N" && !store_.ItemExists(EdtNumero.Text(), code)) {
    Refuse("Material Inativo.");
  }
  host::SharedDataset& compositions = GetHost().GetTabela().Dataset("tbCompMaterial", *this);
  const bool composed = compositions.Locate("MATERIAL", {code});
  double cost = TbItens["Custo"].AsFloat();
  if (cost == 0) cost = prices_.Agreed(EdtMalharia.Text(), code);
  if (cost == 0) Refuse("Não é possível continuar.\nCadastre o custo da malha primeiro para continuar.");

  for (const char* name : {"Descricao", "Unidade", "Peso"}) TbItens[name].Set(materials.FieldByName(name));
  const host::SharedDataset& measures = composed ? compositions : materials;
  TbItens["Largura"].Set(measures.FieldByName("LARGURA"));
  TbItens["Gramatura"].Set(measures.FieldByName("GRAMATURA"));
  // The weight of a roll is known only from a composition.
  TbItens["KgRolo"].Set(composed ? compositions.FieldByName("KG_ROLO") : host::Value(0.0));
  TbItens["Custo"].Set(cost);
  BuscaCores();
}

void TfmCadLoteTec::LeaveColour() {
  BuscaCores();
  const std::string code = TbItens["Codigo"].AsText();
  const std::string colour = TbItens["Cor"].AsText();
  const auto description = fabrics_.ColourOf(code, colour);
  if (!description) Refuse("Cor não cadastrada.");
  double cost = 0;
  if (!store_.ItemExists(EdtNumero.Text(), code, colour)) cost = prices_.Agreed(EdtMalharia.Text(), code, colour);
  TbItens["DescCor"].Set(*description);
  if (cost > 0) TbItens["Custo"].Set(cost);
}

void TfmCadLoteTec::BuscaCores() { PqCor.SetFilter(fabrics_.ColourFilter(TbItens["Codigo"].AsText())); }

bool TfmCadLoteTec::ExisteComposicao(std::string_view material, std::string_view cor) const {
  return fabrics_.HasComposition(material, cor);
}

// The row keeps the key that it was entered with, so that a change of key can be told from retyping the same.
void TfmCadLoteTec::TbItensAfterScroll() {
  if (TbItens.InEdit() || TbItens.IsEmpty()) return;
  const std::string code = TbItens["Codigo"].AsText();
  const std::string colour = TbItens["Cor"].AsText();
  if (TbItens["CodAnt"].AsText() == code && TbItens["CorAnt"].AsText() == colour) return;
  const Quiet quiet(*this);
  TbItens.Edit();
  TbItens["CodAnt"].Set(code);
  TbItens["CorAnt"].Set(colour);
  TbItens.Post();
}

void TfmCadLoteTec::TbItensCodigoValidate() {
  KeepKeyOfWrittenOff(TbItens["CodAnt"].AsText(), TbItens["Codigo"].AsText());
}

void TfmCadLoteTec::TbItensCorValidate() { KeepKeyOfWrittenOff(TbItens["CorAnt"].AsText(), TbItens["Cor"].AsText()); }

void TfmCadLoteTec::KeepKeyOfWrittenOff(std::string_view remembered, std::string_view typed) {
  if (remembered.empty() || typed == remembered) return;
  if (BuscaQtdeB(EdtNumero.Text(), TbItens["CodAnt"].AsText(), TbItens["CorAnt"].AsText()) > 0) {
    TbItens.Cancel();
    Refuse("Produto já possui quantidade baixada. Impossível Continuar.");
  }
}

void TfmCadLoteTec::TbItensBeforePost() {
  const std::string code = TbItens["Codigo"].AsText();
  const std::string colour = TbItens["Cor"].AsText();
  if (code.empty() || colour.empty()) {
    TbItens.Cancel();
    return;
  }
  const bool rekeyed = TbItens.State() == host::DatasetState::kInsert || code != TbItens["CodAnt"].AsText() ||
                       colour != TbItens["CorAnt"].AsText();
  if (rekeyed && AnotherRowIs(code, colour)) Refuse("Este material já está na ordem com esta cor.");
}

bool TfmCadLoteTec::AnotherRowIs(std::string_view code, std::string_view colour) const {
  const std::size_t code_at = FieldIndex(TbItens, "Codigo");
  const std::size_t colour_at = FieldIndex(TbItens, "Cor");
  for (std::size_t row = 1; row <= TbItens.RecordCount(); ++row) {
    if (row == TbItens.RecNo()) continue;
    if (TbItens.ValueAt(row, code_at).AsText() == code && TbItens.ValueAt(row, colour_at).AsText() == colour) {
      return true;
    }
  }
  return false;
}

void TfmCadLoteTec::TbItensBeforeDelete() {
  if (TbItens["Qtde_B"].AsFloat() > 0) Refuse("Lote com baixas. Impossível excluir.");
}

}  // namespace orders
