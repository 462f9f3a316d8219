#include "writeoff/order_queries.h"

#include <cstddef>
#include <string>
#include <utility>

#include "weaving/statement.h"

namespace writeoff {
namespace {

// How often an order is read anew; who saves it as often meanwhile is no person.
constexpr int kReadings = 5;

// Goes through both results to their ends.
bool SameRows(host::TTIQuery& left, host::TTIQuery& right) {
  if (left.RecordCount() != right.RecordCount()) return false;
  for (; !left.Eof(); left.Next(), right.Next()) {
    for (std::size_t i = 0; i < left.FieldCount(); ++i) {
      const std::string column = left.FieldName(i);
      if (!(left.FieldByName(column) == right.FieldByName(column))) return false;
    }
  }
  return true;
}

std::unique_ptr<host::TTIQuery> ReadItems(const weaving::Statements& statements, std::string_view order) {
  // A roll without piece count is one piece. Of the compositions only those of this order's fabrics: all of them would
  // be read and sorted for every roll.
  return statements.Open(R"(
SELECT TECEL.MALHARIA, CLIENTE.NOME, TECEL_ITEN.CODIGO, MATERIAL.DESCRICAO, TECEL_ITEN.PEDIDO,
TECEL_ITEN.QTDE, TECEL_ITEN.QTDE_B, TECEL_ITEN.BAIXADA, TECEL_ITEN.COR,
UPPER(MATERIAL.UNIDADE) AS UNIDADE, MATERIAL.PESO AS PESO_UNI, TECEL.DEPOSITO,
DEPOSITO.DESCRICAO AS DESC_DEP_ENT, COMP.KG_ROLO, TECEL.MAQUINA, CADCOR.DESCRICAO AS DESC_COR,
MATERIAL.MAXIMO AS TARA,
(SELECT SUM (CASE WHEN QTDE_R > 0 THEN QTDE_R ELSE 1 END) FROM {TECELB} TECELB
WHERE TECELB.NUMERO = :order
AND TECELB.CODIGO = TECEL_ITEN.CODIGO AND TECELB.COR = TECEL_ITEN.COR) AS QTDE_R_B
FROM {TECEL} TECEL
LEFT JOIN {TECEL_ITEN} TECEL_ITEN ON (TECEL_ITEN.NUMERO = TECEL.NUMERO)
LEFT JOIN {CADCOR} CADCOR ON (CADCOR.COR = TECEL_ITEN.COR)
LEFT JOIN {MATERIAL} MATERIAL ON (MATERIAL.CODIGO = TECEL_ITEN.CODIGO)
LEFT JOIN {ENTIDADE} CLIENTE ON (TECEL.MALHARIA = CLIENTE.CODCLI)
LEFT JOIN {DEPOSITO} DEPOSITO ON (TECEL.DEPOSITO = DEPOSITO.CODIGO)
LEFT JOIN (SELECT DISTINCT C.MATERIAL, C.KG_ROLO, C.COR FROM {TECEL_ITEN} I
INNER JOIN {COMP_MATERIAL} C ON (C.MATERIAL = I.CODIGO AND C.COR = I.COR)
WHERE I.NUMERO = :order) COMP
ON (COMP.MATERIAL = TECEL_ITEN.CODIGO AND COMP.COR = TECEL_ITEN.COR)
WHERE TECEL.NUMERO = :order)",
                         {{"order", order}});
}

}  // namespace

// Read until two readings agree. Holding the order instead would let whoever holds it keep the person waiting for a
// look.
std::unique_ptr<host::TTIQuery> ItemsOfOrder(host::Host& host, std::string_view order) {
  const weaving::Statements statements(host);
  auto items = ReadItems(statements, order);
  for (int reading = 1; reading < kReadings; ++reading) {
    auto again = ReadItems(statements, order);
    const bool agree = SameRows(*items, *again);
    items = std::move(again);
    if (agree) break;
  }
  items->First();
  return items;
}

std::unique_ptr<host::TTIQuery> RollsOfOrder(host::Host& host, std::string_view order) {
  return weaving::Statements(host).Open(R"(
SELECT TECELB.NUMERO, TECELB.ORDEM, TECELB.DT_LAN, TECELB.CODIGO, MATERIAL.DESCRICAO, TECELB.COR,
TECELB.QTDE, TECELB.QTDE_R, TECELB.NF_RET, TECELB.NF_COB, TECELB.DEPOSITO, TECELB.TURNO, TECELB.LOTE,
TECELB.LOCAL, TECELB.FUNCIONARIO, PESSOAL.NOME, TECELB.PEDIDO, TECELB.MAQUINA,
MAQUINA.DESCRICAO AS DESC_MAQUINA, CAST(TECEL.OBSERVACAO AS VARCHAR(4000)) AS OBSERVACAO, TECEL.FICHA
FROM {TECELB} TECELB
LEFT JOIN {MATERIAL} MATERIAL ON (MATERIAL.CODIGO = TECELB.CODIGO)
LEFT JOIN {PESSOAL} PESSOAL ON (PESSOAL.CODIGO = TECELB.FUNCIONARIO)
LEFT JOIN {MAQUINA} MAQUINA ON (MAQUINA.MAQUINA = TECELB.MAQUINA)
LEFT JOIN {TECEL} TECEL ON (TECEL.NUMERO = TECELB.NUMERO)
WHERE TECELB.NUMERO = :order
ORDER BY TECELB.NUMERO, TECELB.ORDEM DESC)",
                                        {{"order", order}});
}

}  // namespace writeoff
