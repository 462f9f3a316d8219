// A roll taken back: its yarn returned, its fabric out of stock, its item reopened, its row and defects gone, the log.
#pragma once

#include <memory>
#include <string>

#include "host/host.h"
#include "writeoff/roll_record.h"

namespace writeoff {

/// What a reversal takes from the screen.
struct Reversal {
  RollRow roll;          // as the roll list shows it
  std::string lot;       // the fabric's lot in stock
  double price = 0;      // average of that lot, per unit
  std::string client;    // the knitting mill
  std::string employee;  // who reverses
  host::Date date;       // of the reversal
  std::string log_quantity;
};

/// A movement of the reversal's document, filled but for material, quantity and kind.
std::unique_ptr<host::TEstoque> NewReversalMovement(host::Host& host, const Reversal& reversal);

class RollReversal {
 public:
  explicit RollReversal(host::Host& host);

  enum class Standing { kAsListed, kChanged, kGone };
  /// Whether the roll is stored as it was listed; payment notes aside. The caller holds the order.
  Standing Look(const RollRow& roll);

  struct FabricStock {
    double quantity = 0;
    double price = 0;
  };
  /// Of the roll's fabric in that lot; zeros when there is no such lot.
  FabricStock StockOf(const RollRow& roll, const std::string& lot);

  /// Undoes and logs the roll and makes that durable: when it returns, the roll is gone. Throws at what failed; what
  /// was written before is the caller's to undo.
  void Write(const Reversal& reversal);

 private:
  void TakeFabricOut(const Reversal& reversal);
  void LowerItem(const RollRow& roll);
  bool EmptiesItem(const RollRow& roll);
  std::string Item(const RollRow& roll) const;
  void DeleteRoll(const RollRow& roll);
  void DeleteDefects(const RollRow& roll);

  host::Host& host_;
  host::Funcoes& funcoes_;
  host::Database& database_;
};

}  // namespace writeoff
