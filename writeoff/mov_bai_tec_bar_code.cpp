// A scanned bar code: which item the roll is of, or how much it weighs.
#include "host/errors.h"
#include "host/text.h"
#include "weaving/statement.h"
#include "writeoff/mov_bai_tec.h"

namespace writeoff {

void TfmMovBaiTec::EdtBarraExit() { TakeScannedCode(); }

// First the focus, then the confirmation, which sends it where the next roll begins.
bool TfmMovBaiTec::TakeScannedCode() {
  const std::string text = host::Trim(EdtBarra.Text());
  if (text.empty()) return false;
  const Scan read = VerificaCodigoBarraEAN14(text);
  if (read == Scan::kQuantity) EdtQtde.SetFocus();
  if (read == Scan::kNothing || !(Quantity() > 0)) return false;
  BtnConfirmaClick();
  return true;
}

TfmMovBaiTec::Scan TfmMovBaiTec::VerificaCodigoBarraEAN14(std::string_view text) {
  const BarCode code = ReadBarCode(text);
  switch (code.kind) {
    case BarCode::Kind::kWeighed:
      return ReadWeighed(code);
    case BarCode::Kind::kPackage:
      return ReadPackage(code);
    case BarCode::Kind::kRollLabel:
      return ReadRollLabel(code);
    case BarCode::Kind::kOther:
      break;
  }
  return Scan::kNothing;
}

TfmMovBaiTec::Scan TfmMovBaiTec::ReadWeighed(const BarCode& code) {
  EdtBarra.SetText(code.ean13);
  EdtQtde.SetNumber(code.weight);
  return Scan::kQuantity;
}

TfmMovBaiTec::Scan TfmMovBaiTec::ReadPackage(const BarCode& code) {
  // Of digits only; whatever check digit the item's own code ends with.
  const auto stock = weaving::Statements(GetHost()).Open(R"(
SELECT BARRA, CODIGO, COR FROM {MAT_ITEN}
WHERE BARRA LIKE :beginning)",
                                                         {{"beginning", code.body + "%"}});
  if (stock->IsEmpty()) return Scan::kNothing;
  StandOnItem(*stock);
  const auto per_package =
      Services().Busca_Valor("CADTAG", "CODIGO", "QTDE", Services().Aspas(code.indicator), true, true);
  EdtBarra.SetText(stock->FieldByName("BARRA").AsText());
  EdtQtde.SetNumber(per_package.AsFloat());
  return Scan::kQuantity;
}

TfmMovBaiTec::Scan TfmMovBaiTec::ReadRollLabel(const BarCode& code) {
  const auto stock = weaving::Statements(GetHost()).Open(R"(
SELECT QTDE, CODIGO, COR FROM {MAT_ITEN}
WHERE LOTE = :lot)",
                                                         {{"lot", code.lot}});
  if (stock->IsEmpty()) RefuseScan("Lote inválido.");
  for (; !stock->Eof(); stock->Next()) {
    if (stock->FieldByName("QTDE").AsFloat() > 0) RefuseScan("Etiqueta já lida");
  }
  stock->First();
  StandOnItem(*stock);
  return Scan::kItem;
}

// The first of these stock rows whose item is one of the order's. A code is of one item, in as many lots as there are.
void TfmMovBaiTec::StandOnItem(host::TTIQuery& stock) {
  for (; !stock.Eof(); stock.Next()) {
    if (TbItens.Locate("Codigo;Cor", {stock.FieldByName("CODIGO"), stock.FieldByName("COR")})) return;
  }
  RefuseScan("Item não encontrado.");
}

void TfmMovBaiTec::RefuseScan(std::string_view text) {
  GetHost().GetDialogs().Message("Movimentos Baixas", text, host::Icon::kInformation);
  throw host::Abort();
}

}  // namespace writeoff
