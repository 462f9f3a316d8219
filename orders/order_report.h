// What an order's printout is made of, read from the stored order.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "host/database.h"
#include "host/host.h"
#include "host/kit/dataset.h"
#include "orders/statement.h"

namespace orders {

/// How many rolls a quantity comes back in, to the nearest whole number; 0 when either is not positive. Quantity and
/// weight of a roll are in the same unit.
double ExpectedRolls(double quantity, double per_roll);

class OrderReport {
 public:
  explicit OrderReport(host::Host& host);

  /// One row per item with everything of its order, fabric and composition; one row without item for an order that has
  /// none; no row for an order that is not stored. Throws DatabaseError.
  std::unique_ptr<host::TTIQuery> Order(std::string_view number) const;

  /// The stitch patterns of these fabrics in these colours, in the order in which they are knitted; null when there is
  /// no fabric or no colour. Throws DatabaseError.
  std::unique_ptr<host::TTIQuery> StitchPatterns(const std::set<std::string>& fabrics,
                                                 const std::set<std::string>& colours) const;

  /// Makes `rolls`, which has the fields of RollFields, the list of the rolls that the rows of Order let expect: one
  /// row per roll, numbered through the order from 001. The number has four digits: rolls after the 9999th are left
  /// out.
  static void ListRolls(const host::Dataset& order, host::Dataset& rolls);

 private:
  std::string OneOf(const char* column, const std::set<std::string>& values) const;

  host::Database& database_;
  Words words_;
};

}  // namespace orders
