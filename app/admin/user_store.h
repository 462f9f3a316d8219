// The program's users and their rights, as stored.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "app/application.h"
#include "app/firebird/database.h"

namespace app::admin {

/// A letter on a screen class: "A" includes and alters, "E" deletes.
struct Right {
  std::string screen_class;
  std::string letter;
  auto operator<=>(const Right&) const = default;  // NOLINT(modernize-use-nullptr)
};

struct UserRecord {
  std::string code;
  std::string name;
  bool administrator = false;
  bool active = true;
  std::set<Right> rights;
  bool operator==(const UserRecord&) const = default;
};

/// CODIGO, NOME, ADMINISTRADOR, ATIVO of everybody, by name.
std::unique_ptr<host::TTIQuery> ListUsers(firebird::Database& database);

/// Nothing when there is no such code.
std::optional<UserRecord> ReadUser(firebird::Database& database, std::string_view code);

/// Another user has this name or code, in whichever case: at sign-in they could not be told apart.
bool NameTaken(firebird::Database& database, std::string_view name, std::string_view own_code);
/// An active administrator other than this user exists.
bool HasOtherAdministrator(firebird::Database& database, std::string_view code);
/// The log tells of something the user did.
bool HasDoneSomething(firebird::Database& database, const UserRecord& user);

/// Neither makes anything durable. `before` is what is stored, nothing for a new user.
void StoreUser(firebird::Database& database, const std::optional<UserRecord>& before, const UserRecord& user);
void DeleteUser(firebird::Database& database, std::string_view code);

/// A screen on which rights can be given.
struct RightsScreen {
  std::string class_name;
  std::string caption;
};

/// The screens of the module and the host's registers; the administration's own are the administrators' anyway.
std::vector<RightsScreen> ScreensWithRights(Application& application);

}  // namespace app::admin
