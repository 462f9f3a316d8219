#include "weaving/average_weight.h"

#include <cmath>

#include "host/decimal.h"

namespace weaving {
namespace {

constexpr double kTolerancePercent = 50;

}  // namespace

double HeaviestRoll(double standard) {
  const double tolerance = host::RoundTo(host::WithoutNoise(standard / 100 * kTolerancePercent), 0);
  return host::RoundTo(tolerance + standard, 3);
}

double AverageRoll(double net, double pieces) {
  if (!(pieces > 0)) return 0;
  const double average = net / pieces;
  return std::isfinite(average) ? host::RoundTo(average, 3) : 0;
}

}  // namespace weaving
