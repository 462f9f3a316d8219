#include "books_mill.h"

namespace test {

void BooksTest::SetUp() {
  FillSmallMill(mill_);
  mill_.SetClock("2026-03-10 09:30:00");
}

void BooksTest::Order(std::string_view number, std::string_view fabric, std::string_view colour) {
  mill_.Insert("TECEL", {{"NUMERO", number}, {"MALHARIA", "M00001"}, {"SITUACAO", "A"}, {"DEPOSITO", "DF"}});
  mill_.Insert("TECEL_ITEN", {{"NUMERO", number}, {"CODIGO", fabric}, {"COR", colour}, {"QTDE", 500}});
  for (const char* yarn : {"Y1", "Y2"}) {
    mill_.Insert("MAT_RESERVA", {{"NUMERO", number},
                                 {"CODIGO", yarn},
                                 {"COR", "CR"},
                                 {"DEPOSITO", "D1"},
                                 {"LOTE", "L1"},
                                 {"QTDE", 500},
                                 {"TIPO", "T"}});
  }
}

void BooksTest::Move(std::string_view order, std::string_view material, std::string_view colour,
                     std::string_view deposit, std::string_view lot, double quantity, bool out, std::string_view kind) {
  const auto movement = mill_.App().NewEstoque();
  movement->Material = material;
  movement->Cor = colour;
  movement->Deposito = deposit;
  movement->Lote = lot;
  movement->Documento = order;
  movement->TipoDocumento = kind;
  movement->Data = mill_.App().GetClock().Today();
  movement->Quantidade = quantity;
  movement->Saida = out;
  movement->TipoMovimento = movement->CodigoTipoMovEstoque(out ? host::kMovementOutbound : host::kMovementInbound);
  movement->MovimentaEstoqueMaterial(true, true);
}

void BooksTest::Roll(const WovenRoll& roll) {
  const std::string lot = roll.lot.empty() ? roll.order + std::to_string(roll.number) : roll.lot;
  for (const YarnTaken& taken : roll.yarns) {
    Move(roll.order, taken.yarn, "CR", "D1", taken.lot, taken.quantity, true);
    mill_.Insert("BAIXA_FIO", {{"CODIGO", taken.yarn},
                               {"DOCTO", roll.order},
                               {"NUMERO", roll.order},
                               {"QTDE", taken.quantity + taken.crumb},
                               {"LOTE", taken.lot},
                               {"COR", "CR"},
                               {"DEPOSITO", "D1"},
                               {"ORDEM", roll.number},
                               {"MATERIAL", roll.fabric}});
  }
  Move(roll.order, roll.fabric, roll.colour, "DF", lot, roll.stocked > 0 ? roll.stocked : roll.quantity, false);
  mill_.Exec("UPDATE {TECEL_ITEN} SET QTDE_B = QTDE_B + " + std::to_string(roll.quantity) + " WHERE NUMERO = '" +
             roll.order + "' AND CODIGO = '" + roll.fabric + "' AND COR = '" + roll.colour + "'");
  mill_.Insert("TECELB", {{"NUMERO", roll.order},
                          {"CODIGO", roll.fabric},
                          {"COR", roll.colour},
                          {"ORDEM", roll.number},
                          {"QTDE", roll.quantity},
                          {"DEPOSITO", "DF"},
                          {"LOTE", lot}});
}

}  // namespace test
