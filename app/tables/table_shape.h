// What the database itself says of one of the company's tables.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/database.h"

namespace app::tables {

enum class ColumnKind { kText, kMemo, kInteger, kNumber, kDate, kTime, kTimestamp };

struct Column {
  std::string name;
  ColumnKind kind = ColumnKind::kText;
  int width = 0;                     // characters, of kText
  bool required = false;             // null is refused
  bool filled_by_database = false;   // computed or numbered by itself
  std::optional<std::string> fills;  // constant that stands where nothing is given
};

struct TableShape {
  std::string table;                     // logical name
  std::vector<Column> columns;           // in their order
  std::vector<std::string> key_columns;  // of the primary key; empty without one or when the database numbers it

  /// Null when the table has no such column.
  const Column* Find(std::string_view name) const;
};

/// The shape of a logical table of the company; without columns when there is no such table.
TableShape ReadTableShape(firebird::Database& database, std::string_view table);

}  // namespace app::tables
