#include "writeoff/roll_defects.h"

#include <string>

namespace writeoff {

void DefectsOfOrder(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view order) {
  const auto table = [&funcoes](std::string_view name) { return funcoes.DBLocal(name, true); };
  sql.Add("SELECT DEF_MOV.NUMERO, DEF_MOV.ROLO, DEF_MOV.CODIGO, DEFEITO.DESCRICAO");
  sql.Add("FROM " + table("TECELB") + " TECELB");
  sql.Add("INNER JOIN " + table("DEF_MOV") +
          " DEF_MOV ON ((TECELB.NUMERO = DEF_MOV.NUMERO) AND (TECELB.ORDEM = DEF_MOV.ROLO))");
  sql.Add("LEFT JOIN " + table("DEFEITO") + " DEFEITO ON (DEFEITO.CODIGO = DEF_MOV.CODIGO)");
  sql.Add("WHERE TECELB.NUMERO = " + funcoes.Aspas(order));
  sql.Add("AND DEF_MOV.TIPO = 'T'");
}

void LoadDefects(host::Database& database, const host::Funcoes& funcoes, std::string_view order,
                 host::Dataset& defects) {
  const auto query = database.NewQuery();
  DefectsOfOrder(query->SQL, funcoes, order);
  query->Open();
  defects.LoadFrom(*query);
}

}  // namespace writeoff
