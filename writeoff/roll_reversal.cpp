#include "writeoff/roll_reversal.h"

#include "host/decimal.h"
#include "host/text.h"
#include "writeoff/roll_yarn_return.h"

namespace writeoff {

std::unique_ptr<host::TEstoque> NewReversalMovement(host::Host& host, const Reversal& reversal) {
  auto movement = host.NewEstoque();
  movement->Documento = reversal.roll.order;
  movement->TipoDocumento = "BT";
  movement->Cliente = reversal.client;
  movement->Funcionario = reversal.employee;
  movement->Data = reversal.date;
  movement->Usuario = host.GetFuncoes().vUsuario();
  return movement;
}

RollReversal::RollReversal(host::Host& host)
    : host_(host), funcoes_(host.GetFuncoes()), database_(host.GetTabela().IBDatabase()) {}

RollReversal::Standing RollReversal::Look(const RollRow& roll) {
  const auto query = database_.NewQuery();
  query->SQL.Add(
      "SELECT CODIGO, COR, DT_LAN, QTDE, QTDE_R, DEPOSITO, MAQUINA, FUNCIONARIO, TURNO, LOTE, LOCAL, PEDIDO");
  query->SQL.Add("FROM " + funcoes_.DBLocal("TECELB", true));
  query->SQL.Add("WHERE NUMERO = " + funcoes_.Aspas(roll.order) + " AND ORDEM = " + std::to_string(roll.number));
  query->Open();
  if (query->IsEmpty()) return Standing::kGone;
  const auto text = [&query](std::string_view column) { return query->FieldByName(column).AsText(); };
  // The number of a roll that was taken back may be another roll's by now.
  const bool same =
      text("CODIGO") == roll.code && text("COR") == roll.colour && query->FieldByName("DT_LAN").AsDate() == roll.date &&
      query->FieldByName("QTDE").AsFloat() == roll.quantity && query->FieldByName("QTDE_R").AsFloat() == roll.pieces &&
      text("DEPOSITO") == roll.deposit && text("MAQUINA") == roll.machine && text("FUNCIONARIO") == roll.employee &&
      text("TURNO") == roll.shift && text("LOTE") == roll.lot && text("LOCAL") == roll.place &&
      text("PEDIDO") == roll.sales_order;
  return same ? Standing::kAsListed : Standing::kChanged;
}

RollReversal::FabricStock RollReversal::StockOf(const RollRow& roll, const std::string& lot) {
  const auto query = database_.NewQuery();
  query->SQL.Add("SELECT QTDE, PRECO_MED FROM " + funcoes_.DBLocal("MAT_ITEN", true));
  query->SQL.Add("WHERE CODIGO = " + funcoes_.Aspas(roll.code));
  query->SQL.Add("AND COR      = " + funcoes_.Aspas(roll.colour));
  query->SQL.Add("AND DEPOSITO = " + funcoes_.Aspas(roll.deposit));
  query->SQL.Add("AND LOTE     = " + funcoes_.Aspas(lot));
  query->Open();
  return {query->FieldByName("QTDE").AsFloat(), query->FieldByName("PRECO_MED").AsFloat()};
}

void RollReversal::Write(const Reversal& reversal) {
  const RollRow& roll = reversal.roll;
  // Yarn before fabric, as a confirmation moves them: stations whose orders share lots then wait for each other at the
  // first one. The other way round each would come to hold what the other one needs.
  EstornaFios(host_, reversal);
  TakeFabricOut(reversal);
  LowerItem(roll);
  DeleteRoll(roll);
  DeleteDefects(roll);
  funcoes_.GeraLog(
      kLogSubject,
      "ESTORNO MOVIMENTO DO LOTE: " + roll.order + " CODIGO: " + roll.code + " QUANT: " + reversal.log_quantity,
      host::LogOperation::kDeletion, roll.order, nullptr);
  // Not left to the action's end: by then the screen would have taken the roll for gone.
  database_.MakeDurable();
}

// The roll's own quantity, in kilograms: also of a fabric that is in stock by metre or piece.
void RollReversal::TakeFabricOut(const Reversal& reversal) {
  const auto movement = NewReversalMovement(host_, reversal);
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

// The WHERE clause of the roll's item.
std::string RollReversal::Item(const RollRow& roll) const {
  std::string where = "WHERE CODIGO = " + funcoes_.Aspas(roll.code) + " AND NUMERO = " + funcoes_.Aspas(roll.order) +
                      " AND COR = " + funcoes_.Aspas(roll.colour);
  if (!host::Trim(roll.sales_order).empty()) where += " AND PEDIDO = " + funcoes_.Aspas(roll.sales_order);
  return where;
}

// The item adds up what was weighed, each roll is stored rounded: a crumb left after the last one would keep the order
// from being deleted.
bool RollReversal::EmptiesItem(const RollRow& roll) {
  const auto query = database_.NewQuery();
  query->SQL.Add("SELECT QTDE_B, (SELECT COUNT(*) FROM " + funcoes_.DBLocal("TECELB", true) +
                 " WHERE NUMERO = " + funcoes_.Aspas(roll.order) + " AND CODIGO = " + funcoes_.Aspas(roll.code) +
                 " AND COR = " + funcoes_.Aspas(roll.colour) + ") AS PECAS");
  query->SQL.Add("FROM " + funcoes_.DBLocal("TECEL_ITEN", true));
  query->SQL.Add(Item(roll));
  query->Open();
  const bool last = query->FieldByName("PECAS").AsInteger() <= 1;
  return last || !(query->FieldByName("QTDE_B").AsFloat() > roll.quantity);
}

void RollReversal::LowerItem(const RollRow& roll) {
  const std::string written_off =
      EmptiesItem(roll) ? "QTDE_B = 0" : "QTDE_B = QTDE_B - " + funcoes_.PermanecePonto(roll.quantity);
  const auto query = database_.NewQuery();
  query->SQL.Add("UPDATE " + funcoes_.DBLocal("TECEL_ITEN", true) + " SET " + written_off);
  query->SQL.Add(", BAIXADA = " + funcoes_.Aspas("N"));
  query->SQL.Add(Item(roll));
  query->ExecSQL();
}

void RollReversal::DeleteRoll(const RollRow& roll) {
  const auto query = database_.NewQuery();
  query->SQL.Add("DELETE FROM " + funcoes_.DBLocal("TECELB", true));
  query->SQL.Add("WHERE NUMERO = " + funcoes_.Aspas(roll.order) + " AND ORDEM = " + std::to_string(roll.number));
  query->ExecSQL();
}

void RollReversal::DeleteDefects(const RollRow& roll) {
  const auto query = database_.NewQuery();
  query->SQL.Add("DELETE FROM " + funcoes_.DBLocal("DEF_MOV", true));
  query->SQL.Add("WHERE NUMERO = " + funcoes_.Aspas(roll.order) + " AND ROLO = " + std::to_string(roll.number) +
                 " AND TIPO = 'T'");
  query->ExecSQL();
}

}  // namespace writeoff
