#include "writeoff/item_closing.h"

#include <string>

#include "writeoff/reservation_kind.h"
#include "writeoff/roll_record.h"

namespace writeoff {

ItemClosing::ItemClosing(host::Host& host) : funcoes_(host.GetFuncoes()), database_(host.GetTabela().IBDatabase()) {}

void ItemClosing::SetClosed(std::string_view order, std::string_view code, std::string_view flag) {
  const auto query = database_.NewQuery();
  query->SQL.Add("UPDATE " + funcoes_.DBLocal("TECEL_ITEN", true) + " SET BAIXADA = " + funcoes_.Aspas(flag));
  query->SQL.Add("WHERE CODIGO = " + funcoes_.Aspas(code) + " AND NUMERO = " + funcoes_.Aspas(order));
  query->ExecSQL();
}

std::string ItemClosing::OfOrder(std::string_view order, bool only_left) const {
  return "WHERE NUMERO = " + funcoes_.Aspas(order) + (only_left ? " AND QTDE > 0" : "") + " AND " +
         std::string(kReservationKind);
}

bool ItemClosing::HasReservations(std::string_view order) {
  const auto query = database_.NewQuery();
  query->SQL.Add("SELECT COALESCE(QTDE,0) AS QTDE FROM " + funcoes_.DBLocal("MAT_RESERVA", true));
  query->SQL.Add(OfOrder(order, true));
  query->Open();
  return !query->IsEmpty();
}

void ItemClosing::ClearReservations(std::string_view order, bool only_left) {
  const auto query = database_.NewQuery();
  query->SQL.Add("UPDATE " + funcoes_.DBLocal("MAT_RESERVA", true) + " SET QTDE = 0");
  query->SQL.Add(OfOrder(order, only_left));
  query->ExecSQL();
  funcoes_.GeraLog(kLogSubject, "BAIXA TOTAL DA RESERVA - USUARIO: " + funcoes_.vUsuario(), host::LogOperation::kOther,
                   order, nullptr);
  database_.CommitRetaining();
}

}  // namespace writeoff
