// A confirmed roll as it is written: the order's item, the roll's row, the log.
#pragma once

#include "host/host.h"
#include "weaving/roll.h"
#include "weaving/statement.h"

namespace weaving {

class RollRecord {
 public:
  explicit RollRecord(host::Host& host);

  /// Raises the item, inserts the roll, logs it and makes the whole roll durable: when it returns, the roll is safe.
  /// Throws at what failed; what was written before is the caller's to undo.
  void Write(const StoredRoll& roll);
  /// Logs that the roll could not be written.
  void LogFailure(const StoredRoll& roll);

 private:
  host::Date WriteOffDate(const StoredRoll& roll) const;
  void Insert(const StoredRoll& roll) const;

  host::Host& host_;
  Statements statements_;
};

}  // namespace weaving
