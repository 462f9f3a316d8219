// Life of the order screen, and its parts put together.
#include "orders/cad_lote_tec.h"

#include "host/errors.h"
#include "weaving/deposits.h"
#include "weaving/parameters.h"

namespace orders {

TfmCadLoteTec::TfmCadLoteTec(host::Host& host)
    : Screen(host, "TfmCadLoteTec", "fmCadLoteTec", "Ordens de Tecelagem"),
      funcoes_(host.GetFuncoes()),
      database_(host.GetTabela().IBDatabase()),
      store_(host),
      watch_(host, store_),
      search_(host),
      report_(host),
      labels_(host),
      fabrics_(host),
      prices_(host),
      explosion_(host, TbFios),
      stock_(host, TbFios, TbEstoque),
      reservation_(*this, TbFios, TbEstoque) {
  PlaceOnPages();
  WireInputs();
  WireSearch();
  WireDatasets();
  WirePaper();
  TbFios.SetIndex("Codigo;Cor");
  GrdFios.SetReadOnly(true);
}

void TfmCadLoteTec::FormCreate() {
  try {
    for (const char* table : {"tbEntidade", "tbPedido", "tbMateriais", "tbCompMaterial", "tbDeposito", "tbCor"}) {
      GetHost().GetTabela().AbreTabela(table, *this);
      open_tables_.emplace_back(table);
    }
    PqMalharia.SetFilter(fabrics_.MillFilter());
    PqMaterial.SetFilter(fabrics_.MaterialFilter());
    reservation_.SetChecked(weaving::Parameters(funcoes_).ReservationsChecked());
  } catch (...) {
    FormClose();
    throw;
  }
  EdtData.SetDate(GetHost().GetClock().Today());
  ProposePeriod();
  saved_work_ = WorkOnScreen();
  PageControl1.SetActivePage(1);
}

void TfmCadLoteTec::FormClose() {
  while (!open_tables_.empty()) {
    const std::string table = std::move(open_tables_.back());
    open_tables_.pop_back();
    GetHost().GetTabela().FechaTabela(table, *this);
  }
}

bool TfmCadLoteTec::FormKeyDown(host::Key key) {
  if (key != host::Key::kEnter || Site() == nullptr) return false;
  const auto* input = dynamic_cast<host::Edit*>(Site()->Focused());
  if (input == nullptr || input->Kind() == host::EditKind::kMemo) return false;
  funcoes_.pSetFocus(*this, false);
  return true;
}

std::vector<host::KeyHint> TfmCadLoteTec::KeyHints() const {
  const host::Control* focused = Site() == nullptr ? nullptr : Site()->Focused();
  if (focused == &DBGrid1) return {{host::Key::kEnter, "Abre a ordem"}};
  if (focused == &DBGrid6) return {{host::Key::kDelete, "Exclui o item"}};
  return {};
}

void TfmCadLoteTec::PlaceOnPages() {
  PageControl1.Place(
      0, {&LblAPeriodo, &EdtADe,      &EdtAAte,      &EdtAMalharia, &LblAMalharia, &EdtAPrazo,     &LblAPrazo,
          &EdtAMaquina, &LblAMaquina, &EdtAMaterial, &LblAMaterial, &EdtAFicha,    &EdtAFluxo,     &LblAFluxo,
          &EdtACor,     &LblACor,     &EdtAPedido,   &RgASituacao,  &EdtAObs,      &BtnAConsultar, &DBGrid1});
  PageControl1.Place(1, {&EdtNumero,    &EdtMalharia, &LblMalharia, &EdtData,      &EdtFicha,     &EdtPrazo,
                         &LblPrazo,     &EdtMaquina,  &LblMaquina,  &EdtPonto,     &EdtFluxo,     &LblFluxo,
                         &EdtRPM,       &EdtDeposito, &LblDeposito, &PageControl2, &GrdFios,      &EdtFilDeposito,
                         &EdtFilLote,   &EdtFilLocal, &GrdEstoque,  &BtnIncluir,   &BtnGravar,    &BtnExcluir,
                         &BtnConsultar, &BtnDuplicar, &BtnImprimir, &BtnFechar,    &SpeedButton1, &SpeedButton4});
  PageControl2.Place(0, {&DBGrid6});
  PageControl2.Place(1, {&EdtObs});
  BtnIncluir.Shortcut = host::Key::kF2;
  BtnConsultar.Shortcut = host::Key::kF3;
  BtnAConsultar.Shortcut = host::Key::kF3;  // the one in sight is pressed
}

void TfmCadLoteTec::WireDatasets() {
  const auto unless_quiet = [this](void (TfmCadLoteTec::*rule)()) {
    return [this, rule] {
      if (quiet_ == 0) (this->*rule)();
    };
  };
  TbItens.AfterScroll = unless_quiet(&TfmCadLoteTec::TbItensAfterScroll);
  TbItens.BeforePost = unless_quiet(&TfmCadLoteTec::TbItensBeforePost);
  TbItens.BeforeDelete = unless_quiet(&TfmCadLoteTec::TbItensBeforeDelete);
  TbItens["Codigo"].OnValidate = [this](host::Field&) {
    if (quiet_ == 0) TbItensCodigoValidate();
  };
  TbItens["Cor"].OnValidate = [this](host::Field&) {
    if (quiet_ == 0) TbItensCorValidate();
  };
  DBGrid6.OnKeyDown = [this](host::Key key) { DBGrid6KeyDown(key); };
  DBGrid6.OnColExit = [this] { DBGrid6ColExit(); };

  TbFios.AfterScroll = unless_quiet(&TfmCadLoteTec::TbFiosAfterScroll);
  TbEstoque.BeforePost = unless_quiet(&TfmCadLoteTec::TbEstoqueBeforePost);
  // The lots are those in stock: nobody adds one here or takes one away.
  TbEstoque.AfterInsert = [this] {
    if (quiet_ > 0) return;
    TbEstoque.Cancel();
    throw host::Abort();
  };
  TbEstoque.BeforeDelete = [] { throw host::Abort(); };
  // A lot is settled before the person goes on to another yarn or saves.
  GrdEstoque.OnExit = [this] { TbEstoque.Post(); };
}

// --- yarn and stock ------------------------------------------------------------------------------------------------

void TfmCadLoteTec::Armazena_Explosao_Fios(std::string_view material, std::string_view cor, std::string_view unidade,
                                           double qtde, double peso) {
  explosion_.Add(EdtNumero.Text(), {.code = std::string(material),
                                    .colour = std::string(cor),
                                    .unit = std::string(unidade),
                                    .quantity = qtde,
                                    .weight = peso});
}

void TfmCadLoteTec::BuscaEstoqueFio() {
  {
    const Quiet quiet(*this);
    stock_.Load(EdtNumero.Text());
  }
  EdtFilDeposito.SetText(weaving::YarnDepositOf(funcoes_, EdtMalharia.Text()));
  FiltraEstoqueFios();
}

void TfmCadLoteTec::FiltraEstoqueFios() {
  stock_.Show({.warehouse = EdtFilDeposito.Text(), .lot = EdtFilLote.Text(), .place = EdtFilLocal.Text()});
}

double TfmCadLoteTec::QtdeReserva(std::string_view numero, std::string_view codigo, std::string_view cor,
                                  std::string_view deposito, std::string_view lote) const {
  return stock_.ReservedElsewhere(numero, codigo, cor, deposito, lote);
}

std::string TfmCadLoteTec::BuscaFornUltNF(std::string_view codigo, std::string_view lote) const {
  return stock_.LastSupplier(codigo, lote);
}

void TfmCadLoteTec::GravaReserva() { reservation_.Store(EdtNumero.Text()); }

void TfmCadLoteTec::TbFiosAfterScroll() { FiltraEstoqueFios(); }

void TfmCadLoteTec::TbEstoqueBeforePost() { reservation_.Settle(); }

}  // namespace orders
