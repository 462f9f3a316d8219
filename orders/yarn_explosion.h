// From the fabrics of an order to the yarns that they need.
#pragma once

#include <string>
#include <string_view>

#include "host/database.h"
#include "host/host.h"
#include "host/kit/dataset.h"
#include "orders/statement.h"

namespace orders {

/// A fabric to be woven.
struct FabricDemand {
  std::string code;
  std::string colour;
  std::string unit;     // "MT" for metres; every other unit counts as kilograms
  double quantity = 0;  // in that unit
  double weight = 0;    // kilograms per unit
};

class YarnExplosion {
 public:
  /// `yarns` has the fields of YarnFields.
  YarnExplosion(host::Host& host, host::Dataset& yarns);

  /// Adds what the fabric needs to the yarns: a new row for a yarn (code, colour, LFA, feeders) that the order does
  /// not need yet, more consumption on the row of one that it does. A fabric without composition adds nothing.
  /// `order` is the stored order whose remaining consumption the new rows show. Throws DatabaseError; the yarns are
  /// unchanged then.
  void Add(std::string_view order, const FabricDemand& fabric);

 private:
  std::unique_ptr<host::TTIQuery> Composition(std::string_view order, const FabricDemand& fabric) const;
  std::string RemainingConsumption(std::string_view order, bool metres) const;
  void AppendYarn(const host::TTIQuery& row, const FabricDemand& fabric, double consumption);

  host::Database& database_;
  Words words_;
  host::Dataset& yarns_;
};

}  // namespace orders
