#include "app/tables/table_shape.h"

#include <algorithm>

#include "app/tables/primary_key.h"
#include "host/text.h"

namespace app::tables {
namespace {

constexpr std::string_view kColumnsSql = R"(SELECT TRIM(RF.RDB$FIELD_NAME) AS NOME, F.RDB$FIELD_TYPE AS TIPO,
  COALESCE(F.RDB$CHARACTER_LENGTH, 0) AS LARGURA,
  COALESCE(RF.RDB$NULL_FLAG, F.RDB$NULL_FLAG, 0) AS OBRIGATORIO,
  IIF(F.RDB$COMPUTED_BLR IS NULL AND RF.RDB$IDENTITY_TYPE IS NULL, 0, 1) AS DO_BANCO,
  CAST(COALESCE(RF.RDB$DEFAULT_SOURCE, F.RDB$DEFAULT_SOURCE) AS VARCHAR(200)) AS PADRAO
FROM RDB$RELATION_FIELDS RF
INNER JOIN RDB$FIELDS F ON F.RDB$FIELD_NAME = RF.RDB$FIELD_SOURCE
WHERE RF.RDB$RELATION_NAME = ?
ORDER BY RF.RDB$FIELD_POSITION)";

// The numbers are the engine's own codes of column types.
ColumnKind KindOf(std::int64_t type) {
  switch (type) {
    case 7:
    case 8:
    case 16:
      return ColumnKind::kInteger;
    case 10:
    case 27:
      return ColumnKind::kNumber;
    case 12:
      return ColumnKind::kDate;
    case 13:
      return ColumnKind::kTime;
    case 35:
      return ColumnKind::kTimestamp;
    case 261:
      return ColumnKind::kMemo;
    default:
      return ColumnKind::kText;
  }
}

// "DEFAULT 'S'" gives S, "DEFAULT 0" gives 0; an expression such as CURRENT_TIMESTAMP is no constant.
std::optional<std::string> Constant(std::string_view source) {
  constexpr std::string_view word = "DEFAULT";
  std::string text = host::Trim(source);
  if (!host::SameName(std::string_view(text).substr(0, word.size()), word)) return std::nullopt;
  text = host::Trim(std::string_view(text).substr(word.size()));
  if (text.size() >= 2 && text.front() == '\'' && text.back() == '\'') return text.substr(1, text.size() - 2);
  if (!text.empty() && text.find_first_not_of("0123456789") == std::string::npos) return text;
  return std::nullopt;
}

}  // namespace

const Column* TableShape::Find(std::string_view name) const {
  const auto found = std::find_if(columns.begin(), columns.end(), [&](const Column& c) { return c.name == name; });
  return found == columns.end() ? nullptr : &*found;
}

TableShape ReadTableShape(firebird::Database& database, std::string_view table) {
  TableShape shape;
  shape.table = table;
  const std::string physical = database.PhysicalName(table);
  const auto columns = database.Query(kColumnsSql, {physical});
  for (; !columns->Eof(); columns->Next()) {
    Column column;
    column.name = columns->FieldByName("NOME").AsText();
    column.kind = KindOf(columns->FieldByName("TIPO").AsInteger());
    column.width = static_cast<int>(columns->FieldByName("LARGURA").AsInteger());
    column.required = columns->FieldByName("OBRIGATORIO").AsInteger() != 0;
    column.filled_by_database = columns->FieldByName("DO_BANCO").AsInteger() != 0;
    column.fills = Constant(columns->FieldByName("PADRAO").AsText());
    shape.columns.push_back(std::move(column));
  }
  shape.key_columns = PrimaryKeyOf(database, physical);
  const bool numbered = std::any_of(shape.key_columns.begin(), shape.key_columns.end(),
                                    [&](const std::string& name) { return shape.Find(name)->filled_by_database; });
  if (numbered) shape.key_columns.clear();
  return shape;
}

}  // namespace app::tables
