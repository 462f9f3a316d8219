// The rows of a weaving order in the database: header, items, and what hangs on them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/database.h"
#include "host/date.h"
#include "host/host.h"
#include "weaving/statement.h"

namespace orders {

struct OrderHeader {
  std::string number;
  std::string mill;
  std::string delivery_term;
  std::string remarks;
  host::Date start;  // the zero date when none was given
  std::string sheet;
  std::string machine;
  std::string flow;
  double rpm = 0;
  double stitch_size = 0;
  std::string warehouse;
};

struct OrderItem {
  std::string code;
  std::string colour;
  std::string sales_order;
  double cost = 0;      // per unit of the fabric
  double quantity = 0;  // in the unit of the fabric
  std::string closed;   // "S" when closed for write-off
  double written_off = 0;
  std::int64_t cycles = 0;
  std::string remark;
};

/// Every operation throws DatabaseError when the database refuses a statement; those before it stay pending.
class OrderStore {
 public:
  explicit OrderStore(host::Host& host);

  bool Exists(std::string_view number) const;
  bool ItemExists(std::string_view number, std::string_view code) const;
  bool ItemExists(std::string_view number, std::string_view code, std::string_view colour) const;

  /// One row per item, each with the header; one row without item columns for an order without items.
  std::unique_ptr<host::TTIQuery> Load(std::string_view number) const;
  /// The same rows as they are stored, without anything looked up.
  std::unique_ptr<host::TTIQuery> Rows(std::string_view number) const;
  /// The reservations of the order, consumed ones included.
  std::unique_ptr<host::TTIQuery> Reservations(std::string_view number) const;
  /// Sum of the rolls of an item; 0 when there are none.
  double WrittenOff(std::string_view number, std::string_view code, std::string_view colour) const;
  /// Code and colour of all that the order's rolls were written off for.
  std::vector<std::pair<std::string, std::string>> WrittenOffItems(std::string_view number) const;

  /// The header anew, in state "A" whatever it was before, and no items: they come by InsertItem.
  void Replace(const OrderHeader& header);
  void InsertItem(std::string_view number, const OrderItem& item);
  /// A new order, in state "A".
  void Insert(const OrderHeader& header, const std::vector<OrderItem>& items);
  /// With its items, its reservations (those of kind "F" stay) and planning rows.
  void Delete(std::string_view number);

 private:
  std::vector<weaving::Sql> HeaderAndItemsGone(std::string_view number) const;
  weaving::Sql NewHeader(const OrderHeader& header) const;
  weaving::Sql NewItem(std::string_view number, const OrderItem& item) const;

  host::Funcoes& funcoes_;
  host::Database& database_;
  weaving::Statements statements_;
};

}  // namespace orders
