#include "orders/order_search.h"

namespace orders {

OrderSearch::OrderSearch(host::Host& host) : database_(host.GetTabela().IBDatabase()), words_(host.GetFuncoes()) {}

std::unique_ptr<host::TTIQuery> OrderSearch::Find(const OrderCriteria& criteria) const {
  const Words& w = words_;
  return OpenQuery(
      database_,
      {"SELECT DISTINCT TECEL.NUMERO, TECEL.MALHARIA, CLIENTE.NOME,", "TECEL_ITEN.CODIGO, MATERIAL.DESCRICAO, ",
       "TECEL.MAQUINA, MAQUINA.DESCRICAO AS DES_MAQUINA,",
       "SUM(TECEL_ITEN.QTDE) AS QTDE, SUM(TECEL_ITEN.QTDE_B) AS BAIXADO, ", "TECEL.DT_INICIO, TECEL.PERIODO ",
       "FROM " + w.Named("TECEL"), "LEFT JOIN " + w.Table("ENTIDADE") + " CLIENTE ON (TECEL.MALHARIA = CLIENTE.CODCLI)",
       "LEFT JOIN " + w.Named("MAQUINA") + " ON (TECEL.MAQUINA = MAQUINA.MAQUINA)",
       "LEFT JOIN " + w.Named("TECEL_ITEN") + " ON (TECEL.NUMERO = TECEL_ITEN.NUMERO)",
       "LEFT JOIN " + w.Named("MATERIAL") + " ON (MATERIAL.CODIGO = TECEL_ITEN.CODIGO)", Conditions(criteria),
       "GROUP BY TECEL.NUMERO, TECEL.MALHARIA, CLIENTE.NOME,", "TECEL_ITEN.CODIGO, MATERIAL.DESCRICAO, ",
       "TECEL.MAQUINA, MAQUINA.DESCRICAO,", "TECEL.DT_INICIO, TECEL.PERIODO ", " ORDER BY TECEL.NUMERO DESC "});
}

std::string OrderSearch::Conditions(const OrderCriteria& criteria) const {
  const Words& w = words_;
  std::string sql = "WHERE TECEL.DT_INICIO >= " + w.Day(criteria.from);
  sql += "\nAND   TECEL.DT_INICIO <= " + w.Day(criteria.to);
  const auto equal = [&sql, &w](const char* column, const std::string& value) {
    if (!value.empty()) sql += std::string("\nAND ") + column + " = " + w.Text(value);
  };
  equal("TECEL.MALHARIA", criteria.mill);
  equal("TECEL.PERIODO", criteria.delivery_term);
  equal("TECEL.MAQUINA", criteria.machine);
  equal("TECEL_ITEN.CODIGO", criteria.material);
  equal("TECEL.FICHA", criteria.sheet);
  equal("TECEL.FLUXO", criteria.flow);
  equal("TECEL_ITEN.COR", criteria.colour);
  equal("TECEL_ITEN.PEDIDO", criteria.sales_order);
  if (criteria.state == ItemState::kPending) {
    sql += "\nAND (TECEL_ITEN.BAIXADA <> " + w.Text("S") + " OR TECEL_ITEN.BAIXADA IS NULL)";
    sql += "\nAND (TECEL_ITEN.QTDE-TECEL_ITEN.QTDE_B > 0) ";
  }
  if (criteria.state == ItemState::kClosed) sql += "\nAND TECEL_ITEN.BAIXADA = " + w.Text("S");
  if (!criteria.remark.empty()) {
    sql +=
        "\nAND UPPER(CAST(TECEL.OBSERVACAO AS VARCHAR(4000))) LIKE UPPER(" + w.Text("%" + criteria.remark + "%") + ")";
  }
  return sql;
}

}  // namespace orders
