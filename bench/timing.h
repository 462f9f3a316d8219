// Medians and what an action costs the database.
#pragma once

#include <time.h>

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

/// Milliseconds of processor time that this process has used: what other programs do meanwhile does not count.
inline double ProcessorMilliseconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// The value at `share` (0.5 for the median) of the sorted values; 0 without values.
inline double Quantile(std::vector<double> values, double share) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

/// Adds what was spent between `before` and `after` to `sum`.
inline void AddSpent(app::firebird::Statistics& sum, const app::firebird::Statistics& before,
                     const app::firebird::Statistics& after) {
  sum.statements += after.statements - before.statements;
  sum.prepares += after.prepares - before.prepares;
  sum.round_trips += after.round_trips - before.round_trips;
  sum.commits += after.commits - before.commits;
  sum.retries += after.retries - before.retries;
}

}  // namespace bench
