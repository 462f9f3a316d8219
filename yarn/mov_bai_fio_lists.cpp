// The two lists of the yarn screen: what the roll consumes, and the lots that hold it.
#include <algorithm>

#include "host/errors.h"
#include "host/restored.h"
#include "weaving/parameters.h"
#include "yarn/mov_bai_fio.h"

namespace yarn {

void TFmMovBaiFio::ConsultaFiosOF() {
  {
    const host::Restored<bool> loading(loading_, true);
    TbBaixa.SetFiltered(false);
    TbBaixa.Empty();
    TbEst.Empty();
    consumption_.Clear();
    need_rows_.clear();
    lot_rows_.clear();
    UsaFornecedorLote = weaving::Parameters(Services()).LotsNameSuppliers();
    ShowStockColumns();
    if (opener_ != nullptr) ShowNeeds();
    TbBaixa.SetFilter("qtde > 0");
    TbBaixa.SetFiltered(true);
    TbBaixa.First();
  }
  BitBtn1.SetEnabled(false);
  FiltraFio();
}

void TFmMovBaiFio::ShowNeeds() {
  try {
    consumption_.List(CurrentRoll(), {.from_reservations = weaving::Parameters::ConsumesReservations(ParamReserva),
                                      .merged = CbTodos.Checked(),
                                      .name_suppliers = UsaFornecedorLote});
  } catch (const weaving::NothingOpen& refusal) {
    Refuse(refusal.what());
  }
  need_rows_.assign(consumption_.Needs().size(), 0);
  lot_rows_.assign(consumption_.Lots().size(), 0);
  for (std::size_t need = 0; need < need_rows_.size(); ++need) {
    const weaving::YarnNeed& yarn = consumption_.Needs()[need];
    TbBaixa.Append();
    need_rows_[need] = TbBaixa.CurrentId();
    TbBaixa["Codigo"].Set(yarn.yarn);
    TbBaixa["Descricao"].Set(yarn.description);
    TbBaixa["Cor"].Set(yarn.colour);
    TbBaixa["Qtde"].Set(yarn.wanted);
    TbBaixa["Qt_Orig"].Set(yarn.computed);
    TbBaixa["Perc"].Set(yarn.share);
    TbBaixa.Post();
    ConsultaEstoque();
  }
}

void TFmMovBaiFio::ConsultaEstoque() {
  if (TbBaixa.IsEmpty()) return;
  const bool filtered = TbEst.Filtered();
  TbEst.SetFiltered(false);
  const bool listed = TbEst.Locate("Codigo;Cor", {TbBaixa["Codigo"].AsText(), TbBaixa["Cor"].AsText()});
  TbEst.SetFiltered(filtered);
  if (listed) return;

  for (const std::size_t at : consumption_.LotsOf(CurrentNeed())) {
    const weaving::YarnLot& yarn = consumption_.Lots()[at];
    TbEst.Append();
    lot_rows_[at] = TbEst.CurrentId();
    TbEst["Codigo"].Set(yarn.lot.code);
    TbEst["Descricao"].Set(yarn.description);
    TbEst["Cor"].Set(yarn.lot.colour);
    TbEst["Deposito"].Set(yarn.lot.deposit);
    TbEst["Lote"].Set(yarn.lot.lot);
    TbEst["Qtde"].Set(yarn.held);
    TbEst["Qtde_B"].Set(yarn.taken);
    if (yarn.reserved) TbEst["Reservadas"].Set(*yarn.reserved);
    TbEst["Preco"].Set(yarn.price);
    TbEst["DescDep"].Set(yarn.deposit_name);
    TbEst["Local"].Set(yarn.place);
    if (UsaFornecedorLote) TbEst["Fornecedor"].Set(yarn.supplier);
    TbEst["Custo_Imp"].Set(yarn.import_cost);
    TbEst.Post();
  }
}

std::size_t TFmMovBaiFio::CurrentNeed() const {
  const auto row = std::find(need_rows_.begin(), need_rows_.end(), TbBaixa.CurrentId());
  return static_cast<std::size_t>(row - need_rows_.begin());
}

std::size_t TFmMovBaiFio::CurrentLot() const {
  const auto row = std::find(lot_rows_.begin(), lot_rows_.end(), TbEst.CurrentId());
  return static_cast<std::size_t>(row - lot_rows_.begin());
}

// All at once, as the lots were chosen without the operator.
void TFmMovBaiFio::ShowTaken(std::optional<std::size_t> stand_on) {
  const host::Restored<bool> loading(loading_, true);
  const std::size_t row = stand_on ? lot_rows_[*stand_on] : TbEst.CurrentId();
  TbBaixa.SetFiltered(false);
  TbEst.SetFiltered(false);
  for (std::size_t need = 0; need < need_rows_.size(); ++need) ShowNeed(need);
  for (std::size_t lot = 0; lot < lot_rows_.size(); ++lot) {
    if (consumption_.Lots()[lot].taken > 0) ShowLot(lot);
  }
  TbEst.GoToId(row);
  TbBaixa.SetFiltered(true);
}

void TFmMovBaiFio::ShowNeed(std::size_t need) {
  // Arriving would store what was typed there before the take is reckoned with.
  if (TbBaixa.CurrentId() != need_rows_[need]) TbBaixa.GoToId(need_rows_[need]);
  TbBaixa.Edit();
  TbBaixa["Qtde"].Set(consumption_.Needs()[need].wanted);
  TbBaixa["Qt_Orig"].Set(consumption_.Needs()[need].computed);
  TbBaixa.Post();
}

void TFmMovBaiFio::ShowLot(std::size_t lot) {
  TbEst.GoToId(lot_rows_[lot]);
  TbEst.Edit();
  TbEst["Qtde_B"].Set(consumption_.Lots()[lot].taken);
  TbEst["Qtde"].Set(consumption_.Lots()[lot].held);
  TbEst.Post();
}

// Every row: the one just posted may have left the view.
void TFmMovBaiFio::TakeOverWanted() {
  std::size_t need = 0;
  for (host::DatasetCursor line(TbBaixa); !line.Eof(); line.Next()) {
    consumption_.SetWanted(need++, line.FieldByName("Qtde").AsFloat());
  }
}

void TFmMovBaiFio::StandFrom(std::size_t need) {
  const std::vector<weaving::YarnNeed>& needs = consumption_.Needs();
  std::size_t at = need;
  while (at < needs.size() && !(needs[at].wanted > 0)) ++at;
  if (at == needs.size()) {
    TbBaixa.Last();
  } else {
    TbBaixa.GoToId(need_rows_[at]);
  }
}

}  // namespace yarn
