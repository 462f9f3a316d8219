// A confirmed roll as it is written: the order's item, the roll's row, the log.
#pragma once

#include <string>

#include "host/host.h"

namespace writeoff {

inline constexpr const char* kLogSubject = "BAIXAS DA TECELAGEM";

struct RollRow {
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

class RollRecord {
 public:
  explicit RollRecord(host::Host& host);

  /// Raises the item, inserts the roll, logs it and makes the whole roll durable: when it returns, the roll is safe.
  /// Throws at what failed; what was written before is the caller's to undo.
  void Write(const RollRow& roll);
  /// Logs that the roll could not be written.
  void LogFailure(const RollRow& roll);

 private:
  std::string Item(const RollRow& roll) const;
  bool ClosesItem(const RollRow& roll);
  void RaiseItem(const RollRow& roll);
  host::Date WriteOffDate(const RollRow& roll);
  void Insert(const RollRow& roll);
  std::string Described(const RollRow& roll) const;

  host::Funcoes& funcoes_;
  host::Database& database_;
};

}  // namespace writeoff
