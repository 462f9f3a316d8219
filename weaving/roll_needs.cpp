#include "weaving/roll_needs.h"

#include <cstddef>

#include "host/decimal.h"
#include "host/text.h"
#include "weaving/reservations.h"
#include "weaving/yarn_colour.h"

namespace weaving {
namespace {

// A lot's code begins with its supplier's.
constexpr std::size_t kSupplierWidth = 5;
// Prices are kept with four decimals.
constexpr int kPriceDecimals = 4;

std::vector<YarnNeed> ReadNeeds(host::TTIQuery& rows) {
  std::vector<YarnNeed> needs;
  for (; !rows.Eof(); rows.Next()) {
    const double quantity = rows.FieldByName("QTDE").AsFloat();
    needs.push_back({.yarn = rows.FieldByName("CODIGO").AsText(),
                     .description = rows.FieldByName("DESCRICAO").AsText(),
                     .colour = rows.FieldByName("COR").AsText(),
                     .wanted = quantity,
                     .computed = quantity,
                     .share = rows.FieldByName("PERC").AsFloat()});
  }
  return needs;
}

}  // namespace

NothingOpen::NothingOpen()
    : InputError(
          "O item já foi baixado por inteiro e ainda tem fios reservados. Use \"Considerar Reserva como baixada\" para "
          "liberar a reserva.") {}

std::vector<YarnNeed> RollNeeds::Of(const NewRoll& roll, bool from_reservations, bool merged) const {
  if (HasOneItem(roll.order) && from_reservations) {
    const auto reserved = ByReservations(roll);
    if (!reserved->IsEmpty()) return ReadNeeds(*reserved);
  }
  return ReadNeeds(*ByComposition(roll, merged));
}

bool RollNeeds::HasOneItem(const std::string& order) const {
  return statements_.Open("SELECT CODIGO FROM {TECEL_ITEN} WHERE NUMERO = :order", {{"order", order}})->RecordCount() ==
         1;
}

// The roll's share of what is reserved for the order's open quantity. The engine refuses it (division by zero) when
// reservations are left and nothing is open.
std::unique_ptr<host::TTIQuery> RollNeeds::ByReservations(const NewRoll& roll) const {
  try {
    return statements_.Open(
        R"(
SELECT CODIGO, DESCRICAO, COR,
(QTDE_RESERVADA / (QTDE_ORDEM * PESO_MALHA)) * 100.00 AS PERC,
((QTDE_RESERVADA / (QTDE_ORDEM * PESO_MALHA))) * :kilograms AS QTDE
FROM (
SELECT MAT_RESERVA.CODIGO, MATERIAL.DESCRICAO, MAT_RESERVA.COR, SUM(MAT_RESERVA.QTDE) AS QTDE_RESERVADA,
(TECEL_ITEN.QTDE - TECEL_ITEN.QTDE_B) AS QTDE_ORDEM,
:weight AS PESO_MALHA
FROM {MAT_RESERVA} MAT_RESERVA
INNER JOIN {TECEL_ITEN} TECEL_ITEN ON (TECEL_ITEN.NUMERO = MAT_RESERVA.NUMERO)
LEFT JOIN {MATERIAL} MATERIAL ON (MAT_RESERVA.CODIGO = MATERIAL.CODIGO)
LEFT JOIN {MATERIAL} MALHA ON (MALHA.CODIGO = TECEL_ITEN.CODIGO)
WHERE MAT_RESERVA.NUMERO = :order
AND MAT_RESERVA.QTDE > 0
AND :kind
GROUP BY MAT_RESERVA.CODIGO, MATERIAL.DESCRICAO, MAT_RESERVA.COR, (TECEL_ITEN.QTDE - TECEL_ITEN.QTDE_B), :weight
)
WHERE ((QTDE_RESERVADA / (QTDE_ORDEM * PESO_MALHA))) * :kilograms > 0)",
        {{"kilograms", roll.kilograms},
         {"weight", Sql("CASE WHEN MALHA.UNIDADE = 'MT' THEN MALHA.PESO ELSE 1 END")},
         {"order", roll.order},
         {"kind", YarnReservations("MAT_RESERVA.")}});
  } catch (const host::DatabaseError&) {
    if (!NothingIsOpen(roll.order)) throw;
    throw NothingOpen();
  }
}

bool RollNeeds::NothingIsOpen(const std::string& order) const {
  const auto item =
      statements_.Open("SELECT QTDE - QTDE_B AS ABERTO FROM {TECEL_ITEN} WHERE NUMERO = :order", {{"order", order}});
  return !item->IsEmpty() && item->FieldByName("ABERTO").AsFloat() == 0;
}

