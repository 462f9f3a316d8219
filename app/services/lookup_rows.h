// What a lookup dialog offers.
#pragma once

#include <vector>

#include "app/firebird/database.h"
#include "host/kit/lookup.h"

namespace app::services {

/// The rows of the lookup's statement, or of its table under its filter in the order of its key column. Throws
/// host::DatabaseError.
std::vector<host::LookupRow> OfferedRows(firebird::Database& database, const host::TPesquisa& lookup);

}  // namespace app::services
