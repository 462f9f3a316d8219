// The weight from the scale.
#include "host/decimal.h"
#include "host/errors.h"
#include "host/kit/busy.h"
#include "host/raw_bytes.h"
#include "host/text.h"
#include "weaving/audit.h"
#include "weaving/savepoints.h"
#include "writeoff/mov_bai_tec.h"

namespace writeoff {
void TfmMovBaiTec::ShowCapture() { LblCaptura.SetEnabled(CbBarra.Checked() && !scale_.Continuous()); }

void TfmMovBaiTec::CapturaPeso() {
  if (!CbBarra.Checked() || scale_.Continuous() || Site()->Focused() == &EdtLote) return;
  // A scanner that ends no code with Enter leaves the cursor behind it: the code still says which item is weighed.
  if (Site()->Focused() == &EdtBarra && TakeScannedCode()) return;
  Weighing weighing;
  try {
    const host::Busy busy(*this, "Lendo a balança...");
    weighing = scale_.Capture();
  } catch (const host::InputError& error) {
    Reject(error.what(), nullptr);
  }
  if (!(weighing.weight > 0)) Reject("A balança indica peso zero.", nullptr);
  TakeWeight(weighing);
}

void TfmMovBaiTec::TakeWeight(const Weighing& weighing) {
  EdtQtde.SetNumber(weighing.weight);
  LogWeighing(weighing);
  try {
    Site()->Press(BtnConfirma);
  } catch (const host::Abort&) {
    throw;
  } catch (const std::exception&) {
    // What the action did is going to be undone; that the scale was read stays true.
    Db().RollbackTo(weaving::kWeighed);
    Db().MakeDurable();
    throw;
  }
}

// In one durable write with the roll, and without it when the roll is refused.
void TfmMovBaiTec::LogWeighing(const Weighing& weighing) {
  const std::string text =
      "PESO DA BALANCA: " + host::PointText(weighing.weight) + " RECEBIDO: " + host::RawBytes(weighing.frame);
  Services().GeraLog(weaving::kRollSubject, host::Left(text, weaving::kLogWidth), host::LogOperation::kOther, Order(),
                     nullptr);
  Db().CommitRetaining();
  Db().SetSavepoint(weaving::kWeighed);
}

void TfmMovBaiTec::SetUpScale() {
  try {
    if (scale_.SetUp()) Inform("O protocolo escolhido vale a partir da próxima abertura desta tela.");
  } catch (const host::InputError& error) {
    Reject(error.what(), nullptr);
  }
}

}  // namespace writeoff
