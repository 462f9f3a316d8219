// Orders by period and whatever else is known of them.
#pragma once

#include <memory>
#include <string>

#include "host/database.h"
#include "host/date.h"
#include "host/host.h"
#include "weaving/statement.h"

namespace orders {

/// An item is pending while it is not closed and has something left to weave.
enum class ItemState { kAny, kPending, kClosed };

/// What an order must have; an empty text asks for nothing.
struct OrderCriteria {
  host::Date from;  // first start date, the day included; an order without date has the zero date
  host::Date to;    // last start date, the day included
  std::string mill;
  std::string delivery_term;
  std::string machine;
  std::string material;
  std::string sheet;
  std::string flow;
  std::string colour;
  std::string sales_order;
  ItemState state = ItemState::kAny;
  std::string remark;  // anywhere in the remarks, without regard to case
};

class OrderSearch {
 public:
  explicit OrderSearch(host::Host& host);

  /// One row per order and fabric, the newest order first: NUMERO, MALHARIA, NOME, CODIGO, DESCRICAO, MAQUINA,
  /// DES_MAQUINA, QTDE and BAIXADO (summed over the colours that pass), DT_INICIO, PERIODO. An order without items is
  /// one row without fabric, unless something is asked of its items. Throws DatabaseError.
  std::unique_ptr<host::TTIQuery> Find(const OrderCriteria& criteria) const;

 private:
  weaving::Sql Conditions(const OrderCriteria& criteria) const;

  weaving::Statements statements_;
};

}  // namespace orders
