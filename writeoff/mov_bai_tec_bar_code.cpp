// A scanned bar code: which item the roll is of, or how much it weighs.
#include "host/errors.h"
#include "host/text.h"
#include "writeoff/mov_bai_tec.h"

namespace writeoff {

void TfmMovBaiTec::EdtBarraExit() { LeCodigoDeBarras(); }

// First the focus, then the confirmation, which sends it where the next roll begins.
bool TfmMovBaiTec::LeCodigoDeBarras() {
  const std::string text = host::Trim(EdtBarra.Text());
  if (text.empty()) return false;
  const Lido read = VerificaCodigoBarraEAN14(text);
  if (read == Lido::kQuantidade) EdtQtde.SetFocus();
  if (read == Lido::kNada || !(Quantidade() > 0)) return false;
  BtnConfirmaClick();
  return true;
}

TfmMovBaiTec::Lido TfmMovBaiTec::VerificaCodigoBarraEAN14(std::string_view text) {
  const BarCode code = ReadBarCode(text);
  switch (code.kind) {
    case BarCode::Kind::kWeighed:
      return LePesado(code);
    case BarCode::Kind::kPackage:
      return LeEmbalagem(code);
    case BarCode::Kind::kRollLabel:
      return LeEtiqueta(code);
    case BarCode::Kind::kOther:
      break;
  }
  return Lido::kNada;
}

TfmMovBaiTec::Lido TfmMovBaiTec::LePesado(const BarCode& code) {
  EdtBarra.SetText(code.ean13);
  EdtQtde.SetNumber(code.weight);
  return Lido::kQuantidade;
}

TfmMovBaiTec::Lido TfmMovBaiTec::LeEmbalagem(const BarCode& code) {
  const auto stock = Banco().NewQuery();
  stock->SQL.Add("SELECT BARRA, CODIGO, COR FROM " + Servicos().DBLocal("MAT_ITEN", true));
  // Of digits only; whatever check digit the item's own code ends with.
  stock->SQL.Add("WHERE BARRA LIKE " + Servicos().Aspas(code.body + "%"));
  stock->Open();
  if (stock->IsEmpty()) return Lido::kNada;
  StandOnItem(*stock);
  const auto per_package =
      Servicos().Busca_Valor("CADTAG", "CODIGO", "QTDE", Servicos().Aspas(code.indicator), true, true);
  EdtBarra.SetText(stock->FieldByName("BARRA").AsText());
  EdtQtde.SetNumber(per_package.AsFloat());
  return Lido::kQuantidade;
}

TfmMovBaiTec::Lido TfmMovBaiTec::LeEtiqueta(const BarCode& code) {
  const auto stock = Banco().NewQuery();
  stock->SQL.Add("SELECT QTDE, CODIGO, COR FROM " + Servicos().DBLocal("MAT_ITEN", true));
  stock->SQL.Add("WHERE LOTE = " + Servicos().Aspas(code.lot));
  stock->Open();
  if (stock->IsEmpty()) RecusaLeitura("Lote inválido.");
  for (; !stock->Eof(); stock->Next()) {
    if (stock->FieldByName("QTDE").AsFloat() > 0) RecusaLeitura("Etiqueta já lida");
  }
  stock->First();
  StandOnItem(*stock);
  return Lido::kItem;
}

// The first of these stock rows whose item is one of the order's. A code is of one item, in as many lots as there are.
void TfmMovBaiTec::StandOnItem(host::TTIQuery& stock) {
  for (; !stock.Eof(); stock.Next()) {
    if (TbItens.Locate("Codigo;Cor", {stock.FieldByName("CODIGO"), stock.FieldByName("COR")})) return;
  }
  RecusaLeitura("Item não encontrado.");
}

void TfmMovBaiTec::RecusaLeitura(std::string_view text) {
  GetHost().GetDialogs().Message("Movimentos Baixas", text, host::Icon::kInformation);
  throw host::Abort();
}

}  // namespace writeoff
