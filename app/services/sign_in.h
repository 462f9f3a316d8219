// Who may come in, for a database opened without a server: name, password, patience.
#pragma once

#include <string>
#include <string_view>

#include "app/firebird/database.h"
#include "app/services/users.h"
#include "host/date.h"

namespace app::services {

/// The user who signs in with code (or name, without regard to case) and password. Throws host::InputError, one
/// sentence: wrong name or password (it does not say which of the two), inactive, or still too many wrong tries. Wrong
/// tries are counted per user in the database, durable at once: from the fifth on the next one is refused for a while
/// (30 s, then twice as long each time, 15 minutes at most), whichever station it comes from; the right password
/// afterwards clears the count. Each refusal and each entry is written to the log.
User SignIn(firebird::Database& database, std::string_view name, std::string_view password, host::DateTime now);

/// The password once more, of a user who works already: refused and counted as by SignIn, so that an abandoned station
/// is no place for guessing either. Only a refusal is written to the log.
void ConfirmPassword(firebird::Database& database, const User& user, std::string_view password, host::DateTime now);

}  // namespace app::services
