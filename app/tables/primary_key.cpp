#include "app/tables/primary_key.h"

namespace app::tables {
namespace {

std::string KeysSql(std::string_view condition) {
  return R"(SELECT TRIM(C.RDB$RELATION_NAME) AS TABELA, TRIM(S.RDB$FIELD_NAME) AS NOME
FROM RDB$RELATION_CONSTRAINTS C
INNER JOIN RDB$INDEX_SEGMENTS S ON S.RDB$INDEX_NAME = C.RDB$INDEX_NAME
WHERE C.RDB$CONSTRAINT_TYPE = 'PRIMARY KEY')" +
         std::string(condition) + R"(
ORDER BY C.RDB$RELATION_NAME, S.RDB$FIELD_POSITION)";
}

}  // namespace

std::vector<std::string> PrimaryKeyOf(firebird::Database& database, std::string_view table) {
  std::vector<std::string> columns;
  const auto rows = database.Query(KeysSql(" AND C.RDB$RELATION_NAME = ?"), {std::string(table)});
  for (; !rows->Eof(); rows->Next()) columns.push_back(rows->FieldByName("NOME").AsText());
  return columns;
}

const std::vector<std::string>& PrimaryKeys::Of(std::string_view table) {
  static const std::vector<std::string> none;
  if (keys_.empty()) {
    const auto rows = database_.Query(KeysSql(""), {});
    for (; !rows->Eof(); rows->Next()) {
      keys_[rows->FieldByName("TABELA").AsText()].push_back(rows->FieldByName("NOME").AsText());
    }
  }
  const auto found = keys_.find(table);
  return found == keys_.end() ? none : found->second;
}

}  // namespace app::tables
