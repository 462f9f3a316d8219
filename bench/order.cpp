// An order of 200 items: how long it takes to load, explode and show its stock, and how that grows with the number of
// different yarns.
#include <iostream>
#include <string>
#include <vector>

#include "bench/large_order.h"
#include "bench/timing.h"
#include "support/mill.h"

namespace {

void Measure(int yarns) {
  test::Mill mill;
  bench::FillLargeOrder(mill, yarns);
  host::Screen& screen = mill.Open("TfmCadLoteTec");
  std::vector<double> times;
  app::firebird::Statistics cost;
  for (int run = 0; run < 6; ++run) {
    const auto before = mill.Db().Stats();
    const double time = bench::Milliseconds([&] { mill.Type(screen, "EdtNumero", bench::kLargeOrder); });
    cost = {};
    bench::AddSpent(cost, before, mill.Db().Stats());
    if (run > 0) times.push_back(time);
  }
  std::cout << bench::kLargeOrderItems << " items, " << yarns << " yarns, " << yarns * bench::kLotsPerYarn
            << " lots: median " << bench::Quantile(times, 0.5) << " ms, " << cost.statements << " statements, "
            << cost.prepares << " prepares, " << cost.commits << " forced writes; "
            << mill.Data(screen, "TbFios").RecordCount() << " yarns listed\n";
}

}  // namespace

int main() {
  try {
    for (const int yarns : {4, 20, 100, 400}) Measure(yarns);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
