// "Confirmar": the checks of a roll, its yarn, its row.
#include "host/decimal.h"
#include "host/errors.h"
#include "host/restored.h"
#include "host/text.h"
#include "weaving/average_weight.h"
#include "weaving/hold.h"
#include "weaving/parameters.h"
#include "weaving/savepoints.h"
#include "weaving/stock_keeping.h"
#include "weaving/units.h"
#include "writeoff/mov_bai_tec.h"

namespace writeoff {
namespace {

// The yarn screen for one roll. It goes, whatever happens to the roll.
class YarnScreen {
 public:
  YarnScreen(host::Host& host, yarn::YarnWriteOffOpener& opener)
      : host_(host),
        screen_(host.GetFuncoes().Carrega_Form("TFmMovBaiFio")),
        yarn_(dynamic_cast<yarn::YarnWriteOff&>(screen_)) {
    yarn_.SetOpener(&opener);
  }
  ~YarnScreen() {
    yarn_.SetOpener(nullptr);
    host_.Free(screen_);
  }
  YarnScreen(const YarnScreen&) = delete;
  YarnScreen& operator=(const YarnScreen&) = delete;

  yarn::YarnWriteOff& Yarn() { return yarn_; }
  host::Screen& Form() { return screen_; }

  bool ConsumeReserved() {
    const host::Restored<bool> automatic(yarn_.BaixaAutomatica, true);
    return yarn_.BaixaFiosReservados();
  }

