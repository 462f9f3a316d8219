// The order search of the order screen, and the way from its list to an order.
#include <utility>

#include "host/kit/busy.h"
#include "host/kit/described_code.h"
#include "orders/cad_lote_tec.h"

namespace orders {
namespace {

constexpr int kMaintenancePage = 1;

ItemState Asked(const host::RadioGroup& choice) {
  if (choice.SelectedText() == "Pendentes") return ItemState::kPending;
  return choice.SelectedText() == "Baixadas" ? ItemState::kClosed : ItemState::kAny;
}

}  // namespace

void TfmCadLoteTec::WireSearch() {
  EdtAMalharia.OnChange = [this] { ShowDescription(EdtAMalharia, LblAMalharia, "ENTIDADE", "CODCLI", "NOME"); };
  EdtAPrazo.OnChange = [this] { ShowDescription(EdtAPrazo, LblAPrazo, "TABPRZ", "PRAZO", "DESCRICAO"); };
  EdtAMaquina.OnChange = [this] { ShowDescription(EdtAMaquina, LblAMaquina, "MAQUINA", "MAQUINA", "DESCRICAO"); };
  EdtAMaterial.OnChange = [this] { ShowDescription(EdtAMaterial, LblAMaterial, "MATERIAL", "CODIGO", "DESCRICAO"); };
  EdtAFluxo.OnChange = [this] { ShowDescription(EdtAFluxo, LblAFluxo, "FLUXOTIN", "CODIGO", "DESCRICAO"); };
  EdtACor.OnChange = [this] { ShowDescription(EdtACor, LblACor, "CADCOR", "COR", "DESCRICAO"); };
  host::ServeInput(EdtAMalharia, PqAMalharia);
  host::ServeInput(EdtAPrazo, PqAPrazo);
  host::ServeInput(EdtAMaquina, PqAMaquina);
  host::ServeInput(EdtAMaterial, PqAMaterial);
  host::ServeInput(EdtAFluxo, PqAFluxo);
  host::ServeInput(EdtACor, PqACor);
  DBGrid1.SetReadOnly(true);
  DBGrid1.OnDblClick = [this] { DBGrid1DblClick(); };
  // Without a mouse the row under the cursor opens by Enter.
  DBGrid1.OnKeyDown = [this](host::Key key) {
    if (key == host::Key::kEnter) DBGrid1DblClick();
  };
}

// The month so far: today alone would leave out the orders that are being woven, and without a beginning the list
// would grow with the years.
void TfmCadLoteTec::ProposePeriod() {
  const host::Date today = GetHost().GetClock().Today();
  EdtADe.SetDate(host::Date::FromParts(today.Year(), today.Month(), 1).value_or(today));
  EdtAAte.SetDate(today);
}

void TfmCadLoteTec::BtnAConsultarClick() {
  const host::Busy busy(*this);
  auto found = search_.Find({.from = EdtADe.GetDate(),
                             .to = EdtAAte.GetDate(),
                             .mill = EdtAMalharia.Text(),
                             .delivery_term = EdtAPrazo.Text(),
                             .machine = EdtAMaquina.Text(),
                             .material = EdtAMaterial.Text(),
                             .sheet = EdtAFicha.Text(),
                             .flow = EdtAFluxo.Text(),
                             .colour = EdtACor.Text(),
                             .sales_order = EdtAPedido.Text(),
                             .state = Asked(RgASituacao),
                             .remark = EdtAObs.Text()});
  TbAcesso.LoadFrom(std::move(found));
  for (const char* quantity : {"QTDE", "BAIXADO"}) TbAcesso[quantity].SetFormat("0.000");
  DBGrid1.SetColumns(SearchColumns());
  if (!TbAcesso.IsEmpty()) DBGrid1.SetFocus();
}

// The order is loaded when the person leaves the number. Without the focus there, a save would put the items of the
// order on the screen under the number of another one.
void TfmCadLoteTec::TakeNumberOfList() {
  EdtNumero.SetText(TbAcesso["NUMERO"].AsText());
  EdtNumero.SetFocus();
}

void TfmCadLoteTec::DBGrid1DblClick() {
  if (TbAcesso.IsEmpty()) return;
  PageControl1.SetActivePage(kMaintenancePage);
  TakeNumberOfList();
}

void TfmCadLoteTec::SpeedButton1Click() {
  if (TbAcesso.IsEmpty()) return;
  TbAcesso.Prior();
  TakeNumberOfList();
}

void TfmCadLoteTec::SpeedButton4Click() {
  if (TbAcesso.IsEmpty()) return;
  TbAcesso.Next();
  TakeNumberOfList();
}

}  // namespace orders
