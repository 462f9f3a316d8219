#include "yarn/mov_bai_fio.h"

#include <algorithm>
#include <utility>

#include "host/decimal.h"
#include "host/errors.h"
#include "host/kit/columns.h"
#include "host/text.h"

namespace yarn {
namespace {

using host::FieldDef;
using host::FieldType;

// A remainder up to this is forgiven.
constexpr double kForgiven = 0.01;
// How much a typed quantity may exceed the computed one before the operator is asked, in percent of the latter.
constexpr double kMostPercent = 110;
// As wide as the stock's own column: a lot code cut here would name another lot.
constexpr std::size_t kLotWidth = 32;

std::vector<FieldDef> ConsumptionFields() {
  return {{"Codigo", FieldType::kText, 15, {}, "Código"},
          {"Descricao", FieldType::kText, 50, {}, "Descrição"},
          {"Cor", FieldType::kText, 6},
          {"Qtde", FieldType::kFloat, 0, "0.000", "Qtde."},
          {"Qt_Orig", FieldType::kFloat, 0, "0.000"},
          {"Perc", FieldType::kFloat, 0, "0.00"}};
}

std::vector<FieldDef> StockFields() {
  return {{"Codigo", FieldType::kText, 15, {}, "Código"},
          {"Descricao", FieldType::kText, 50, {}, "Descrição"},
          {"Cor", FieldType::kText, 6},
          {"Deposito", FieldType::kText, 6, {}, "Depósito"},
          {"Lote", FieldType::kText, kLotWidth},
          {"Qtde", FieldType::kFloat, 0, "0.000"},
          {"Qtde_B", FieldType::kFloat, 0, "0.000", "Qtde. B"},
          {"Reservadas", FieldType::kFloat, 0, "0.000"},
          {"Preco", FieldType::kFloat, 0, "0.0000", "Preço"},
          {"DescDep", FieldType::kText, 30, {}, "Desc. Depósito"},
          {"Local", FieldType::kText, 10},
          {"Fornecedor", FieldType::kText, 80},
          {"Custo_Imp", FieldType::kFloat, 0, "0.0000"}};
}

std::vector<host::GridColumn> ConsumptionColumns() {
  host::GridColumn wanted = host::QuantityColumn("Qtde", "Qtde.", 12);
  wanted.read_only = false;
  return {host::ShownColumn("Codigo", "Código", 15), host::ShownColumn("Descricao", "Descrição", 40),
          host::ShownColumn("Cor", "Cor", 6), wanted};
}

double Rounded(const host::Dataset& rows, std::string_view field) { return host::RoundTo(rows[field].AsFloat(), 3); }

}  // namespace

TFmMovBaiFio::TFmMovBaiFio(host::Host& host)
    : Screen(host, "TFmMovBaiFio", "fmMovBaiFio", "Selecione os consumos"),
      TbBaixa(*this, "TbBaixa", ConsumptionFields()),
      TbEst(*this, "TbEst", StockFields()),
      GrdConsumos(*this, "GrdConsumos", TbBaixa, ConsumptionColumns()),
      EdtDeposito(*this, "EdtDeposito", "Depósito", host::EditKind::kText, 6),
      LblDeposito(*this, "LblDeposito"),
      PqDeposito(*this, "PqDeposito", "DEPOSITO", "CODIGO"),
      EdtLote(*this, "EdtLote", "Lote", host::EditKind::kText, kLotWidth),
      PqLote(*this, "PqLote", "MAT_ITEN", "LOTE"),
      GrdEstoque(*this, "GrdEstoque", TbEst, {}),
      CbTodos(*this, "CbTodos", "Usar para todas baixas"),
      BitBtn1(*this, "BitBtn1", "Baixar", [this] { BitBtn1Click(); }),
      BitBtn2(*this, "BitBtn2", "Cancelar", [this] { BitBtn2Click(); }) {
  GrdConsumos.SetCaption("Consumos");
  GrdEstoque.SetCaption("Estoque");
  GrdEstoque.SetReadOnly(true);
  GrdEstoque.OnEnter = [this] { BitBtn1.SetEnabled(!TbEst.IsEmpty()); };
  BitBtn1.SetEnabled(false);
  BitBtn1.Shortcut = host::Key::kF8;
  CbTodos.OnClick = [this] { CbTodosClick(); };

  TbBaixa.BeforePost = [this] { TbBaixaBeforePost(); };
  // What a roll consumes is computed; the operator may change quantities only.
  TbBaixa.AfterInsert = [this] {
    if (loading_) return;
    TbBaixa.Cancel();
    throw host::Abort();
  };
  TbBaixa.BeforeDelete = [] { throw host::Abort(); };
  TbBaixa.AfterScroll = [this] {
    if (!loading_) FiltraFio();
  };

  EdtDeposito.Lookup = &PqDeposito;
  EdtLote.Lookup = &PqLote;
  EdtDeposito.OnChange = [this] {
    const std::string code = host::Trim(EdtDeposito.Text());
    LblDeposito.SetText(
        code.empty()
            ? std::string()
            : Servicos().Busca_Valor("DEPOSITO", "CODIGO", "DESCRICAO", Servicos().Aspas(code), true, true).AsText());
  };
  EdtDeposito.OnExit = [this] { FiltraFio(); };
  PqDeposito.OnFechaPesquisa = [this] {
    EdtDeposito.SetText(PqDeposito.RetornoPesquisa("CODIGO").AsText());
    FiltraFio();
  };
  EdtLote.OnChange = [this] {
    if (host::Trim(EdtLote.Text()).empty()) FiltraFio();
  };
  EdtLote.OnExit = [this] { FiltraFio(); };
  PqLote.OnFechaPesquisa = [this] {
    EdtLote.SetText(PqLote.RetornoPesquisa("LOTE").AsText());
    FiltraFio();
  };
}

void TFmMovBaiFio::SetOpener(YarnWriteOffOpener* opener) {
  opener_ = nullptr;
  if (opener == nullptr) return;
  // The screen may have been open before the roll came: what was chosen then would hide the roll's lots.
  CbTodos.SetChecked(false);
  CbTodos.SetEnabled(true);
  EdtDeposito.Clear();
  EdtLote.Clear();
  opener_ = opener;
}

void TFmMovBaiFio::FormCreate() {
  ParamReserva = Servicos().BuscaParametro("MAL", 70);
  ColunasDoEstoque();
}

void TFmMovBaiFio::ColunasDoEstoque() {
  std::vector<host::GridColumn> columns = {host::ShownColumn("Codigo", "Código", 12),
                                           host::ShownColumn("Descricao", "Descrição", 22),
                                           host::ShownColumn("Cor", "Cor", 6),
                                           host::ShownColumn("Deposito", "Depósito", 9),
                                           host::ShownColumn("Lote", "Lote", 13),
                                           host::QuantityColumn("Qtde", "Qtde", 11),
                                           host::QuantityColumn("Qtde_B", "Qtde. B", 11),
                                           host::QuantityColumn("Reservadas", "Reservadas", 11),
                                           host::NumberColumn("Preco", "Preço", 10),
                                           host::ShownColumn("DescDep", "Desc. Depósito", 24),
                                           host::ShownColumn("Local", "Local", 10)};
  if (UsaFornecedorLote) columns.push_back(host::ShownColumn("Fornecedor", "Fornecedor", 32));
  GrdEstoque.SetColumns(columns);
}

Roll TFmMovBaiFio::PecaAtual() const {
  Roll roll = opener_->CurrentRoll();
  roll.client = ClienteMalha;
  return roll;
}

LotKey TFmMovBaiFio::LoteAtual() const {
  return {TbEst["Codigo"].AsText(), TbEst["Cor"].AsText(), TbEst["Deposito"].AsText(), TbEst["Lote"].AsText()};
}

void TFmMovBaiFio::FiltraFio() {
  const host::Funcoes& funcoes = Servicos();
  const std::string code = funcoes.Aspas(TbBaixa["Codigo"].AsText());
  const std::string colour = funcoes.Aspas(TbBaixa["Cor"].AsText());
  const std::string deposit = host::Trim(EdtDeposito.Text());
  const std::string lot = host::Trim(EdtLote.Text());

  std::string filter = "codigo = " + code + " and cor = " + colour;
  if (!deposit.empty()) filter += " and Deposito = " + funcoes.Aspas(deposit);
  if (!lot.empty()) filter += " and Lote = " + funcoes.Aspas(lot);
  TbEst.SetFilter(filter);
  TbEst.SetFiltered(true);
  TbEst.SetIndex("Lote");

  std::string lots = "CODIGO = " + code + " AND COR = " + colour + " AND QTDE > 0 ";
  if (!deposit.empty()) lots += " AND DEPOSITO = " + funcoes.Aspas(deposit);
  PqLote.SetFilter(lots);
}

void TFmMovBaiFio::CbTodosClick() { ConsultaFiosOF(); }

bool TFmMovBaiFio::FormKeyDown(host::Key key) {
  if (key != host::Key::kF6 || Site() == nullptr) return false;
  if (Site()->Focused() == &GrdEstoque) {
    GrdConsumos.SetFocus();
  } else {
    GrdEstoque.SetFocus();
  }
  return true;
}

std::vector<host::KeyHint> TFmMovBaiFio::KeyHints() const { return {{host::Key::kF6, "Consumos/Estoque"}}; }

void TFmMovBaiFio::BitBtn1Click() {
  Baixa();
  // The button is disabled again; what is still wanted is seen next.
  if (!CloseRequested()) GrdConsumos.SetFocus();
}

void TFmMovBaiFio::BitBtn2Click() {
  if (opener_ != nullptr) {
    opener_->SituacaoFios = kYarnCancelled;
    opener_->RememberedLots().Empty();
  }
  Close();
}

void TFmMovBaiFio::TbBaixaBeforePost() {
  const double quantity = TbBaixa["Qtde"].AsFloat();
  const double original = TbBaixa["Qt_Orig"].AsFloat();
  if (original == quantity || !(original > 0)) return;
  if (host::WithoutNoise(quantity * 100 / original) <= kMostPercent) return;
  if (Confirm("Quantidade baixada ultrapassou 10% do peso original. Deseja continuar?")) return;
  TbBaixa.Cancel();
  throw host::Abort();
}

// --- taking from a lot -------------------------------------------------------------------------------------------

bool TFmMovBaiFio::Baixa() {
  if (TbBaixa.IsEmpty() || TbEst.IsEmpty()) return false;
  bool refused = false;
  const double quantity = QuantidadeABaixar(refused);
  if (refused) return false;

  const LotKey lot = LoteAtual();
  const host::Value before_taken = TbEst["Qtde_B"].Get();
  const host::Value before_held = TbEst["Qtde"].Get();
  const auto set_lot = [this](const host::Value& taken, const host::Value& held) {
    TbEst.Edit();
    TbEst["Qtde_B"].Set(taken);
    TbEst["Qtde"].Set(held);
    TbEst.Post();
  };
  set_lot(host::RoundTo(Rounded(TbEst, "Qtde_B") + quantity, 3), host::RoundTo(Rounded(TbEst, "Qtde") - quantity, 3));
  const std::size_t line = TbBaixa.CurrentId();
  try {
    BaixaDoConsumo(quantity);
  } catch (const host::Abort&) {
    set_lot(before_taken, before_held);
    throw;
  }
  if (CbTodos.Checked()) LembraLote(lot);
  if (BaixaAutomatica) return true;
  if (!SobraConsumo()) {
    ConcluiBaixa();
    return true;
  }
  if (TbBaixa.CurrentId() != line) FiltraFio();
  BitBtn1.SetEnabled(false);
  return true;
}

double TFmMovBaiFio::QuantidadeABaixar(bool& refused) {
  const double wanted = Rounded(TbBaixa, "Qtde");
  if (BaixaAutomatica) return std::min(wanted, host::RoundTo(QtdeReservada, 3));
  const double held = Rounded(TbEst, "Qtde");
  const double reserved = Rounded(TbEst, "Reservadas");
  if (held <= reserved) {
    Inform("Quantidade reservada. Impossível continuar.");
    refused = true;
    return 0;
  }
  return std::min(wanted, host::RoundTo(held - reserved, 3));
}

void TFmMovBaiFio::BaixaDoConsumo(double quantity) {
  const double left = host::RoundTo(Rounded(TbBaixa, "Qtde") - quantity, 3);
  const double original = host::RoundTo(Rounded(TbBaixa, "Qt_Orig") - quantity, 3);
  const bool done = left <= kForgiven;
  TbBaixa.Edit();
  TbBaixa["Qtde"].Set(done ? 0 : left);
  TbBaixa["Qt_Orig"].Set(done ? 0 : original);
  TbBaixa.Post();
}

void TFmMovBaiFio::LembraLote(const LotKey& lot) {
  host::Dataset& lots = opener_->RememberedLots();
  if (lots.Locate("Codigo;Cor;Lote;Deposito", {lot.code, lot.colour, lot.lot, lot.deposit})) return;
  lots.Append();
  lots["Codigo"].Set(lot.code);
  lots["Cor"].Set(lot.colour);
  lots["Lote"].Set(lot.lot);
  lots["Deposito"].Set(lot.deposit);
  lots.Post();
}

bool TFmMovBaiFio::SobraConsumo() const {
  for (host::DatasetCursor line(TbBaixa); !line.Eof(); line.Next()) {
    if (line.FieldByName("Qtde").AsFloat() > 0) return true;
  }
  return false;
}

// The end of every way to consume. In the operator's hands the program has waited, so that another station may have
// had its turn on the order: the roll's number is read under a new lock. Whatever happens the screen has done its work:
// its lists are used up.
void TFmMovBaiFio::ConcluiBaixa() {
  try {
    if (!BaixaAutomatica) Banco().LockRow("TECEL", "NUMERO", opener_->CurrentRoll().order);
    const int ordem = ProximaPeca();
    MovimentaEstoque(ordem);
    opener_->OrdemBaixa = ordem;
    opener_->SituacaoFios = kYarnConsumed;
  } catch (...) {
    Close();
    throw;
  }
  Close();
}

int TFmMovBaiFio::ProximaPeca() {
  const auto query = Banco().NewQuery();
  query->SQL.Add("SELECT MAX(ORDEM) ORDEM FROM " + Servicos().DBLocal("TECELB", true) +
                 " WHERE NUMERO = " + Servicos().Aspas(opener_->CurrentRoll().order));
  query->Open();
  return static_cast<int>(query->FieldByName("ORDEM").AsInteger()) + 1;
}

// --- without the operator ----------------------------------------------------------------------------------------

bool TFmMovBaiFio::BaixaFiosReservados() {
  TbBaixa.SetFiltered(false);
  for (TbBaixa.First(); !TbBaixa.Eof(); TbBaixa.Next()) {
    FiltraFio();  // a filter by code alone would offer the lots of another colour
    BaixaLinhaReservada();
  }
  TbBaixa.SetFiltered(true);
  TbBaixa.First();  // where the operator goes on
  FiltraFio();
  if (SobraConsumo()) return false;
  ConcluiBaixa();
  return true;
}

void TFmMovBaiFio::BaixaLinhaReservada() {
  for (TbEst.First(); !TbEst.Eof() && TbBaixa["Qtde"].AsFloat() > 0; TbEst.Next()) {
    const double reserved = QtdeDaReserva(LoteAtual());
    if (!(reserved > 0) || TbEst["Qtde"].AsFloat() < reserved) continue;
    CbTodos.SetChecked(false);
    CbTodos.SetEnabled(false);
    QtdeReservada = reserved;
    Baixa();
  }
}

double TFmMovBaiFio::QtdeDaReserva(const LotKey& lot) {
  const auto query = Banco().NewQuery();
  ReservedOfLot(query->SQL, Servicos(), opener_->CurrentRoll().order, lot);
  query->Open();
  return query->IsEmpty() ? 0 : query->FieldByName("QTDE").AsFloat();
}

bool TFmMovBaiFio::BaixaFiosLembrados() {
  for (host::DatasetCursor at(opener_->RememberedLots()); !at.Eof(); at.Next()) {
    const LotKey lot = {at.FieldByName("Codigo").AsText(), at.FieldByName("Cor").AsText(),
                        at.FieldByName("Deposito").AsText(), at.FieldByName("Lote").AsText()};
    switch (BaixaLoteLembrado(lot)) {
      case Lembrado::kConcluido:
        return true;
      case Lembrado::kPara:
        return false;
      case Lembrado::kSegue:
        break;
    }
  }
  return false;
}

TFmMovBaiFio::Lembrado TFmMovBaiFio::BaixaLoteLembrado(const LotKey& lot) {
  bool known = false;
  const std::vector<std::size_t> lines = LinhasDoFio(lot, known);
  if (!known) return Lembrado::kPara;
  for (const std::size_t line : lines) {
    if (!TbBaixa.GoToId(line)) continue;
    FiltraFio();
    if (!TbEst.Locate("Codigo;Cor;Lote;Deposito", {lot.code, lot.colour, lot.lot, lot.deposit})) return Lembrado::kPara;
    if (Rounded(TbEst, "Qtde") < Rounded(TbBaixa, "Qtde")) return Lembrado::kPara;
    if (!Baixa()) return Lembrado::kPara;
    if (opener_->SituacaoFios == kYarnConsumed) return Lembrado::kConcluido;
  }
  return Lembrado::kSegue;
}

// The lines of the lot's yarn that still want something. `known`: the roll consumes that yarn at all.
std::vector<std::size_t> TFmMovBaiFio::LinhasDoFio(const LotKey& lot, bool& known) const {
  for (host::DatasetCursor line(TbBaixa); !line.Eof(); line.Next()) {
    known =
        known || (line.FieldByName("Codigo").AsText() == lot.code && line.FieldByName("Cor").AsText() == lot.colour);
  }
  constexpr std::size_t k_code = 0;  // positions in ConsumptionFields
  constexpr std::size_t k_colour = 2;
  std::vector<std::size_t> lines;
  for (std::size_t at = 1; at <= TbBaixa.RecordCount(); ++at) {
    if (TbBaixa.ValueAt(at, k_code).AsText() != lot.code || TbBaixa.ValueAt(at, k_colour).AsText() != lot.colour)
      continue;
    lines.push_back(TbBaixa.IdAt(at));
  }
  return lines;
}

}  // namespace yarn
