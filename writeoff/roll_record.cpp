#include "writeoff/roll_record.h"

#include "host/decimal.h"
#include "host/errors.h"
#include "host/text.h"

namespace writeoff {
namespace {

constexpr std::size_t kLogWidth = 150;

}  // namespace

RollRecord::RollRecord(host::Host& host) : funcoes_(host.GetFuncoes()), database_(host.GetTabela().IBDatabase()) {}

void RollRecord::Write(const RollRow& roll) {
  RaiseItem(roll);
  Insert(roll);
  funcoes_.GeraLog(kLogSubject, "BAIXA DE LOTE NR.: " + Described(roll), host::LogOperation::kInclusion, roll.order,
                   nullptr);
  // Not left to the action's end: by then the screen would have taken the roll for written.
  database_.MakeDurable();
}

void RollRecord::LogFailure(const RollRow& roll) {
  const std::string text = "ERRO NA ATUALIZACAO DAS TABELAS DA TECELAGEM DO LOTE NR.: " + Described(roll);
  funcoes_.GeraLog(kLogSubject, host::Left(text, kLogWidth), host::LogOperation::kOther, roll.order, nullptr);
}

std::string RollRecord::Described(const RollRow& roll) const {
  return roll.order + " CODIGO: " + roll.code + " QUANT: " + host::PointText(roll.quantity);
}

// The WHERE clause of the roll's item.
std::string RollRecord::Item(const RollRow& roll) const {
  std::string where = "WHERE NUMERO = " + funcoes_.Aspas(roll.order) + " AND CODIGO = " + funcoes_.Aspas(roll.code) +
                      " AND COR = " + funcoes_.Aspas(roll.colour);
  if (!host::Trim(roll.sales_order).empty()) where += " AND PEDIDO = " + funcoes_.Aspas(roll.sales_order);
  return where;
}

// By what is stored: another station may have written rolls since the grid was loaded. Without the item the roll would
// belong to nothing.
bool RollRecord::ClosesItem(const RollRow& roll) {
  const auto query = database_.NewQuery();
  query->SQL.Add("SELECT QTDE, QTDE_B FROM " + funcoes_.DBLocal("TECEL_ITEN", true));
  query->SQL.Add(Item(roll));
  query->Open();
  if (query->IsEmpty()) {
    throw host::InputError("O item " + roll.code + " cor " + roll.colour +
                           " foi alterado por outro usuário. Carregue a ordem novamente.");
  }
  const double ordered = query->FieldByName("QTDE").AsFloat();
  const double written_off = query->FieldByName("QTDE_B").AsFloat() + roll.quantity;
  return host::RoundTo(ordered, 3) <= host::RoundTo(written_off, 3);
}

void RollRecord::RaiseItem(const RollRow& roll) {
  const bool closes = ClosesItem(roll);
  const auto query = database_.NewQuery();
  query->SQL.Add("UPDATE " + funcoes_.DBLocal("TECEL_ITEN", true) + " SET QTDE_B = QTDE_B + " +
                 funcoes_.PermanecePonto(roll.quantity));
  if (closes) query->SQL.Add(",BAIXADA = " + funcoes_.Aspas("S"));
  query->SQL.Add(Item(roll));
  query->ExecSQL();
}

// A night shift that has ended by the database's clock still belongs to the day that follows the date on screen.
host::Date RollRecord::WriteOffDate(const RollRow& roll) {
  if (host::Trim(roll.shift).empty()) return roll.date;
  const auto query = database_.NewQuery();
  query->SQL.Add("SELECT T.TURNO, T.NOTURNO, TH.SAIDA, TH.DIA, CURRENT_DATE");
  query->SQL.Add("FROM " + funcoes_.DBLocal("TURNO", true) + " T");
  query->SQL.Add("INNER JOIN " + funcoes_.DBLocal("TURNO_HORARIOS", true) + " TH ON (T.TURNO = TH.TURNO)");
  query->SQL.Add("WHERE T.TURNO = " + funcoes_.Aspas(roll.shift));
  query->SQL.Add("AND UDF_WEEKDAY(CURRENT_DATE)+1 = TH.DIA");
  query->SQL.Add("AND TH.SAIDA < CURRENT_TIME");
  query->SQL.Add("AND T.NOTURNO = 'S'");
  query->Open();
  return query->IsEmpty() ? roll.date : roll.date.AddDays(1);
}

void RollRecord::Insert(const RollRow& roll) {
  const auto quoted = [this](std::string_view text) { return funcoes_.Aspas(text); };
  const std::string date = WriteOffDate(roll).ToSql();
  const auto query = database_.NewQuery();
  query->SQL.Add("INSERT INTO " + funcoes_.DBLocal("TECELB", true) +
                 " (NUMERO, CODIGO, ORDEM, DT_LAN, QTDE, NF_RET, DEPOSITO, MAQUINA, FUNCIONARIO, COR, TURNO, NF_COB, "
                 "QTDE_R, LOTE, LOCAL, PEDIDO)");
  query->SQL.Add("VALUES (" + quoted(roll.order) + ", " + quoted(roll.code) + ", " + std::to_string(roll.number) +
                 ", " + quoted(date) + ", " + funcoes_.PermanecePonto(roll.quantity) + ", " + quoted(roll.return_note) +
                 ", " + quoted(roll.deposit) + ", " + quoted(roll.machine) + ", " + quoted(roll.employee) + ", " +
                 quoted(roll.colour) + ", " + quoted(roll.shift) + ", " + quoted(roll.charge_note) + ", " +
                 funcoes_.PermanecePonto(roll.pieces) + ", " + quoted(roll.lot) + ", " + quoted(roll.place) + ", " +
                 quoted(roll.sales_order) + ")");
  query->ExecSQL();
}

}  // namespace writeoff
