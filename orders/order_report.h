// What an order's printout is made of, read from the stored order.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/database.h"
#include "host/host.h"
#include "host/kit/dataset.h"
#include "weaving/statement.h"

namespace orders {

/// An item of the order that is printed.
struct PrintedItem {
  std::string order;
  std::string code;
  std::string colour;
  std::string unit;     // as the fabric has it
  double quantity = 0;  // in that unit
  double weight = 0;    // kilograms per unit
  double per_roll = 0;  // quantity of a roll; 0 when nobody knows
};

class OrderReport {
 public:
  explicit OrderReport(host::Host& host);

  /// One row per item with everything of its order, fabric and composition; one row without item for an order that has
  /// none; no row for an order that is not stored. Throws DatabaseError.
  std::unique_ptr<host::TTIQuery> Order(std::string_view number) const;

  /// The items of the rows of Order, each once: a fabric whose composition rows do not agree on its width or speed
  /// comes in several rows, and is woven once.
  static std::vector<PrintedItem> Items(const host::Dataset& order);

  /// The stitch patterns of the fabrics and the colours of the items, in the order in which they are knitted; null
  /// without items. Throws DatabaseError.
  std::unique_ptr<host::TTIQuery> StitchPatterns(const std::vector<PrintedItem>& items) const;

  /// Makes `rolls`, which has the fields of RollFields, the list of the rolls that the items let expect: one row per
  /// roll, numbered through the order from 001. The number has four digits: rolls after the 9999th are left out.
  static void ListRolls(const std::vector<PrintedItem>& items, host::Dataset& rolls);

 private:
  weaving::Sql OneOf(const char* column, const std::set<std::string>& values) const;

  weaving::Statements statements_;
};

}  // namespace orders
