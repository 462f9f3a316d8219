#include "weaving/fabric_entry.h"

#include <utility>

#include "host/decimal.h"
#include "weaving/roll_movements.h"
#include "weaving/units.h"

namespace weaving {
namespace {

// The material register keeps prices to four decimals.
constexpr int kPriceDecimals = 4;

}  // namespace

double QuantityInStock(const NewRoll& roll) {
  return CountedByWeight(roll.unit) ? host::WithoutNoise(roll.kilograms / roll.unit_weight) : roll.kilograms;
}

FabricEntry::FabricEntry(host::Host& host, NewRoll roll, int number)
    : host_(host), statements_(host), prices_(host), roll_(std::move(roll)), number_(number) {}

void FabricEntry::Enter(const std::string& lot, const YarnCost& yarn) {
  const double quantity = QuantityInStock(roll_);
  const double unit_cost = yarn.total / quantity + prices_.Service(roll_.client, roll_.fabric);
  const auto movement = NewRollMovement(host_, roll_, number_);
  movement->Material = roll_.fabric;
  movement->Cor = roll_.colour;
  movement->Lote = lot;
  movement->Deposito = roll_.deposit;
  movement->Quantidade = quantity;
  movement->Saida = false;
  movement->PrecoUnitario = unit_cost;
  movement->Custo = unit_cost;
  movement->TipoMovimento = movement->CodigoTipoMovEstoque(host::kMovementInbound);
  movement->MovimentaEstoqueMaterial(true, true);
  WritePrice(unit_cost, yarn.weighted);
}

void FabricEntry::WritePrice(double unit_cost, double weighted) {
  Sql update =
      statements_.Write("UPDATE {MATERIAL} SET PRECO = :price", {{"price", host::RoundTo(unit_cost, kPriceDecimals)}});
  if (weighted > 0) {
    update.Add(statements_.Write(",CUSTO_IMP = :cost", {{"cost", host::RoundTo(weighted, kPriceDecimals)}}));
  }
  statements_.Execute(update.Add(statements_.Write("WHERE CODIGO = :fabric", {{"fabric", roll_.fabric}})));
}

}  // namespace weaving
