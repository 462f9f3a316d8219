#include "app/firebird/query.h"

#include <stdexcept>
#include <utility>

#include "app/firebird/sql_tokens.h"
#include "host/text.h"

namespace app::firebird {
namespace {

std::size_t IndexOf(const std::vector<std::string>& names, std::string_view name) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (host::SameName(names[i], name)) return i;
  }
  return names.size();
}

}  // namespace

void TextQuery::Show(RowSet rows) {
  rows_ = std::move(rows);
  row_ = 0;
  executed_.reset();
}

void TextQuery::Open() {
  Show({});
  Show(elements_.empty() ? connection_.RunText(SQL.Text(), true) : RunElement(0, true));
}

void TextQuery::ExecSQL() {
  Show({});
  if (elements_.empty()) {
    connection_.RunText(SQL.Text(), false);
  } else {
    RunElement(0, false);
  }
  executed_ = connection_.LastRun();
}

std::size_t TextQuery::RowsAffected() {
  if (executed_ != connection_.LastRun()) throw std::logic_error("no ExecSQL of this query ran last");
  return connection_.RowsAffected();
}

void TextQuery::SetParam(std::size_t element, std::string_view name, const host::Value& value) {
  if (element >= elements_.size()) elements_.resize(element + 1);
  elements_[element].insert_or_assign(host::UpperAscii(name), value);
}

void TextQuery::ExecBatch(std::size_t count) {
  Show({});
  if (count > elements_.size()) elements_.resize(count);
  for (std::size_t i = 0; i < count; ++i) RunElement(i, false);
}

RowSet TextQuery::RunElement(std::size_t element, bool want_rows) {
  const NamedText text = ReplaceNamedParameters(SQL.Text());
  std::vector<host::Value> values;
  for (const std::string& name : text.names) {
    const auto found = elements_[element].find(name);
    values.push_back(found == elements_[element].end() ? host::Value() : found->second);
  }
  return connection_.RunPrepared(SQL.Text(), text.sql, values, want_rows);
}

void TextQuery::Next() {
  if (!Eof()) ++row_;
}

bool TextQuery::HasField(std::string_view name) const { return IndexOf(rows_.names, name) < rows_.names.size(); }

const host::Value& TextQuery::FieldByName(std::string_view name) const {
  const std::size_t column = IndexOf(rows_.names, name);
  if (column == rows_.names.size()) throw std::out_of_range("the result has no column " + std::string(name));
  return Field(column);
}

const host::Value& TextQuery::Field(std::size_t column) const {
  if (column >= rows_.names.size()) throw std::out_of_range("the result has no column " + std::to_string(column));
  return Eof() ? host::Value::Null() : rows_.rows[row_][column];
}

host::RowSet TextQuery::TakeRows() {
  RowSet taken{rows_.names, std::move(rows_.rows)};
  rows_.rows.clear();
  row_ = 0;
  return taken;
}

}  // namespace app::firebird
