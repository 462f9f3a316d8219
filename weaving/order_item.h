// An order's item, as rolls are added to it and taken from it.
#pragma once

#include "host/host.h"
#include "weaving/roll.h"
#include "weaving/statement.h"

namespace weaving {

/// The item of a roll: its order, fabric and colour, and its sales order where the roll has one.
class OrderItem {
 public:
  OrderItem(host::Host& host, const StoredRoll& roll) : statements_(host), roll_(roll) {}

  /// Adds the roll's quantity to what is written off, and closes the item when that reaches what was ordered. Throws
  /// InputError when there is no such item any more; nothing is written then. Throws DatabaseError.
  void Raise() const;
  /// Takes the roll's quantity off and reopens the item. Throws DatabaseError.
  void Lower() const;

 private:
  bool IsCompletedByRoll() const;
  bool IsEmptiedByRoll() const;
  Sql OfSalesOrder() const;

  Statements statements_;
  const StoredRoll& roll_;
};

}  // namespace weaving
