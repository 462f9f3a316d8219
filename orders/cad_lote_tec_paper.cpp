// From the order to paper and labels: the printout, metres made into a quantity, the labels of the rolls to come.
#include <utility>

#include "host/decimal.h"
#include "host/errors.h"
#include "host/kit/busy.h"
#include "host/text.h"
#include "orders/cad_lote_tec.h"
#include "weaving/audit.h"
#include "weaving/hold.h"
#include "weaving/savepoints.h"

namespace orders {
namespace {

std::string NoRoomForLabels(const std::string& order, std::int64_t last, std::int64_t wanted) {
  return "A ordem " + order + " tem lugar para " + std::to_string(RollLabels::kLastSequence - last) +
         " etiquetas, não para " + std::to_string(wanted) + ": a última é a " + std::to_string(last) +
         " e a numeração vai até " + std::to_string(RollLabels::kLastSequence) + ".\nNenhuma etiqueta foi gerada.";
}

}  // namespace

/// What is read for a printout goes with this, and the yarn list is again as the person saw it: the printout fills it
/// with the stored order's yarns, while the lots beside it, and what was ticked there, belong to the list that was
/// loaded.
class TfmCadLoteTec::Printing {
 public:
  explicit Printing(TfmCadLoteTec& screen) : screen_(screen), current_(screen.TbFios.RecNo()) {
    const host::Dataset& yarns = screen.TbFios;
    for (std::size_t row = 1; row <= yarns.RecordCount(); ++row) {
      std::vector<host::Value>& values = rows_.emplace_back();
      for (std::size_t field = 0; field < yarns.FieldCount(); ++field) values.push_back(yarns.ValueAt(row, field));
    }
  }
  ~Printing() {
    const Quiet quiet(screen_);
    host::Dataset& yarns = screen_.TbFios;
    yarns.Empty();
    for (const std::vector<host::Value>& values : rows_) {
      yarns.Append();
      for (std::size_t field = 0; field < values.size(); ++field) yarns.FieldAt(field).Set(values[field]);
      yarns.Post();
    }
    yarns.GoTo(current_);
    for (host::Dataset* read : {&screen_.QryRelatorio, &screen_.QryRaport}) read->Close();
    screen_.TbRolos.Empty();
  }
  Printing(const Printing&) = delete;
  Printing& operator=(const Printing&) = delete;

