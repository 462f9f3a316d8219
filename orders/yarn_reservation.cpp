#include "orders/yarn_reservation.h"

#include <algorithm>
#include <string>

#include "host/decimal.h"
#include "host/errors.h"
#include "weaving/reservations.h"
#include "weaving/units.h"

namespace orders {
namespace {

constexpr const char* kAdjusted = "A quantidade será ajustada automaticamente.";

// Six decimals, as quantities are stored: 100 - 30.1 must not be less than 69.9.
double Exact(double quantity) { return host::RoundTo(quantity, 6); }

double FreeStock(const host::Dataset& lots) { return Exact(lots["Qtde"].AsFloat() - lots["Qtde_Reservado"].AsFloat()); }

// Over all yarns of the order, as last posted.
double ReservedOnAllLots(const host::Dataset& lots) {
  double sum = 0;
  for (host::DatasetCursor lot(lots); !lot.Eof(); lot.Next()) sum += lot.FieldByName("Qtde_Res").AsFloat();
  return Exact(sum);
}

}  // namespace

YarnReservation::YarnReservation(const host::Screen& screen, const host::Dataset& yarns, host::Dataset& lots)
    : screen_(screen), statements_(screen.GetHost()), yarns_(yarns), lots_(lots) {}

void YarnReservation::Settle() {
  const std::string ticked = lots_["Sel"].AsText();
  if (ticked == "S" && lots_["Qtde_Res"].AsFloat() == 0) Propose();
  if (ticked == "N" && lots_["Qtde_B"].AsFloat() == 0) lots_["Qtde_Res"].Set(0.0);
  if (checked_) Check();
}

void YarnReservation::Propose() {
  const double required = yarns_["Consumo_Total"].AsFloat();
  const double others = ReservedOnAllLots(lots_);
  const double free = FreeStock(lots_);
  const double proposed = Exact(free + others) <= required ? std::min(required, free) : Exact(required - others);
  lots_["Qtde_Res"].Set(proposed);
}

void YarnReservation::Check() {
  if (FreeStock(lots_) < lots_["Qtde_Res"].AsFloat()) {
    screen_.Inform(std::string("Quantidade reservada superior ao saldo.\n") + kAdjusted);
    lots_["Qtde_Res"].Set(FreeStock(lots_));
  }
  if (lots_["Qtde_B"].AsFloat() > lots_["Qtde_Res"].AsFloat()) {
    // Nothing is adjusted here, whatever the message says: yarn that has left stock cannot be reserved less.
    screen_.Inform(std::string("Quantidade reservada inferior a quantidade baixada.\n") + kAdjusted);
    lots_.Cancel();
    throw host::Abort();
  }
  const double required = yarns_["Consumo_Total"].AsFloat();
  if (lots_["Qtde_Res"].AsFloat() > required && yarns_["Unidade"].AsText() != weaving::kMetres) {
    screen_.Inform(std::string("Quantidade reservada superior ao consumo requerido.\n") + kAdjusted);
    lots_["Qtde_Res"].Set(required);
  }
}

void YarnReservation::Store(std::string_view order) {
  lots_.SetFiltered(false);
  statements_.Execute(R"(
DELETE FROM {MAT_RESERVA}
WHERE NUMERO = :order
AND (QTDE_B <= 0 OR QTDE_B IS NULL) 
AND :kind)",
                      {{"order", order}, {"kind", weaving::YarnReservations()}});
  for (host::DatasetCursor lot(lots_); !lot.Eof(); lot.Next()) {
    if (lot.FieldByName("Sel").AsText() != "S") continue;
    if (IsStored(order, lot)) {
      Update(order, lot);
    } else {
      Insert(order, lot);
    }
  }
}

bool YarnReservation::IsStored(std::string_view order, const host::DatasetCursor& lot) const {
  const auto rows = statements_.Open(R"(
SELECT NUMERO FROM {MAT_RESERVA}
WHERE NUMERO = :order
AND CODIGO = :yarn
AND COR = :colour
AND DEPOSITO = :warehouse
AND LOTE = :lot
AND :kind)",
                                     {{"order", order},
                                      {"yarn", lot.FieldByName("Codigo").AsText()},
                                      {"colour", lot.FieldByName("Cor").AsText()},
                                      {"warehouse", lot.FieldByName("Deposito").AsText()},
                                      {"lot", lot.FieldByName("Lote").AsText()},
                                      {"kind", weaving::YarnReservations()}});
  return !rows->IsEmpty();
}

void YarnReservation::Insert(std::string_view order, const host::DatasetCursor& lot) {
  statements_.Execute(R"(
INSERT INTO {MAT_RESERVA}
(CODIGO, COR, LOTE, DEPOSITO, NUMERO, QTDE, NOME, OBS, QTDE_B, TIPO)
VALUES
(:yarn,
:colour,
:lot,
:warehouse,
:order,
:quantity,
:supplier,
:remark,
0,
'T'))",
                      {{"yarn", lot.FieldByName("Codigo").AsText()},
                       {"colour", lot.FieldByName("Cor").AsText()},
                       {"lot", lot.FieldByName("Lote").AsText()},
                       {"warehouse", lot.FieldByName("Deposito").AsText()},
                       {"order", order},
                       {"quantity", lot.FieldByName("Qtde_Res").AsFloat()},
                       {"supplier", lot.FieldByName("Fornecedor").AsText()},
                       {"remark", lot.FieldByName("Obs").AsText()}});
}

void YarnReservation::Update(std::string_view order, const host::DatasetCursor& lot) {
  statements_.Execute(R"(
UPDATE {MAT_RESERVA}
SET
QTDE = :quantity
,NOME = :supplier
,OBS = :remark
WHERE CODIGO = :yarn
AND COR = :colour
AND LOTE = :lot
AND DEPOSITO = :warehouse
AND NUMERO = :order
AND :kind)",
                      {{"quantity", lot.FieldByName("Qtde_Res").AsFloat()},
                       {"supplier", lot.FieldByName("Fornecedor").AsText()},
                       {"remark", lot.FieldByName("Obs").AsText()},
                       {"yarn", lot.FieldByName("Codigo").AsText()},
                       {"colour", lot.FieldByName("Cor").AsText()},
                       {"lot", lot.FieldByName("Lote").AsText()},
                       {"warehouse", lot.FieldByName("Deposito").AsText()},
                       {"order", order},
                       {"kind", weaving::YarnReservations()}});
}

}  // namespace orders
