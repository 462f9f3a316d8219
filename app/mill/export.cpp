#include "app/mill/export.h"

#include <algorithm>
#include <vector>

#include "app/mill/csv.h"
#include "app/tables/table_shape.h"
#include "host/decimal.h"

namespace app::mill {
namespace {

std::string Joined(const std::vector<std::string>& names) {
  std::string list;
  for (const auto& name : names) list += (list.empty() ? "" : ", ") + name;
  return list;
}

std::string CellOf(const host::Value& value) {
  if (!value.IsNumber() || value.IsInteger()) return value.AsText();
  std::string text = host::PointText(value.AsFloat());
  std::replace(text.begin(), text.end(), '.', ',');
  return text;
}

}  // namespace

ExportedTable Export(firebird::Database& database, std::string_view table) {
  const tables::TableShape shape = tables::ReadTableShape(database, table);
  std::vector<std::string> columns;
  for (const tables::Column& column : shape.columns) {
    if (!column.filled_by_database) columns.push_back(column.name);
  }
  std::string sql = "SELECT " + Joined(columns) + " FROM {" + shape.table + "}";
  if (!shape.key_columns.empty()) sql += " ORDER BY " + Joined(shape.key_columns);
  const auto query = database.Query(sql, {});
  std::vector<std::vector<std::string>> rows;
  for (; !query->Eof(); query->Next()) {
    auto& row = rows.emplace_back();
    for (const auto& column : columns) row.push_back(CellOf(query->FieldByName(column)));
  }
  return {WriteCsv(columns, rows), rows.size()};
}

}  // namespace app::mill
