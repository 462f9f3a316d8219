// Stock: lots and what is reserved of them.
#include "app/books/checks.h"

namespace app::books {
namespace {

std::string LotOf(const host::TTIQuery& row) {
  return "material " + row.FieldByName("CODIGO").AsText() + ", cor " + row.FieldByName("COR").AsText() + ", depósito " +
         row.FieldByName("DEPOSITO").AsText() + ", lote " + row.FieldByName("LOTE").AsText();
}

}  // namespace

Lines LotsAgainstMovements(firebird::Database& database) {
  const auto rows = database.Query(R"(
SELECT CODIGO, COR, DEPOSITO, LOTE, SUM(SALDO) AS SALDO, SUM(MOVIMENTOS) AS MOVIMENTOS
FROM (
  SELECT CODIGO, COR, DEPOSITO, LOTE, QTDE AS SALDO, 0e0 AS MOVIMENTOS FROM {MAT_ITEN}
  UNION ALL
  SELECT CODIGO, COR, DEPOSITO, LOTE, 0e0, IIF(SAIDA = 'S', -QTDE, QTDE) FROM {MAT_MOV})
GROUP BY CODIGO, COR, DEPOSITO, LOTE
HAVING ABS(SUM(SALDO) - SUM(MOVIMENTOS)) > )" +
                                       std::string(kTolerance),
                                   {});
  Lines lines;
  for (; !rows->Eof(); rows->Next()) {
    lines.push_back("Saldo do lote difere dos seus movimentos: " + LotOf(*rows) + ": saldo " +
                    Shown(rows->FieldByName("SALDO")) + ", movimentos " + Shown(rows->FieldByName("MOVIMENTOS")) + ".");
  }
  return lines;
}

Lines LotsBelowZero(firebird::Database& database) {
  // A reversal compares at two decimals what it takes out exactly, so a lot may end a little below zero.
  const auto rows = database.Query(
      "SELECT CODIGO, COR, DEPOSITO, LOTE, QTDE FROM {MAT_ITEN} WHERE QTDE < -0.0100005 "
      "ORDER BY CODIGO, COR, DEPOSITO, LOTE",
      {});
  Lines lines;
  for (; !rows->Eof(); rows->Next()) {
    lines.push_back("Saldo negativo: " + LotOf(*rows) + ": " + Shown(rows->FieldByName("QTDE")) + ".");
  }
  return lines;
}

Lines ReservationsBelowZero(firebird::Database& database) {
  // Consumed quantities are moved at three decimals and given back exactly: a crumb may be missing there.
  const auto rows = database.Query(
      "SELECT NUMERO, CODIGO, COR, DEPOSITO, LOTE, QTDE, QTDE_B FROM {MAT_RESERVA} WHERE QTDE < 0 OR QTDE_B <= -0.01 "
      "ORDER BY NUMERO, CODIGO, COR, DEPOSITO, LOTE",
      {});
  Lines lines;
  for (; !rows->Eof(); rows->Next()) {
    lines.push_back("Reserva negativa: ordem " + rows->FieldByName("NUMERO").AsText() + ", " + LotOf(*rows) +
                    ": reservado " + Shown(rows->FieldByName("QTDE")) + ", consumido " +
                    Shown(rows->FieldByName("QTDE_B")) + ".");
  }
  return lines;
}

}  // namespace app::books
