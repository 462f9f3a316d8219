// A roll as it is written: its yarn out of stock, its fabric in, and the way back when a step fails.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "host/host.h"
#include "weaving/roll.h"
#include "weaving/roll_needs.h"

namespace weaving {

/// A step of a roll failed; it was undone to the end and logged. what() is what to tell the person.
class RollFailed : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What the roll became.
struct WrittenRoll {
  int number = 0;   // within its order
  std::string lot;  // under which its fabric is in stock
};

/// A box makes what is pending durable, because the program waits for the person. So a failure is undone to the end
/// before anybody is told: half a roll must never become durable.
class RollWriting {
 public:
  /// The number that the order's next roll gets. The caller holds the order.
  static int NextNumber(host::Host& host, const std::string& order);

  /// Writes roll `number` of its order.
  RollWriting(host::Host& host, NewRoll roll, int number);

  /// Moves out what was taken of the lots. Throws RollFailed.
  void TakeYarnOut(const std::vector<YarnLot>& lots);
  /// Moves the fabric in, at what the lots' yarn cost. Throws RollFailed; the roll's yarn has been brought back then.
  WrittenRoll EnterFabric(const std::vector<YarnLot>& lots);
  /// Brings back the roll's yarn. Reservations stay reduced. Throws DatabaseError.
  void BringYarnBack();

 private:
  std::string Lot() const;
  [[noreturn]] void Fail(const char* step, const std::string& log, const std::exception& error);

  host::Host& host_;
  host::Database& database_;
  NewRoll roll_;
  int number_;
};

}  // namespace weaving
