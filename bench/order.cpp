// An order of 200 items: how long it takes to load, explode and show its stock, and how that grows with the number of
// different yarns.
#include <iostream>
#include <string>
#include <vector>

#include "bench/timing.h"
#include "support/mill.h"
#include "support/road.h"

namespace {

constexpr int kItems = 200;
constexpr int kLotsPerYarn = 5;

std::string Numbered(const char* prefix, int number) { return prefix + std::to_string(1000 + number); }

// 200 fabrics of four yarns each, drawn from that many different ones, five lots a yarn; one order of all of them.
void Fill(test::Mill& mill, int yarns) {
  test::FillSmallMill(mill);
  for (int yarn = 0; yarn < yarns; ++yarn) {
    const std::string code = Numbered("BY", yarn);
    mill.Insert("MATERIAL", {{"CODIGO", code}, {"DESCRICAO", "Fio " + code}, {"UNIDADE", "KG"}, {"ESTOQUE", "S"}});
    for (int lot = 0; lot < kLotsPerYarn; ++lot) {
      mill.Insert("MAT_ITEN", {{"CODIGO", code},
                               {"COR", "CR"},
                               {"DEPOSITO", "D1"},
                               {"LOTE", Numbered("L", lot)},
                               {"QTDE", 1000},
                               {"PRECO_MED", 20}});
    }
  }
  mill.Insert("TECEL", {{"NUMERO", "900001"}, {"MALHARIA", "M00001"}, {"SITUACAO", "A"}, {"DEPOSITO", "DF"}});
  for (int item = 0; item < kItems; ++item) {
    const std::string code = Numbered("BF", item);
    mill.Insert("MATERIAL", {{"CODIGO", code}, {"DESCRICAO", "Malha " + code}, {"UNIDADE", "KG"}, {"ESTOQUE", "S"}});
    for (int line = 0; line < 4; ++line) {
      mill.Insert("COMP_MATERIAL", {{"MATERIAL", code},
                                    {"COR", "01"},
                                    {"ORDEM", line + 1},
                                    {"CODIGO", Numbered("BY", (item * 4 + line) % yarns)},
                                    {"COR_I", "CR"},
                                    {"PERC", 25},
                                    {"KG_ROLO", 20}});
    }
    mill.Insert("TECEL_ITEN", {{"NUMERO", "900001"}, {"CODIGO", code}, {"COR", "01"}, {"QTDE", 100}, {"CUSTO", 5}});
  }
}

void Measure(int yarns) {
  test::Mill mill;
  Fill(mill, yarns);
  host::Screen& screen = mill.Open("TfmCadLoteTec");
  std::vector<double> times;
  app::firebird::Statistics cost;
  for (int run = 0; run < 6; ++run) {
    const auto before = mill.Db().Stats();
    const double time = bench::Milliseconds([&] { mill.Type(screen, "EdtNumero", "900001"); });
    cost = {};
    bench::AddSpent(cost, before, mill.Db().Stats());
    if (run > 0) times.push_back(time);
  }
  std::cout << kItems << " items, " << yarns << " yarns, " << yarns * kLotsPerYarn << " lots: median "
            << bench::Quantile(times, 0.5) << " ms, " << cost.statements << " statements, " << cost.prepares
            << " prepares, " << cost.commits << " forced writes; " << mill.Data(screen, "TbFios").RecordCount()
            << " yarns listed\n";
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
