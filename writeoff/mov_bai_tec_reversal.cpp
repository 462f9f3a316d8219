// What is done with a roll of the list: its defects, and "Estornar" with its checks and what the person is told.
#include "host/decimal.h"
#include "host/errors.h"
#include "host/text.h"
#include "weaving/roll_lot.h"
#include "writeoff/cad_def_tec.h"
#include "writeoff/mov_bai_tec.h"
#include "writeoff/roll_reversal.h"

namespace writeoff {
namespace {

// Marked before the first statement that a reversal writes.
constexpr std::string_view kBeforeReversal = "ANTES_DO_ESTORNO";
// The mill's other programs know lots up to this long.
constexpr std::size_t kLongestLot = 15;

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

bool TfmMovBaiTec::TemPecas() const { return TbRolos.Active() && !TbRolos.IsEmpty(); }

void TfmMovBaiTec::BtnDefeitosClick() {
  const RollRow roll = TemPecas() ? PecaSelecionada() : RollRow();
  DefectsScreen screen(GetHost());
  TfmCadDefTec& defects = screen.Register();
  defects.EdtOF.SetText(TemPecas() ? roll.order : Ordem());
  defects.EdtArtigo.SetText(roll.code);
  defects.EdtFunc.SetText(roll.employee);
  defects.EdtOrdem.SetText(TemPecas() ? std::to_string(roll.number) : std::string());
  defects.EdtTipo.SetText(kDefectOfRoll);
  defects.EdtCor.Clear();
  defects.EdtLote.Clear();
  GetHost().ShowModal(defects);
}

RollRow TfmMovBaiTec::PecaSelecionada() const {
  const auto text = [this](std::string_view field) { return TbRolos[field].AsText(); };
  RollRow roll;
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
  ConfereEstorno();
  const RollRow roll = PecaSelecionada();
  if (!Confirm("Deseja estornar este Movimento?")) throw host::Abort();
  if (!Servicos().Acessa(ClassName(), "E", "0")) throw host::Abort();
  if (GetHost().GetContabil().PeriodoConciliado(roll.date, "IV")) throw host::Abort();
  // Stations take turns on an order, from the first look at the roll to the last statement.
  Banco().LockRow("TECEL", "NUMERO", roll.order);
  RollReversal reversal(GetHost());
  ConferePecaListada(roll, reversal.Look(roll));
  EstornaPeca(roll, reversal);
  try {
    BuscaDados(true);
  } catch (const std::exception& error) {
    // The roll is gone and stays so; only the lists are behind.
    Warn(std::string("O estorno foi gravado, mas a ordem não pôde ser carregada novamente.\n") + error.what());
  }
}

void TfmMovBaiTec::ConfereEstorno() {
  const host::Date date = EdtData.GetDate();
  if (GetHost().GetContabil().PeriodoConciliado(date, "IV")) throw host::Abort();
  const bool before_roll = TemPecas() && date < TbRolos["DT_LAN"].AsDate();
  if (date.IsZero() || before_roll || date > GetHost().GetClock().Today()) Recusa("Data da Baixa Inválida.", &EdtData);
  if (!TemPecas()) Recusa("Sem baixas para estornar.", nullptr);
  const std::string fabric = Servicos().Aspas(TbRolos["CODIGO"].AsText());
  if (Servicos().Busca_Valor("MATERIAL", "CODIGO", "ESTOQUE", fabric, true, true).AsText() != "S") {
    Recusa("Material não está ativo para controlar estoque. Impossível continuar.", nullptr);
  }
}

// The list may be behind: another station took the roll back, and may have written another one under its number.
void TfmMovBaiTec::ConferePecaListada(const RollRow& roll, RollReversal::Standing standing) {
  if (standing == RollReversal::Standing::kAsListed) return;
  const bool gone = standing == RollReversal::Standing::kGone;
  Warn("A peça " + std::to_string(roll.number) + " já foi " +
       (gone ? "estornada por outro usuário" : "substituída por outra") + "; nada foi gravado.");
  BuscaDados(true);
  throw host::Abort();
}

void TfmMovBaiTec::EstornaPeca(const RollRow& roll, RollReversal& reversal) {
  Banco().SetSavepoint(kBeforeReversal);
  const std::string lot = LoteDoEstorno(roll);
  if (host::Length(lot) > kLongestLot) RecusaEstorno("Lote ultrapassou o tamanho. Impossível continuar.");
  const RollReversal::FabricStock stock = reversal.StockOf(roll, lot);
  if (host::RoundTo(stock.quantity, 2) < host::RoundTo(roll.quantity, 2)) {
    RecusaEstorno("Malha em estoque insuficiente para estorno.\nCódigo: " + roll.code + "\nCor: " + roll.colour +
                  "\nDepósito: " + roll.deposit + "\nLote: " + lot);
  }
  try {
    reversal.Write({.roll = roll,
                    .lot = lot,
                    .price = stock.price,
                    .client = EdtFornecedor.Text(),
                    .employee = EdtFunc.Text(),
                    .date = EdtData.GetDate(),
                    .log_quantity = EdtQtde.Text()});
  } catch (const std::exception& error) {
    RecusaEstorno(std::string("Erro na Gravação da Baixa\n") + error.what());
  }
}

// The box makes durable what is pending: all of the reversal is undone before it, a number drawn for its lot included.
void TfmMovBaiTec::RecusaEstorno(const std::string& text) {
  Banco().RollbackTo(kBeforeReversal);
  Recusa(text, nullptr);
}

std::string TfmMovBaiTec::LoteDoEstorno(const RollRow& roll) {
  if (!host::Trim(roll.lot).empty()) return roll.lot;
  // Without the roll's bar code a ticked box leaves nothing to build the lot from.
  return weaving::RollLot(
      lot_scheme_, {roll.order, roll.number, roll.sales_order, roll.return_note, CbBarra.Checked(), std::string()},
      [this] { return Servicos().ProximaOrdemTecelB(Ordem()); });
}

}  // namespace writeoff
