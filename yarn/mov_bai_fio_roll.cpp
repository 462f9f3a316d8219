// What the yarn screen has written for a roll once every yarn is found.
#include "host/errors.h"
#include "weaving/hold.h"
#include "yarn/mov_bai_fio.h"

namespace yarn {

weaving::NewRoll TFmMovBaiFio::CurrentRoll() const {
  weaving::NewRoll roll = opener_->CurrentRoll();
  roll.fabric = MaterialMalha;
  roll.colour = CorMalha;
  roll.kilograms = QtdeMalha;
  roll.client = ClienteMalha;
  roll.place = LocalMalha;
  return roll;
}

// In the operator's hands the program has waited, so that another station may have had its turn on the order: the
// roll's number is read under a new lock. Whatever happens the screen has done its work: its lists are used up.
void TFmMovBaiFio::Conclude() {
  try {
    const std::string order = opener_->CurrentRoll().order;
    if (!BaixaAutomatica) weaving::HoldOrder(GetHost().GetTabela().IBDatabase(), order);
    const int number = weaving::RollWriting::NextNumber(GetHost(), order);
    MovimentaEstoque(number);
    opener_->OrdemBaixa = number;
    opener_->SituacaoFios = kYarnConsumed;
  } catch (...) {
    Close();
    throw;
  }
  Close();
}

void TFmMovBaiFio::MovimentaEstoque(int ordem) {
  try {
    Writing(ordem).TakeYarnOut(consumption_.Lots());
  } catch (const weaving::RollFailed& failure) {
    GiveUp(failure);
  }
  EntradaMalha(ordem);
}

void TFmMovBaiFio::EntradaMalha(int ordem) {
  try {
    opener_->LoteBaixa = Writing(ordem).EnterFabric(consumption_.Lots()).lot;
  } catch (const weaving::RollFailed& failure) {
    GiveUp(failure);
  }
}

void TFmMovBaiFio::VoltaFiosExcecao(int ordem) { Writing(ordem).BringYarnBack(); }

void TFmMovBaiFio::GiveUp(const weaving::RollFailed& failure) {
  Inform(failure.what());
  Close();
  throw host::Abort();
}

}  // namespace yarn
