// Brings a database's structure up to date, one numbered migration after the other.
#pragma once

#include <string>
#include <vector>

#include "app/firebird/database.h"

namespace app::firebird {

struct Migration {
  std::string name;  // "0001_orders.sql"; the number before "_" orders them
  std::string sql;   // statements ended by ";", or by another terminator set with SET TERM; "--" comments; table names
                     // of the company in braces
};

/// Highest migration number recorded in the database; 0 for an empty one.
int SchemaVersion(Database& database);

/// Applies those migrations that the database does not record yet, in order, each whole or not at all, and records
/// each; afterwards the station role may use what is there. Throws host::DatabaseError that names the migration when
/// one fails (the database is as before that one) and when the database records a higher number than the program has.
void Migrate(Database& database, const std::vector<Migration>& migrations);

}  // namespace app::firebird
