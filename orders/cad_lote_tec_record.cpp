// The order as a record: load, save, delete, duplicate, clear.
#include "host/errors.h"
#include "orders/cad_lote_tec.h"
#include "weaving/audit.h"
#include "weaving/expected_rolls.h"
#include "weaving/hold.h"

namespace orders {
namespace {

constexpr const char* kWrittenOff = "Lote com baixas. Impossível excluir.";

std::string ColourOutsideComposition(const std::string& code, const std::string& colour) {
  return "Cor inválida na composição do material " + code + " cor " + colour + ".\nImpossível continuar a gravação.";
}

std::string WrittenOffMeanwhile(const std::string& code, const std::string& colour) {
  return "Produto já possui quantidade baixada. Impossível Continuar.\nMaterial " + code + " cor " + colour + ".";
}

}  // namespace

double TfmCadLoteTec::BuscaQtdeB(std::string_view numero, std::string_view codigo, std::string_view cor) const {
  return store_.WrittenOff(numero, codigo, cor);
}

void TfmCadLoteTec::RequireRight(std::string_view operation) const {
  if (!funcoes_.Acessa(ClassName(), operation, "0")) throw host::Abort();
}

void TfmCadLoteTec::RequireNumber() {
  if (EdtNumero.Text().empty()) Refuse("Informe o número da ordem.", EdtNumero);
}

// --- load ----------------------------------------------------------------------------------------------------------

// Half an order on the screen would be saved as the whole one: when the load fails there is none at all.
void TfmCadLoteTec::BuscaDados() {
  try {
    const auto order = store_.Load(EdtNumero.Text());
    watch_.Shown(EdtNumero.Text(), *order);
    DBGrid6.SetEnabled(order->FieldByName("SITUACAO").AsText() != "B");
    ShowHeader(*order);
    ShowItems(*order);
    BuscaEstoqueFio();
    saved_work_ = WorkOnScreen();
  } catch (...) {
    LimpaTela();
    throw;
  }
}

void TfmCadLoteTec::ShowItems(host::TTIQuery& order) {
  const Quiet quiet(*this);
  TbItens.Empty();
  TbFios.Empty();
  // Each explosion adds up the whole order for each of its yarns; that is worth avoiding once there are several.
  explosion_.Forget();
  if (order.RecordCount() > 1) explosion_.Remember(EdtNumero.Text());
  for (; !order.Eof(); order.Next()) {
    AppendItem(order);
    Armazena_Explosao_Fios(TbItens["Codigo"].AsText(), TbItens["Cor"].AsText(), TbItens["Unidade"].AsText(),
                           TbItens["Qtde"].AsFloat(), TbItens["Peso"].AsFloat());
  }
  explosion_.Forget();
  TbItens.First();
  TbFios.SetIndex("Codigo;Cor");
  TbFios.First();
}

void TfmCadLoteTec::ShowHeader(const host::TTIQuery& order) {
  const auto text = [&order](const char* column) { return order.FieldByName(column).AsText(); };
  {
    // The query brings these two descriptions along.
    const Quiet quiet(*this);
    EdtMalharia.SetText(text("MALHARIA"));
    LblMalharia.SetText(text("NOME"));
    EdtDeposito.SetText(text("DEPOSITO"));
    LblDeposito.SetText(text("DESC_DEP_ENT"));
  }
  EdtFicha.SetText(text("FICHA"));
  EdtPrazo.SetText(text("PERIODO"));
  EdtMaquina.SetText(text("MAQUINA"));
  EdtFluxo.SetText(text("FLUXO"));
  EdtRPM.SetNumber(order.FieldByName("RPM").AsFloat());
  EdtData.SetDate(order.FieldByName("DT_INICIO").AsDate());
  EdtObs.SetText(text("OBSERVACAO"));
  EdtPonto.SetNumber(order.FieldByName("TPONTO").AsFloat());
}

void TfmCadLoteTec::AppendItem(const host::TTIQuery& order) {
  TbItens.Append();
  for (const char* name :
       {"Codigo",      "Descricao",     "Unidade",  "Peso",    "Pedido",    "Cor", "DescCor",      "Qtde",
        "Qtde_B",      "Baixada",       "Custo",    "Largura", "Gramatura", "NE",  "Concentracao", "Gramatura_Mat",
        "Largura_Mat", "Alimentadores", "Diametro", "Finura",  "Ciclos",    "Obs"}) {
    TbItens[name].Set(order.FieldByName(name));
  }
  TbItens["KgRolo"].Set(order.FieldByName("KG_ROLO"));
  TbItens["Comp1"].Set(order.FieldByName("DESCRICAO2"));
  TbItens["Comp2"].Set(order.FieldByName("COMPOSICAO"));
  TbItens["Observacao"].Set(order.FieldByName("OBS_MAT"));
  TbItens["CodAnt"].Set(order.FieldByName("CODIGO"));
  TbItens["CorAnt"].Set(order.FieldByName("COR"));
  TbItens["Qtde_Rolo"].Set(weaving::ExpectedRolls(TbItens["Qtde"].AsFloat(), TbItens["KgRolo"].AsFloat()));
  TbItens.Post();
}

// --- a new order ---------------------------------------------------------------------------------------------------

// The number first: without one the screen must not be empty under the number of a stored order.
void TfmCadLoteTec::StartOrder() {
  const std::string number = funcoes_.Proximo("TECEL", "NUMERO", 6, true);
  LimpaTela();
  DBGrid6.SetEnabled(true);
  EdtNumero.SetText(number);
  EdtData.SetDate(GetHost().GetClock().Today());
  watch_.New(number);
  saved_work_ = WorkOnScreen();
}

void TfmCadLoteTec::BtnIncluirClick() {
  RequireRight("A");
  StartOrder();
}

void TfmCadLoteTec::LimpaTela() {
  TbItens.Empty();
  TbFios.Empty();
  TbEstoque.Empty();
  for (host::Edit* input : {&EdtMalharia, &EdtFicha, &EdtData, &EdtPrazo, &EdtMaquina, &EdtFluxo, &EdtRPM, &EdtObs,
                            &EdtFilDeposito, &EdtDeposito, &EdtFilLote, &EdtFilLocal}) {
    input->Clear();
  }
  for (host::Label* description : {&LblMalharia, &LblPrazo, &LblMaquina, &LblFluxo, &LblDeposito}) {
    description->SetText("");
  }
  FiltraEstoqueFios();
  explosion_.Forget();
  watch_.Nothing();
  saved_work_ = WorkOnScreen();
}

// --- save ----------------------------------------------------------------------------------------------------------

void TfmCadLoteTec::BtnGravarClick() {
  RequireRight("A");
  RequireNumber();
  // A row still being typed belongs to the order, its checks included. They may show boxes, which end the hold on the
  // order, so they come before it.
  TbItens.Post();
  TbEstoque.Post();
  weaving::HoldOrder(database_, EdtNumero.Text());
  RequireUnchanged("Nada foi gravado.");
  CheckItems(MillChanged());
  KeepWrittenOffItems();
  StoreReservationsAndOrder();
  LimpaTela();
  EdtNumero.SetFocus();
}

// A new order has no stored mill, so its mill always counts as changed. (A stored order may have none either.)
bool TfmCadLoteTec::MillChanged() const {
  const std::string number = EdtNumero.Text();
  const host::Value stored = funcoes_.Busca_Valor("TECEL", "NUMERO", "MALHARIA", funcoes_.Aspas(number), true, true);
  return stored.AsText() != EdtMalharia.Text() || (stored.IsNull() && !store_.Exists(number));
}

void TfmCadLoteTec::CheckItems(bool mill_changed) {
  for (host::DatasetCursor item(TbItens); !item.Eof(); item.Next()) {
    const std::string code = item.FieldByName("Codigo").AsText();
    const std::string colour = item.FieldByName("Cor").AsText();
    if (!ExisteComposicao(code, colour)) {
      RefuseItem(item, ColourOutsideComposition(code, colour));
    }
    // An order that keeps its mill keeps the costs that were agreed.
    if (mill_changed && prices_.Agreed(EdtMalharia.Text(), code) == 0) {
      RefuseItem(item, "Custo da malha não cadastrado para a malharia selecionada. Impossível continuar.");
    }
  }
}

// Rolls may have come in at another station since the order was loaded: the save would leave them without their item.
void TfmCadLoteTec::KeepWrittenOffItems() {
  if (!DBGrid6.Enabled()) return;
  const std::string number = EdtNumero.Text();
  for (const auto& [code, colour] : store_.WrittenOffItems(number)) {
    bool on_screen = false;
    for (host::DatasetCursor item(TbItens); !item.Eof() && !on_screen; item.Next()) {
      on_screen = item.FieldByName("Codigo").AsText() == code && item.FieldByName("Cor").AsText() == colour;
    }
    if (on_screen || !store_.ItemExists(number, code, colour)) continue;
    Refuse(WrittenOffMeanwhile(code, colour));
  }
}

void TfmCadLoteTec::RefuseItem(const host::DatasetCursor& item, std::string_view message) {
  TbItens.Locate("Codigo;Cor", {item.FieldByName("Codigo"), item.FieldByName("Cor")});
  Refuse(message);
}

void TfmCadLoteTec::StoreReservationsAndOrder() {
  const std::string warehouse = EdtFilDeposito.Text();
  const std::string lot = EdtFilLote.Text();
  const std::string place = EdtFilLocal.Text();
  try {
    for (host::Edit* filter : {&EdtFilDeposito, &EdtFilLote, &EdtFilLocal}) filter->Clear();
    GravaReserva();
    GravaDados();
  } catch (...) {
    EdtFilDeposito.SetText(warehouse);
    EdtFilLote.SetText(lot);
    EdtFilLocal.SetText(place);
    FiltraEstoqueFios();
    throw;
  }
}

void TfmCadLoteTec::GravaDados() {
  if (!DBGrid6.Enabled()) {
    Inform("Ordem de Tecelagem já impressa. Impossível Gravar.");
    return;
  }
  const OrderHeader header = HeaderOnScreen();
  if (store_.Exists(header.number)) {
    funcoes_.GeraLog(weaving::kOrderSubject, "ALTERACAO DA ORDEM NR. " + header.number, host::LogOperation::kAlteration,
                     header.number, nullptr);
  } else {
    funcoes_.GeraLog(weaving::kOrderSubject, "INCLUSAO DA ORDEM NR. " + header.number, host::LogOperation::kInclusion,
                     header.number, nullptr);
  }
  store_.Replace(header);
  for (OrderItem& item : ItemsOnScreen()) {
    // The rolls know better than the screen, which may have been open for hours.
    item.written_off = BuscaQtdeB(header.number, item.code, item.colour);
    store_.InsertItem(header.number, item);
  }
  database_.MakeDurable();
}

OrderHeader TfmCadLoteTec::HeaderOnScreen() const {
  return {.number = EdtNumero.Text(),
          .mill = EdtMalharia.Text(),
          .delivery_term = EdtPrazo.Text(),
          .remarks = EdtObs.Text(),
          .start = EdtData.GetDate(),
          .sheet = EdtFicha.Text(),
          .machine = EdtMaquina.Text(),
          .flow = EdtFluxo.Text(),
          .rpm = EdtRPM.Number(),
          .stitch_size = EdtPonto.Number(),
          .warehouse = EdtDeposito.Text()};
}

// In grid order, without the rows that have no code.
std::vector<OrderItem> TfmCadLoteTec::ItemsOnScreen() const {
  std::vector<OrderItem> items;
  for (host::DatasetCursor row(TbItens); !row.Eof(); row.Next()) {
    if (row.FieldByName("Codigo").AsText().empty()) continue;
    items.push_back({.code = row.FieldByName("Codigo").AsText(),
                     .colour = row.FieldByName("Cor").AsText(),
                     .sales_order = row.FieldByName("Pedido").AsText(),
                     .cost = row.FieldByName("Custo").AsFloat(),
                     .quantity = row.FieldByName("Qtde").AsFloat(),
                     .closed = row.FieldByName("Baixada").AsText(),
                     .cycles = row.FieldByName("Ciclos").AsInteger(),
                     .remark = row.FieldByName("Obs").AsText()});
  }
  return items;
}

// --- delete and duplicate ------------------------------------------------------------------------------------------

void TfmCadLoteTec::BtnExcluirClick() {
  RequireRight("E");
  RequireNumber();
  for (host::DatasetCursor item(TbItens); !item.Eof(); item.Next()) {
    if (item.FieldByName("Qtde_B").AsFloat() > 0) Refuse(kWrittenOff);
  }
  if (!Confirm("Deseja excluir totalmente a Ordem de Tecelagem?")) return;
  const std::string number = EdtNumero.Text();
  weaving::HoldOrder(database_, number);
  // The screen may be older than the last roll, which would be left without its order.
  if (!store_.WrittenOffItems(number).empty()) Refuse(kWrittenOff);
  RequireUnchanged("Nada foi excluído.");
  store_.Delete(number);
  funcoes_.GeraLog(weaving::kOrderSubject, "EXCLUSAO DA ORDEM NR. " + number, host::LogOperation::kDeletion, number,
                   nullptr);
  database_.MakeDurable();
  LimpaTela();
  DBGrid6.SetEnabled(true);
  watch_.New(number);
}

void TfmCadLoteTec::BitBtn5Click() {
  RequireRight("A");
  RequireNumber();
  if (!Confirm("Deseja duplicar esta ordem?")) return;
  TbItens.Post();
  OrderHeader copy = HeaderOnScreen();
  copy.number = funcoes_.Proximo("TECEL", "NUMERO", 6, true);
  copy.start = GetHost().GetClock().Today();
  std::vector<OrderItem> items = ItemsOnScreen();
  for (OrderItem& item : items) {
    item.closed.clear();
    item.written_off = 0;
  }
  store_.Insert(copy, items);
  funcoes_.GeraLog(weaving::kOrderSubject, "ORDEM NR. " + EdtNumero.Text() + " DUPLICACAO PARA " + copy.number,
                   host::LogOperation::kInclusion, copy.number, nullptr);
  database_.MakeDurable();
  LimpaTela();
  DBGrid6.SetEnabled(true);
  EdtNumero.SetText(copy.number);
  EdtNumero.SetFocus();
}

}  // namespace orders
