#include "writeoff/order_queries.h"

#include <cstddef>
#include <string>
#include <utility>

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

std::unique_ptr<host::TTIQuery> ReadOnce(host::Database& database, const host::Funcoes& funcoes,
                                         std::string_view order) {
  auto items = database.NewQuery();
  ItemsOfOrder(items->SQL, funcoes, order);
  items->Open();
  return items;
}

}  // namespace

// Read until two readings agree. Holding the order instead would let whoever holds it keep the person waiting for a
// look.
std::unique_ptr<host::TTIQuery> ReadItems(host::Database& database, const host::Funcoes& funcoes,
                                          std::string_view order) {
  auto items = ReadOnce(database, funcoes, order);
  for (int reading = 1; reading < kReadings; ++reading) {
    auto again = ReadOnce(database, funcoes, order);
    const bool agree = SameRows(*items, *again);
    items = std::move(again);
    if (agree) break;
  }
  items->First();
  return items;
}

void ItemsOfOrder(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view order) {
  const auto table = [&funcoes](std::string_view name) { return funcoes.DBLocal(name, true); };
  const std::string number = funcoes.Aspas(order);
  sql.Add("SELECT TECEL.MALHARIA, CLIENTE.NOME, TECEL_ITEN.CODIGO, MATERIAL.DESCRICAO, TECEL_ITEN.PEDIDO,");
  sql.Add("TECEL_ITEN.QTDE, TECEL_ITEN.QTDE_B, TECEL_ITEN.BAIXADA, TECEL_ITEN.COR,");
  sql.Add("UPPER(MATERIAL.UNIDADE) AS UNIDADE, MATERIAL.PESO AS PESO_UNI, TECEL.DEPOSITO,");
  sql.Add("DEPOSITO.DESCRICAO AS DESC_DEP_ENT, COMP.KG_ROLO, TECEL.MAQUINA, CADCOR.DESCRICAO AS DESC_COR,");
  sql.Add("MATERIAL.MAXIMO AS TARA,");
  // A roll without piece count is one piece.
  sql.Add("(SELECT SUM (CASE WHEN QTDE_R > 0 THEN QTDE_R ELSE 1 END) FROM " + table("TECELB") + " TECELB");
  sql.Add("WHERE TECELB.NUMERO = " + number);
  sql.Add("AND TECELB.CODIGO = TECEL_ITEN.CODIGO AND TECELB.COR = TECEL_ITEN.COR) AS QTDE_R_B");
  sql.Add("FROM " + table("TECEL") + " TECEL");
  sql.Add("LEFT JOIN " + table("TECEL_ITEN") + " TECEL_ITEN ON (TECEL_ITEN.NUMERO = TECEL.NUMERO)");
  sql.Add("LEFT JOIN " + table("CADCOR") + " CADCOR ON (CADCOR.COR = TECEL_ITEN.COR)");
  sql.Add("LEFT JOIN " + table("MATERIAL") + " MATERIAL ON (MATERIAL.CODIGO = TECEL_ITEN.CODIGO)");
  sql.Add("LEFT JOIN " + table("ENTIDADE") + " CLIENTE ON (TECEL.MALHARIA = CLIENTE.CODCLI)");
  sql.Add("LEFT JOIN " + table("DEPOSITO") + " DEPOSITO ON (TECEL.DEPOSITO = DEPOSITO.CODIGO)");
  // The compositions of this order's fabrics only: all of them would be read and sorted for every roll.
  sql.Add("LEFT JOIN (SELECT DISTINCT C.MATERIAL, C.KG_ROLO, C.COR FROM " + table("TECEL_ITEN") + " I");
  sql.Add("INNER JOIN " + table("COMP_MATERIAL") + " C ON (C.MATERIAL = I.CODIGO AND C.COR = I.COR)");
  sql.Add("WHERE I.NUMERO = " + number + ") COMP");
  sql.Add("ON (COMP.MATERIAL = TECEL_ITEN.CODIGO AND COMP.COR = TECEL_ITEN.COR)");
  sql.Add("WHERE TECEL.NUMERO = " + number);
}

void RollsOfOrder(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view order) {
  const auto table = [&funcoes](std::string_view name) { return funcoes.DBLocal(name, true); };
  sql.Add("SELECT TECELB.NUMERO, TECELB.ORDEM, TECELB.DT_LAN, TECELB.CODIGO, MATERIAL.DESCRICAO, TECELB.COR,");
  sql.Add("TECELB.QTDE, TECELB.QTDE_R, TECELB.NF_RET, TECELB.NF_COB, TECELB.DEPOSITO, TECELB.TURNO, TECELB.LOTE,");
  sql.Add("TECELB.LOCAL, TECELB.FUNCIONARIO, PESSOAL.NOME, TECELB.PEDIDO, TECELB.MAQUINA,");
  sql.Add("MAQUINA.DESCRICAO AS DESC_MAQUINA, CAST(TECEL.OBSERVACAO AS VARCHAR(4000)) AS OBSERVACAO, TECEL.FICHA");
  sql.Add("FROM " + table("TECELB") + " TECELB");
  sql.Add("LEFT JOIN " + table("MATERIAL") + " MATERIAL ON (MATERIAL.CODIGO = TECELB.CODIGO)");
  sql.Add("LEFT JOIN " + table("PESSOAL") + " PESSOAL ON (PESSOAL.CODIGO = TECELB.FUNCIONARIO)");
  sql.Add("LEFT JOIN " + table("MAQUINA") + " MAQUINA ON (MAQUINA.MAQUINA = TECELB.MAQUINA)");
  sql.Add("LEFT JOIN " + table("TECEL") + " TECEL ON (TECEL.NUMERO = TECELB.NUMERO)");
  sql.Add("WHERE TECELB.NUMERO = " + funcoes.Aspas(order));
  sql.Add("ORDER BY TECELB.NUMERO, TECELB.ORDEM DESC");
}

}  // namespace writeoff
