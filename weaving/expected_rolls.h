// How many rolls an item comes back in.
#pragma once

#include "host/decimal.h"

namespace weaving {

/// To the nearest whole number; 0 when either is not positive. Quantity and weight of a roll are in the same unit.
inline double ExpectedRolls(double quantity, double per_roll) {
  return quantity > 0 && per_roll > 0 ? host::RoundTo(quantity / per_roll, 0) : 0;
}

}  // namespace weaving
