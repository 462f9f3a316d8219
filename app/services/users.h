// Who works at this station and what they may do.
#pragma once

#include <string>
#include <string_view>

#include "app/firebird/database.h"

namespace app::services {

struct User {
  std::string code;
  std::string name;
};

/// The user of that code. Throws host::InputError, one sentence, when there is none or the user is not active.
User FindUser(firebird::Database& database, std::string_view code);

/// An administrator who is active.
bool IsAdministrator(firebird::Database& database, std::string_view user);

/// True when the user is active and an administrator or was granted that operation letter on that screen class. Read
/// from the database at each call: a right taken away counts at once.
bool HasRight(firebird::Database& database, std::string_view user, std::string_view screen_class,
              std::string_view operation);

}  // namespace app::services
