#include "app/admin/parameter_list.h"

#include <algorithm>

namespace app::admin {

std::span<const ParameterInfo> KnownParameters() {
  static const std::vector<ParameterInfo> kParameters = {
      {"COM", 80, "Lotes de fio na baixa", {{"F", "mostra o fornecedor de cada lote"}, {"", "não mostra"}}},
      {"MAL",
       40,
       "Formação do lote da peça",
       {{"1", "zeros"},
        {"2", "número da ordem"},
        {"3", "número da ordem e número da peça"},
        {"4", "código de barras ou, sem ele, ordem e sequência"},
        {"5", "número da ordem e do pedido"},
        {"6", "número da ordem e da nota de retorno"}}},
      {"MAL", 50, "Etiqueta da peça depois de cada baixa", {{"S", "imprime"}, {"N", "não imprime"}}},
      {"MAL", 60, "Cadastro de defeitos depois de cada baixa", {{"S", "abre"}, {"N", "não abre"}}},
      {"MAL",
       70,
       "Consumo dos fios na baixa",
       {{"S", "das reservas da ordem; sem reserva não há baixa"}, {"N", "a peça pode ser baixada sem reserva"}}},
      {"MAL", 90, "Conferência das reservas de fio na ordem de tecelagem", {{"S", "confere"}, {"N", "não confere"}}},
      {"SIS", 10, "Nome da empresa nos impressos", {}},
      {"SIS", 20, "Modo de impressão proposto para as etiquetas", {{"S", "texto"}, {"N", "Windows"}}},
  };
  return kParameters;
}

const ParameterInfo* FindParameter(std::string_view group, int number) {
  for (const ParameterInfo& known : KnownParameters()) {
    if (known.group == group && known.number == number) return &known;
  }
  return nullptr;
}

std::optional<std::string> ParameterObjection(const ParameterInfo& parameter, std::string_view value) {
  const auto& allowed = parameter.allowed;
  if (allowed.empty()) return std::nullopt;
  if (std::any_of(allowed.begin(), allowed.end(), [&](const AllowedValue& known) { return known.value == value; })) {
    return std::nullopt;
  }
  std::string sentence = "O parâmetro \"";
  sentence.append(parameter.group).append("\" ").append(std::to_string(parameter.number)).append(" aceita ");
  for (std::size_t i = 0; i < allowed.size(); ++i) {
    if (i > 0) sentence += i + 1 == allowed.size() ? " ou " : ", ";
    sentence += allowed[i].value.empty() ? "vazio" : std::string(allowed[i].value);
  }
  return sentence + ".";
}

}  // namespace app::admin
