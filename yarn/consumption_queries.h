// The statements that tell what a roll consumes and where it lies.
#pragma once

#include <string>
#include <string_view>

#include "host/database.h"
#include "host/funcoes.h"

namespace yarn {

/// One lot of stock.
struct LotKey {
  std::string code;
  std::string colour;
  std::string deposit;
  std::string lot;
};

/// The condition that keeps reservations of kind "F" out of sight; `prefix` ("MAT_RESERVA.") before each column.
std::string ReservationKind(const host::Funcoes& funcoes, std::string_view prefix);

/// The WHERE clause of an order's reservation on a lot.
std::string ReservationOfLot(const host::Funcoes& funcoes, std::string_view order, const LotKey& lot);

/// CODIGO of the order's items.
void ItemsOfOrder(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view order);

/// CODIGO, DESCRICAO, COR, PERC, QTDE per yarn: the roll's share of what is reserved for the order's open quantity. The
/// engine refuses it (division by zero) when reservations are left and nothing is open.
void ConsumptionFromReservations(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view order,
                                 double quantity);

/// The same columns from the fabric's composition. `merged` joins equal lines of the composition.
void ConsumptionFromComposition(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view fabric,
                                std::string_view colour, double quantity, bool merged);

/// The lots that hold a yarn: CODIGO, DESCRICAO, COR, DESCDEP, DEPOSITO, LOTE, QTDE, PRECO_MED, LOCAL, CUSTO and
/// RESERVADAS, what other orders reserved of the lot.
void StockOfYarn(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view order, std::string_view yarn,
                 std::string_view colour);

/// QTDE of the order's reservation on a lot.
void ReservedOfLot(host::SqlText& sql, const host::Funcoes& funcoes, std::string_view order, const LotKey& lot);

}  // namespace yarn
