// Orders: their items, their rolls, and what hangs on them.
#include "app/books/checks.h"

namespace app::books {
namespace {

std::string ItemOf(const host::TTIQuery& row) {
  return "ordem " + row.FieldByName("NUMERO").AsText() + ", malha " + row.FieldByName("CODIGO").AsText() + ", cor " +
         row.FieldByName("COR").AsText();
}

}  // namespace

Lines ItemsAgainstRolls(firebird::Database& database) {
  // The item adds up what was weighed, each roll is stored rounded: a millionth per roll may lie between them.
  const auto rows = database.Query(R"(
SELECT NUMERO, CODIGO, COR, SUM(ITENS) AS ITENS, SUM(BAIXADO) AS BAIXADO, SUM(PECAS) AS PECAS, SUM(TECIDO) AS TECIDO
FROM (
  SELECT NUMERO, CODIGO, COR, 1 AS ITENS, QTDE_B AS BAIXADO, 0 AS PECAS, 0e0 AS TECIDO FROM {TECEL_ITEN}
  UNION ALL
  SELECT NUMERO, CODIGO, COR, 0, 0e0, 1, QTDE FROM {TECELB})
GROUP BY NUMERO, CODIGO, COR
HAVING SUM(ITENS) = 0 OR ABS(SUM(BAIXADO) - SUM(TECIDO)) > )" +
                                       std::string(kTolerance) + " + 0.000001 * SUM(PECAS)",
                                   {});
  Lines lines;
  for (; !rows->Eof(); rows->Next()) {
    const std::string rolls = Counted(rows->FieldByName("PECAS"), "peça", "peças");
    if (rows->FieldByName("ITENS").AsInteger() == 0) {
      lines.push_back("Peças sem item na ordem: " + ItemOf(*rows) + ": " + rolls + ", " +
                      Shown(rows->FieldByName("TECIDO")) + ".");
    } else {
      lines.push_back("Quantidade baixada do item difere das suas peças: " + ItemOf(*rows) + ": item " +
                      Shown(rows->FieldByName("BAIXADO")) + ", " + rolls + " com " +
                      Shown(rows->FieldByName("TECIDO")) + ".");
    }
  }
  return lines;
}

Lines PartsWithoutOrder(firebird::Database& database) {
  Lines lines;
  const auto items = database.Query(
      "SELECT I.NUMERO, I.CODIGO, I.COR FROM {TECEL_ITEN} I LEFT JOIN {TECEL} T ON T.NUMERO = I.NUMERO "
      "WHERE T.NUMERO IS NULL ORDER BY I.NUMERO, I.CODIGO, I.COR",
      {});
  for (; !items->Eof(); items->Next()) lines.push_back("Item sem ordem: " + ItemOf(*items) + ".");
  // Reservations of kind "F" are not of weaving orders.
  const auto reserved = database.Query(
      "SELECT R.NUMERO, R.CODIGO, R.COR, R.DEPOSITO, R.LOTE FROM {MAT_RESERVA} R LEFT JOIN {TECEL} T ON T.NUMERO = "
      "R.NUMERO WHERE T.NUMERO IS NULL AND (R.TIPO <> 'F' OR R.TIPO IS NULL) "
      "ORDER BY R.NUMERO, R.CODIGO, R.COR, R.DEPOSITO, R.LOTE",
      {});
  for (; !reserved->Eof(); reserved->Next()) {
    lines.push_back("Reserva sem ordem: ordem " + reserved->FieldByName("NUMERO").AsText() + ", fio " +
                    reserved->FieldByName("CODIGO").AsText() + ", cor " + reserved->FieldByName("COR").AsText() +
                    ", depósito " + reserved->FieldByName("DEPOSITO").AsText() + ", lote " +
                    reserved->FieldByName("LOTE").AsText() + ".");
  }
  return lines;
}

Lines RollNumbersTwice(firebird::Database& database) {
  const auto rows = database.Query(
      "SELECT NUMERO, ORDEM, COUNT(*) AS VEZES FROM {TECELB} GROUP BY NUMERO, ORDEM HAVING COUNT(*) > 1", {});
  Lines lines;
  for (; !rows->Eof(); rows->Next()) {
    lines.push_back("Número de peça repetido: ordem " + rows->FieldByName("NUMERO").AsText() + ", peça " +
                    rows->FieldByName("ORDEM").AsText() + ": " + rows->FieldByName("VEZES").AsText() + " vezes.");
  }
  return lines;
}

}  // namespace app::books