 private:
  TfmCadLoteTec& screen_;
  std::size_t current_;
  std::vector<std::vector<host::Value>> rows_;
};

void TfmCadLoteTec::WirePaper() {
  PopupMenu1.Add("GerarEtiquetas1", "Gerar Etiqueta(s)", [this] { GerarEtiquetas1Click(); });
  PopupMenu1.Add("CalcularMetros1", "Calcular Metros", [this] { CalcularMetros1Click(); });
  PopupMenu1.OnPopup = [this] { PopupMenu1Popup(); };
  DBGrid6.Popup = &PopupMenu1;
}

// --- the printout --------------------------------------------------------------------------------------------------

void TfmCadLoteTec::BtnImprimirClick() {
  RequireNumber();
  const std::string number = EdtNumero.Text();
  if (!store_.Exists(number)) Refuse("A ordem " + number + " não está gravada. Grave-a antes de imprimir.");
  if (HasUnsavedWork() &&
      !Confirm("A ordem tem alterações não gravadas, que não sairão na impressão.\nDeseja imprimir assim mesmo?")) {
    return;
  }
  const Printing printing(*this);
  {
    const host::Busy busy(*this);
    ReadPrintedOrder();
  }
  funcoes_.Chama_Relatorio(&RvTecelagem, &prTxReport, "WTecLoteCad", *this, "W", {.preview = true});
}

// All of it from the same order: a save of another station deletes the order and inserts it anew.
void TfmCadLoteTec::ReadPrintedOrder() {
  const std::string number = EdtNumero.Text();
  weaving::HoldOrder(database_, number);
  auto order = report_.Order(number);
  if (order->IsEmpty()) Refuse("A ordem " + number + " acaba de ser excluída. Nada foi impresso.");
  QryRelatorio.LoadFrom(std::move(order));
  QryRelatorio.SetIndex("CODIGO;COR");
  ExplodePrintedOrder();
  if (auto patterns = report_.StitchPatterns(OrderReport::Items(QryRelatorio))) {
    QryRaport.LoadFrom(std::move(patterns));
  } else {
    QryRaport.CreateFields(StitchFields());
  }
  Gera_Itens();
}

void TfmCadLoteTec::ExplodePrintedOrder() {
  const Quiet quiet(*this);
  TbFios.Empty();
  const std::vector<PrintedItem> items = OrderReport::Items(QryRelatorio);
  explosion_.Forget();
  if (items.size() > 1) explosion_.Remember(EdtNumero.Text());
  for (const PrintedItem& item : items) {
    Armazena_Explosao_Fios(item.code, item.colour, item.unit, item.quantity, item.weight);
  }
  explosion_.Forget();
  TbFios.First();
}

void TfmCadLoteTec::Gera_Itens() { OrderReport::ListRolls(OrderReport::Items(QryRelatorio), TbRolos); }

// --- the context menu of the items ---------------------------------------------------------------------------------

void TfmCadLoteTec::PopupMenu1Popup() {
  if (!DBGrid6.Enabled()) throw host::Abort();
  const bool on_quantity = host::SameName(DBGrid6.SelectedField(), "Qtde");
  const bool has_code = !TbItens.IsEmpty() && !TbItens["Codigo"].AsText().empty();
  PopupMenu1.Find("CalcularMetros1")->visible = on_quantity && has_code;
}

void TfmCadLoteTec::CalcularMetros1Click() {
  const auto answer = GetHost().GetDialogs().InputBox("Quantidade em Metros", "Informe a quantidade:", "");
  const double metres = host::ParseTyped(answer.value_or("")).value_or(0);
  if (metres == 0) return;
  double weight = TbItens["Peso"].AsFloat();
  if (weight == 0) {
    host::SharedDataset& materials = GetHost().GetTabela().Dataset("tbMateriais", *this);
    if (materials.Locate("codigo", {TbItens["Codigo"].AsText()})) weight = materials.FieldByName("PESO").AsFloat();
  }
  TbItens.Edit();
  TbItens["Peso"].Set(weight);
  TbItens["Qtde"].Set(host::WithoutNoise(weight * metres));
  TbItens.Post();
}

void TfmCadLoteTec::GerarEtiquetas1Click() {
  ItemForLabels();
  const std::string proposed = std::to_string(TbItens["Qtde_Rolo"].AsInteger());
  const auto answer = GetHost().GetDialogs().InputBox("Gerar Etiqueta(s)", "Quantidade:", proposed);
  const int count = host::ParseTypedInteger(answer.value_or("")).value_or(0);
  if (count > 0) GeraEtiquetas(count);
}

// As it is stored now: the screen may be older than the last roll, and a label for what only stands on the screen would
// have no order that it belongs to.
LabelledItem TfmCadLoteTec::ItemForLabels() {
  RequireNumber();
  const std::string number = EdtNumero.Text();
  const std::string code = TbItens.IsEmpty() ? std::string() : TbItens["Codigo"].AsText();
  if (code.empty()) Refuse("Escolha o item que terá etiquetas.");
  const std::string colour = TbItens["Cor"].AsText();
  const auto item = labels_.StoredItem(number, code, colour);
  if (!item) {
    Refuse("O item " + code + ", cor " + colour + ", não está gravado na ordem " + number +
           ".\nGrave a ordem antes de gerar etiquetas.");
  }
  if (item->written_off > 0 || BuscaQtdeB(number, code, colour) > 0) {
    Refuse("Não é possível gerar etiquetas de itens com baixas.");
  }
  if (!RollLabels::FitsLabel(number)) {
    Refuse("A ordem " + number + " não pode ter etiquetas: o número da ordem na etiqueta tem seis caracteres.");
  }
  // A roll always enters some warehouse: its label would stand empty in none, and could be scanned again.
  if (item->warehouse.empty()) {
    Refuse("A ordem " + number + " está sem depósito.\nInforme-o e grave a ordem antes de gerar etiquetas.");
  }
  return *item;
}

// The order is held from the look at its item to the last label. A question ends the hold, so that everything is looked
// at again after it.
void TfmCadLoteTec::GeraEtiquetas(int quantidade) {
  LabelledItem item = HeldItemForLabels();
  bool exist = labels_.Exist(item);
  if (exist) {
    if (!Confirm("Etiqueta já gerada para este código e lote.\nDeseja gerar novamente?")) throw host::Abort();
    item = HeldItemForLabels();
    exist = labels_.Exist(item);
  }
  WriteLabels(item, exist, quantidade);
  database_.CommitRetaining();
  Inform("Etiquetas Geradas.");
}

LabelledItem TfmCadLoteTec::HeldItemForLabels() {
  weaving::HoldOrder(database_, EdtNumero.Text());
  LabelledItem item = ItemForLabels();
  // Deleted with its row, the stock would be gone without a movement.
  if (const auto lot = labels_.LotWithStock(item)) {
    Refuse("A etiqueta " + *lot + " já tem saldo em estoque. Impossível gerar novamente.");
  }
  return item;
}

// A refusal is a box, which would make the labels' deletion durable: it is undone first.
void TfmCadLoteTec::WriteLabels(const LabelledItem& item, bool replace, int count) {
  database_.SetSavepoint(weaving::kBeforeLabels);
  if (replace) {
    labels_.Delete(item);
    funcoes_.GeraLog(weaving::kOrderSubject, "ETIQUETAS SUBSTITUIDAS NO LOTE: " + item.order,
                     host::LogOperation::kAlteration, item.order, nullptr);
  }
  const std::int64_t last = labels_.LastSequence(item.order);
  if (count > RollLabels::kLastSequence - last) {
    database_.RollbackTo(weaving::kBeforeLabels);
    Refuse(NoRoomForLabels(item.order, last, count));
  }
  labels_.Insert(item, last, count);
}

}  // namespace orders