 private:
  host::Host& host_;
  host::Screen& screen_;
  yarn::YarnWriteOff& yarn_;
};

}  // namespace

std::string TfmMovBaiTec::Order() const { return host::Trim(EdtLote.Text()); }

bool TfmMovBaiTec::IsKnown(std::string_view table, std::string_view column, std::string_view value) const {
  return Services().Existe(table, column, Services().Aspas(value), Db());
}

void TfmMovBaiTec::Reject(std::string_view text, host::Control* back_to) {
  Warn(text);
  if (back_to != nullptr) back_to->SetFocus();
  throw host::Abort();
}

weaving::NewRoll TfmMovBaiTec::CurrentRoll() const {
  weaving::NewRoll roll;
  roll.order = Order();
  roll.client = EdtFornecedor.Text();
  roll.machine = EdtMaquina.Text();
  roll.employee = EdtFunc.Text();
  roll.deposit = EdtDeposito.Text();
  roll.date = EdtData.GetDate();
  roll.unit = TbItens["Unidade"].AsText();
  roll.unit_weight = TbItens["Peso_Uni"].AsFloat();
  roll.sales_order = TbItens["Pedido"].AsText();
  roll.return_note = EdtNFRet.Text();
  roll.lot_scheme = lot_scheme_;
  roll.bar_code_ticked = CbBarra.Checked();
  roll.bar_code = EdtBarra.Text();
  return roll;
}

void TfmMovBaiTec::BtnConfirmaClick() {
  if (GetHost().GetContabil().PeriodoConciliado(EdtData.GetDate(), "IV")) throw host::Abort();
  CheckInputs();
  const bool written = Quantity() > 0 && WriteOffRoll();
  ClearRoll();
  // What follows is about the roll just written, which other stations' may have come after.
  const bool selected = written && TbRolos.FindField("ORDEM") != nullptr && TbRolos.Locate("ORDEM", {OrdemBaixa});
  const weaving::Parameters parameters(Services());
  if (parameters.DefectsAfterRoll() && selected == written) OpenDefects();
  if (written && parameters.LabelAfterRoll()) PrintLabelAfterRoll(selected);
  BackToWeighing();
}

void TfmMovBaiTec::ClearRoll() {
  EdtQtde.SetNumber(0);
  EdtPecas.SetNumber(0);
  EdtBarra.Clear();
}

// Whatever comes of the register, the label is still to be printed and the next roll waits.
void TfmMovBaiTec::OpenDefects() {
  try {
    Site()->Press(BtnDefeitos);
  } catch (const host::Abort&) {
    return;
  } catch (const std::exception& error) {
    Warn(std::string("O cadastro de defeitos não pôde ser aberto.\n") + error.what());
  }
}

void TfmMovBaiTec::BackToWeighing() {
  if (CbBarra.Checked()) {
    EdtBarra.SetFocus();
  } else {
    EdtQtde.SetFocus();
  }
}

void TfmMovBaiTec::CheckInputs() {
  CheckCodes();
  const host::Date date = EdtData.GetDate();
  if (date.IsZero() || date > GetHost().GetClock().Today()) Reject("Data da Baixa Inválida.", &EdtData);
  if (!weaving::KeepsStock(Services(), EdtCodigo.Text())) Reject(weaving::kStockNotKept, nullptr);
  // Asked again: it may have been deleted at another station meanwhile.
  if (!IsKnown("TECEL", "NUMERO", Order())) Reject("Ordem de Tecelagem não cadastrada.", &EdtLote);
}

void TfmMovBaiTec::CheckCodes() {
  if (!EdtMaquina.Text().empty() && !IsKnown("MAQUINA", "MAQUINA", EdtMaquina.Text())) {
    Reject("Código da Máquina Inválido.", &EdtMaquina);
  }
  if (Order().empty() || !IsKnown("TECEL", "NUMERO", Order())) Reject("Lote Inválido.", &EdtLote);
  if (!EdtFunc.Text().empty() && !IsKnown("PESSOAL", "CODIGO", EdtFunc.Text())) {
    Reject("Código do Funcionário Inválido.", &EdtFunc);
  }
  if (EdtCodigo.Text().empty()) Reject("Código Inválido.", &EdtCodigo);
  if (EdtDeposito.Text().empty() || !IsKnown("DEPOSITO", "CODIGO", EdtDeposito.Text())) {
    Reject("Depósito Inválido.", &EdtDeposito);
  }
}

bool TfmMovBaiTec::WriteOffRoll() {
  const double net = CheckedWeight(NetWeight());
  ConsumeYarn(net);
  return StoreRoll(net);
}

double TfmMovBaiTec::Quantity() const { return host::RoundTo(EdtQtde.Number(), 3); }

double TfmMovBaiTec::Pieces() const { return host::RoundTo(EdtPecas.Number(), 1); }

double TfmMovBaiTec::NetWeight() {
  const double pieces = Pieces() == 0 ? 1 : Pieces();
  const double net = host::WithoutNoise(Quantity() - EdtTara.Number() * pieces);
  if (host::RoundTo(net, 3) == host::RoundTo(last_net_, 3)) {
    last_net_ = 0;
    Inform("Baixa já Realizada.");
    throw host::Abort();
  }
  return net;
}

// The roll's quantity as it is written off: kilograms, by weight also for what is counted or measured.
double TfmMovBaiTec::CheckedWeight(double net) {
  const double standard = TbItens["KgRolo"].AsFloat();
  if (standard > 0 && weaving::AverageRoll(net, Pieces()) > weaving::HeaviestRoll(standard) &&
      !Confirm("Peso médio dos rolos está fora do padrão, deseja continuar?")) {
    throw host::Abort();
  }
  if (!weaving::CountedByWeight(TbItens["Unidade"].AsText())) return net;
  const double unit_weight = TbItens["Peso_Uni"].AsFloat();
  if (!(unit_weight > 0)) Reject("Peso Médio do material zerado.", nullptr);
  return host::WithoutNoise(net * unit_weight);
}

void TfmMovBaiTec::ConsumeYarn(double net) {
  // Stations take turns on an order: what is reserved and which roll comes next is read under this lock.
  weaving::HoldOrder(Db(), Order());
  OrdemBaixa = 0;
  LoteBaixa.clear();
  SituacaoFios = yarn::kYarnOpen;
  bool consumed = false;
  {
    YarnScreen screen(GetHost(), *this);
    yarn::YarnWriteOff& yarn = screen.Yarn();
    yarn.QtdeMalha = net;
    yarn.MaterialMalha = EdtCodigo.Text();
    yarn.CorMalha = EdtCor.Text();
    yarn.ClienteMalha = EdtFornecedor.Text();
    yarn.LocalMalha = EdtLocal.Text();
    yarn.ConsultaFiosOF();
    consumed = screen.ConsumeReserved() || ChooseYarn(yarn, screen.Form());
  }
  if (consumed) return;
  Inform("Baixa Cancelada.");
  throw host::Abort();
}

// The reservations did not cover the roll: the lots used for earlier rolls, then the operator.
bool TfmMovBaiTec::ChooseYarn(yarn::YarnWriteOff& yarn, host::Screen& screen) {
  if (weaving::Parameters::NeedsReservation(weaving::Parameters(Services()).Reservations())) {
    Inform("Lote sem reserva.");
    return false;
  }
  if (yarn.BaixaFiosLembrados()) return true;
  GetHost().ShowModal(screen);
  return SituacaoFios == yarn::kYarnConsumed;
}

bool TfmMovBaiTec::StoreRoll(double net) {
  weaving::StoredRoll roll;
  roll.order = Order();
  roll.number = OrdemBaixa;
  roll.code = EdtCodigo.Text();
  roll.colour = EdtCor.Text();
  roll.date = EdtData.GetDate();
  roll.quantity = net;
  roll.pieces = Pieces();
  roll.return_note = EdtNFRet.Text();
  roll.charge_note = EdtNFCob.Text();
  roll.deposit = EdtDeposito.Text();
  roll.machine = EdtMaquina.Text();
  roll.employee = EdtFunc.Text();
  roll.shift = EdtTurno.Text();
  roll.lot = LoteBaixa;
  roll.place = EdtLocal.Text();
  roll.sales_order = TbItens["Pedido"].AsText();
  try {
    record_.Write(roll);
  } catch (const std::exception& error) {
    // The box below makes durable what is pending: the whole roll is undone before it.
    const std::string text = error.what();
    Db().RollbackTo(weaving::kBeforeRoll);
    record_.LogFailure(roll);
    Warn("Erro na Gravação da Baixa\n" + text);
    return false;
  }
  last_net_ = net;
  try {
    BuscaDados(true);
  } catch (const std::exception& error) {
    // The roll is written and stays; only the lists are behind.
    Warn(std::string("A baixa foi gravada, mas a ordem não pôde ser carregada novamente.\n") + error.what());
  }
  return true;
}

}  // namespace writeoff
