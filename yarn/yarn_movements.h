// Yarn out of stock for a roll, and back when the roll fails.
#pragma once

#include <memory>
#include <string>

#include "host/host.h"
#include "yarn/consumption_queries.h"
#include "yarn/yarn_write_off.h"

namespace yarn {

/// A movement of the roll's document, filled but for material, quantity and price.
std::unique_ptr<host::TEstoque> NewRollMovement(host::Host& host, const Roll& roll, const std::string& place);

class YarnMovements {
 public:
  /// Movements of roll `number` of the fabric.
  YarnMovements(host::Host& host, const Roll& roll, std::string fabric, std::string place, int number);

  /// Takes the quantity out of the lot, records it and moves it within the order's reservation from reserved to
  /// consumed. Throws at the statement that failed; what it wrote before is the caller's to undo.
  void TakeOut(const LotKey& lot, double quantity, double price);
  /// Brings back all that is recorded for the roll and forgets the record. Reservations stay reduced.
  void BringBack();

 private:
  void Move(const LotKey& lot, double quantity, double price, bool out);
  double Reserved(const LotKey& lot);
  void Record(const LotKey& lot, double quantity);
  void ReduceReservation(const LotKey& lot, double quantity);

  host::Host& host_;
  host::Funcoes& funcoes_;
  host::Database& database_;
  Roll roll_;
  std::string fabric_;
  std::string place_;
  int number_;
};

}  // namespace yarn
