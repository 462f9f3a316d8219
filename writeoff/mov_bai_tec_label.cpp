// The label of a roll.
#include "host/errors.h"
#include "weaving/audit.h"
#include "writeoff/label_functions.h"
#include "writeoff/mov_bai_tec.h"
#include "writeoff/roll_defects.h"
#include "writeoff/roll_label.h"

namespace writeoff {

void TfmMovBaiTec::ImprimirEtiqueta1Click() {
  if (TbRolos.IsEmpty()) return;
  PrintLabel();
  const std::string order = TbRolos["NUMERO"].AsText();
  Services().GeraLog(weaving::kRollSubject,
                     "IMPRESSÃO DA ETIQUETA LOTE: " + order + " ORDEM: " + TbRolos["ORDEM"].AsText(),
                     host::LogOperation::kOther, order, nullptr);
}

void TfmMovBaiTec::CarregaDefeitos(std::string_view order) { LoadDefects(GetHost(), order, QryDefeitos); }

void TfmMovBaiTec::PrintLabel() {
  CarregaDefeitos(TbRolos["NUMERO"].AsText());
  LoadFabricOfLabel(GetHost(), TbRolos["CODIGO"].AsText(), TbRolos["COR"].AsText(), QryEtiqueta);
  Services().Chama_Relatorio(&RvEtiqueta, &prTxReport, "WEtqTecRolo", *this,
                             CbImpressao.Selected() == kPlainText ? "T" : "W", {.preview = false});
}

// The roll is written and safe: paper that does not come is told, and nothing else.
void TfmMovBaiTec::PrintLabelAfterRoll(bool selected) {
  try {
    if (!selected) throw host::InputError("a lista de rolos não pôde ser carregada.");
    PrintLabel();
  } catch (const std::exception& error) {
    Warn(std::string("A baixa foi gravada, mas a etiqueta não foi impressa: ") + error.what());
  }
}

std::optional<std::string> TfmMovBaiTec::prTxReportUnknownFunction(std::string_view name,
                                                                   const std::vector<std::string>& arguments) {
  return LabelFunction(name, arguments);
}

}  // namespace writeoff
