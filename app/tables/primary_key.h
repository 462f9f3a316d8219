// By which columns the database tells the rows of a table apart.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/database.h"

namespace app::tables {

/// The columns of a table's primary key in its order, by the table's physical name; empty for a table without one.
/// Throws host::DatabaseError.
std::vector<std::string> PrimaryKeyOf(firebird::Database& database, std::string_view table);

/// Those of all tables, read in one statement when the first is asked for and kept.
class PrimaryKeys {
 public:
  explicit PrimaryKeys(firebird::Database& database) : database_(database) {}

  /// As PrimaryKeyOf. Lives as long as this object.
  const std::vector<std::string>& Of(std::string_view table);

 private:
  firebird::Database& database_;
  std::map<std::string, std::vector<std::string>, std::less<>> keys_;
};

}  // namespace app::tables
