#include "composition/statements.h"

#include "host/database.h"

namespace composition {

std::string ColoursOfFabric(host::Funcoes& funcoes, std::string_view fabric) {
  host::SqlText sql;
  sql.Add("SELECT DISTINCT CADCOR.COR, CADCOR.DESCRICAO ");
  sql.Add("FROM " + funcoes.DBLocal("MAT_ITEN", true) + " MAT_ITEN ");
  sql.Add("LEFT JOIN " + funcoes.DBLocal("CADCOR", true) + " CADCOR ON (MAT_ITEN.COR = CADCOR.COR)");
  sql.Add("WHERE MAT_ITEN.CODIGO = " + funcoes.Aspas(fabric));
  return sql.Text();
}

std::string StoredComposition(host::Funcoes& funcoes, std::string_view fabric) {
  host::SqlText sql;
  sql.Add("SELECT COMP_MATERIAL.MATERIAL, COMP_MATERIAL.CODIGO, COMP_MATERIAL.PERC, COMP_MATERIAL.TENSAO, ");
  sql.Add("MATERIAL.DESCRICAO, COMP_MATERIAL.COR, COMP_MATERIAL.COR_I, COMP_MATERIAL.ORDEM, ");
  sql.Add("CADCOR.DESCRICAO AS DESCCOR, ");
  sql.Add("COMP_MATERIAL.LFA, COMP_MATERIAL.ROCA, COMP_MATERIAL.LARGURA, COMP_MATERIAL.GRAMATURA, ");
  sql.Add("COMP_MATERIAL.DIAMETRO, COMP_MATERIAL.FINURA, COMP_MATERIAL.KG_ROLO, MATERIAL.REPOSICAO AS CUSTO, ");
  sql.Add("COMP_MATERIAL.COMP_PONTO, COMP_MATERIAL.ALIMENTADORES, MATERIAL.NE, COMP_MATERIAL.DESPERDICIO, ");
  sql.Add("COMP_MATERIAL.RPM, ");
  sql.Add("COMP_MATERIAL.REGRA, TNG_REGRA.DESCRICAO AS DESC_REGRA ");
  // The columns above name the table by its logical name, so it needs that name as its alias.
  sql.Add("FROM " + funcoes.DBLocal("COMP_MATERIAL", true) + " COMP_MATERIAL");
  sql.Add(" LEFT JOIN " + funcoes.DBLocal("MATERIAL", true) + " MATERIAL ON (COMP_MATERIAL.CODIGO = MATERIAL.CODIGO)");
  sql.Add("LEFT JOIN " + funcoes.DBLocal("CADCOR", true) + " CADCOR ON (COMP_MATERIAL.COR = CADCOR.COR)");
  sql.Add("LEFT JOIN " + funcoes.DBLocal("TNG_REGRA", true) + " TNG_REGRA ON (COMP_MATERIAL.REGRA = TNG_REGRA.CODIGO)");
  sql.Add("WHERE COMP_MATERIAL.MATERIAL = " + funcoes.Aspas(fabric));
  sql.Add("AND (COMP_MATERIAL.PRODUTO = " + funcoes.Aspas("") + " OR COMP_MATERIAL.PRODUTO IS NULL)");
  sql.Add("ORDER BY COMP_MATERIAL.CODIGO, COMP_MATERIAL.COR ");
  return sql.Text();
}

std::string InsertComposition(host::Funcoes& funcoes) {
  host::SqlText sql;
  sql.Add("INSERT INTO " + funcoes.DBLocal("COMP_MATERIAL", true) +
          "(MATERIAL, CODIGO, ORDEM, LFA, ROCA, COMP_PONTO, TENSAO, LARGURA, GRAMATURA, DIAMETRO,");
  sql.Add("FINURA, KG_ROLO, ALIMENTADORES, PERC, COR, COR_I, DESPERDICIO, RPM, REGRA)");
  sql.Add("VALUES (");
  sql.Add(":MATERIAL, :CODIGO, :ORDEM, :LFA, :ROCA, :COMP_PONTO, :TENSAO, :LARGURA, :GRAMATURA, :DIAMETRO,");
  sql.Add(":FINURA, :KG_ROLO, :ALIMENTADORES, :PERC, :COR, :COR_I, :DESPERDICIO, :RPM, :REGRA");
  sql.Add(")");
  return sql.Text();
}

std::string DeleteComposition(host::Funcoes& funcoes, std::string_view fabric) {
  host::SqlText sql;
  sql.Add("DELETE FROM " + funcoes.DBLocal("COMP_MATERIAL", true));
  sql.Add("WHERE MATERIAL = " + funcoes.Aspas(fabric));
  sql.Add("AND (PRODUTO = " + funcoes.Aspas("") + " OR PRODUTO IS NULL)");
  return sql.Text();
}

std::string ColoursOfYarn(host::Funcoes& funcoes, std::string_view yarn) {
  host::SqlText sql;
  sql.Add("SELECT COR, DESCRICAO FROM (");
  sql.Add("SELECT CADCOR.COR, CADCOR.DESCRICAO ");
  sql.Add("FROM " + funcoes.DBLocal("MAT_ITEN", true) + " MAT_ITEN ");
  sql.Add("LEFT JOIN " + funcoes.DBLocal("CADCOR", true) + " CADCOR ON (MAT_ITEN.COR = CADCOR.COR)");
  sql.Add("WHERE MAT_ITEN.CODIGO = " + funcoes.Aspas(yarn));
  sql.Add("GROUP BY CADCOR.COR, CADCOR.DESCRICAO");
  sql.Add(") AS MAT_ITEN WHERE 1 = 1 ");
  return sql.Text();
}

std::string StoredColours(host::Funcoes& funcoes, std::string_view fabric) {
  host::SqlText sql;
  sql.Add("SELECT * FROM(");
  sql.Add("SELECT DISTINCT CADCOR.COR , CADCOR.DESCRICAO");
  sql.Add("FROM " + funcoes.DBLocal("COMP_MATERIAL", true) + " COMP_MATERIAL");
  sql.Add("INNER JOIN " + funcoes.DBLocal("CADCOR", true) + " CADCOR ON (COMP_MATERIAL.COR = CADCOR.COR)");
  sql.Add("WHERE COMP_MATERIAL.MATERIAL = " + funcoes.Aspas(fabric));
  sql.Add(") AS COMP_MATERIAL WHERE 1=1");
  return sql.Text();
}

std::string RegisterYarnColour(host::Funcoes& funcoes, std::string_view yarn, std::string_view colour,
                               std::string_view deposit) {
  host::SqlText sql;
  sql.Add("INSERT INTO " + funcoes.DBLocal("MAT_ITEN", true) + " ");
  sql.Add("(CODIGO, COR, LOTE, QTDE, QTDE_R, QTD_MINIMA, DEPOSITO, PRECO_MED)");
  sql.Add("VALUES");
  sql.Add("(" + funcoes.Aspas(yarn) + "," + funcoes.Aspas(colour) + "," + funcoes.Aspas("000000") + ",0,0,0," +
          funcoes.Aspas(deposit) + ",0)");
  return sql.Text();
}

}  // namespace composition
