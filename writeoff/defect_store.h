// The stored defects of a fabric in an order, or of a lot.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/host.h"
#include "weaving/statement.h"

namespace writeoff {

/// Kinds of entry.
inline constexpr const char* kDefectOfRoll = "T";
inline constexpr const char* kDefectOfLot = "D";

/// Whose defects are registered together: those of all rolls of a fabric in an order, or of one lot.
struct DefectScope {
  std::string order;
  std::string fabric;
  std::string kind;
  std::string lot;     // of kDefectOfLot
  std::string colour;  // of kDefectOfLot
};

struct Defect {
  std::string code;
  double quantity = 0;
  std::string employee;
  host::Date date;
  std::string quality;
  std::string shift;
  int roll = 0;  // number within the order
};

/// All operations throw DatabaseError. The caller holds the order where it matters that nobody writes meanwhile.
class DefectStore {
 public:
  explicit DefectStore(host::Host& host);

  /// Every column of the scope's rows, oldest first.
  std::unique_ptr<host::TTIQuery> Load(const DefectScope& scope);
  /// What tells the rows of a Load apart from those of a later one; every save changes it. Goes through the result and
  /// leaves it on its first row.
  static std::string Version(host::TTIQuery& rows);
  /// True when the order has that roll of the fabric.
  bool HasRoll(const DefectScope& scope, int roll);
  /// Replaces all rows of the scope and makes that durable: when it returns, they are safe. What it wrote before it
  /// threw is the caller's to undo.
  void Save(const DefectScope& scope, const std::vector<Defect>& defects);

 private:
  weaving::Sql RowsOf(const DefectScope& scope) const;
  weaving::Sql Insertion(const DefectScope& scope, const Defect& defect) const;

  host::Host& host_;
  weaving::Statements statements_;
};

}  // namespace writeoff
