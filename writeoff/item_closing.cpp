#include "writeoff/item_closing.h"

#include "weaving/audit.h"
#include "weaving/reservations.h"

namespace writeoff {

ItemClosing::ItemClosing(host::Host& host) : host_(host), statements_(host) {}

void ItemClosing::SetClosed(std::string_view order, std::string_view code, std::string_view flag) {
  statements_.Execute(R"(
UPDATE {TECEL_ITEN} SET BAIXADA = :flag
WHERE CODIGO = :fabric AND NUMERO = :order)",
                      {{"flag", flag}, {"fabric", code}, {"order", order}});
}

weaving::Sql ItemClosing::ReservationsOf(std::string_view order, bool only_left) const {
  return statements_.Write("WHERE NUMERO = :order:left AND :kind",
                           {{"order", order},
                            {"left", weaving::Sql(only_left ? " AND QTDE > 0" : "")},
                            {"kind", weaving::YarnReservations()}});
}

bool ItemClosing::HasReservations(std::string_view order) {
  return !statements_
              .Open(R"(
SELECT COALESCE(QTDE,0) AS QTDE FROM {MAT_RESERVA}
:of_order)",
                    {{"of_order", ReservationsOf(order, true)}})
              ->IsEmpty();
}

void ItemClosing::ClearReservations(std::string_view order, bool only_left) {
  statements_.Execute(R"(
UPDATE {MAT_RESERVA} SET QTDE = 0
:of_order)",
                      {{"of_order", ReservationsOf(order, only_left)}});
  host::Funcoes& funcoes = host_.GetFuncoes();
  funcoes.GeraLog(weaving::kRollSubject, "BAIXA TOTAL DA RESERVA - USUARIO: " + funcoes.vUsuario(),
                  host::LogOperation::kOther, order, nullptr);
  host_.GetTabela().IBDatabase().CommitRetaining();
}

}  // namespace writeoff
