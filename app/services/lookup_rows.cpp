#include "app/services/lookup_rows.h"

#include "host/text.h"

namespace app::services {
namespace {

std::string Statement(const host::TPesquisa& lookup) {
  if (!lookup.Statement().empty()) return lookup.Statement();
  std::string sql = "SELECT * FROM {" + lookup.Table() + "}";
  if (!host::Trim(lookup.FilterText()).empty()) sql += " WHERE (" + lookup.FilterText() + ")";
  return sql + " ORDER BY " + lookup.KeyColumn();
}

}  // namespace

std::vector<host::LookupRow> OfferedRows(firebird::Database& database, const host::TPesquisa& lookup) {
  const auto query = database.NewQuery();
  query->SQL.Add(database.ReplaceNames(Statement(lookup)));
  query->Open();
  std::vector<host::LookupRow> rows;
  rows.reserve(query->RecordCount());
  for (; !query->Eof(); query->Next()) {
    host::LookupRow& row = rows.emplace_back();
    for (std::size_t i = 0; i < query->FieldCount(); ++i) {
      const std::string name = query->FieldName(i);
      row[host::UpperAscii(name)] = query->FieldByName(name);
    }
  }
  return rows;
}

}  // namespace app::services
