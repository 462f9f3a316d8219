// People who work at a Firebird server are users of that server too.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/firebird/database.h"

namespace app::admin {

/// The database is a server's: that server keeps the passwords.
bool ServerKeepsPasswords(const firebird::Database& database);

/// Why a server does not take this password, as one sentence; nothing when it does. What a client makes of other
/// characters depends on the language of its computer: the person could sign in at some stations only.
std::optional<std::string> ServerPasswordObjection(std::string_view password);

// Nothing may be pending before: a refusal undoes it. Each of these makes what it did durable at once. They hand back
// what the server refused, as one sentence that tells what to ask its administrator for; nothing when it is done.

/// Makes the server's user, or gives him another password; an empty password leaves the server's users alone. Then lets
/// him into this database.
std::optional<std::string> AdmitOnServer(firebird::Database& database, const std::string& code,
                                         std::string_view password);
/// Takes the way into this database away; the server's user stays, other databases may know him.
std::optional<std::string> ShutOutOnServer(firebird::Database& database, const std::string& code);
/// Another password for whoever is connected.
std::optional<std::string> ChangeOwnServerPassword(firebird::Database& database, std::string_view password);

}  // namespace app::admin
