// Which columns of a table help a person to choose a row of it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/database.h"
#include "app/lookup_offer.h"

namespace app::services {

enum class StoredKind { kText, kNumber, kDate };

/// A column as its table stores it.
struct StoredColumn {
  std::string name;
  StoredKind kind;
  int width;  // characters, of text
};

struct OfferedColumn {
  OfferColumn shown;
  std::string expression = {};  // what stands for it in a statement on the table; the column itself when empty
  StoredKind kind = StoredKind::kText;
};

struct OfferedTable {
  std::vector<OfferedColumn> columns;         // the key, what the record is called, and more
  bool newest_first = false;                  // numbered as time goes by: the highest key comes first
  std::vector<StoredColumn> stored = {};      // all columns of the table, those of unlimited text excepted
  std::vector<std::string> primary_key = {};  // names, in the order of the key; empty when the table has none
};

/// What is offered of `table` (logical name) in a lookup by `key`: of a register what its list shows, of a table that
/// nobody described its first columns. Never a column of unlimited text. Throws host::DatabaseError.
OfferedTable OfferedOf(firebird::Database& database, std::string_view table, std::string_view key);

}  // namespace app::services
