#include "host/database.h"

namespace host {

void Database::ExecTogether(const std::vector<std::string>& statements) {
  for (const std::string& statement : statements) {
    const auto query = NewQuery();
    query->SQL.Add(statement);
    query->ExecSQL();
  }
}

}  // namespace host
