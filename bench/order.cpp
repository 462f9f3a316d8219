// An order of 200 items: how long it takes to load, explode and show its stock, how that grows with the number of
// different yarns, how long until its printout can be drawn, and what the labels of its rolls cost.
#include <functional>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/large_order.h"
#include "bench/timing.h"
#include "support/mill.h"

namespace {

// The middle of five times, the first run left out, and what the last one cost.
void Report(test::Mill& mill, const std::string& what, const std::function<void()>& act) {
  std::vector<double> times;
  app::firebird::Statistics cost;
  for (int run = 0; run < 6; ++run) {
    const auto before = mill.Db().Stats();
    const double time = bench::Milliseconds(act);
    cost = {};
    bench::AddSpent(cost, before, mill.Db().Stats());
    if (run > 0) times.push_back(time);
  }
  std::cout << what << ": median " << bench::Quantile(times, 0.5) << " ms, " << cost.statements << " statements, "
            << cost.prepares << " prepares, " << cost.commits << " forced writes\n";
}

void Expect(bool held, const char* what) {
  if (!held) throw std::runtime_error(what);
}

// Compositions of fabrics that the order does not have.
void AddCompositions(test::Mill& mill, int count) {
  mill.Exec(
      "EXECUTE BLOCK AS DECLARE I INTEGER = 0; BEGIN WHILE (I < " + std::to_string(count) +
      ") DO BEGIN INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, PERC) VALUES ('X' || MOD(:I, 10000), "
      "LPAD(MOD(:I, 7), 2, '0'), 'Y1', 'CR', 50); I = I + 1; END END");
}

void Measure(int yarns, int other_compositions) {
  test::Mill mill;
  bench::FillLargeOrder(mill, yarns);
  if (other_compositions > 0) AddCompositions(mill, other_compositions);
  host::Screen& screen = mill.Open("TfmCadLoteTec");
  const std::string order = std::to_string(bench::kLargeOrderItems) + " items, " + std::to_string(yarns) + " yarns, " +
                            std::to_string(yarns * bench::kLotsPerYarn) + " lots" +
                            (other_compositions > 0 ? ", " + std::to_string(other_compositions) + " compositions" : "");
  Report(mill, order + ", load", [&] { mill.Type(screen, "EdtNumero", bench::kLargeOrder); });
  Expect(mill.Data(screen, "TbFios").RecordCount() == static_cast<std::size_t>(yarns), "the yarns are not all there");
  Report(mill, order + ", printout read", [&] { mill.Click(screen, "BtnImprimir"); });
  for (const auto& print : mill.Equipment().TakePrints()) {
    Expect(print.data.at("QryRelatorio").size() == bench::kLargeOrderItems, "the items are not all printed");
  }
}

void MeasureLabels(int count) {
  test::Mill mill;
  bench::FillLargeOrder(mill, 4);
  host::Screen& screen = mill.Open("TfmCadLoteTec");
  mill.Type(screen, "EdtNumero", bench::kLargeOrder);
  Report(mill, std::to_string(count) + " roll labels in the place of " + std::to_string(count), [&] {
    mill.Person().Answer("Quantidade:", std::to_string(count));
    mill.Person().Answer("Deseja gerar novamente?", "yes");
    mill.Desk().PickMenu(screen, "Gerar Etiqueta(s)");
  });
  const auto labels =
      mill.Scalar("SELECT COUNT(*) FROM {MAT_ITEN} WHERE LOTE STARTING WITH '" + std::string(bench::kLargeOrder) + "'");
  Expect(labels.AsInteger() == count, "the labels are not all there");
}

}  // namespace

int main() {
  try {
    for (const int yarns : {4, 20, 100, 400}) Measure(yarns, 0);
    Measure(4, 100'000);
    for (const int labels : {10, 999}) MeasureLabels(labels);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
