#include "orders/fabric_rules.h"

namespace orders {

FabricRules::FabricRules(host::Host& host)
    : funcoes_(host.GetFuncoes()), database_(host.GetTabela().IBDatabase()), words_(funcoes_) {}

std::string FabricRules::MillFilter() const {
  return " CODCLI IN (SELECT DISTINCT CADCORTI.CODCLI FROM " + words_.Named("CADCORTI") +
         " WHERE CADCORTI.TIPO = " + words_.Text("C") + ")" +                      //
         " AND COALESCE(ATIVO," + words_.Text("S") + ") <> " + words_.Text("N") +  //
         "  AND COALESCE(BLOQUEIO," + words_.Text("N") + ") <> " + words_.Text("S");
}

std::string FabricRules::MaterialFilter() const {
  return "CODIGO IN (SELECT DISTINCT CADCORTI.CODIGO FROM " + words_.Named("CADCORTI") +
         " WHERE CADCORTI.TIPO = " + words_.Text("C") + ")" +  //
         " AND ATIVO <> " + words_.Text("N");
}

std::string FabricRules::ColourFilter(std::string_view fabric) const {
  return "COR IN (SELECT DISTINCT MAT_ITEN.COR  FROM " + words_.Named("MAT_ITEN") +  //
         " WHERE MAT_ITEN.CODIGO = " + words_.Text(fabric) + ")";
}

MillState FabricRules::StateOf(std::string_view mill) const {
  const auto row = OpenQuery(database_, {"SELECT CODCLI, ATIVO, BLOQUEIO", "FROM " + words_.Table("ENTIDADE"),
                                         "WHERE CODCLI = " + words_.Text(mill)});
  if (row->IsEmpty()) return MillState::kUnknown;
  const bool barred = row->FieldByName("ATIVO").AsText() == "N" || row->FieldByName("BLOQUEIO").AsText() == "S";
  return barred ? MillState::kBarred : MillState::kFree;
}

std::optional<std::string> FabricRules::ColourOf(std::string_view fabric, std::string_view colour) const {
  const auto colours =
      OpenQuery(database_, {"SELECT DISTINCT CADCOR.DESCRICAO, MAT_ITEN.COR  ", "FROM " + words_.Named("MAT_ITEN"),
                            "INNER JOIN " + words_.Named("CADCOR") + " ON (MAT_ITEN.COR = CADCOR.COR)",
                            "WHERE MAT_ITEN.CODIGO = " + words_.Text(fabric)});
  for (; !colours->Eof(); colours->Next()) {
    if (colours->FieldByName("COR").AsText() == colour) return colours->FieldByName("DESCRICAO").AsText();
  }
  return std::nullopt;
}

double FabricRules::MillCost(std::string_view mill, std::string_view fabric) const {
  return funcoes_
      .Busca_Valor("CADCORTI", "CODCLI;CODIGO", "CUSTO", words_.Text(mill) + ";" + words_.Text(fabric), true, true)
      .AsFloat();
}

double FabricRules::MillCost(std::string_view mill, std::string_view fabric, std::string_view colour) const {
  return funcoes_
      .Busca_Valor("CADCORTI", "CODCLI;CODIGO;COR", "CUSTO",
                   words_.Text(mill) + ";" + words_.Text(fabric) + ";" + words_.Text(colour), true, true)
      .AsFloat();
}

bool FabricRules::HasComposition(std::string_view fabric, std::string_view colour) const {
  if (!funcoes_.Existe("COMP_MATERIAL", "MATERIAL", words_.Text(fabric), database_)) return true;
  const auto rows =
      OpenQuery(database_, {"SELECT COMP.CODIGO, COMP.COR", "FROM " + words_.Table("COMP_MATERIAL") + " COMP",
                            "WHERE COMP.MATERIAL = " + words_.Text(fabric), "AND COMP.COR = " + words_.Text(colour),
                            "AND NOT (COMP.COR_I LIKE " + words_.Text("%*%") + ")"});
  return !rows->IsEmpty();
}

}  // namespace orders