std::unique_ptr<host::TTIQuery> RollNeeds::ByComposition(const NewRoll& roll, bool merged) const {
  Sql lines = statements_.Write(R"(
SELECT COMP.CODIGO, MATERIAL.DESCRICAO, COMP.COR_I AS COR, COMP.PERC, 
SUM(COMP.PERC * (:kilograms/100.00)) AS QTDE 
FROM {COMP_MATERIAL} COMP 
LEFT JOIN {MATERIAL} MATERIAL ON (COMP.CODIGO = MATERIAL.CODIGO)
WHERE COMP.MATERIAL = :fabric
AND COMP.COR = :colour
AND (COMP.PERC * (:kilograms/100.00)) > 0 
AND :coloured)",
                                {{"kilograms", roll.kilograms},
                                 {"fabric", roll.fabric},
                                 {"colour", roll.colour},
                                 {"coloured", YarnColourGiven("COMP.")}});
  return statements_.Open(
      lines.Add(Sql(merged ? "GROUP BY COMP.CODIGO, MATERIAL.DESCRICAO, COMP.COR_I, COMP.PERC"
                           : "GROUP BY COMP.CODIGO, MATERIAL.DESCRICAO, COMP.COR_I, COMP.PERC, COMP.ORDEM")));
}

// What other orders reserved counts whatever its kind: the yarn is not free.
std::unique_ptr<host::TTIQuery> RollNeeds::Stock(const std::string& order, const YarnNeed& need) const {
  return statements_.Open(R"(
SELECT MAT_ITEN.CODIGO, MATERIAL.DESCRICAO, MAT_ITEN.COR, DEPOSITO.DESCRICAO AS DESCDEP, 
MAT_ITEN.DEPOSITO, MAT_ITEN.LOTE, MAT_ITEN.QTDE, MAT_ITEN.PRECO_MED, MAT_ITEN.LOCAL, 
MATERIAL.CUSTO_IMP AS CUSTO, 
(SELECT SUM(QTDE) AS QTDE  FROM {MAT_RESERVA}
WHERE NUMERO <> :order
AND CODIGO = MAT_ITEN.CODIGO
AND COR = MAT_ITEN.COR
AND DEPOSITO = MAT_ITEN.DEPOSITO
AND LOTE = MAT_ITEN.LOTE) AS RESERVADAS 
FROM {MAT_ITEN} MAT_ITEN 
LEFT JOIN {MATERIAL} MATERIAL ON (MATERIAL.CODIGO = MAT_ITEN.CODIGO)
INNER JOIN {DEPOSITO} DEPOSITO ON (MAT_ITEN.DEPOSITO = DEPOSITO.CODIGO)
WHERE MAT_ITEN.CODIGO = :yarn
AND MAT_ITEN.COR = :colour
AND MAT_ITEN.QTDE > 0 )",
                          {{"order", order}, {"yarn", need.yarn}, {"colour", need.colour}});
}

std::vector<YarnLot> RollNeeds::LotsOf(const std::string& order, const YarnNeed& need, bool name_suppliers) {
  std::vector<YarnLot> lots;
  const auto rows = Stock(order, need);
  for (; !rows->Eof(); rows->Next()) {
    const auto text = [&rows](std::string_view column) { return rows->FieldByName(column).AsText(); };
    const host::Value reserved = rows->FieldByName("RESERVADAS");
    YarnLot lot = {.lot = {text("CODIGO"), text("COR"), text("DEPOSITO"), text("LOTE")},
                   .description = text("DESCRICAO"),
                   .deposit_name = text("DESCDEP"),
                   .place = text("LOCAL"),
                   .held = rows->FieldByName("QTDE").AsFloat(),
                   .price = host::RoundTo(rows->FieldByName("PRECO_MED").AsFloat(), kPriceDecimals),
                   .import_cost = rows->FieldByName("CUSTO").AsFloat() * (need.share / 100)};
    if (!reserved.IsNull()) lot.reserved = reserved.AsFloat();
    if (name_suppliers) lot.supplier = SupplierOf(lot.lot.lot);
    lots.push_back(std::move(lot));
  }
  return lots;
}

const std::string& RollNeeds::SupplierOf(const std::string& lot) {
  const std::string code = host::Left(lot, kSupplierWidth);
  const auto known = suppliers_.find(code);
  if (known != suppliers_.end()) return known->second;
  return suppliers_[code] =
             funcoes_.Busca_Valor("ENTIDADE", "CODCLI", "NOME", funcoes_.Aspas(code), true, true).AsText();
}

}  // namespace weaving
