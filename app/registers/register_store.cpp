#include "app/registers/register_store.h"

#include "app/registers/usage.h"

namespace app::registers {
namespace {

/// As wide as the search input: a longer value than the column compared with would be refused.
constexpr std::string_view kSearched = "CAST(? AS VARCHAR(80))";

std::string Names(const std::vector<tables::ColumnDescription>& columns) {
  std::string names;
  for (const tables::ColumnDescription& column : columns)
    names += (names.empty() ? "" : ", ") + std::string(column.name);
  return names;
}

std::string Marks(std::size_t count) {
  std::string marks;
  for (std::size_t i = 0; i < count; ++i) marks += i == 0 ? "?" : ", ?";
  return marks;
}

std::vector<host::Value> RowValues(const host::TTIQuery& row, const std::vector<tables::ColumnDescription>& columns) {
  std::vector<host::Value> values;
  values.reserve(columns.size());
  for (const tables::ColumnDescription& column : columns) values.push_back(row.FieldByName(column.name));
  return values;
}

}  // namespace

const tables::Reference* ReferenceOf(std::string_view table, std::string_view column) {
  for (const tables::Reference& reference : tables::References()) {
    const bool single = reference.columns.size() == 1;
    if (single && reference.table == table && reference.columns.front() == column) return &reference;
  }
  return nullptr;
}

RegisterStore::RegisterStore(firebird::Database& database, const tables::RegisterDescription& description)
    : database_(database),
      description_(description),
      shape_(tables::ReadTableShape(database, description.table)),
      detail_shape_(description.detail ? tables::ReadTableShape(database, description.detail->table)
                                       : tables::TableShape()) {}

// --- reading --------------------------------------------------------------------------------------------------------

std::string RegisterStore::ListSql() const {
  std::string names;
  for (const tables::ColumnDescription& column : description_.columns) {
    if (column.list_width > 0) names += (names.empty() ? "" : ", ") + std::string(column.name);
  }
  return "SELECT FIRST " + std::to_string(kListed + 1) + " " + names + " FROM {" + std::string(description_.table) +
         "}";
}

std::unique_ptr<host::TTIQuery> RegisterStore::List(std::string_view containing) const {
  const std::string key(description_.Key());
  const std::string order = " ORDER BY " + key;
  if (containing.empty()) return database_.Query(ListSql() + order, {});
  const std::string where = " WHERE " + key + " CONTAINING " + std::string(kSearched) + " OR " +
                            std::string(description_.text_column) + " CONTAINING " + std::string(kSearched);
  return database_.Query(ListSql() + where + order, {containing, containing});
}

std::unique_ptr<host::TTIQuery> RegisterStore::ListRow(std::string_view key) const {
  return database_.Query(ListSql() + " WHERE " + std::string(description_.Key()) + " = ?", {key});
}

std::optional<Record> RegisterStore::Read(std::string_view key) const {
  const auto row =
      database_.Query("SELECT " + Names(description_.columns) + " FROM {" + std::string(description_.table) +
                          "} WHERE " + std::string(description_.Key()) + " = ?",
                      {key});
  if (row->IsEmpty()) return std::nullopt;
  return Record{RowValues(*row, description_.columns), ReadDetail(key)};
}

std::optional<Record> RegisterStore::ReadHeld(std::string_view key) const {
  database_.LockRow(description_.table, description_.Key(), key);
  return Read(key);
}

std::vector<std::vector<host::Value>> RegisterStore::ReadDetail(std::string_view key) const {
  if (!description_.detail) return {};
  const tables::DetailDescription& detail = *description_.detail;
  std::vector<std::vector<host::Value>> rows(detail.key_texts.size());
  const auto query =
      database_.Query("SELECT " + std::string(detail.key.name) + ", " + Names(detail.columns) + " FROM {" +
                          std::string(detail.table) + "} WHERE " + std::string(detail.owner) + " = ?",
                      {key});
  for (; !query->Eof(); query->Next()) {
    const auto place = static_cast<std::size_t>(query->FieldByName(detail.key.name).AsInteger() - 1);
    if (place < rows.size()) rows[place] = RowValues(*query, detail.columns);
  }
  return rows;
}

bool RegisterStore::Exists(std::string_view key) const {
  return !database_
              .Query("SELECT 1 FROM {" + std::string(description_.table) + "} WHERE " +
                         std::string(description_.Key()) + " = ?",
                     {key})
              ->IsEmpty();
}

std::optional<std::string> RegisterStore::TextOf(const tables::Reference& reference, std::string_view key) const {
  const tables::RegisterDescription* target = tables::FindRegister(reference.target);
  const std::string text(target == nullptr ? reference.target_columns.front() : target->text_column);
  const auto row = database_.Query("SELECT " + text + " FROM {" + std::string(reference.target) + "} WHERE " +
                                       std::string(reference.target_columns.front()) + " = ?",
                                   {key});
  if (row->IsEmpty()) return std::nullopt;
  return row->FieldByName(text).AsText();
}

// --- writing --------------------------------------------------------------------------------------------------------

void RegisterStore::Insert(const Record& record) const {
  database_.Execute("INSERT INTO {" + std::string(description_.table) + "} (" + Names(description_.columns) +
                        ") VALUES (" + Marks(description_.columns.size()) + ")",
                    record.values);
  InsertDetail(record.values.front().AsText(), record);
}

void RegisterStore::Update(std::string_view key, const Record& before, const Record& after) const {
  std::string assignments;
  std::vector<host::Value> values;
  for (std::size_t i = 0; i < description_.columns.size(); ++i) {
    if (after.values[i] == before.values[i]) continue;
    assignments += (assignments.empty() ? "" : ", ") + std::string(description_.columns[i].name) + " = ?";
    values.push_back(after.values[i]);
  }
  if (!values.empty()) {
    values.emplace_back(key);
    database_.Execute("UPDATE {" + std::string(description_.table) + "} SET " + assignments + " WHERE " +
                          std::string(description_.Key()) + " = ?",
                      values);
  }
  if (after.detail == before.detail) return;
  DeleteDetail(key);
  InsertDetail(key, after);
}

void RegisterStore::InsertDetail(std::string_view key, const Record& record) const {
  if (!description_.detail) return;
  const tables::DetailDescription& detail = *description_.detail;
  const std::string sql = "INSERT INTO {" + std::string(detail.table) + "} (" + std::string(detail.owner) + ", " +
                          std::string(detail.key.name) + ", " + Names(detail.columns) + ") VALUES (" +
                          Marks(detail.columns.size() + 2) + ")";
  for (std::size_t i = 0; i < record.detail.size(); ++i) {
    if (record.detail[i].empty()) continue;
    std::vector<host::Value> values = {key, static_cast<int>(i + 1)};
    values.insert(values.end(), record.detail[i].begin(), record.detail[i].end());
    database_.Execute(sql, values);
  }
}

void RegisterStore::DeleteDetail(std::string_view key) const {
  const tables::DetailDescription& detail = *description_.detail;
  database_.Execute("DELETE FROM {" + std::string(detail.table) + "} WHERE " + std::string(detail.owner) + " = ?",
                    {key});
}

void RegisterStore::Delete(std::string_view key) const {
  if (description_.detail) DeleteDetail(key);
  DeleteEmptyStock(database_, description_.table, key);
  database_.Execute(
      "DELETE FROM {" + std::string(description_.table) + "} WHERE " + std::string(description_.Key()) + " = ?", {key});
}

}  // namespace app::registers
