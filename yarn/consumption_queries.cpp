#include "yarn/consumption_queries.h"

namespace yarn {

std::string ReservationKind(const host::Funcoes& funcoes, std::string_view prefix) {
  const std::string kind = std::string(prefix) + "TIPO";
  return "(" + kind + " = " + funcoes.Aspas("T") + " OR " + kind + " <> " + funcoes.Aspas("F") + " OR " + kind +
         " IS NULL)";
}

std::string ReservationOfLot(const host::Funcoes& funcoes, std::string_view order, const LotKey& lot) {
  return "WHERE NUMERO = " + funcoes.Aspas(order) + " AND CODIGO = " + funcoes.Aspas(lot.code) +
         " AND COR = " + funcoes.Aspas(lot.colour) + " AND DEPOSITO = " + funcoes.Aspas(lot.deposit) +
         " AND LOTE = " + funcoes.Aspas(lot.lot) + " AND " + ReservationKind(funcoes, "");
}

void ItemsOfOrder(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view order) {
  sql.Add("SELECT CODIGO FROM " + funcoes.DBLocal("TECEL_ITEN", true) + " WHERE NUMERO = " + funcoes.Aspas(order));
}

void ConsumptionFromReservations(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view order,
                                 double quantity) {
  const std::string q = funcoes.PermanecePonto(quantity);
  const std::string weight = "CASE WHEN MALHA.UNIDADE = 'MT' THEN MALHA.PESO ELSE 1 END";
  sql.Add("SELECT CODIGO, DESCRICAO, COR,");
  sql.Add("(QTDE_RESERVADA / (QTDE_ORDEM * PESO_MALHA)) * 100.00 AS PERC,");
  sql.Add("((QTDE_RESERVADA / (QTDE_ORDEM * PESO_MALHA))) * " + q + " AS QTDE");
  sql.Add("FROM (");
  sql.Add("SELECT MAT_RESERVA.CODIGO, MATERIAL.DESCRICAO, MAT_RESERVA.COR, SUM(MAT_RESERVA.QTDE) AS QTDE_RESERVADA,");
  sql.Add("(TECEL_ITEN.QTDE - TECEL_ITEN.QTDE_B) AS QTDE_ORDEM,");
  sql.Add(weight + " AS PESO_MALHA");
  sql.Add("FROM " + funcoes.DBLocal("MAT_RESERVA", true) + " MAT_RESERVA");
  sql.Add("INNER JOIN " + funcoes.DBLocal("TECEL_ITEN", true) +
          " TECEL_ITEN ON (TECEL_ITEN.NUMERO = MAT_RESERVA.NUMERO)");
  sql.Add("LEFT JOIN " + funcoes.DBLocal("MATERIAL", true) + " MATERIAL ON (MAT_RESERVA.CODIGO = MATERIAL.CODIGO)");
  sql.Add("LEFT JOIN " + funcoes.DBLocal("MATERIAL", true) + " MALHA ON (MALHA.CODIGO = TECEL_ITEN.CODIGO)");
  sql.Add("WHERE MAT_RESERVA.NUMERO = " + funcoes.Aspas(order));
  sql.Add("AND MAT_RESERVA.QTDE > 0");
  sql.Add("AND " + ReservationKind(funcoes, "MAT_RESERVA."));
  sql.Add("GROUP BY MAT_RESERVA.CODIGO, MATERIAL.DESCRICAO, MAT_RESERVA.COR, (TECEL_ITEN.QTDE - TECEL_ITEN.QTDE_B), " +
          weight);
  sql.Add(")");
  sql.Add("WHERE ((QTDE_RESERVADA / (QTDE_ORDEM * PESO_MALHA))) * " + q + " > 0");
}

void ConsumptionFromComposition(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view fabric,
                                std::string_view colour, double quantity, bool merged) {
  const std::string q = funcoes.PermanecePonto(quantity);
  sql.Add("SELECT COMP.CODIGO, MATERIAL.DESCRICAO, COMP.COR_I AS COR, COMP.PERC, ");
  sql.Add("SUM(COMP.PERC * (" + q + "/100.00)) AS QTDE ");
  sql.Add("FROM " + funcoes.DBLocal("COMP_MATERIAL", true) + " COMP ");
  sql.Add("LEFT JOIN " + funcoes.DBLocal("MATERIAL", true) + " MATERIAL ON (COMP.CODIGO = MATERIAL.CODIGO)");
  sql.Add("WHERE COMP.MATERIAL = " + funcoes.Aspas(fabric));
  sql.Add("AND COMP.COR = " + funcoes.Aspas(colour));
  sql.Add("AND (COMP.PERC * (" + q + "/100.00)) > 0 ");
  sql.Add("AND NOT (COMP.COR_I LIKE '%*%')");
  sql.Add(merged ? "GROUP BY COMP.CODIGO, MATERIAL.DESCRICAO, COMP.COR_I, COMP.PERC"
                 : "GROUP BY COMP.CODIGO, MATERIAL.DESCRICAO, COMP.COR_I, COMP.PERC, COMP.ORDEM");
}

void StockOfYarn(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view order, std::string_view yarn,
                 std::string_view colour) {
  sql.Add("SELECT MAT_ITEN.CODIGO, MATERIAL.DESCRICAO, MAT_ITEN.COR, DEPOSITO.DESCRICAO AS DESCDEP, ");
  sql.Add("MAT_ITEN.DEPOSITO, MAT_ITEN.LOTE, MAT_ITEN.QTDE, MAT_ITEN.PRECO_MED, MAT_ITEN.LOCAL, ");
  sql.Add("MATERIAL.CUSTO_IMP AS CUSTO, ");
  sql.Add("(SELECT SUM(QTDE) AS QTDE  FROM " + funcoes.DBLocal("MAT_RESERVA", true));
  sql.Add("WHERE NUMERO <> " + funcoes.Aspas(order));
  sql.Add("AND CODIGO = MAT_ITEN.CODIGO");
  sql.Add("AND COR = MAT_ITEN.COR");
  sql.Add("AND DEPOSITO = MAT_ITEN.DEPOSITO");
  sql.Add("AND LOTE = MAT_ITEN.LOTE) AS RESERVADAS ");
  sql.Add("FROM " + funcoes.DBLocal("MAT_ITEN", true) + " MAT_ITEN ");
  sql.Add("LEFT JOIN " + funcoes.DBLocal("MATERIAL", true) + " MATERIAL ON (MATERIAL.CODIGO = MAT_ITEN.CODIGO)");
  sql.Add("INNER JOIN " + funcoes.DBLocal("DEPOSITO", true) + " DEPOSITO ON (MAT_ITEN.DEPOSITO = DEPOSITO.CODIGO)");
  sql.Add("WHERE MAT_ITEN.CODIGO = " + funcoes.Aspas(yarn));
  sql.Add("AND MAT_ITEN.COR = " + funcoes.Aspas(colour));
  sql.Add("AND MAT_ITEN.QTDE > 0 ");
}

void ReservedOfLot(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view order, const LotKey& lot) {
  sql.Add("SELECT QTDE FROM " + funcoes.DBLocal("MAT_RESERVA", true));
  sql.Add(ReservationOfLot(funcoes, order, lot));
}

}  // namespace yarn
