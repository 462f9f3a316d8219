// What a mill is paid for weaving a fabric.
#pragma once

#include <string_view>

#include "host/host.h"
#include "weaving/statement.h"

namespace weaving {

/// What the weaver is paid per unit, `cost` being the price agreed. Clients outside the simplified tax regime take the
/// 9.25 % of two contributions off, rounded to cents.
double ServiceCost(double cost, bool simplified_regime);

/// A mill's price table may hold several rows of a fabric: by type and by colour. Wherever no colour is asked for, the
/// first row in the order of the table's key speaks, type before colour, so that the base price (colour "0") comes
/// before those of single colours, and the answer does not depend on where the engine put a row.
class MillPrice {
 public:
  explicit MillPrice(host::Host& host);

  /// Price per unit of the fabric, whatever the colour; 0 without one. Throws DatabaseError.
  double Agreed(std::string_view mill, std::string_view fabric) const;
  /// Price per unit of the fabric in that colour; 0 without one. Throws DatabaseError.
  double Agreed(std::string_view mill, std::string_view fabric, std::string_view colour) const;
  /// What weaving adds to the cost of a unit in stock; 0 without price. Throws DatabaseError.
  double Service(std::string_view mill, std::string_view fabric) const;

 private:
  host::Funcoes& funcoes_;
  Statements statements_;
};

}  // namespace weaving
