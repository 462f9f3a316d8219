#include "weaving/roll_writing.h"

#include <string_view>
#include <utility>

#include "host/decimal.h"
#include "host/text.h"
#include "weaving/audit.h"
#include "weaving/fabric_entry.h"
#include "weaving/roll_lot.h"
#include "weaving/savepoints.h"
#include "weaving/statement.h"
#include "weaving/yarn_movements.h"

namespace weaving {
namespace {

YarnCost CostOf(const std::vector<YarnLot>& lots) {
  YarnCost cost;
  for (const YarnLot& lot : lots) {
    cost.total += lot.taken * lot.price;
    cost.weighted += lot.import_cost;
  }
  return cost;
}

}  // namespace

int RollWriting::NextNumber(host::Host& host, const std::string& order) {
  const auto last =
      Statements(host).Open("SELECT MAX(ORDEM) ORDEM FROM {TECELB} WHERE NUMERO = :order", {{"order", order}});
  return static_cast<int>(last->FieldByName("ORDEM").AsInteger()) + 1;
}

RollWriting::RollWriting(host::Host& host, NewRoll roll, int number)
    : host_(host), database_(host.GetTabela().IBDatabase()), roll_(std::move(roll)), number_(number) {}

void RollWriting::TakeYarnOut(const std::vector<YarnLot>& lots) {
  database_.SetSavepoint(kBeforeRoll);
  const YarnLot* at = nullptr;
  // Where the lot that is being written began; the lots before it are brought back by their record.
  std::string_view began = kBeforeRoll;
  try {
    YarnMovements yarn(host_, roll_, number_);
    for (const YarnLot& lot : lots) {
      if (!(lot.taken > 0)) continue;
      if (at != nullptr) {
        database_.SetSavepoint(kBeforeLot);
        began = kBeforeLot;
      }
      at = &lot;
      yarn.TakeOut(lot.lot, lot.taken, lot.price);
    }
    database_.CommitRetaining();
  } catch (const std::exception& error) {
    database_.RollbackTo(began);
    Fail("Erro na baixa dos fios",
         "ERRO NA SAIDA DOS FIOS DO LOTE NR.: " + roll_.order + " CODIGO: " + (at == nullptr ? "" : at->lot.code) +
             " QUANT: " + host::PointText(at == nullptr ? 0 : at->taken),
         error);
  }
}

WrittenRoll RollWriting::EnterFabric(const std::vector<YarnLot>& lots) {
  bool marked = false;
  try {
    database_.SetSavepoint(kBeforeFabric);
    marked = true;
    WrittenRoll written = {.number = number_, .lot = Lot()};
    FabricEntry(host_, roll_, number_).Enter(written.lot, CostOf(lots));
    database_.CommitRetaining();
    return written;
  } catch (const std::exception& error) {
    if (marked) database_.RollbackTo(kBeforeFabric);
    Fail("Erro na entrada da malha",
         "ERRO NA ENTRADA DA MALHA DO LOTE NR.: " + roll_.order + " CODIGO: " + roll_.fabric +
             " QUANT: " + host::PointText(QuantityInStock(roll_)),
         error);
  }
}

void RollWriting::BringYarnBack() { YarnMovements(host_, roll_, number_).BringBack(); }

std::string RollWriting::Lot() const {
  return RollLot(roll_.lot_scheme,
                 {roll_.order, number_, roll_.sales_order, roll_.return_note, roll_.bar_code_ticked, roll_.bar_code},
                 [this] { return host_.GetFuncoes().ProximaOrdemTecelB(roll_.order); });
}

void RollWriting::Fail(const char* step, const std::string& log, const std::exception& error) {
  const std::string text = error.what();
  host_.GetFuncoes().GeraLog(kRollSubject, host::Left(log + " " + text, kLogWidth), host::LogOperation::kOther,
                             roll_.order, nullptr);
  BringYarnBack();
  throw RollFailed(std::string(step) + "\n" + text);
}

}  // namespace weaving
