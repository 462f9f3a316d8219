// Movements of stock as the document of a roll states them.
#pragma once

#include <memory>

#include "host/host.h"
#include "weaving/roll.h"

namespace weaving {

/// A movement of roll `number`, which is being written off, filled but for material, quantity and price.
std::unique_ptr<host::TEstoque> NewRollMovement(host::Host& host, const NewRoll& roll, int number);

/// Who takes a roll back, and when.
struct ReversedBy {
  std::string client;  // the knitting mill
  std::string employee;
  host::Date date;
};

/// A movement that takes `roll` back, filled but for material, quantity and kind.
std::unique_ptr<host::TEstoque> NewReversalMovement(host::Host& host, const StoredRoll& roll, const ReversedBy& by);

}  // namespace weaving
