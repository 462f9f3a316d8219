// From the fabrics of an order to the yarns that they need.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/database.h"
#include "host/host.h"
#include "host/kit/dataset.h"
#include "host/value.h"
#include "weaving/statement.h"

namespace orders {

/// A fabric to be woven.
struct FabricDemand {
  std::string code;
  std::string colour;
  std::string unit;     // weaving::kMetres; every other unit counts as kilograms
  double quantity = 0;  // in that unit
  double weight = 0;    // kilograms per unit
};

class YarnExplosion {
 public:
  /// `yarns` has the fields of YarnFields.
  YarnExplosion(host::Host& host, host::Dataset& yarns);

  /// Reads the compositions of all fabrics of the stored order at once, until Forget. Add then asks for a fabric's
  /// yarns only when it needs one that is not on the list yet; what is on the list already takes nothing but the
  /// consumption. Throws DatabaseError; nothing is remembered then.
  void Remember(std::string_view order);
  void Forget() { remembered_.reset(); }

  /// Adds what the fabric needs to the yarns: a new row for a yarn (code, colour, LFA, feeders) that the order does
  /// not need yet, more consumption on the row of one that it does. A fabric without composition adds nothing.
  /// `order` is the stored order whose remaining consumption the new rows show. Throws DatabaseError; the yarns are
  /// unchanged then.
  void Add(std::string_view order, const FabricDemand& fabric);

 private:
  /// A line of a composition, as far as it tells the yarn and how much of it.
  struct Line {
    host::Value yarn;
    host::Value colour;
    host::Value lfa;
    host::Value feeders;
    double percentage = 0;
  };
  using Fabric = std::pair<std::string, std::string>;  // code and colour

  static Line LineOf(const host::TTIQuery& row, std::string_view colour_column);
  bool Stands(const Line& line);
  bool AllStand(const std::vector<Line>& lines);
  void AddConsumption(double consumption);
  std::unique_ptr<host::TTIQuery> Composition(std::string_view order, const FabricDemand& fabric) const;
  weaving::Sql RemainingConsumption(std::string_view order, bool metres) const;
  void AppendYarn(const host::TTIQuery& row, const FabricDemand& fabric, double consumption);

  weaving::Statements statements_;
  host::Dataset& yarns_;
  std::optional<std::map<Fabric, std::vector<Line>>> remembered_;
};

}  // namespace orders
