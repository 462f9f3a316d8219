#include "app/firebird/rights.h"

#include <string>
#include <vector>

#include "host/errors.h"

namespace app::firebird {
namespace {

bool RoleExists(Database& database) {
  return !database.Query("SELECT RDB$ROLE_NAME FROM RDB$ROLES WHERE RDB$ROLE_NAME = ?", {kStationRole})->IsEmpty();
}

std::vector<std::string> Names(Database& database, const char* sql) {
  std::vector<std::string> names;
  for (const auto query = database.Query(sql, {kStationRole}); !query->Eof(); query->Next()) {
    names.push_back(query->FieldByName("NOME").AsText());
  }
  return names;
}

// Only the owner of a table can give rights on it; other programs may keep tables of their own in the database.
// 0 and 13 are the engine's kinds "table" and "role".
std::vector<std::string> TablesWithoutRights(Database& database) {
  return Names(database,
               "SELECT TRIM(T.RDB$RELATION_NAME) AS NOME FROM RDB$RELATIONS T "
               "WHERE COALESCE(T.RDB$SYSTEM_FLAG, 0) = 0 AND T.RDB$OWNER_NAME = CURRENT_USER "
               "AND NOT EXISTS (SELECT 1 FROM RDB$USER_PRIVILEGES P "
               "WHERE P.RDB$RELATION_NAME = T.RDB$RELATION_NAME AND P.RDB$OBJECT_TYPE = 0 "
               "AND P.RDB$USER = ? AND P.RDB$USER_TYPE = 13)");
}

// 15 is the engine's kind "function".
std::vector<std::string> FunctionsWithoutRights(Database& database) {
  return Names(database,
               "SELECT TRIM(F.RDB$FUNCTION_NAME) AS NOME FROM RDB$FUNCTIONS F "
               "WHERE COALESCE(F.RDB$SYSTEM_FLAG, 0) = 0 AND F.RDB$PACKAGE_NAME IS NULL "
               "AND F.RDB$OWNER_NAME = CURRENT_USER "
               "AND NOT EXISTS (SELECT 1 FROM RDB$USER_PRIVILEGES P "
               "WHERE P.RDB$RELATION_NAME = F.RDB$FUNCTION_NAME AND P.RDB$OBJECT_TYPE = 15 "
               "AND P.RDB$USER = ? AND P.RDB$USER_TYPE = 13)");
}

void Grant(Database& database, const char* right, const std::string& name) {
  std::string sql = "GRANT ";
  sql.append(right).append(" \"").append(name).append("\" TO ROLE ").append(kStationRole);
  database.Execute(sql, {});
}

void GrantMissing(Database& database) {
  const std::vector<std::string> tables = TablesWithoutRights(database);
  const std::vector<std::string> functions = FunctionsWithoutRights(database);
  if (tables.empty() && functions.empty()) return;
  if (!RoleExists(database)) database.Execute(std::string("CREATE ROLE ") + kStationRole, {});
  for (const std::string& table : tables) Grant(database, "ALL ON", table);
  for (const std::string& function : functions) Grant(database, "EXECUTE ON FUNCTION", function);
}

bool Complete(Database& database) {
  return TablesWithoutRights(database).empty() && FunctionsWithoutRights(database).empty();
}

}  // namespace

void GrantStationRights(Database& database) {
  database.BeginAction();
  try {
    GrantMissing(database);
    database.EndAction(Database::Outcome::kOk);
  } catch (const host::DatabaseError&) {
    database.EndAction(Database::Outcome::kFailed);
    if (!Complete(database)) throw;  // else another program was faster
  }
}

}  // namespace app::firebird
