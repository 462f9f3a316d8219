#include "weaving/roll_reversal.h"

#include "weaving/audit.h"
#include "weaving/order_item.h"
#include "weaving/yarn_return.h"

namespace weaving {

RollReversal::RollReversal(host::Host& host) : host_(host), statements_(host) {}

Sql RollReversal::OfRoll(const StoredRoll& roll) const {
  return statements_.Write("WHERE NUMERO = :order AND ORDEM = :number",
                           {{"order", roll.order}, {"number", roll.number}});
}

RollReversal::Standing RollReversal::Look(const StoredRoll& roll) const {
  const auto stored = statements_.Open(R"(
SELECT CODIGO, COR, DT_LAN, QTDE, QTDE_R, DEPOSITO, MAQUINA, FUNCIONARIO, TURNO, LOTE, LOCAL, PEDIDO
FROM {TECELB}
:of_roll)",
                                       {{"of_roll", OfRoll(roll)}});
  if (stored->IsEmpty()) return Standing::kGone;
  const auto text = [&stored](std::string_view column) { return stored->FieldByName(column).AsText(); };
  // The number of a roll that was taken back may be another roll's by now.
  const bool same =
      text("CODIGO") == roll.code && text("COR") == roll.colour &&
      stored->FieldByName("DT_LAN").AsDate() == roll.date && stored->FieldByName("QTDE").AsFloat() == roll.quantity &&
      stored->FieldByName("QTDE_R").AsFloat() == roll.pieces && text("DEPOSITO") == roll.deposit &&
      text("MAQUINA") == roll.machine && text("FUNCIONARIO") == roll.employee && text("TURNO") == roll.shift &&
      text("LOTE") == roll.lot && text("LOCAL") == roll.place && text("PEDIDO") == roll.sales_order;
  return same ? Standing::kAsListed : Standing::kChanged;
}

RollReversal::FabricStock RollReversal::StockOf(const StoredRoll& roll, const std::string& lot) const {
  const auto stock =
      statements_.Open(R"(
SELECT QTDE, PRECO_MED FROM {MAT_ITEN}
WHERE CODIGO = :fabric
AND COR      = :colour
AND DEPOSITO = :deposit
AND LOTE     = :lot)",
                       {{"fabric", roll.code}, {"colour", roll.colour}, {"deposit", roll.deposit}, {"lot", lot}});
  return {stock->FieldByName("QTDE").AsFloat(), stock->FieldByName("PRECO_MED").AsFloat()};
}

void RollReversal::Write(const Reversal& reversal) {
  const StoredRoll& roll = reversal.roll;
  // Yarn before fabric, as a confirmation moves them: stations whose orders share lots then wait for each other at the
  // first one. The other way round each would come to hold what the other one needs.
  EstornaFios(host_, roll, reversal.by);
  TakeFabricOut(reversal);
  OrderItem(host_, roll).Lower();
  statements_.ExecuteTogether({statements_.Write(R"(
DELETE FROM {TECELB}
:of_roll)",
                                                 {{"of_roll", OfRoll(roll)}}),
                               statements_.Write(R"(
DELETE FROM {DEF_MOV}
WHERE NUMERO = :order AND ROLO = :number AND TIPO = 'T')",
                                                 {{"order", roll.order}, {"number", roll.number}})});
  host_.GetFuncoes().GeraLog(
      kRollSubject,
      "ESTORNO MOVIMENTO DO LOTE: " + roll.order + " CODIGO: " + roll.code + " QUANT: " + reversal.log_quantity,
      host::LogOperation::kDeletion, roll.order, nullptr);
  // Not left to the action's end: by then the screen would have taken the roll for gone.
  host_.GetTabela().IBDatabase().MakeDurable();
}

// The roll's own quantity, in kilograms: also of a fabric that is in stock by metre or piece.
void RollReversal::TakeFabricOut(const Reversal& reversal) {
  const auto movement = NewReversalMovement(host_, reversal.roll, reversal.by);
  movement->Material = reversal.roll.code;
  movement->Cor = reversal.roll.colour;
  movement->Lote = reversal.lot;
  movement->Deposito = reversal.roll.deposit;
  movement->Quantidade = reversal.roll.quantity;
  movement->Saida = true;
  movement->Custo = reversal.price;
  movement->TipoMovimento = movement->CodigoTipoMovEstoque(host::kMovementOutbound);
  movement->MovimentaEstoqueMaterial(true, true);
}

}  // namespace weaving
