// The lot code that a woven roll carries, in the roll's own row and in the fabric's stock.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace weaving {

struct RollLotParts {
  std::string order;
  int roll = 0;  // number of the roll within its order
  std::string sales_order;
  std::string return_note;
  bool bar_code_ticked = false;
  std::string bar_code;
};

/// The lot code by the first character of the installation's scheme: "1" zeros, "2" the order, "3" order and roll, "4"
/// the bar code or order and sequence, "5" order and sales order, "6" order and return note; empty for any other.
/// `next_sequence` is asked only by scheme "4" without bar code, and each call uses a number up: a roll's lot is
/// therefore built once and handed on.
std::string RollLot(std::string_view scheme, const RollLotParts& parts,
                    const std::function<std::string()>& next_sequence);

}  // namespace weaving
