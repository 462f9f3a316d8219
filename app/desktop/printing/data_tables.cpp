#include "app/desktop/printing/data_tables.h"

#include <algorithm>
#include <string>

#include "host/text.h"

namespace app::desktop {
namespace {

constexpr int kWidest = 60;  // characters

Table::Cell CellOf(const host::Value& value) {
  if (value.IsNull()) return {};
  if (value.IsNumber()) return value.AsFloat();
  if (value.IsDate()) return value.AsDate();
  return value.AsText();
}

// Where its values stand is where the eye looks for their heading.
Table::Column ColumnOf(const printing::DataTable& data, std::size_t at) {
  Table::Column column{data.columns[at].caption, host::Align::kLeft, 0, data.columns[at].format};
  std::size_t longest = host::Length(column.caption);
  for (const auto& row : data.rows) {
    if (at >= row.size()) continue;
    longest = std::max(longest, host::Length(row[at].AsText()));
    if (row[at].IsNumber()) column.align = host::Align::kRight;
  }
  column.width = std::min(kWidest, static_cast<int>(longest) + 2);
  return column;
}

}  // namespace

std::vector<Table> DataTables(const printing::Printout& printout) {
  std::vector<Table> tables;
  for (const printing::DataTable& data : printout.tables) {
    Table& table = tables.emplace_back();
    table.title = data.title.empty() ? printout.report : data.title;
    for (std::size_t at = 0; at < data.columns.size(); ++at) table.columns.push_back(ColumnOf(data, at));
    for (const auto& values : data.rows) {
      auto& row = table.rows.emplace_back();
      for (const host::Value& value : values) row.push_back(CellOf(value));
      row.resize(table.columns.size());
    }
  }
  return tables;
}

}  // namespace app::desktop
