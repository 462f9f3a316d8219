#include "weaving/roll_record.h"

#include <string>

#include "host/decimal.h"
#include "host/text.h"
#include "weaving/audit.h"
#include "weaving/order_item.h"

namespace weaving {
namespace {

std::string Described(const StoredRoll& roll) {
  return roll.order + " CODIGO: " + roll.code + " QUANT: " + host::PointText(roll.quantity);
}

}  // namespace

RollRecord::RollRecord(host::Host& host) : host_(host), statements_(host) {}

void RollRecord::Write(const StoredRoll& roll) {
  OrderItem(host_, roll).Raise();
  Insert(roll);
  host_.GetFuncoes().GeraLog(kRollSubject, "BAIXA DE LOTE NR.: " + Described(roll), host::LogOperation::kInclusion,
                             roll.order, nullptr);
  // Not left to the action's end: by then the screen would have taken the roll for written.
  host_.GetTabela().IBDatabase().MakeDurable();
}

void RollRecord::LogFailure(const StoredRoll& roll) {
  const std::string text = "ERRO NA ATUALIZACAO DAS TABELAS DA TECELAGEM DO LOTE NR.: " + Described(roll);
  host_.GetFuncoes().GeraLog(kRollSubject, host::Left(text, kLogWidth), host::LogOperation::kOther, roll.order,
                             nullptr);
}

// A night shift that has ended by the database's clock still belongs to the day that follows the date on screen.
host::Date RollRecord::WriteOffDate(const StoredRoll& roll) const {
  if (host::Trim(roll.shift).empty()) return roll.date;
  const auto ended_night_shift = statements_.Open(R"(
SELECT T.TURNO, T.NOTURNO, TH.SAIDA, TH.DIA, CURRENT_DATE
FROM {TURNO} T
INNER JOIN {TURNO_HORARIOS} TH ON (T.TURNO = TH.TURNO)
WHERE T.TURNO = :shift
AND UDF_WEEKDAY(CURRENT_DATE)+1 = TH.DIA
AND TH.SAIDA < CURRENT_TIME
AND T.NOTURNO = 'S')",
                                                  {{"shift", roll.shift}});
  return ended_night_shift->IsEmpty() ? roll.date : roll.date.AddDays(1);
}

void RollRecord::Insert(const StoredRoll& roll) const {
  statements_.Execute(R"(
INSERT INTO {TECELB} (NUMERO, CODIGO, ORDEM, DT_LAN, QTDE, NF_RET, DEPOSITO, MAQUINA, FUNCIONARIO, COR, TURNO, NF_COB, QTDE_R, LOTE, LOCAL, PEDIDO)
VALUES (:order, :fabric, :number, :date, :quantity, :return_note, :deposit, :machine, :employee, :colour, :shift, :charge_note, :pieces, :lot, :place, :sales_order))",
                      {{"order", roll.order},
                       {"fabric", roll.code},
                       {"number", roll.number},
                       {"date", WriteOffDate(roll)},
                       {"quantity", roll.quantity},
                       {"return_note", roll.return_note},
                       {"deposit", roll.deposit},
                       {"machine", roll.machine},
                       {"employee", roll.employee},
                       {"colour", roll.colour},
                       {"shift", roll.shift},
                       {"charge_note", roll.charge_note},
                       {"pieces", roll.pieces},
                       {"lot", roll.lot},
                       {"place", roll.place},
                       {"sales_order", roll.sales_order}});
}

}  // namespace weaving
