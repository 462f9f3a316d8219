#include "app/tables/import_rules.h"

#include <algorithm>
#include <limits>

namespace app::tables {
namespace {

// Orders, reservations, rolls and the ledger are missing on purpose: only the screens keep them consistent.
constexpr std::string_view kOrder[] = {
    "ENTIDADE",      "CADCOR",   "TURNO",    "TURNO_HORARIOS", "PESSOAL",  "MAQUINA",     "FLUXOTIN",      "TABPRZ",
    "TABLIN",        "TABFIS",   "TABQUL",   "DEFEITO",        "GRUPO_MA", "CADTAG",      "TNG_REGRA",     "DEPOSITO",
    "MATERIAL",      "MAT_ITEN", "MAT_LOTE", "CADRAPORT",      "RAPORT",   "CADCORTI",    "COMP_MATERIAL", "NOTA_ENTRA",
    "NF_ENTRA_ITEN", "PEDIDO",   "CO_ITEN",  "CADMATTI",       "NOTA_FCI", "TINTUR_ITEN", "FACCAO4",
};

Reference One(std::string_view table, std::string_view column, std::string_view target, std::string_view key,
              std::string_view exempt = "") {
  return {table, {column}, target, {key}, exempt};
}

constexpr double kNoLimit = std::numeric_limits<double>::max();

struct ColumnLimits {
  std::string_view table;
  std::string_view column;
  Limits limits;
};

constexpr ColumnLimits kLimits[] = {
    {"TURNO_HORARIOS", "DIA", {1, 7}}, {"", "PERC", {0, 100}},        {"", "QTDE", {0, kNoLimit}},
    {"", "QTDE_B", {0, kNoLimit}},     {"", "QTDE_R", {0, kNoLimit}}, {"", "QUANT", {0, kNoLimit}},
    {"", "PRECO_MED", {0, kNoLimit}},  {"", "PRECO", {0, kNoLimit}},  {"", "CUSTO", {0, kNoLimit}},
    {"", "REPOSICAO", {0, kNoLimit}},  {"", "PESO", {0, kNoLimit}},   {"", "NE", {0, kNoLimit}},
};

constexpr std::string_view kFlags[] = {"ATIVO", "ESTOQUE", "BLOQUEIO", "SIMPLES", "NOTURNO", "PAGO"};

}  // namespace

std::span<const std::string_view> ImportOrder() { return kOrder; }

const std::vector<Reference>& References() {
  static const std::vector<Reference> references = {
      One("TURNO_HORARIOS", "TURNO", "TURNO", "TURNO"),
      One("PESSOAL", "TURNO", "TURNO", "TURNO"),
      One("DEPOSITO", "CODCLI", "ENTIDADE", "CODCLI"),
      One("MATERIAL", "CODCLI", "ENTIDADE", "CODCLI"),
      One("MATERIAL", "GRUPO", "GRUPO_MA", "CODIGO"),
      One("MATERIAL", "LINHA", "TABLIN", "CODIGO"),
      One("MATERIAL", "CODFIS", "TABFIS", "CODIGO"),
      One("MAT_ITEN", "CODIGO", "MATERIAL", "CODIGO"),
      One("MAT_ITEN", "COR", "CADCOR", "COR"),
      One("MAT_ITEN", "DEPOSITO", "DEPOSITO", "CODIGO"),
      One("MAT_ITEN", "QUALIDADE", "TABQUL", "CODIGO"),
      One("MAT_LOTE", "CODIGO", "MATERIAL", "CODIGO"),
      One("MAT_LOTE", "COR", "CADCOR", "COR"),
      One("CADRAPORT", "CODIGO", "MATERIAL", "CODIGO"),
      One("RAPORT", "MATERIAL", "MATERIAL", "CODIGO"),
      One("RAPORT", "COR", "CADCOR", "COR"),
      One("RAPORT", "CODIGO", "MATERIAL", "CODIGO"),
      One("RAPORT", "COR_I", "CADCOR", "COR", "*"),
      One("CADCORTI", "CODIGO", "MATERIAL", "CODIGO"),
      One("CADCORTI", "CODCLI", "ENTIDADE", "CODCLI"),
      One("CADCORTI", "COR", "CADCOR", "COR", "0"),
      One("COMP_MATERIAL", "MATERIAL", "MATERIAL", "CODIGO"),
      One("COMP_MATERIAL", "CODIGO", "MATERIAL", "CODIGO"),
      One("COMP_MATERIAL", "COR", "CADCOR", "COR"),
      One("COMP_MATERIAL", "COR_I", "CADCOR", "COR", "*"),
      One("COMP_MATERIAL", "REGRA", "TNG_REGRA", "CODIGO"),
      One("NOTA_ENTRA", "CREDOR", "ENTIDADE", "CODCLI"),
      {"NF_ENTRA_ITEN", {"NUMERO", "CODCRE", "SERIE"}, "NOTA_ENTRA", {"NOTAFISCAL", "CREDOR", "SERIE"}, ""},
      One("NF_ENTRA_ITEN", "CODIGO", "MATERIAL", "CODIGO"),
      One("NF_ENTRA_ITEN", "COR", "CADCOR", "COR"),
      One("PEDIDO", "CODCLI", "ENTIDADE", "CODCLI"),
      One("CO_ITEN", "CODIGO", "MATERIAL", "CODIGO"),
      One("CO_ITEN", "COR", "CADCOR", "COR"),
      One("CO_ITEN", "CODCLI", "ENTIDADE", "CODCLI"),
      One("CADMATTI", "CODIGO", "MATERIAL", "CODIGO"),
      One("CADMATTI", "CODIGO2", "MATERIAL", "CODIGO"),
      One("CADMATTI", "FLUXO", "FLUXOTIN", "CODIGO"),
      One("NOTA_FCI", "CODIGO", "MATERIAL", "CODIGO"),
      One("TINTUR_ITEN", "CODIGO2", "MATERIAL", "CODIGO"),
      One("TINTUR_ITEN", "COR", "CADCOR", "COR"),
      One("FACCAO4", "CODCLI", "ENTIDADE", "CODCLI"),
      One("FACCAO4", "CODIGO", "MATERIAL", "CODIGO"),
  };
  return references;
}

bool IsExempt(const Reference& reference, std::string_view value) {
  if (reference.exempt.empty()) return false;
  return reference.exempt == "*" ? value.find('*') != std::string_view::npos : value == reference.exempt;
}

std::optional<Limits> LimitsOf(std::string_view table, std::string_view column) {
  for (const auto& entry : kLimits) {
    if (entry.column == column && (entry.table.empty() || entry.table == table)) return entry.limits;
  }
  return std::nullopt;
}

bool IsFlag(std::string_view column) {
  return std::find(std::begin(kFlags), std::end(kFlags), column) != std::end(kFlags);
}

}  // namespace app::tables
