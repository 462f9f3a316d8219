#include "yarn/fabric_entry.h"

#include <utility>

#include "host/decimal.h"
#include "yarn/yarn_movements.h"

namespace yarn {

double ServiceCost(double cost, bool simplified_regime) {
  if (!(cost > 0)) return 0;
  if (simplified_regime) return cost;
  const double contributions = host::WithoutNoise(cost / 100 * 1.65 + cost / 100 * 7.6);
  return host::WithoutNoise(cost - host::RoundTo(contributions, 2));
}

FabricEntry::FabricEntry(host::Host& host, const Roll& roll, std::string fabric, std::string colour, std::string place)
    : host_(host),
      funcoes_(host.GetFuncoes()),
      database_(host.GetTabela().IBDatabase()),
      roll_(roll),
      fabric_(std::move(fabric)),
      colour_(std::move(colour)),
      place_(std::move(place)) {}

double FabricEntry::Quantity(double kilograms) const {
  return CountedByWeight(roll_.unit) ? host::WithoutNoise(kilograms / roll_.unit_weight) : kilograms;
}

void FabricEntry::Enter(double quantity, const std::string& lot, const YarnCost& yarn) {
  const double unit_cost = yarn.total / quantity + Service();
  const auto movement = NewRollMovement(host_, roll_, place_);
  movement->Material = fabric_;
  movement->Cor = colour_;
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

double FabricEntry::Service() {
  const auto query = database_.NewQuery();
  query->SQL.Add("SELECT CUSTO FROM " + funcoes_.DBLocal("CADCORTI", true));
  query->SQL.Add("WHERE CODIGO = " + funcoes_.Aspas(fabric_) + " AND CODCLI = " + funcoes_.Aspas(roll_.client));
  query->Open();
  const double cost = query->FieldByName("CUSTO").AsFloat();
  if (!(cost > 0)) return 0;
  const auto regime = funcoes_.Busca_Valor("ENTIDADE", "CODCLI", "SIMPLES", funcoes_.Aspas(roll_.client), true, true);
  return ServiceCost(cost, regime.AsText() == "S");
}

void FabricEntry::WritePrice(double unit_cost, double weighted) {
  const auto query = database_.NewQuery();
  query->SQL.Add("UPDATE " + funcoes_.DBLocal("MATERIAL", true) +
                 " SET PRECO = " + funcoes_.PermanecePonto(host::RoundTo(unit_cost, 4)));
  if (weighted > 0) query->SQL.Add(",CUSTO_IMP = " + funcoes_.PermanecePonto(host::RoundTo(weighted, 4)));
  query->SQL.Add("WHERE CODIGO = " + funcoes_.Aspas(fabric_));
  query->ExecSQL();
}

}  // namespace yarn
