// Numbers that are never given twice, whatever other stations do.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "app/firebird/database.h"

namespace app::services {

/// Counters are rows of TEC_CONTADOR. A counter that does not exist yet starts after the highest number that the
/// column holds; texts that are no plain number are left out.
class Numbering {
 public:
  explicit Numbering(firebird::Database& database) : database_(database) {}

  /// The next free number of a column as text, zero-padded to `width`; numbers that a row holds already (typed by hand)
  /// are passed over. `table` is a physical name. The counter moves in a transaction of its own, at once and for good:
  /// a number that was shown must not come again even when the action that asked for it is undone. Throws
  /// host::InputError when no number of that width is left.
  std::string Next(const std::string& table, const std::string& column, int width);

  /// The next roll sequence of an order, from 1. Part of the running action: it is undone with its roll.
  std::string NextRoll(const std::string& order);

  struct Counter {
    std::string table;  // physical
    std::string column;
    std::string key;  // the order, for roll sequences; empty else
  };

 private:
  /// Moves the counter on; nothing when it does not exist yet. "Alone" is in a transaction of its own.
  std::optional<std::int64_t> AdvanceAlone(const Counter& counter);
  std::optional<std::int64_t> AdvanceWithAction(const Counter& counter);
  void StartAlone(const Counter& counter, std::int64_t value);
  void StartWithAction(const Counter& counter, std::int64_t value);
  /// Never moves it back.
  void RaiseAlone(const Counter& counter, std::int64_t value);
  std::int64_t LastUsed(const Counter& counter, int width, std::int64_t largest);
  std::int64_t FirstFreeAfter(const Counter& counter, int width, std::int64_t number);
  bool InUse(const Counter& counter, const std::string& number);

  firebird::Database& database_;
};

}  // namespace app::services
