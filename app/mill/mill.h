// A mill's database from nothing: empty for a new installation, or filled for a demonstration.
#pragma once

#include <memory>
#include <string_view>

#include "app/firebird/database.h"

namespace app::mill {

/// Brings the structure of an open database up to date. Throws host::DatabaseError that names the migration.
void MigrateToCurrent(firebird::Database& database);

/// Creates the database file with the structure, the installation parameters and the administrator "ADMIN" under that
/// password, and hands it back open. Throws host::InputError for an empty password, host::DatabaseError when the file
/// exists already (it is left as it is) or cannot be made; a file begun is removed then.
std::unique_ptr<firebird::Database> InitDatabase(const firebird::ConnectOptions& options,
                                                 std::string_view admin_password);

/// As InitDatabase, filled with the demonstration mill: its registers, compositions, prices and yarn in stock. Throws
/// host::InputError with the first error when a demonstration file does not fit.
std::unique_ptr<firebird::Database> CreateDemo(const firebird::ConnectOptions& options,
                                               std::string_view admin_password);

/// Brings the demonstration files into a database whose tables they concern are empty.
void ImportDemo(firebird::Database& database);

}  // namespace app::mill
