// The road of one roll as a person walks it, for the tests and benchmarks that need an order to work on. All of it goes
// through the screens.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/mill.h"

namespace test {

/// One lot to reserve for an order.
struct Reservation {
  std::string yarn;
  std::string colour;
  std::string deposit;
  std::string lot;
  double quantity = 0;
};

struct OrderPlan {
  std::string mill;
  std::string deposit;
  std::string fabric;
  std::string colour;
  double quantity = 0;
  std::vector<Reservation> reservations;
};

/// An order of the small mill: fabric F1 in colour 01 for M00001, its yarn reserved in three lots (Y1 60 %, five sixths
/// of it from L1 and the rest from L2; Y2 40 %). At most 200 kg, for which the small mill holds yarn.
OrderPlan SmallMillOrder(double quantity);

/// Types a new order and saves it, loads it again, reserves its yarn and saves it once more. Its number. Throws
/// std::runtime_error with the boxes shown when an act was refused.
std::string SaveOrder(Mill& mill, const OrderPlan& plan);

/// Types a new order without its reservations and saves it. Its number.
std::string SaveBareOrder(Mill& mill, const OrderPlan& plan);

/// Yarn of colour CR comes into deposit D1 of the small mill at 20.00, with its ledger row; durable at once.
void ReceiveYarn(Mill& mill, std::string_view yarn, std::string_view lot, double quantity);

/// Opens an order on the write-off screen, ready for its rolls.
host::Screen& OpenWriteOff(Mill& mill, std::string_view order, std::string_view deposit);

/// Types a roll of that net weight (without tare) and leaves it to be confirmed.
void TypeRoll(Mill& mill, host::Screen& screen, double quantity);

/// Confirms one roll of that net weight on the screen. The boxes it showed are the caller's to take.
host::ActResult ConfirmRoll(Mill& mill, host::Screen& screen, double quantity);

}  // namespace test
