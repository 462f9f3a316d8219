#include "app/services/shared_dataset.h"

#include <algorithm>
#include <stdexcept>

#include "app/tables/primary_key.h"
#include "host/errors.h"
#include "host/text.h"

namespace app::services {

using host::SharedState;

namespace {

std::string ColumnName(std::string_view name) { return host::UpperAscii(host::Trim(name)); }

void AddTo(std::string& list, std::string_view separator, std::string_view item) {
  if (!list.empty()) list += separator;
  list += item;
}

std::vector<std::string> FirstColumn(host::TTIQuery& rows) {
  std::vector<std::string> texts;
  for (; !rows.Eof(); rows.Next()) texts.push_back(host::Trim(rows.Field(0).AsText()));
  return texts;
}

}  // namespace

TableDataset::TableDataset(firebird::Database& database, std::string table, bool editable)
    : database_(database), table_(std::move(table)), editable_(editable) {}

TableDataset::Condition TableDataset::Match(const std::vector<std::string>& columns,
                                            const std::vector<host::Value>& values) {
  if (columns.size() != values.size()) throw std::invalid_argument("columns and values differ in number");
  Condition condition;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    AddTo(condition.text, " AND ", columns[i] + (values[i].IsNull() ? " IS NULL" : " = ?"));
    if (!values[i].IsNull()) condition.values.push_back(values[i]);
  }
  return condition;
}

std::optional<TableDataset::Row> TableDataset::Read(const Condition& condition, std::string_view filter) const {
  std::string sql = "SELECT FIRST 1 * FROM {" + table_ + "} WHERE " + condition.text;
  if (!host::Trim(filter).empty()) sql += " AND (" + std::string(filter) + ")";
  const auto rows = database_.Query(sql, condition.values);
  if (rows->IsEmpty()) return std::nullopt;
  Row row;
  for (std::size_t i = 0; i < rows->FieldCount(); ++i) row[rows->FieldName(i)] = rows->Field(i);
  return row;
}

bool TableDataset::Locate(std::string_view columns, const std::vector<host::Value>& values) {
  Cancel();
  std::vector<std::string> names;
  for (const auto& name : host::SplitOutsideQuotes(columns, ';')) names.push_back(ColumnName(name));
  row_.reset();
  row_ = Read(Match(names, values), filter_);
  return row_.has_value();
}

host::Value TableDataset::FieldByName(std::string_view column) const {
  const std::string name = ColumnName(column);
  if (state_ != SharedState::kBrowse) {
    if (const auto changed = changes_.find(name); changed != changes_.end()) return changed->second;
  }
  if (row_ && state_ != SharedState::kInsert) {
    const auto found = row_->find(name);
    if (found == row_->end()) throw std::out_of_range(table_ + " has no column " + name);
    return found->second;
  }
  NeedColumn(name);
  return {};
}

void TableDataset::NeedEditable() const {
  if (!editable_) throw std::logic_error("the shared dataset over " + table_ + " is not edited");
}

void TableDataset::NeedColumn(const std::string& column) const {
  const auto& columns = Columns();
  if (std::find(columns.begin(), columns.end(), column) == columns.end()) {
    throw std::out_of_range(table_ + " has no column " + column);
  }
}

const std::vector<std::string>& TableDataset::Columns() const {
  if (columns_.empty()) {
    const auto rows = database_.Query(
        "SELECT RDB$FIELD_NAME FROM RDB$RELATION_FIELDS WHERE RDB$RELATION_NAME = ? ORDER BY RDB$FIELD_POSITION",
        {database_.PhysicalName(table_)});
    columns_ = FirstColumn(*rows);
  }
  return columns_;
}

const std::vector<std::string>& TableDataset::KeyColumns() const {
  if (key_.empty()) {
    key_ = tables::PrimaryKeyOf(database_, database_.PhysicalName(table_));
    if (key_.empty()) throw std::logic_error(table_ + " has no primary key and cannot be edited");
  }
  return key_;
}

TableDataset::Condition TableDataset::KeyOf(const Row& row) const {
  std::vector<host::Value> values;
  for (const auto& column : KeyColumns()) values.push_back(row.at(column));
  return Match(KeyColumns(), values);
}

void TableDataset::Append() {
  NeedEditable();
  Cancel();
  state_ = SharedState::kInsert;
}

void TableDataset::Edit() {
  NeedEditable();
  if (state_ != SharedState::kBrowse) return;
  if (!row_) throw std::logic_error("the shared dataset over " + table_ + " stands on no row");
  state_ = SharedState::kEdit;
}

void TableDataset::SetField(std::string_view column, const host::Value& value) {
  if (state_ == SharedState::kBrowse)
    throw std::logic_error("the shared dataset over " + table_ + " is not in edit state");
  const std::string name = ColumnName(column);
  NeedColumn(name);
  changes_[name] = value;
}

void TableDataset::Post() {
  if (state_ == SharedState::kBrowse) return;
  if (!changes_.empty()) {
    if (state_ == SharedState::kInsert) {
      Insert();
    } else {
      Update();
    }
    ReadBack();
  }
  changes_.clear();
  state_ = SharedState::kBrowse;
}

void TableDataset::Insert() {
  std::string columns;
  std::string marks;
  std::vector<host::Value> values;
  for (const auto& [name, value] : changes_) {
    AddTo(columns, ", ", name);
    AddTo(marks, ", ", "?");
    values.push_back(value);
  }
  database_.Execute("INSERT INTO {" + table_ + "} (" + columns + ") VALUES (" + marks + ")", values);
}

void TableDataset::Update() {
  std::string assignments;
  std::vector<host::Value> values;
  for (const auto& [name, value] : changes_) {
    AddTo(assignments, ", ", name + " = ?");
    values.push_back(value);
  }
  Condition key = KeyOf(*row_);
  values.insert(values.end(), key.values.begin(), key.values.end());
  database_.Execute("UPDATE {" + table_ + "} SET " + assignments + " WHERE " + key.text, values);
}

// The row as it is stored now, with what the database itself filled in.
void TableDataset::ReadBack() {
  Row written = state_ == SharedState::kEdit ? *row_ : Row();
  for (const auto& column : KeyColumns()) written.try_emplace(column);
  for (const auto& [name, value] : changes_) written[name] = value;
  auto stored = Read(KeyOf(written), {});
  if (!stored) throw host::DatabaseError("O registro não existe mais: outra estação o excluiu.", 0, "");
  row_ = std::move(stored);
}

void TableDataset::Cancel() {
  changes_.clear();
  state_ = SharedState::kBrowse;
}

void TableDataset::Delete() {
  NeedEditable();
  Cancel();
  if (!row_) return;
  const Condition key = KeyOf(*row_);
  database_.Execute("DELETE FROM {" + table_ + "} WHERE " + key.text, key.values);
  row_.reset();
}

}  // namespace app::services
