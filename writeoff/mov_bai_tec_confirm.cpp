// "Confirmar": the checks of a roll, its yarn, its row.
#include <cmath>

#include "host/decimal.h"
#include "host/errors.h"
#include "host/restored.h"
#include "host/text.h"
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

// Half as much again as the standard roll, the half in whole kilograms.
double HeaviestRoll(double standard) {
  const double tolerance = host::RoundTo(host::WithoutNoise(standard / 100 * 50), 0);
  return host::RoundTo(tolerance + standard, 3);
}

double AverageRoll(double net, double pieces) {
  if (!(pieces > 0)) return 0;
  const double average = net / pieces;
  return std::isfinite(average) ? host::RoundTo(average, 3) : 0;
}

}  // namespace

std::string TfmMovBaiTec::Ordem() const { return host::Trim(EdtLote.Text()); }

bool TfmMovBaiTec::Existe(std::string_view table, std::string_view column, std::string_view value) const {
  return Servicos().Existe(table, column, Servicos().Aspas(value), Banco());
}

void TfmMovBaiTec::Recusa(std::string_view text, host::Control* back_to) {
  Warn(text);
  if (back_to != nullptr) back_to->SetFocus();
  throw host::Abort();
}

yarn::Roll TfmMovBaiTec::CurrentRoll() const {
  yarn::Roll roll;
  roll.order = Ordem();
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
  ConfereCampos();
  const bool written = Quantidade() > 0 && BaixaPeca();
  ZeraPeca();
  // What follows is about the roll just written, which other stations' may have come after.
  const bool selected = written && TbRolos.FindField("ORDEM") != nullptr && TbRolos.Locate("ORDEM", {OrdemBaixa});
  if (Servicos().BuscaParametro("MAL", 60) == "S" && selected == written) AbreDefeitos();
  if (written && Servicos().BuscaParametro("MAL", 50) == "S") ImprimeEtiquetaDaBaixa(selected);
  VoltaParaPesagem();
}

void TfmMovBaiTec::ZeraPeca() {
  EdtQtde.SetNumber(0);
  EdtPecas.SetNumber(0);
  EdtBarra.Clear();
}

// Whatever comes of the register, the label is still to be printed and the next roll waits.
void TfmMovBaiTec::AbreDefeitos() {
  try {
    Site()->Press(BtnDefeitos);
  } catch (const host::Abort&) {
    return;
  } catch (const std::exception& error) {
    Warn(std::string("O cadastro de defeitos não pôde ser aberto.\n") + error.what());
  }
}

void TfmMovBaiTec::VoltaParaPesagem() {
  if (CbBarra.Checked()) {
    EdtBarra.SetFocus();
  } else {
    EdtQtde.SetFocus();
  }
}

void TfmMovBaiTec::ConfereCampos() {
  ConfereCadastros();
  const host::Date date = EdtData.GetDate();
  if (date.IsZero() || date > GetHost().GetClock().Today()) Recusa("Data da Baixa Inválida.", &EdtData);
  const auto keeps_stock =
      Servicos().Busca_Valor("MATERIAL", "CODIGO", "ESTOQUE", Servicos().Aspas(EdtCodigo.Text()), true, true);
  if (keeps_stock.AsText() != "S") {
    Recusa("Material não está ativo para controlar estoque. Impossível continuar.", nullptr);
  }
  // Asked again: it may have been deleted at another station meanwhile.
  if (!Existe("TECEL", "NUMERO", Ordem())) Recusa("Ordem de Tecelagem não cadastrada.", &EdtLote);
}

void TfmMovBaiTec::ConfereCadastros() {
  if (!EdtMaquina.Text().empty() && !Existe("MAQUINA", "MAQUINA", EdtMaquina.Text())) {
    Recusa("Código da Máquina Inválido.", &EdtMaquina);
  }
  if (Ordem().empty() || !Existe("TECEL", "NUMERO", Ordem())) Recusa("Lote Inválido.", &EdtLote);
  if (!EdtFunc.Text().empty() && !Existe("PESSOAL", "CODIGO", EdtFunc.Text())) {
    Recusa("Código do Funcionário Inválido.", &EdtFunc);
  }
  if (EdtCodigo.Text().empty()) Recusa("Código Inválido.", &EdtCodigo);
  if (EdtDeposito.Text().empty() || !Existe("DEPOSITO", "CODIGO", EdtDeposito.Text())) {
    Recusa("Depósito Inválido.", &EdtDeposito);
  }
}

bool TfmMovBaiTec::BaixaPeca() {
  const double net = ConferePeso(PesoLiquido());
  BaixaFios(net);
  return GravaPeca(net);
}

double TfmMovBaiTec::Quantidade() const { return host::RoundTo(EdtQtde.Number(), 3); }

double TfmMovBaiTec::Pecas() const { return host::RoundTo(EdtPecas.Number(), 1); }

double TfmMovBaiTec::PesoLiquido() {
  const double pieces = Pecas() == 0 ? 1 : Pecas();
  const double net = host::WithoutNoise(Quantidade() - EdtTara.Number() * pieces);
  if (host::RoundTo(net, 3) == host::RoundTo(last_net_, 3)) {
    last_net_ = 0;
    Inform("Baixa já Realizada.");
    throw host::Abort();
  }
  return net;
}

// The roll's quantity as it is written off: kilograms, by weight also for what is counted or measured.
double TfmMovBaiTec::ConferePeso(double net) {
  const double standard = TbItens["KgRolo"].AsFloat();
  if (standard > 0 && AverageRoll(net, Pecas()) > HeaviestRoll(standard) &&
      !Confirm("Peso médio dos rolos está fora do padrão, deseja continuar?")) {
    throw host::Abort();
  }
  if (!yarn::CountedByWeight(TbItens["Unidade"].AsText())) return net;
  const double unit_weight = TbItens["Peso_Uni"].AsFloat();
  if (!(unit_weight > 0)) Recusa("Peso Médio do material zerado.", nullptr);
  return host::WithoutNoise(net * unit_weight);
}

void TfmMovBaiTec::BaixaFios(double net) {
  // Stations take turns on an order: what is reserved and which roll comes next is read under this lock.
  Banco().LockRow("TECEL", "NUMERO", Ordem());
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
    consumed = screen.ConsumeReserved() || EscolheFios(yarn, screen.Form());
  }
  if (consumed) return;
  Inform("Baixa Cancelada.");
  throw host::Abort();
}

// The reservations did not cover the roll: the lots used for earlier rolls, then the operator.
bool TfmMovBaiTec::EscolheFios(yarn::YarnWriteOff& yarn, host::Screen& screen) {
  if (Servicos().BuscaParametro("MAL", 70) != "N") {
    Inform("Lote sem reserva.");
    return false;
  }
  if (yarn.BaixaFiosLembrados()) return true;
  GetHost().ShowModal(screen);
  return SituacaoFios == yarn::kYarnConsumed;
}

bool TfmMovBaiTec::GravaPeca(double net) {
  RollRow roll;
  roll.order = Ordem();
  roll.number = OrdemBaixa;
  roll.code = EdtCodigo.Text();
  roll.colour = EdtCor.Text();
  roll.date = EdtData.GetDate();
  roll.quantity = net;
  roll.pieces = Pecas();
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
    Banco().RollbackTo(yarn::kBeforeRoll);
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
