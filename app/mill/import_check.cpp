#include "app/mill/import_check.h"

#include <algorithm>

namespace app::mill {
namespace {

constexpr std::size_t kAbsent = static_cast<std::size_t>(-1);

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

std::string Join(const std::vector<host::Value>& values) {
  std::string text;
  for (const auto& value : values) text += (text.empty() ? "" : ", ") + value.AsText();
  return text;
}

}  // namespace

void ImportCheck::Run(const CsvFile& file) {
  CheckHeader(file.header);
  if (!errors_.empty()) return;
  for (const auto& row : file.rows) CheckRow(row);
}

void ImportCheck::CheckHeader(const std::vector<std::string>& header) {
  std::set<std::string> seen;
  for (const auto& name : header) {
    const tables::Column* column = shape_.Find(name);
    if (column == nullptr) {
      Error(1, "a tabela " + shape_.table + " não tem a coluna " + Quoted(name) + ".");
    } else if (column->filled_by_database) {
      Error(1, "a coluna " + name + " é preenchida pelo sistema e não pode ser importada.");
    } else if (!seen.insert(name).second) {
      Error(1, "a coluna " + name + " aparece mais de uma vez.");
    }
    columns_.push_back(column);
  }
  for (const auto& column : shape_.columns) {
    if (!column.required || column.fills || column.filled_by_database || seen.contains(column.name)) continue;
    if (column.kind == tables::ColumnKind::kTimestamp) continue;
    Error(1, "falta a coluna obrigatória " + column.name + ".");
  }
}

void ImportCheck::CheckRow(const CsvRow& row) {
  if (row.cells.size() > columns_.size()) {
    Error(row.line,
          "há " + std::to_string(row.cells.size()) + " valores para " + std::to_string(columns_.size()) + " colunas.");
    return;
  }
  const std::size_t errors_before = errors_.size();
  std::vector<host::Value> values;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    values.push_back(CheckCell(row.line, *columns_[i], i < row.cells.size() ? row.cells[i] : std::string()));
  }
  // A row with an unreadable value has no key or code worth comparing.
  if (errors_.size() == errors_before) {
    CheckKey(row.line, values);
    CheckReferences(row.line, values);
  }
  rows_.push_back(std::move(values));
  lines_.push_back(row.line);
}

host::Value ImportCheck::CheckCell(int line, const tables::Column& column, const std::string& cell) {
  const Cell read = ReadCell(shape_, column, cell, check_formula_);
  if (read.objection) Error(line, column, *read.objection);
  return read.value;
}

void ImportCheck::CheckKey(int line, const std::vector<host::Value>& values) {
  if (shape_.key_columns.empty()) return;
  std::vector<host::Value> key;
  std::vector<std::string_view> names;
  for (const auto& name : shape_.key_columns) {
    const std::size_t at = Position(name);
    key.push_back(at == kAbsent ? host::Value(shape_.Find(name)->fills.value_or("")) : values[at]);
    names.push_back(name);
  }
  std::string joined;
  for (const auto& value : key) joined += value.AsText() + '\n';
  const auto [first, is_new] = keys_.emplace(joined, line);
  if (!is_new) {
    Error(line, "a chave " + Quoted(Join(key)) + " já aparece na linha " + std::to_string(first->second) + ".");
  } else if (Exists(shape_.table, names, key)) {
    Error(line, "a chave " + Quoted(Join(key)) + " já está cadastrada.");
  }
}

void ImportCheck::CheckReferences(int line, const std::vector<host::Value>& values) {
  for (const auto& reference : tables::References()) {
    if (reference.table != shape_.table) continue;
    std::vector<host::Value> wanted;
    for (const auto name : reference.columns) {
      const std::size_t at = Position(name);
      if (at == kAbsent || values[at].AsText().empty()) break;
      wanted.push_back(values[at]);
    }
    if (wanted.size() < reference.columns.size() || tables::IsExempt(reference, wanted.front().AsText())) continue;
    const auto [answer, is_new] = known_.try_emplace(std::string(reference.target) + '\n' + Join(wanted));
    if (is_new) answer->second = Exists(reference.target, reference.target_columns, wanted);
    if (answer->second) continue;
    Error(line, *columns_[Position(reference.columns.front())],
          Quoted(Join(wanted)) + " não está cadastrado em " + std::string(reference.target) + ".");
  }
}

bool ImportCheck::Exists(std::string_view table, const std::vector<std::string_view>& columns,
                         const std::vector<host::Value>& values) {
  std::string sql = "SELECT FIRST 1 1 FROM {" + std::string(table) + "} WHERE ";
  for (std::size_t i = 0; i < columns.size(); ++i) sql += (i == 0 ? "" : " AND ") + std::string(columns[i]) + " = ?";
  return !database_.Query(sql, values)->IsEmpty();
}

std::size_t ImportCheck::Position(std::string_view column) const {
  const auto found =
      std::find_if(columns_.begin(), columns_.end(), [&](const tables::Column* c) { return c->name == column; });
  return found == columns_.end() ? kAbsent : static_cast<std::size_t>(found - columns_.begin());
}

void ImportCheck::Error(int line, const std::string& text) {
  errors_.push_back("Linha " + std::to_string(line) + ": " + text);
}

void ImportCheck::Error(int line, const tables::Column& column, const std::string& text) {
  errors_.push_back("Linha " + std::to_string(line) + ", coluna " + column.name + ": " + text);
}

}  // namespace app::mill
