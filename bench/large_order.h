// An order of 200 items, to measure what a long one costs.
#pragma once

#include "support/mill.h"

namespace bench {

inline constexpr int kLargeOrderItems = 200;
inline constexpr int kLotsPerYarn = 5;
inline constexpr const char* kLargeOrder = "900001";

/// The small mill with order kLargeOrder: 200 fabrics of four yarns each, drawn from that many different ones, five
/// lots a yarn.
void FillLargeOrder(test::Mill& mill, int yarns);

}  // namespace bench
