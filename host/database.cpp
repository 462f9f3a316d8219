#include "host/database.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace host {

RowSet TTIQuery::TakeRows() {
  RowSet taken;
  for (std::size_t column = 0; column < FieldCount(); ++column) taken.names.push_back(FieldName(column));
  taken.rows.reserve(RecordCount());
  for (First(); !Eof(); Next()) {
    std::vector<Value> row;
    row.reserve(taken.names.size());
    for (std::size_t column = 0; column < taken.names.size(); ++column) row.push_back(Field(column));
    taken.rows.push_back(std::move(row));
  }
  return taken;
}

void Database::LockRows(const std::vector<RecordKey>& records) {
  std::vector<RecordKey> sorted = records;
  std::sort(sorted.begin(), sorted.end(), [](const RecordKey& left, const RecordKey& right) {
    return std::tie(left.table, left.key, left.value) < std::tie(right.table, right.key, right.value);
  });
  for (const RecordKey& record : sorted) LockRow(record.table, record.key, record.value);
}

void Database::ExecTogether(const std::vector<std::string>& statements) {
  for (const std::string& statement : statements) {
    const auto query = NewQuery();
    query->SQL.Add(statement);
    query->ExecSQL();
  }
}

}  // namespace host
