#include "bench/large_order.h"

#include <string>

namespace bench {
namespace {

std::string Numbered(const char* prefix, int number) { return prefix + std::to_string(1000 + number); }

void AddYarn(test::Mill& mill, const std::string& code) {
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

}  // namespace

void FillLargeOrder(test::Mill& mill, int yarns) {
  test::FillSmallMill(mill);
  for (int yarn = 0; yarn < yarns; ++yarn) AddYarn(mill, Numbered("BY", yarn));
  mill.Insert("TECEL", {{"NUMERO", kLargeOrder}, {"MALHARIA", "M00001"}, {"SITUACAO", "A"}, {"DEPOSITO", "DF"}});
  for (int item = 0; item < kLargeOrderItems; ++item) {
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
    mill.Insert("TECEL_ITEN", {{"NUMERO", kLargeOrder}, {"CODIGO", code}, {"COR", "01"}, {"QTDE", 100}, {"CUSTO", 5}});
  }
}

}  // namespace bench
