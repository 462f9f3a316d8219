// One lot of stock.
#pragma once

#include <compare>
#include <cstddef>
#include <string>

namespace weaving {

/// Widths of the stock's own columns: a code cut shorter would name another lot.
inline constexpr std::size_t kLotWidth = 32;
/// Lots longer than this cannot be taken back: the mill's other programs know lots up to this long.
inline constexpr std::size_t kLongestLot = 15;

struct StockLot {
  std::string code;
  std::string colour;
  std::string deposit;
  std::string lot;

  auto operator<=>(const StockLot&) const = default;
};

}  // namespace weaving
