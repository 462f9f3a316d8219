#include "orders/fabric_rules.h"

#include "weaving/yarn_colour.h"

namespace orders {

FabricRules::FabricRules(host::Host& host)
    : funcoes_(host.GetFuncoes()), database_(host.GetTabela().IBDatabase()), statements_(host) {}

// The conditions are one line each, since that is what a lookup takes.
std::string FabricRules::MillFilter() const {
  return statements_
      .Write(
          " CODCLI IN (SELECT DISTINCT CADCORTI.CODCLI FROM {CADCORTI} CADCORTI WHERE CADCORTI.TIPO = 'C')"
          " AND COALESCE(ATIVO,'S') <> 'N'"
          "  AND COALESCE(BLOQUEIO,'N') <> 'S'")
      .Text();
}

std::string FabricRules::MaterialFilter() const {
  return statements_
      .Write(
          "CODIGO IN (SELECT DISTINCT CADCORTI.CODIGO FROM {CADCORTI} CADCORTI WHERE CADCORTI.TIPO = 'C')"
          " AND ATIVO <> 'N'")
      .Text();
}

std::string FabricRules::ColourFilter(std::string_view fabric) const {
  return statements_
      .Write(
          "COR IN (SELECT DISTINCT MAT_ITEN.COR  FROM {MAT_ITEN} MAT_ITEN"
          " WHERE MAT_ITEN.CODIGO = :fabric)",
          {{"fabric", fabric}})
      .Text();
}

MillState FabricRules::StateOf(std::string_view mill) const {
  const auto row = statements_.Open(R"(
SELECT CODCLI, ATIVO, BLOQUEIO
FROM {ENTIDADE}
WHERE CODCLI = :mill)",
                                    {{"mill", mill}});
  if (row->IsEmpty()) return MillState::kUnknown;
  const bool barred = row->FieldByName("ATIVO").AsText() == "N" || row->FieldByName("BLOQUEIO").AsText() == "S";
  return barred ? MillState::kBarred : MillState::kFree;
}

std::optional<std::string> FabricRules::ColourOf(std::string_view fabric, std::string_view colour) const {
  const auto colours = statements_.Open(R"(
SELECT DISTINCT CADCOR.DESCRICAO, MAT_ITEN.COR  
FROM {MAT_ITEN} MAT_ITEN
INNER JOIN {CADCOR} CADCOR ON (MAT_ITEN.COR = CADCOR.COR)
WHERE MAT_ITEN.CODIGO = :fabric)",
                                        {{"fabric", fabric}});
  for (; !colours->Eof(); colours->Next()) {
    if (colours->FieldByName("COR").AsText() == colour) return colours->FieldByName("DESCRICAO").AsText();
  }
  return std::nullopt;
}

bool FabricRules::HasComposition(std::string_view fabric, std::string_view colour) const {
  if (!funcoes_.Existe("COMP_MATERIAL", "MATERIAL", funcoes_.Aspas(fabric), database_)) return true;
  const auto rows =
      statements_.Open(R"(
SELECT COMP.CODIGO, COMP.COR
FROM {COMP_MATERIAL} COMP
WHERE COMP.MATERIAL = :fabric
AND COMP.COR = :colour
AND :coloured)",
                       {{"fabric", fabric}, {"colour", colour}, {"coloured", weaving::YarnColourGiven("COMP.")}});
  return !rows->IsEmpty();
}

}  // namespace orders
