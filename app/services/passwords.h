// Passwords of the program's own users, for databases opened without a server.
#pragma once

#include <string>
#include <string_view>

#include "app/firebird/database.h"

namespace app::services {

/// True when `hash` was made of this password. An empty hash matches none and takes as long, so that the time tells
/// nothing about who has a password.
bool PasswordMatches(const std::string& hash, std::string_view password);

/// Stores the user's password as an argon2 hash and forgets the wrong tries; asks for it to be made durable. Throws
/// host::InputError for an empty password and for a user who does not exist.
void SetPassword(firebird::Database& database, std::string_view user, std::string_view password);

/// True when the user exists, is active and this is the password. A user without password is refused.
bool CheckPassword(firebird::Database& database, std::string_view user, std::string_view password);

}  // namespace app::services
