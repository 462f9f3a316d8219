// Yarn out of stock for a roll, and back when the roll fails.
#pragma once

#include <memory>
#include <string_view>

#include "host/host.h"
#include "weaving/roll.h"
#include "weaving/statement.h"
#include "weaving/stock_lot.h"

namespace weaving {

/// What the order has reserved of the lot and not consumed yet; 0 without reservation.
double ReservedOfLot(const Statements& statements, std::string_view order, const StockLot& lot);

class YarnMovements {
 public:
  /// Movements of roll `number` of its order.
  YarnMovements(host::Host& host, NewRoll roll, int number);

  /// Takes the quantity out of the lot, records it and moves it within the order's reservation from reserved to
  /// consumed. Throws at the statement that failed; what it wrote before is the caller's to undo.
  void TakeOut(const StockLot& lot, double quantity, double price);
  /// Brings back all that is recorded for the roll and forgets the record. Reservations stay reduced.
  void BringBack();

 private:
  std::unique_ptr<host::TEstoque> Movement(const StockLot& lot, double quantity) const;
  void Record(const StockLot& lot, double quantity);
  void ReduceReservation(const StockLot& lot, double quantity);

  host::Host& host_;
  Statements statements_;
  NewRoll roll_;
  int number_;
};

}  // namespace weaving
