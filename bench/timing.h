// Medians and what an action costs the database.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <vector>

#include "app/firebird/database.h"

namespace bench {

/// Milliseconds that `act` takes.
template <typename Act>
double Milliseconds(const Act& act) {
  const auto start = std::chrono::steady_clock::now();
  act();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// The value at `share` (0.5 for the median) of the sorted values; 0 without values.
inline double Quantile(std::vector<double> values, double share) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

inline app::firebird::Statistics operator-(app::firebird::Statistics left, const app::firebird::Statistics& right) {
  left.statements -= right.statements;
  left.prepares -= right.prepares;
  left.round_trips -= right.round_trips;
  left.commits -= right.commits;
  left.retries -= right.retries;
  return left;
}

}  // namespace bench
