// Closing an order's item by hand, and giving up what is still reserved for the order.
#pragma once

#include <string_view>

#include "host/host.h"
#include "weaving/statement.h"

namespace writeoff {

class ItemClosing {
 public:
  explicit ItemClosing(host::Host& host);

  /// Writes the closing flag of a fabric in an order, whatever the colour.
  void SetClosed(std::string_view order, std::string_view code, std::string_view flag);
  /// True when yarn is still reserved for the order.
  bool HasReservations(std::string_view order);
  /// Gives up what is reserved and left (`only_left`: as HasReservations looks at it), and logs who did it.
  void ClearReservations(std::string_view order, bool only_left);

 private:
  weaving::Sql ReservationsOf(std::string_view order, bool only_left) const;

  host::Host& host_;
  weaving::Statements statements_;
};

}  // namespace writeoff
