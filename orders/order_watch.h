// Whether an order is still stored as it was when it came on the screen.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/database.h"
#include "host/date.h"
#include "host/funcoes.h"
#include "host/host.h"
#include "orders/order_store.h"

namespace orders {

enum class OrderChange {
  kNone,
  kAltered,   // header, items (rolls written off included) or reservations differ
  kDeleted,   // it was stored and is no more
  kStored,    // it was new and somebody else stored it
  kNotShown,  // it is stored, and the screen does not show it
};

/// The caller holds the order while it looks. Operations that read throw DatabaseError; what is remembered then stays.
class OrderWatch {
 public:
  OrderWatch(host::Host& host, const OrderStore& store);

  /// `order` is what OrderStore::Load found, on its first row again afterwards: the screen shows it from now on.
  void Shown(std::string_view number, host::TTIQuery& order);
  /// The screen shows a new order of that number, which is not stored.
  void New(std::string_view number);
  /// The screen shows no order.
  void Nothing();

  OrderChange Look(std::string_view number) const;
  /// "por MARIA em 21/11/2026 14:05", as the log has it; "por outro usuário ou programa" where it does not tell.
  std::string ByWhom(std::string_view number) const;

 private:
  struct Known {
    std::string number;
    std::optional<std::string> rows = {};         // nothing for a new order
    std::optional<host::LogMark> order_log = {};  // what the log told last when it came on the screen
    std::optional<host::LogMark> roll_log = {};
  };

  std::string ReservationRows(std::string_view number) const;

  host::Host& host_;
  const OrderStore& store_;
  std::optional<Known> known_;
};

}  // namespace orders
