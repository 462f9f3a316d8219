#include "support/road.h"

#include <stdexcept>

#include "host/decimal.h"

namespace test {
namespace {

std::string Typed(double number) { return host::FormatNumber("0.######", number, ','); }

void Expect(Mill& mill, host::ActResult result, std::string_view what) {
  if (result == host::ActResult::kDone) return;
  std::string boxes;
  for (const auto& text : mill.Messages()) boxes += " | " + text;
  throw std::runtime_error("refused: " + std::string(what) + boxes);
}

host::Screen& TypeOrder(Mill& mill, const OrderPlan& plan) {
  host::Screen& screen = mill.Open("TfmCadLoteTec");
  Expect(mill, mill.Click(screen, "BtnIncluir"), "new order");
  Expect(mill, mill.Type(screen, "EdtMalharia", plan.mill), "mill");
  Expect(mill, mill.Type(screen, "EdtDeposito", plan.deposit), "deposit");
  Expect(
      mill,
      mill.Append(screen, "TbItens", {{"Codigo", plan.fabric}, {"Cor", plan.colour}, {"Qtde", Typed(plan.quantity)}}),
      "item");
  return screen;
}

void Reserve(Mill& mill, host::Screen& screen, const Reservation& lot) {
  host::Grid& yarns = mill.GridOf(screen, "TbFios");
  host::Grid& stock = mill.GridOf(screen, "TbEstoque");
  const auto stand_on = [&](host::Grid& grid, std::string_view fields, const std::vector<std::string>& key) {
    host::Dataset& rows = grid.GetDataset();
    for (std::size_t row = 1; row <= rows.RecordCount(); ++row) {
      std::size_t same = 0;
      std::size_t at = 0;
      std::string names(fields);
      for (const auto& value : key) {
        const std::string name = names.substr(at, names.find(';', at) - at);
        at += name.size() + 1;
        for (std::size_t field = 0; field < rows.FieldCount(); ++field) {
          if (rows.FieldAt(field).Name() == name && rows.ValueAt(row, field).AsText() == value) ++same;
        }
      }
      if (same == key.size()) {
        Expect(mill, mill.Desk().SelectRow(grid, row), "row of " + key.front());
        return;
      }
    }
    throw std::runtime_error("not listed: " + key.front());
  };
  // The mill's own warehouse is proposed as a filter; the lot may lie elsewhere.
  Expect(mill, mill.Type(screen, "EdtFilDeposito", ""), "all warehouses");
  stand_on(yarns, "Codigo;Cor", {lot.yarn, lot.colour});
  stand_on(stock, "Lote;Deposito", {lot.lot, lot.deposit});
  Expect(mill, mill.Set(screen, "TbEstoque", {{"Sel", "S"}, {"Qtde_Res", Typed(lot.quantity)}}), "reserve " + lot.lot);
}

}  // namespace

OrderPlan SmallMillOrder(double quantity) {
  const double first_yarn = quantity * 0.6;
  const double first_lot = first_yarn * 5 / 6;
  return {"M00001",
          "DF",
          "F1",
          "01",
          quantity,
          {{"Y1", "CR", "D1", "L1", first_lot},
           {"Y1", "CR", "D1", "L2", first_yarn - first_lot},
           {"Y2", "CR", "D1", "L1", quantity * 0.4}}};
}

std::string SaveBareOrder(Mill& mill, const OrderPlan& plan) {
  host::Screen& screen = TypeOrder(mill, plan);
  const std::string number = mill.Text(screen, "EdtNumero");
  Expect(mill, mill.Click(screen, "BtnGravar"), "save");
  return number;
}

std::string SaveOrder(Mill& mill, const OrderPlan& plan) {
  const std::string number = SaveBareOrder(mill, plan);
  host::Screen& screen = mill.Open("TfmCadLoteTec");
  Expect(mill, mill.Type(screen, "EdtNumero", number), "load");
  for (const auto& lot : plan.reservations) Reserve(mill, screen, lot);
  Expect(mill, mill.Click(screen, "BtnGravar"), "save with reservations");
  return number;
}

void ReceiveYarn(Mill& mill, std::string_view yarn, std::string_view lot, double quantity) {
  const auto entry = mill.App().NewEstoque();
  entry->Material = yarn;
  entry->Cor = "CR";
  entry->Lote = lot;
  entry->Deposito = "D1";
  entry->Documento = "NF 1";
  entry->TipoDocumento = "NF";
  entry->Data = host::Date::FromParts(2026, 3, 2).value();
  entry->Quantidade = quantity;
  entry->PrecoUnitario = 20;
  entry->Custo = 20;
  entry->TipoMovimento = entry->CodigoTipoMovEstoque(host::kMovementInbound);
  entry->Usuario = mill.App().GetFuncoes().vUsuario();
  entry->MovimentaEstoqueMaterial(true, true);
  mill.Db().MakeDurable();
}

host::Screen& OpenWriteOff(Mill& mill, std::string_view order, std::string_view deposit) {
  host::Screen& screen = mill.Open("TfmMovBaiTec");
  Expect(mill, mill.Type(screen, "EdtLote", order), "order");
  Expect(mill, mill.Type(screen, "EdtDeposito", deposit), "deposit");
  return screen;
}

void TypeRoll(Mill& mill, host::Screen& screen, double quantity) {
  Expect(mill, mill.Type(screen, "EdtTara", "0"), "tare");
  Expect(mill, mill.Type(screen, "EdtQtde", Typed(quantity)), "quantity");
}

host::ActResult ConfirmRoll(Mill& mill, host::Screen& screen, double quantity) {
  TypeRoll(mill, screen, quantity);
  return mill.Click(screen, "BtnConfirma");
}

}  // namespace test
