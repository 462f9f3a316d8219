// The weight from the scale.
#include "host/decimal.h"
#include "host/errors.h"
#include "host/kit/busy.h"
#include "host/raw_bytes.h"
#include "host/text.h"
#include "writeoff/mov_bai_tec.h"

namespace writeoff {
namespace {

constexpr std::size_t kLogWidth = 150;
constexpr std::string_view kWeighed = "PESAGEM_REGISTRADA";

}  // namespace

void TfmMovBaiTec::MostraCaptura() { LblCaptura.SetEnabled(CbBarra.Checked() && !scale_.Continuous()); }

void TfmMovBaiTec::CapturaPeso() {
  if (!CbBarra.Checked() || scale_.Continuous() || Site()->Focused() == &EdtLote) return;
  // A scanner that ends no code with Enter leaves the cursor behind it: the code still says which item is weighed.
  if (Site()->Focused() == &EdtBarra && LeCodigoDeBarras()) return;
  Weighing weighing;
  try {
    const host::Busy busy(*this, "Lendo a balança...");
    weighing = scale_.Capture();
  } catch (const host::InputError& error) {
    Recusa(error.what(), nullptr);
  }
  if (!(weighing.weight > 0)) Recusa("A balança indica peso zero.", nullptr);
  RecebePeso(weighing);
}

void TfmMovBaiTec::RecebePeso(const Weighing& weighing) {
  EdtQtde.SetNumber(weighing.weight);
  RegistraPesagem(weighing);
  try {
    Site()->Press(BtnConfirma);
  } catch (const host::Abort&) {
    throw;
  } catch (const std::exception&) {
    // What the action did is going to be undone; that the scale was read stays true.
    Banco().RollbackTo(kWeighed);
    Banco().MakeDurable();
    throw;
  }
}

// In one durable write with the roll, and without it when the roll is refused.
void TfmMovBaiTec::RegistraPesagem(const Weighing& weighing) {
  const std::string text =
      "PESO DA BALANCA: " + host::PointText(weighing.weight) + " RECEBIDO: " + host::RawBytes(weighing.frame);
  Servicos().GeraLog(kLogSubject, host::Left(text, kLogWidth), host::LogOperation::kOther, Ordem(), nullptr);
  Banco().CommitRetaining();
  Banco().SetSavepoint(kWeighed);
}

void TfmMovBaiTec::ConfiguraBalanca() {
  try {
    if (scale_.SetUp()) Inform("O protocolo escolhido vale a partir da próxima abertura desta tela.");
  } catch (const host::InputError& error) {
    Recusa(error.what(), nullptr);
  }
}

}  // namespace writeoff
