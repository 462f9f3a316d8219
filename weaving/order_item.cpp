#include "weaving/order_item.h"

#include <string>

#include "host/decimal.h"
#include "host/errors.h"
#include "host/text.h"

namespace weaving {

// A roll without sales order belongs to the item of its fabric and colour, whatever that one's sales order.
Sql OrderItem::OfSalesOrder() const {
  if (host::Trim(roll_.sales_order).empty()) return {};
  return statements_.Write(" AND PEDIDO = :sales_order", {{"sales_order", roll_.sales_order}});
}

// By what is stored: another station may have written rolls since the grid was loaded. Without the item the roll would
// belong to nothing.
bool OrderItem::IsCompletedByRoll() const {
  const auto item = statements_.Open(
      R"(
SELECT QTDE, QTDE_B FROM {TECEL_ITEN}
WHERE NUMERO = :order AND CODIGO = :fabric AND COR = :colour:of_sales_order)",
      {{"order", roll_.order}, {"fabric", roll_.code}, {"colour", roll_.colour}, {"of_sales_order", OfSalesOrder()}});
  if (item->IsEmpty()) {
    throw host::InputError("O item " + roll_.code + " cor " + roll_.colour +
                           " foi alterado por outro usuário. Carregue a ordem novamente.");
  }
  const double ordered = item->FieldByName("QTDE").AsFloat();
  const double written_off = item->FieldByName("QTDE_B").AsFloat() + roll_.quantity;
  return host::RoundTo(ordered, 3) <= host::RoundTo(written_off, 3);
}

void OrderItem::Raise() const {
  Sql update = statements_.Write("UPDATE {TECEL_ITEN} SET QTDE_B = QTDE_B + :quantity", {{"quantity", roll_.quantity}});
  if (IsCompletedByRoll()) update.Add(Sql(",BAIXADA = 'S'"));
  statements_.Execute(update.Add(statements_.Write(
      "WHERE NUMERO = :order AND CODIGO = :fabric AND COR = :colour:of_sales_order",
      {{"order", roll_.order}, {"fabric", roll_.code}, {"colour", roll_.colour}, {"of_sales_order", OfSalesOrder()}})));
}

// The item adds up what was weighed, each roll is stored rounded: a crumb left after the last one would keep the order
// from being deleted.
bool OrderItem::IsEmptiedByRoll() const {
  const auto item = statements_.Open(
      R"(
SELECT QTDE_B, (SELECT COUNT(*) FROM {TECELB} WHERE NUMERO = :order AND CODIGO = :fabric AND COR = :colour) AS PECAS
FROM {TECEL_ITEN}
WHERE CODIGO = :fabric AND NUMERO = :order AND COR = :colour:of_sales_order)",
      {{"order", roll_.order}, {"fabric", roll_.code}, {"colour", roll_.colour}, {"of_sales_order", OfSalesOrder()}});
  const bool last = item->FieldByName("PECAS").AsInteger() <= 1;
  return last || !(item->FieldByName("QTDE_B").AsFloat() > roll_.quantity);
}

void OrderItem::Lower() const {
  const Sql written_off = IsEmptiedByRoll()
                              ? Sql("QTDE_B = 0")
                              : statements_.Write("QTDE_B = QTDE_B - :quantity", {{"quantity", roll_.quantity}});
  statements_.Execute(R"(
UPDATE {TECEL_ITEN} SET :written_off
, BAIXADA = 'N'
WHERE CODIGO = :fabric AND NUMERO = :order AND COR = :colour:of_sales_order)",
                      {{"written_off", written_off},
                       {"fabric", roll_.code},
                       {"order", roll_.order},
                       {"colour", roll_.colour},
                       {"of_sales_order", OfSalesOrder()}});
}

}  // namespace weaving
