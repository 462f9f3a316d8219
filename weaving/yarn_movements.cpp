#include "weaving/yarn_movements.h"

#include <utility>

#include "host/decimal.h"
#include "weaving/reservations.h"
#include "weaving/roll_movements.h"

namespace weaving {
namespace {

// A reservation is not left with less than this.
constexpr double kCrumb = 0.01;

Sql ReservationOfLot(const Statements& statements, std::string_view order, const StockLot& lot) {
  return statements.Write(
      "WHERE NUMERO = :order AND CODIGO = :yarn AND COR = :colour AND DEPOSITO = :deposit AND LOTE = :lot AND :kind",
      {{"order", order},
       {"yarn", lot.code},
       {"colour", lot.colour},
       {"deposit", lot.deposit},
       {"lot", lot.lot},
       {"kind", YarnReservations()}});
}

}  // namespace

double ReservedOfLot(const Statements& statements, std::string_view order, const StockLot& lot) {
  const auto row = statements.Open(R"(
SELECT QTDE FROM {MAT_RESERVA}
:of_lot)",
                                   {{"of_lot", ReservationOfLot(statements, order, lot)}});
  return row->IsEmpty() ? 0 : row->FieldByName("QTDE").AsFloat();
}

YarnMovements::YarnMovements(host::Host& host, NewRoll roll, int number)
    : host_(host), statements_(host), roll_(std::move(roll)), number_(number) {}

void YarnMovements::TakeOut(const StockLot& lot, double quantity, double price) {
  const auto out = Movement(lot, quantity);
  out->Saida = true;
  out->PrecoUnitario = price;
  out->Custo = price;
  out->MovimentaEstoqueMaterial(true, true);
  const double reserved = ReservedOfLot(statements_, roll_.order, lot);
  const double left = host::WithoutNoise(reserved - quantity);
  const bool crumb = left > 0 && left < kCrumb;
  Record(lot, crumb ? reserved : quantity);
  // A crumb goes with the roll to its last digit; rounding it here would leave the crumb of the crumb.
  ReduceReservation(lot, crumb ? reserved : host::RoundTo(quantity, 3));
}

// Also what comes back is booked under the kind of an issue: it was one that did not happen.
std::unique_ptr<host::TEstoque> YarnMovements::Movement(const StockLot& lot, double quantity) const {
  auto movement = NewRollMovement(host_, roll_, number_);
  movement->Material = lot.code;
  movement->Cor = lot.colour;
  movement->Lote = lot.lot;
  movement->Deposito = lot.deposit;
  movement->Quantidade = quantity;
  movement->TipoMovimento = movement->CodigoTipoMovEstoque(host::kMovementOutbound);
  return movement;
}

void YarnMovements::Record(const StockLot& lot, double quantity) {
  statements_.Execute(R"(
INSERT INTO {BAIXA_FIO} (CODIGO, DOCTO, NUMERO, QTDE, LOTE, COR, DEPOSITO, ORDEM, MATERIAL) VALUES
(:yarn, :order, :order, :quantity, :lot, :colour, :deposit, :number, :fabric))",
                      {{"yarn", lot.code},
                       {"order", roll_.order},
                       {"quantity", quantity},
                       {"lot", lot.lot},
                       {"colour", lot.colour},
                       {"deposit", lot.deposit},
                       {"number", number_},
                       {"fabric", roll_.fabric}});
}

void YarnMovements::ReduceReservation(const StockLot& lot, double quantity) {
  const Sql of_lot = ReservationOfLot(statements_, roll_.order, lot);
  statements_.ExecuteTogether({statements_.Write(R"(
UPDATE {MAT_RESERVA} SET QTDE = QTDE - :quantity ,QTDE_B = QTDE_B + :quantity
:of_lot)",
                                                 {{"quantity", quantity}, {"of_lot", of_lot}}),
                               statements_.Write(R"(
UPDATE {MAT_RESERVA} SET QTDE = 0
:of_lot
AND QTDE < 0)",
                                                 {{"of_lot", of_lot}})});
}

void YarnMovements::BringBack() {
  const auto taken = statements_.Open(R"(
SELECT TECEL.MALHARIA, TECEL.MAQUINA, BAIXA_FIO.CODIGO, BAIXA_FIO.COR, BAIXA_FIO.NUMERO,
BAIXA_FIO.DEPOSITO, BAIXA_FIO.LOTE, BAIXA_FIO.QTDE
FROM {TECEL} TECEL
INNER JOIN {BAIXA_FIO} BAIXA_FIO ON (TECEL.NUMERO = BAIXA_FIO.NUMERO)
WHERE TECEL.NUMERO = :order
AND BAIXA_FIO.ORDEM = :number)",
                                      {{"order", roll_.order}, {"number", number_}});
  for (; !taken->Eof(); taken->Next()) {
    const StockLot lot = {taken->FieldByName("CODIGO").AsText(), taken->FieldByName("COR").AsText(),
                          taken->FieldByName("DEPOSITO").AsText(), taken->FieldByName("LOTE").AsText()};
    const auto in = Movement(lot, taken->FieldByName("QTDE").AsFloat());
    in->Saida = false;
    in->Estorno = true;
    in->MovimentaEstoqueMaterial(true, true);
  }
  statements_.Execute("DELETE FROM {BAIXA_FIO} WHERE NUMERO = :order AND ORDEM = :number",
                      {{"order", roll_.order}, {"number", number_}});
  host_.GetTabela().IBDatabase().CommitRetaining();
}

}  // namespace weaving
