#include "app/admin/server_people.h"

#include <algorithm>

#include "app/firebird/attachment.h"
#include "app/firebird/rights.h"
#include "app/services/key_condition.h"
#include "host/errors.h"

namespace app::admin {
namespace {

std::string Name(const std::string& code) {
  std::string quoted = "\"";
  for (const char letter : code) quoted += letter == '"' ? std::string("\"\"") : std::string(1, letter);
  return quoted + "\"";
}

// The engine carries these out when the transaction ends. Its refusal is not passed on: the statement holds a password.
bool Carried(firebird::Database& database, const std::string& statement) {
  try {
    database.BeginAction();
    try {
      database.Execute(statement, {});
      database.MakeDurable();
    } catch (...) {
      database.EndAction(firebird::Database::Outcome::kFailed);
      throw;
    }
    database.EndAction(firebird::Database::Outcome::kOk);
    return true;
  } catch (const host::DatabaseError&) {
    return false;
  }
}

}  // namespace

bool ServerKeepsPasswords(const firebird::Database& database) {
  return firebird::IsServerPath(database.Options().database);
}

std::optional<std::string> ServerPasswordObjection(std::string_view password) {
  const auto plain = [](char letter) { return letter >= ' ' && letter <= '~'; };
  if (std::all_of(password.begin(), password.end(), plain)) return std::nullopt;
  return "No servidor a senha tem somente letras sem acento, algarismos e sinais.";
}

std::optional<std::string> AdmitOnServer(firebird::Database& database, const std::string& code,
                                         std::string_view password) {
  const std::string name = Name(code);
  if (!password.empty() &&
      !Carried(database, "CREATE OR ALTER USER " + name + " PASSWORD " + services::QuoteText(password))) {
    return "O servidor não deixou criar o usuário " + name +
           " nem mudar a sua senha: peça isso ao administrador do servidor.";
  }
  if (!Carried(database, std::string("GRANT ") + firebird::kStationRole + " TO USER " + name)) {
    return "O servidor não deixou dar o papel " + std::string(firebird::kStationRole) + " ao usuário " + name +
           ": peça isso a quem criou o banco de dados.";
  }
  return std::nullopt;
}

std::optional<std::string> ShutOutOnServer(firebird::Database& database, const std::string& code) {
  if (Carried(database, std::string("REVOKE ") + firebird::kStationRole + " FROM USER " + Name(code))) {
    return std::nullopt;
  }
  return "O servidor não deixou tirar o papel " + std::string(firebird::kStationRole) + " do usuário " + Name(code) +
         ": peça isso a quem criou o banco de dados.";
}

std::optional<std::string> ChangeOwnServerPassword(firebird::Database& database, std::string_view password) {
  if (Carried(database, "ALTER CURRENT USER PASSWORD " + services::QuoteText(password))) return std::nullopt;
  return "O servidor não deixou mudar a senha: peça uma nova ao administrador do servidor.";
}

}  // namespace app::admin
