// Verification of the books: do stock, orders, rolls and consumed yarn agree with each other?
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "app/firebird/database.h"

namespace app::books {

/// One line in Portuguese for everything that is off, naming the row; empty when the books balance. Only reads. What
/// the mill's own work leaves behind is not off: a roll may take the last crumb (below 0.01) of a reservation with it,
/// so that its yarn record states that much more than left the stock. May run while the mill works: what only looked
/// off because a station was writing at that moment is left out (a row that is off and being written is told by the
/// next check). Throws host::DatabaseError.
std::vector<std::string> CheckBooks(firebird::Database& database);

/// The same for the command line: writes the lines, or one that says that the books balance, and returns the exit code
/// (1 when anything is off).
int Check(firebird::Database& database, std::ostream& out);

}  // namespace app::books
