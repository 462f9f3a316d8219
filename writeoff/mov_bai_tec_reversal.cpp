// What is done with a roll of the list: its defects, and "Estornar" with its checks and what the person is told.
#include "host/decimal.h"
#include "host/errors.h"
#include "host/text.h"
#include "weaving/hold.h"
#include "weaving/roll_lot.h"
#include "weaving/roll_reversal.h"
#include "weaving/savepoints.h"
#include "weaving/stock_keeping.h"
#include "weaving/stock_lot.h"
#include "writeoff/cad_def_tec.h"
#include "writeoff/mov_bai_tec.h"

namespace writeoff {
namespace {

// The defects register for one roll. It goes, whatever happens in it.
class DefectsScreen {
 public:
  explicit DefectsScreen(host::Host& host) : host_(host), screen_(host.GetFuncoes().Carrega_Form("TfmCadDefTec")) {}
  ~DefectsScreen() { host_.Free(screen_); }
  DefectsScreen(const DefectsScreen&) = delete;
  DefectsScreen& operator=(const DefectsScreen&) = delete;

  TfmCadDefTec& Register() { return dynamic_cast<TfmCadDefTec&>(screen_); }

 private:
  host::Host& host_;
  host::Screen& screen_;
};

}  // namespace

bool TfmMovBaiTec::HasRolls() const { return TbRolos.Active() && !TbRolos.IsEmpty(); }

void TfmMovBaiTec::BtnDefeitosClick() {
  const weaving::StoredRoll roll = HasRolls() ? SelectedRoll() : weaving::StoredRoll();
  DefectsScreen screen(GetHost());
  TfmCadDefTec& defects = screen.Register();
  defects.EdtOF.SetText(HasRolls() ? roll.order : Order());
  defects.EdtArtigo.SetText(roll.code);
  defects.EdtFunc.SetText(roll.employee);
  defects.EdtOrdem.SetText(HasRolls() ? std::to_string(roll.number) : std::string());
  defects.EdtTipo.SetText(kDefectOfRoll);
  defects.EdtCor.Clear();
  defects.EdtLote.Clear();
  GetHost().ShowModal(defects);
}

weaving::StoredRoll TfmMovBaiTec::SelectedRoll() const {
  const auto text = [this](std::string_view field) { return TbRolos[field].AsText(); };
  weaving::StoredRoll roll;
  roll.order = text("NUMERO");
  roll.number = static_cast<int>(TbRolos["ORDEM"].AsInteger());
  roll.code = text("CODIGO");
  roll.colour = text("COR");
  roll.date = TbRolos["DT_LAN"].AsDate();
  roll.quantity = TbRolos["QTDE"].AsFloat();
  roll.pieces = TbRolos["QTDE_R"].AsFloat();
  roll.return_note = text("NF_RET");
  roll.charge_note = text("NF_COB");
  roll.deposit = text("DEPOSITO");
  roll.machine = text("MAQUINA");
  roll.employee = text("FUNCIONARIO");
  roll.shift = text("TURNO");
  roll.lot = text("LOTE");
  roll.place = text("LOCAL");
  roll.sales_order = text("PEDIDO");
  return roll;
}

void TfmMovBaiTec::BtnExtornaClick() {
  CheckReversal();
  const weaving::StoredRoll roll = SelectedRoll();
  if (!Confirm("Deseja estornar este Movimento?")) throw host::Abort();
  if (!Services().Acessa(ClassName(), "E", "0")) throw host::Abort();
  if (GetHost().GetContabil().PeriodoConciliado(roll.date, "IV")) throw host::Abort();
  // Stations take turns on an order, from the first look at the roll to the last statement.
  weaving::HoldOrder(Db(), roll.order);
  weaving::RollReversal reversal(GetHost());
  CheckListedRoll(roll, reversal.Look(roll));
  ReverseRoll(roll, reversal);
  try {
    BuscaDados(true);
  } catch (const std::exception& error) {
    // The roll is gone and stays so; only the lists are behind.
    Warn(std::string("O estorno foi gravado, mas a ordem não pôde ser carregada novamente.\n") + error.what());
  }
}

void TfmMovBaiTec::CheckReversal() {
  const host::Date date = EdtData.GetDate();
  if (GetHost().GetContabil().PeriodoConciliado(date, "IV")) throw host::Abort();
  const bool before_roll = HasRolls() && date < TbRolos["DT_LAN"].AsDate();
  if (date.IsZero() || before_roll || date > GetHost().GetClock().Today()) Reject("Data da Baixa Inválida.", &EdtData);
  if (!HasRolls()) Reject("Sem baixas para estornar.", nullptr);
  if (!weaving::KeepsStock(Services(), TbRolos["CODIGO"].AsText())) Reject(weaving::kStockNotKept, nullptr);
}

// The list may be behind: another station took the roll back, and may have written another one under its number.
void TfmMovBaiTec::CheckListedRoll(const weaving::StoredRoll& roll, weaving::RollReversal::Standing standing) {
  if (standing == weaving::RollReversal::Standing::kAsListed) return;
  const bool gone = standing == weaving::RollReversal::Standing::kGone;
  Warn("A peça " + std::to_string(roll.number) + " já foi " +
       (gone ? "estornada por outro usuário" : "substituída por outra") + "; nada foi gravado.");
  BuscaDados(true);
  throw host::Abort();
}

void TfmMovBaiTec::ReverseRoll(const weaving::StoredRoll& roll, weaving::RollReversal& reversal) {
  Db().SetSavepoint(weaving::kBeforeReversal);
  const std::string lot = ReversalLot(roll);
  if (host::Length(lot) > weaving::kLongestLot) RefuseReversal("Lote ultrapassou o tamanho. Impossível continuar.");
  const weaving::RollReversal::FabricStock stock = reversal.StockOf(roll, lot);
  if (host::RoundTo(stock.quantity, 2) < host::RoundTo(roll.quantity, 2)) {
    RefuseReversal("Malha em estoque insuficiente para estorno.\nCódigo: " + roll.code + "\nCor: " + roll.colour +
                   "\nDepósito: " + roll.deposit + "\nLote: " + lot);
  }
  try {
    reversal.Write({.roll = roll,
                    .lot = lot,
                    .price = stock.price,
                    .by = {.client = EdtFornecedor.Text(), .employee = EdtFunc.Text(), .date = EdtData.GetDate()},
                    .log_quantity = EdtQtde.Text()});
  } catch (const std::exception& error) {
    RefuseReversal(std::string("Erro na Gravação da Baixa\n") + error.what());
  }
}

// The box makes durable what is pending: all of the reversal is undone before it, a number drawn for its lot included.
void TfmMovBaiTec::RefuseReversal(const std::string& text) {
  Db().RollbackTo(weaving::kBeforeReversal);
  Reject(text, nullptr);
}

std::string TfmMovBaiTec::ReversalLot(const weaving::StoredRoll& roll) {
  if (!host::Trim(roll.lot).empty()) return roll.lot;
  // Without the roll's bar code a ticked box leaves nothing to build the lot from.
  return weaving::RollLot(
      lot_scheme_, {roll.order, roll.number, roll.sales_order, roll.return_note, CbBarra.Checked(), std::string()},
      [this] { return Services().ProximaOrdemTecelB(Order()); });
}

}  // namespace writeoff
