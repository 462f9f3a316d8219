// Who uses a record: what refers to it must not be left pointing at nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/database.h"
#include "app/tables/import_rules.h"

namespace app::registers {

/// Every column that refers to this register's key: those that an import keeps to, and those of the documents that
/// only the screens write. Rows that belong to the record itself (its detail) are left out.
std::vector<tables::Reference> ReferencesTo(std::string_view table);

/// Where the record is used, with one example, to follow "está": "na ordem de tecelagem 000012". Nothing when it is
/// used nowhere. A stock row counts while it holds or reserves something. Throws host::DatabaseError.
std::optional<std::string> WhereUsed(firebird::Database& database, std::string_view table, std::string_view key);

/// How a row of that table is told, for this column: "na ordem de tecelagem", and the column with the example's number.
struct Place {
  std::string_view table;
  std::string_view column;  // empty for any
  std::string_view words;
  std::string_view example;
};
/// Null for a table that nobody described.
const Place* PlaceOf(const tables::Reference& reference);

/// Stock rows of the record that hold and reserve nothing go with it.
void DeleteEmptyStock(firebird::Database& database, std::string_view table, std::string_view key);

}  // namespace app::registers
