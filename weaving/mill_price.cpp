#include "weaving/mill_price.h"

#include "host/decimal.h"

namespace weaving {

double ServiceCost(double cost, bool simplified_regime) {
  if (!(cost > 0)) return 0;
  if (simplified_regime) return cost;
  const double contributions = host::WithoutNoise(cost / 100 * 1.65 + cost / 100 * 7.6);
  return host::WithoutNoise(cost - host::RoundTo(contributions, 2));
}

MillPrice::MillPrice(host::Host& host) : funcoes_(host.GetFuncoes()), statements_(host) {}

double MillPrice::Agreed(std::string_view mill, std::string_view fabric) const {
  return funcoes_
      .Busca_Valor("CADCORTI", "CODCLI;CODIGO", "CUSTO", funcoes_.Aspas(mill) + ";" + funcoes_.Aspas(fabric), true,
                   true)
      .AsFloat();
}

double MillPrice::Agreed(std::string_view mill, std::string_view fabric, std::string_view colour) const {
  return funcoes_
      .Busca_Valor("CADCORTI", "CODCLI;CODIGO;COR", "CUSTO",
                   funcoes_.Aspas(mill) + ";" + funcoes_.Aspas(fabric) + ";" + funcoes_.Aspas(colour), true, true)
      .AsFloat();
}

double MillPrice::Service(std::string_view mill, std::string_view fabric) const {
  const auto price = statements_.Open(R"(
SELECT CUSTO FROM {CADCORTI}
WHERE CODIGO = :fabric AND CODCLI = :mill
ORDER BY TIPO, COR)",
                                      {{"fabric", fabric}, {"mill", mill}});
  const double cost = price->FieldByName("CUSTO").AsFloat();
  if (!(cost > 0)) return 0;
  const auto regime = funcoes_.Busca_Valor("ENTIDADE", "CODCLI", "SIMPLES", funcoes_.Aspas(mill), true, true);
  return ServiceCost(cost, regime.AsText() == "S");
}

}  // namespace weaving
