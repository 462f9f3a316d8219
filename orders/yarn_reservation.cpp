#include "orders/yarn_reservation.h"

#include <algorithm>
#include <string>

#include "host/decimal.h"
#include "host/errors.h"

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
    : screen_(screen),
      database_(screen.GetHost().GetTabela().IBDatabase()),
      words_(screen.GetHost().GetFuncoes()),
      yarns_(yarns),
      lots_(lots) {}

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
  if (lots_["Qtde_Res"].AsFloat() > required && yarns_["Unidade"].AsText() != "MT") {
    screen_.Inform(std::string("Quantidade reservada superior ao consumo requerido.\n") + kAdjusted);
    lots_["Qtde_Res"].Set(required);
  }
}

void YarnReservation::Store(std::string_view order) {
  lots_.SetFiltered(false);
  Execute(database_, {"DELETE FROM " + words_.Table("MAT_RESERVA"), "WHERE NUMERO = " + words_.Text(order),
                      "AND (QTDE_B <= 0 OR QTDE_B IS NULL) ", words_.ReservationKind()});
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
  const auto text = [&](const char* field) { return words_.Text(lot.FieldByName(field).AsText()); };
  const auto rows = OpenQuery(
      database_, {"SELECT NUMERO FROM " + words_.Table("MAT_RESERVA"), "WHERE NUMERO = " + words_.Text(order),
                  "AND CODIGO = " + text("Codigo"), "AND COR = " + text("Cor"), "AND DEPOSITO = " + text("Deposito"),
                  "AND LOTE = " + text("Lote"), words_.ReservationKind()});
  return !rows->IsEmpty();
}

void YarnReservation::Insert(std::string_view order, const host::DatasetCursor& lot) {
  const auto text = [&](const char* field) { return words_.Text(lot.FieldByName(field).AsText()); };
  Execute(database_, {"INSERT INTO " + words_.Table("MAT_RESERVA"),
                      "(CODIGO, COR, LOTE, DEPOSITO, NUMERO, QTDE, NOME, OBS, QTDE_B, TIPO)", "VALUES",
                      "(" + text("Codigo") + ",", text("Cor") + ",", text("Lote") + ",", text("Deposito") + ",",
                      words_.Text(order) + ",", words_.Number(lot.FieldByName("Qtde_Res").AsFloat()) + ",",
                      text("Fornecedor") + ",", text("Obs") + ",", "0,", words_.Text("T") + ")"});
}

void YarnReservation::Update(std::string_view order, const host::DatasetCursor& lot) {
  const auto text = [&](const char* field) { return words_.Text(lot.FieldByName(field).AsText()); };
  Execute(database_, {"UPDATE " + words_.Table("MAT_RESERVA"), "SET",
                      "QTDE = " + words_.Number(lot.FieldByName("Qtde_Res").AsFloat()), ",NOME = " + text("Fornecedor"),
                      ",OBS = " + text("Obs"), "WHERE CODIGO = " + text("Codigo"), "AND COR = " + text("Cor"),
                      "AND LOTE = " + text("Lote"), "AND DEPOSITO = " + text("Deposito"),
                      "AND NUMERO = " + words_.Text(order), words_.ReservationKind()});
}

}  // namespace orders
