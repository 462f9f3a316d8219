#include "app/admin/log_search.h"

#include "host/value.h"

namespace app::admin {
namespace {

// Names the next value of an indexed column until there is none. "Greater than the last" would walk over all rows that
// have the last one; the least text greater than it, blanks to the column's width and one sign more, leaps over them.
std::vector<std::string> Distinct(firebird::Database& database, const char* sql) {
  std::vector<std::string> values;
  for (std::string last;;) {
    const auto next = database.Query(sql, {last});
    if (next->IsEmpty() || next->FieldByName("VALOR").IsNull()) return values;
    last = next->FieldByName("VALOR").AsText();
    values.push_back(last);
  }
}

}  // namespace

std::unique_ptr<host::TTIQuery> FindLogRows(firebird::Database& database, const LogFilter& filter, int limit) {
  std::string conditions;
  std::vector<host::Value> values;
  const auto where = [&](const char* condition, const host::Value& value) {
    conditions.append(conditions.empty() ? "WHERE " : " AND ").append(condition);
    values.push_back(value);
  };
  if (!filter.from.IsZero()) where("DATA_HORA >= ?", filter.from.ToIso());
  if (!filter.to.IsZero()) where("DATA_HORA < ?", filter.to.AddDays(1).ToIso());
  if (!filter.user.empty()) where("USUARIO = ?", filter.user);
  if (!filter.subject.empty()) where("ASSUNTO = ?", filter.subject);
  if (filter.operation) where("OPERACAO = ?", static_cast<int>(*filter.operation));
  if (!filter.text.empty()) where("TEXTO COLLATE WIN_PTBR CONTAINING CAST(? AS VARCHAR(150))", filter.text);
  if (!filter.key.empty()) where("CHAVE STARTING WITH CAST(? AS VARCHAR(40))", filter.key);
  const std::string sql = "SELECT FIRST " + std::to_string(limit) +
                          " DATA_HORA, USUARIO, ASSUNTO, OPERACAO, TEXTO, CHAVE\nFROM TEC_LOG\n" + conditions +
                          "\nORDER BY DATA_HORA DESC, ID DESC";
  return database.Query(sql, values);
}

std::vector<std::string> LogSubjects(firebird::Database& database) {
  return Distinct(database,
                  "SELECT FIRST 1 ASSUNTO AS VALOR FROM TEC_LOG "
                  "WHERE ASSUNTO >= RPAD(CAST(? AS VARCHAR(40)), 40) || '!' ORDER BY ASSUNTO");
}

std::vector<std::string> LogUsers(firebird::Database& database) {
  return Distinct(database,
                  "SELECT FIRST 1 USUARIO AS VALOR FROM TEC_LOG "
                  "WHERE USUARIO >= RPAD(CAST(? AS VARCHAR(50)), 50) || '!' ORDER BY USUARIO");
}

}  // namespace app::admin
