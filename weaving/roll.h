// A roll of woven fabric: as it is being written off, and as it is stored.
#pragma once

#include <string>

#include "host/date.h"

namespace weaving {

/// A roll that is being written off: what the person typed, and what its item says.
struct NewRoll {
  std::string order;
  std::string fabric;
  std::string colour;
  double kilograms = 0;
  std::string client;  // the knitting mill
  std::string machine;
  std::string employee;
  std::string deposit;  // where the fabric goes
  std::string place;    // in the deposits, for every movement of this roll
  host::Date date;
  std::string unit;        // of the order's item, in capitals
  double unit_weight = 0;  // kilograms per piece or metre
  std::string sales_order;
  std::string return_note;
  std::string lot_scheme;
  bool bar_code_ticked = false;
  std::string bar_code;
};

/// A roll as an order's list of rolls shows it.
struct StoredRoll {
  std::string order;
  int number = 0;  // within the order
  std::string code;
  std::string colour;
  host::Date date;  // as typed; a night shift may move it
  double quantity = 0;
  double pieces = 0;
  std::string return_note;
  std::string charge_note;
  std::string deposit;
  std::string machine;
  std::string employee;
  std::string shift;
  std::string lot;
  std::string place;
  std::string sales_order;
};

}  // namespace weaving
