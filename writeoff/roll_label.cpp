#include "writeoff/roll_label.h"

#include <string>

namespace writeoff {

void FabricOfLabel(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view code, std::string_view colour) {
  const auto table = [&funcoes](std::string_view name) { return funcoes.DBLocal(name, true); };
  sql.Add("SELECT CADCOR.DESCRICAO AS DESC_COR, MATERIAL.COMPOSICAO, MATERIAL.LARGURA, MATERIAL.GRAMATURA,");
  // Rolls are written off by weight, whatever the material is measured in.
  sql.Add("CAST('KG' AS VARCHAR(3)) AS UNIDADE,");
  sql.Add("(SELECT MAX(MAT_ITEN.BARRA) FROM " + table("MAT_ITEN") + " MAT_ITEN");
  // Every roll that ever came has a row of the item; few of them bear its number.
  sql.Add("WHERE MAT_ITEN.BARRA > '' AND MAT_ITEN.CODIGO = " + funcoes.Aspas(code) +
          " AND MAT_ITEN.COR = " + funcoes.Aspas(colour) + ") AS BARRA");
  sql.Add("FROM " + table("MATERIAL") + " MATERIAL");
  sql.Add("LEFT JOIN " + table("CADCOR") + " CADCOR ON (CADCOR.COR = " + funcoes.Aspas(colour) + ")");
  sql.Add("WHERE MATERIAL.CODIGO = " + funcoes.Aspas(code));
}

void LoadFabricOfLabel(host::Database& database, const host::Funcoes& funcoes, std::string_view code,
                       std::string_view colour, host::Dataset& fabric) {
  const auto query = database.NewQuery();
  FabricOfLabel(query->SQL, funcoes, code, colour);
  query->Open();
  fabric.LoadFrom(*query);
}

}  // namespace writeoff
