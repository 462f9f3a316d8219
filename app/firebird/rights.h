// What the users of a server may do in the database.
#pragma once

#include "app/firebird/database.h"

namespace app::firebird {

/// The database's role that may work with every table and function of the program. Whoever runs the server gives it to
/// its users; every connection asks for it, and the embedded engine needs none.
inline constexpr const char* kStationRole = "TECELAGEM";

/// Makes the role where it is missing and gives it what it lacks of the tables and functions that belong to the
/// connection's user; nothing is written when it lacks nothing. Throws host::DatabaseError when that fails; nothing is
/// changed then.
void GrantStationRights(Database& database);

}  // namespace app::firebird
