// What a screen keeps to itself while it works on it.
#pragma once

#include <string_view>

#include "host/database.h"

namespace weaving {

/// Whoever stores, deletes, labels or writes off an order holds it, and so does who loads it to change it: the next one
/// waits here until the action of the former ends or waits for a person. The order need not be stored.
inline void HoldOrder(host::Database& database, std::string_view number) {
  database.LockRow("TECEL", "NUMERO", number);
}

}  // namespace weaving
