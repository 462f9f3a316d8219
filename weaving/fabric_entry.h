// The woven roll enters stock at what its yarn and its weaving cost.
#pragma once

#include <string>

#include "host/host.h"
#include "weaving/mill_price.h"
#include "weaving/roll.h"
#include "weaving/statement.h"

namespace weaving {

/// Cost of the yarn that went into a roll.
struct YarnCost {
  double total = 0;     // taken quantities at the lots' prices
  double weighted = 0;  // shares of the yarns' import costs, over every lot that was listed
};

/// The roll in the unit that its fabric is kept in stock by.
double QuantityInStock(const NewRoll& roll);

class FabricEntry {
 public:
  /// Of roll `number` of its order.
  FabricEntry(host::Host& host, NewRoll roll, int number);

  /// Moves the roll into stock under `lot` and writes the fabric's price. Throws at what failed; what it wrote before
  /// is the caller's to undo.
  void Enter(const std::string& lot, const YarnCost& yarn);

 private:
  void WritePrice(double unit_cost, double weighted);

  host::Host& host_;
  Statements statements_;
  MillPrice prices_;
  NewRoll roll_;
  int number_;
};

}  // namespace weaving
