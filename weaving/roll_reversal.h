// A roll taken back: its yarn returned, its fabric out of stock, its item reopened, its row and defects gone, the log.
#pragma once

#include <string>

#include "host/host.h"
#include "weaving/roll.h"
#include "weaving/roll_movements.h"
#include "weaving/statement.h"

namespace weaving {

/// What a reversal takes from the screen.
struct Reversal {
  StoredRoll roll;   // as the roll list shows it
  std::string lot;   // the fabric's lot in stock
  double price = 0;  // average of that lot, per unit
  ReversedBy by;
  std::string log_quantity;
};

class RollReversal {
 public:
  explicit RollReversal(host::Host& host);

  enum class Standing { kAsListed, kChanged, kGone };
  /// Whether the roll is stored as it was listed; payment notes aside. The caller holds the order.
  Standing Look(const StoredRoll& roll) const;

  struct FabricStock {
    double quantity = 0;
    double price = 0;
  };
  /// Of the roll's fabric in that lot; zeros when there is no such lot.
  FabricStock StockOf(const StoredRoll& roll, const std::string& lot) const;

  /// Undoes and logs the roll and makes that durable: when it returns, the roll is gone. Throws at what failed; what
  /// was written before is the caller's to undo.
  void Write(const Reversal& reversal);

 private:
  Sql OfRoll(const StoredRoll& roll) const;
  void TakeFabricOut(const Reversal& reversal);

  host::Host& host_;
  Statements statements_;
};

}  // namespace weaving
