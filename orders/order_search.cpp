#include "orders/order_search.h"

namespace orders {

using weaving::Sql;

OrderSearch::OrderSearch(host::Host& host) : statements_(host) {}

std::unique_ptr<host::TTIQuery> OrderSearch::Find(const OrderCriteria& criteria) const {
  return statements_.Open(R"(
SELECT DISTINCT TECEL.NUMERO, TECEL.MALHARIA, CLIENTE.NOME,
TECEL_ITEN.CODIGO, MATERIAL.DESCRICAO, 
TECEL.MAQUINA, MAQUINA.DESCRICAO AS DES_MAQUINA,
SUM(TECEL_ITEN.QTDE) AS QTDE, SUM(TECEL_ITEN.QTDE_B) AS BAIXADO, 
TECEL.DT_INICIO, TECEL.PERIODO 
FROM {TECEL} TECEL
LEFT JOIN {ENTIDADE} CLIENTE ON (TECEL.MALHARIA = CLIENTE.CODCLI)
LEFT JOIN {MAQUINA} MAQUINA ON (TECEL.MAQUINA = MAQUINA.MAQUINA)
LEFT JOIN {TECEL_ITEN} TECEL_ITEN ON (TECEL.NUMERO = TECEL_ITEN.NUMERO)
LEFT JOIN {MATERIAL} MATERIAL ON (MATERIAL.CODIGO = TECEL_ITEN.CODIGO)
:conditions
GROUP BY TECEL.NUMERO, TECEL.MALHARIA, CLIENTE.NOME,
TECEL_ITEN.CODIGO, MATERIAL.DESCRICAO, 
TECEL.MAQUINA, MAQUINA.DESCRICAO,
TECEL.DT_INICIO, TECEL.PERIODO 
 ORDER BY TECEL.NUMERO DESC )",
                          {{"conditions", Conditions(criteria)}});
}

Sql OrderSearch::Conditions(const OrderCriteria& criteria) const {
  Sql sql = statements_.Write(R"(
WHERE TECEL.DT_INICIO >= :from
AND   TECEL.DT_INICIO <= :to)",
                              {{"from", criteria.from}, {"to", criteria.to}});
  const auto equal = [&](const char* column, const std::string& value) {
    if (!value.empty()) sql.Add(statements_.Write("AND :column = :value", {{"column", Sql(column)}, {"value", value}}));
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
    sql.Add(Sql("AND (TECEL_ITEN.BAIXADA <> 'S' OR TECEL_ITEN.BAIXADA IS NULL)"));
    sql.Add(Sql("AND (TECEL_ITEN.QTDE-TECEL_ITEN.QTDE_B > 0) "));
  }
  if (criteria.state == ItemState::kClosed) sql.Add(Sql("AND TECEL_ITEN.BAIXADA = 'S'"));
  if (!criteria.remark.empty()) {
    sql.Add(statements_.Write("AND UPPER(CAST(TECEL.OBSERVACAO AS VARCHAR(4000))) LIKE UPPER(:part)",
                              {{"part", "%" + criteria.remark + "%"}}));
  }
  return sql;
}

}  // namespace orders
