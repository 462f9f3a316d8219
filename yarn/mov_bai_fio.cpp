// The yarn screen: its components, what it asks of the operator, and what the operator may do.
#include "yarn/mov_bai_fio.h"

#include "host/decimal.h"
#include "host/errors.h"
#include "host/kit/columns.h"
#include "host/kit/described_code.h"
#include "host/text.h"
#include "weaving/parameters.h"
#include "weaving/stock_lot.h"

namespace yarn {
namespace {

using host::FieldDef;
using host::FieldType;

constexpr const char* kReservedByOthers = "Quantidade reservada. Impossível continuar.";
// How much a typed quantity may exceed the computed one before the operator is asked, in percent of the latter.
constexpr double kMostPercent = 110;

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
          {"Lote", FieldType::kText, weaving::kLotWidth},
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

}  // namespace

TFmMovBaiFio::TFmMovBaiFio(host::Host& host)
    : Screen(host, "TFmMovBaiFio", "fmMovBaiFio", "Selecione os consumos"),
      TbBaixa(*this, "TbBaixa", ConsumptionFields()),
      TbEst(*this, "TbEst", StockFields()),
      GrdConsumos(*this, "GrdConsumos", TbBaixa, ConsumptionColumns()),
      EdtDeposito(*this, "EdtDeposito", "Depósito", host::EditKind::kText, 6),
      LblDeposito(*this, "LblDeposito"),
      PqDeposito(*this, "PqDeposito", "DEPOSITO", "CODIGO"),
      EdtLote(*this, "EdtLote", "Lote", host::EditKind::kText, weaving::kLotWidth),
      PqLote(*this, "PqLote", "MAT_ITEN", "LOTE"),
      GrdEstoque(*this, "GrdEstoque", TbEst, {}),
      CbTodos(*this, "CbTodos", "Usar para todas baixas"),
      BitBtn1(*this, "BitBtn1", "Baixar", [this] { BitBtn1Click(); }),
      BitBtn2(*this, "BitBtn2", "Cancelar", [this] { BitBtn2Click(); }),
      consumption_(host) {
  GrdConsumos.SetCaption("Consumos");
  GrdEstoque.SetCaption("Estoque");
  GrdEstoque.SetReadOnly(true);
  GrdEstoque.OnEnter = [this] { BitBtn1.SetEnabled(!TbEst.IsEmpty()); };
  BitBtn1.SetEnabled(false);
  BitBtn1.Shortcut = host::Key::kF8;
  CbTodos.OnClick = [this] { CbTodosClick(); };

  TbBaixa.BeforePost = [this] { TbBaixaBeforePost(); };
  TbBaixa.AfterPost = [this] {
    if (!loading_) TakeOverWanted();
  };
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
    LblDeposito.SetText(
        host::DescriptionOf(Services(), {"DEPOSITO", "CODIGO", "DESCRICAO"}, host::Trim(EdtDeposito.Text())));
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
  ParamReserva = weaving::Parameters(Services()).Reservations();
  ShowStockColumns();
}

void TFmMovBaiFio::ShowStockColumns() {
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

void TFmMovBaiFio::FiltraFio() {
  const host::Funcoes& funcoes = Services();
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
  TakeFromLot();
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

bool TFmMovBaiFio::TakeFromLot() {
  if (TbBaixa.IsEmpty() || TbEst.IsEmpty()) return false;
  const std::size_t need = CurrentNeed();
  const std::size_t lot = CurrentLot();
  const weaving::YarnNeed need_before = consumption_.Needs()[need];
  const weaving::YarnLot lot_before = consumption_.Lots()[lot];
  // Leaving the list for a lot leaves its line in edit: what was typed there is wanted, though not stored yet.
  consumption_.SetWanted(need, TbBaixa["Qtde"].AsFloat());
  const auto quantity = consumption_.Free(need, lot);
  if (!quantity) {
    consumption_.SetWanted(need, need_before.wanted);
    Inform(kReservedByOthers);
    return false;
  }
  const std::size_t line = TbBaixa.CurrentId();
  consumption_.Take(need, lot, *quantity);
  ShowLot(lot);
  try {
    ShowNeed(need);
  } catch (const host::Abort&) {
    consumption_.PutBack(need, need_before, lot, lot_before);
    ShowLot(lot);
    throw;
  }
  if (CbTodos.Checked()) RememberLot(lot_before.lot);
  if (consumption_.Covered()) {
    Conclude();
    return true;
  }
  if (TbBaixa.CurrentId() != line) FiltraFio();
  BitBtn1.SetEnabled(false);
  return true;
}

void TFmMovBaiFio::RememberLot(const weaving::StockLot& lot) {
  host::Dataset& lots = opener_->RememberedLots();
  if (lots.Locate("Codigo;Cor;Lote;Deposito", {lot.code, lot.colour, lot.lot, lot.deposit})) return;
  lots.Append();
  lots["Codigo"].Set(lot.code);
  lots["Cor"].Set(lot.colour);
  lots["Lote"].Set(lot.lot);
  lots["Deposito"].Set(lot.deposit);
  lots.Post();
}

// --- without the operator ----------------------------------------------------------------------------------------

bool TFmMovBaiFio::BaixaFiosReservados() {
  const weaving::FromReserved taken = consumption_.TakeReserved();
  if (taken.reserved) {
    QtdeReservada = *taken.reserved;
    CbTodos.SetChecked(false);
    CbTodos.SetEnabled(false);
  }
  ShowTaken(taken.lot);
  TbBaixa.First();  // where the operator goes on
  FiltraFio();
  if (!taken.lot) TbEst.First();
  if (!taken.covered) return false;
  Conclude();
  return true;
}

bool TFmMovBaiFio::BaixaFiosLembrados() {
  const std::size_t stood_on = CurrentNeed();
  const weaving::FromRemembered served = consumption_.TakeRemembered(RememberedLots());
  ShowTaken(served.lot);
  StandFrom(served.need.value_or(stood_on));
  FiltraFio();
  if (served.stopped == weaving::Stopped::kOfOthers) Inform(kReservedByOthers);
  if (served.stopped != weaving::Stopped::kCovered) return false;
  Conclude();
  return true;
}

std::vector<weaving::StockLot> TFmMovBaiFio::RememberedLots() const {
  std::vector<weaving::StockLot> lots;
  for (host::DatasetCursor at(opener_->RememberedLots()); !at.Eof(); at.Next()) {
    lots.push_back({at.FieldByName("Codigo").AsText(), at.FieldByName("Cor").AsText(),
                    at.FieldByName("Deposito").AsText(), at.FieldByName("Lote").AsText()});
  }
  return lots;
}

}  // namespace yarn
