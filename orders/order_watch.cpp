#include "orders/order_watch.h"

#include <initializer_list>
#include <set>
#include <utility>

#include "weaving/audit.h"

namespace orders {
namespace {

using weaving::kOrderSubject;
using weaving::kRollSubject;

std::string Joined(const host::TTIQuery& row, std::initializer_list<const char*> columns) {
  std::string text;
  for (const char* column : columns) text += row.FieldByName(column).AsText() + '\x1f';
  return text;
}

// In no order, since none is asked of the database; each item once, since the query of a load repeats one whose fabric
// has several compositions.
std::string OrderRows(host::TTIQuery& order) {
  order.First();
  std::string rows = Joined(order, {"MALHARIA", "PERIODO", "OBSERVACAO", "DT_INICIO", "DT_EMISSAO", "FICHA", "MAQUINA",
                                    "FLUXO", "RPM", "TPONTO", "SITUACAO", "DEPOSITO"});
  std::set<std::string> items;
  for (; !order.Eof(); order.Next()) {
    items.insert(Joined(order, {"CODIGO", "COR", "PEDIDO", "CUSTO", "QTDE", "BAIXADA", "QTDE_B", "CICLOS", "OBS"}));
  }
  order.First();
  for (const std::string& item : items) rows += '\x1e' + item;
  return rows;
}

std::string ClockText(const host::DateTime& moment) {
  const std::string iso = moment.ToIso();  // "YYYY-MM-DD HH:MM:SS"
  return moment.date.ToDisplay() + " " + iso.substr(iso.find(' ') + 1, 5);
}

// The last row may be older than the load: then whoever changed the order since wrote none.
bool IsNews(const std::optional<host::LogMark>& now, const std::optional<host::LogMark>& before) {
  return now && (!before || now->user != before->user || now->moment != before->moment);
}

}  // namespace

OrderWatch::OrderWatch(host::Host& host, const OrderStore& store) : host_(host), store_(store) {}

void OrderWatch::Shown(std::string_view number, host::TTIQuery& order) {
  if (order.IsEmpty()) {
    New(number);
    return;
  }
  host::Funcoes& funcoes = host_.GetFuncoes();
  known_ = Known{.number = std::string(number),
                 .rows = OrderRows(order) + ReservationRows(number),
                 .order_log = funcoes.UltimoLog(kOrderSubject, number),
                 .roll_log = funcoes.UltimoLog(kRollSubject, number)};
}

void OrderWatch::New(std::string_view number) { known_ = Known{.number = std::string(number)}; }

void OrderWatch::Nothing() { known_.reset(); }

OrderChange OrderWatch::Look(std::string_view number) const {
  const auto order = store_.Rows(number);
  const bool stored = !order->IsEmpty();
  if (!known_ || known_->number != number) return stored ? OrderChange::kNotShown : OrderChange::kNone;
  if (!known_->rows) return stored ? OrderChange::kStored : OrderChange::kNone;
  if (!stored) return OrderChange::kDeleted;
  return OrderRows(*order) + ReservationRows(number) == *known_->rows ? OrderChange::kNone : OrderChange::kAltered;
}

std::string OrderWatch::ReservationRows(std::string_view number) const {
  const auto rows = store_.Reservations(number);
  std::multiset<std::string> lots;
  for (; !rows->Eof(); rows->Next()) {
    lots.insert(Joined(*rows, {"CODIGO", "COR", "DEPOSITO", "LOTE", "QTDE", "QTDE_B", "NOME", "OBS", "TIPO"}));
  }
  std::string text;
  for (const std::string& lot : lots) text += '\x1d' + lot;
  return text;
}

std::string OrderWatch::ByWhom(std::string_view number) const {
  const Known before = known_.value_or(Known());
  std::optional<host::LogMark> newest;
  const auto consider = [&](std::string_view subject, const std::optional<host::LogMark>& seen) {
    auto mark = host_.GetFuncoes().UltimoLog(subject, number);
    if (!IsNews(mark, seen)) return;
    if (!newest || newest->moment < mark->moment) newest = std::move(mark);
  };
  consider(kOrderSubject, before.order_log);
  consider(kRollSubject, before.roll_log);
  if (!newest) return "por outro usuário ou programa";
  return "por " + newest->user + " em " + ClockText(newest->moment);
}

}  // namespace orders
