// The woven roll enters stock at what its yarn and its weaving cost.
#pragma once

#include <string>

#include "host/host.h"
#include "yarn/yarn_write_off.h"

namespace yarn {

/// Cost of the yarn that went into a roll.
struct YarnCost {
  double total = 0;     // taken quantities at the lots' prices
  double weighted = 0;  // shares of the yarns' import costs, over every lot that was listed
};

/// What the weaver is paid per unit, `cost` being the price agreed. Clients outside the simplified tax regime take the
/// 9.25 % of two contributions off, rounded to cents.
double ServiceCost(double cost, bool simplified_regime);

class FabricEntry {
 public:
  FabricEntry(host::Host& host, const Roll& roll, std::string fabric, std::string colour, std::string place);

  /// In the item's unit; `kilograms` is what the roll weighs.
  double Quantity(double kilograms) const;
  /// Moves `quantity` into stock under `lot` and writes the fabric's price. Throws at what failed; what it wrote before
  /// is the caller's to undo.
  void Enter(double quantity, const std::string& lot, const YarnCost& yarn);

 private:
  double Service();
  void WritePrice(double unit_cost, double weighted);

  host::Host& host_;
  host::Funcoes& funcoes_;
  host::Database& database_;
  Roll roll_;
  std::string fabric_;
  std::string colour_;
  std::string place_;
};

}  // namespace yarn
