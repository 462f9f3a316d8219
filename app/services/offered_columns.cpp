#include "app/services/offered_columns.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

#include "app/tables/descriptions.h"
#include "host/text.h"

namespace app::services {
namespace {

constexpr std::size_t kMostColumns = 6;  // of a table that nobody described
constexpr int kWidest = 40;
constexpr int kNumberWidth = 12;
constexpr std::string_view kNumberFormat = "0.######";

struct Described {
  std::string_view name;
  std::string_view caption;
  int width;
  std::string_view expression = {};
  std::string_view format = kNumberFormat;  // of a number
};

// Documents, lots and prices: what is no register.
struct Description {
  std::string_view table;
  std::vector<Described> columns;
  bool newest_first;
};

// The filter of a lookup names the table's columns bare, so a name in an expression must say whose it is.
const std::vector<Description>& Descriptions() {
  static const std::vector<Description> descriptions = {
      {"TECEL",
       {{"NUMERO", "Número", 8},
        {"NOME_MALHARIA", "Nome da malharia", 34,
         "(SELECT ENT.NOME FROM {ENTIDADE} ENT WHERE ENT.CODCLI = {TECEL}.MALHARIA)"},
        {"MALHARIA", "Malharia", 8},
        {"DT_EMISSAO", "Emissão", 11},
        {"PEDIDO", "Pedido", 12},
        {"FICHA", "Ficha", 12},
        {"SITUACAO", "Situação", 9, "IIF({TECEL}.SITUACAO = 'B', 'Bloqueada', 'Aberta')"}},
       true},
      {"MAT_ITEN",
       {{"LOTE", "Lote", 18},
        {"CODIGO", "Código", 15},
        {"COR", "Cor", 6},
        {"DEPOSITO", "Depósito", 8},
        {"QTDE", "Quantidade", 12, {}, "0.000"},
        {"PRECO_MED", "Preço médio", 12, {}, "0.00"},
        {"LOCAL", "Local", 15}},
       false},
      {"PEDIDO",
       {{"NUMERO", "Número", 12},
        {"NOME_CLIENTE", "Nome do cliente", 34,
         "(SELECT ENT.NOME FROM {ENTIDADE} ENT WHERE ENT.CODCLI = {PEDIDO}.CODCLI)"},
        {"CODCLI", "Cliente", 8},
        {"DT_EMISSAO", "Emissão", 11},
        {"ENTREGA", "Entrega", 11}},
       true},
      {"CADCORTI",
       {{"CODIGO", "Material", 12},
        {"DESC_MATERIAL", "Descrição do material", 28,
         "(SELECT MAT.DESCRICAO FROM {MATERIAL} MAT WHERE MAT.CODIGO = {CADCORTI}.CODIGO)"},
        {"CODCLI", "Fornecedor", 8},
        {"NOME_FORNECEDOR", "Nome do fornecedor", 28,
         "(SELECT ENT.NOME FROM {ENTIDADE} ENT WHERE ENT.CODCLI = {CADCORTI}.CODCLI)"},
        {"COR", "Cor", 6},
        {"CUSTO", "Custo", 10, {}, "0.00##"},
        {"OBS", "Observação", 30}},
       false},
  };
  return descriptions;
}

// What a record is called stands right behind its key. 261 is the engine's kind "text of any length".
constexpr std::string_view kStoredSql = R"(SELECT TRIM(RF.RDB$FIELD_NAME) AS NOME, F.RDB$FIELD_TYPE AS TIPO,
  COALESCE(F.RDB$CHARACTER_LENGTH, 0) AS LARGURA,
  (SELECT S.RDB$FIELD_POSITION FROM RDB$RELATION_CONSTRAINTS C
   INNER JOIN RDB$INDEX_SEGMENTS S ON S.RDB$INDEX_NAME = C.RDB$INDEX_NAME
   WHERE C.RDB$RELATION_NAME = RF.RDB$RELATION_NAME AND C.RDB$CONSTRAINT_TYPE = 'PRIMARY KEY'
     AND S.RDB$FIELD_NAME = RF.RDB$FIELD_NAME) AS NA_CHAVE
FROM RDB$RELATION_FIELDS RF
INNER JOIN RDB$FIELDS F ON F.RDB$FIELD_NAME = RF.RDB$FIELD_SOURCE
WHERE RF.RDB$RELATION_NAME = ? AND F.RDB$FIELD_TYPE <> 261
ORDER BY CASE RF.RDB$FIELD_NAME WHEN CAST(? AS VARCHAR(31)) THEN 0 WHEN 'DESCRICAO' THEN 1 WHEN 'NOME' THEN 1 ELSE 2 END,
  RF.RDB$FIELD_POSITION)";

StoredKind KindOf(std::int64_t engine_type) {
  switch (engine_type) {
    case 14:
    case 37:
      return StoredKind::kText;
    case 12:
    case 13:
    case 35:
      return StoredKind::kDate;
    default:
      return StoredKind::kNumber;
  }
}

/// What the database knows of a table's columns, in the order in which they help to choose a row.
struct Structure {
  std::vector<StoredColumn> columns;
  std::vector<std::string> primary_key;
};

Structure StructureOf(firebird::Database& database, std::string_view table, const std::string& key) {
  Structure structure;
  std::map<std::int64_t, std::string> primary;
  const auto rows = database.Query(kStoredSql, {database.PhysicalName(table), key});
  for (; !rows->Eof(); rows->Next()) {
    const std::string name = rows->FieldByName("NOME").AsText();
    structure.columns.push_back({name, KindOf(rows->FieldByName("TIPO").AsInteger()),
                                 static_cast<int>(rows->FieldByName("LARGURA").AsInteger())});
    const host::Value& place = rows->FieldByName("NA_CHAVE");
    if (!place.IsNull()) primary[place.AsInteger()] = name;
  }
  for (auto& [place, name] : primary) structure.primary_key.push_back(std::move(name));
  return structure;
}

OfferedColumn Column(const StoredColumn& stored) {
  OfferedColumn column;
  column.shown.name = stored.name;
  column.shown.caption = stored.name;
  column.shown.width = stored.kind == StoredKind::kText ? std::min(stored.width, kWidest) : kNumberWidth;
  column.kind = stored.kind;
  if (stored.kind == StoredKind::kNumber) {
    column.shown.align = host::Align::kRight;
    column.shown.format = kNumberFormat;
  }
  return column;
}

// Adds the column as the table stores it, under this caption; nothing when the table has no such column.
OfferedColumn* AddStored(std::vector<OfferedColumn>& columns, const std::vector<StoredColumn>& stored,
                         std::string_view name, std::string_view caption, int width) {
  const auto found =
      std::find_if(stored.begin(), stored.end(), [&](const StoredColumn& each) { return each.name == name; });
  if (found == stored.end()) return nullptr;
  OfferedColumn& column = columns.emplace_back(Column(*found));
  column.shown.caption = caption;
  column.shown.width = width;
  return &column;
}

OfferedTable FromDescription(const Description& description, const std::vector<StoredColumn>& stored) {
  OfferedTable table;
  table.newest_first = description.newest_first;
  for (const Described& each : description.columns) {
    if (each.expression.empty()) {
      OfferedColumn* column = AddStored(table.columns, stored, each.name, each.caption, each.width);
      if (column != nullptr && !column->shown.format.empty()) column->shown.format = each.format;
    } else {
      OfferedColumn& column =
          table.columns.emplace_back(Column({std::string(each.name), StoredKind::kText, each.width}));
      column.shown.caption = each.caption;
      column.expression = each.expression;
    }
  }
  return table;
}

OfferedTable FromRegister(const tables::RegisterDescription& description, const std::string& key,
                          const std::vector<StoredColumn>& stored) {
  OfferedTable table;
  const auto add = [&](std::string_view name, const tables::ColumnDescription& each) {
    OfferedColumn* column = AddStored(table.columns, stored, name, each.caption, each.list_width);
    if (column != nullptr && !each.format.empty()) column->shown.format = each.format;
  };
  // A machine's key goes by two names; whichever the lookup asks for is what the register calls its code.
  const tables::ColumnDescription* named = description.Find(key);
  add(key, named == nullptr ? description.columns.front() : *named);
  const tables::ColumnDescription* text = description.Find(description.text_column);
  if (text != nullptr && text != named) add(text->name, *text);
  for (const tables::ColumnDescription& each : description.columns) {
    const bool shown = &each == named || &each == text || each.name == description.Key();
    if (!shown && each.list_width > 0) add(each.name, each);
  }
  return table;
}

OfferedTable FromDatabase(const std::vector<StoredColumn>& stored) {
  OfferedTable table;
  for (std::size_t i = 0; i < stored.size() && i < kMostColumns; ++i) table.columns.push_back(Column(stored[i]));
  return table;
}

OfferedTable Choose(const std::string& table, const std::string& key, const std::vector<StoredColumn>& stored) {
  for (const Description& description : Descriptions()) {
    const bool same = description.table == table && description.columns.front().name == key;
    if (same) return FromDescription(description, stored);
  }
  const tables::RegisterDescription* known = tables::FindRegister(table);
  return known == nullptr ? FromDatabase(stored) : FromRegister(*known, key, stored);
}

}  // namespace

OfferedTable OfferedOf(firebird::Database& database, std::string_view table, std::string_view key) {
  const std::string table_name = host::UpperAscii(table);
  const std::string key_name = host::UpperAscii(key);
  Structure structure = StructureOf(database, table_name, key_name);
  OfferedTable offered = Choose(table_name, key_name, structure.columns);
  offered.stored = std::move(structure.columns);
  offered.primary_key = std::move(structure.primary_key);
  return offered;
}

}  // namespace app::services
