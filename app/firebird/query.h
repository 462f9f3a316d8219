// The query object that screens create, run and free.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/connection.h"
#include "host/database.h"

namespace app::firebird {

class TextQuery : public host::TTIQuery {
 public:
  explicit TextQuery(Connection& connection) : connection_(connection) {}

  void Open() override;
  void ExecSQL() override;
  std::size_t RowsAffected() override;
  void SetParam(std::size_t element, std::string_view name, const host::Value& value) override;
  void ExecBatch(std::size_t count) override;

  bool Eof() const override { return row_ >= rows_.rows.size(); }
  void Next() override;
  void First() override { row_ = 0; }
  std::size_t RecordCount() const override { return rows_.rows.size(); }
  std::size_t FieldCount() const override { return rows_.names.size(); }
  std::string FieldName(std::size_t index) const override { return rows_.names.at(index); }
  bool HasField(std::string_view name) const override;
  const host::Value& FieldByName(std::string_view name) const override;
  const host::Value& Field(std::size_t column) const override;
  host::RowSet TakeRows() override;

  /// Stands on the first of these rows.
  void Show(RowSet rows);

 private:
  /// The parameters of one batch element, by name in capitals.
  using Element = std::map<std::string, host::Value, std::less<>>;

  RowSet RunElement(std::size_t element, bool want_rows);

  Connection& connection_;
  std::vector<Element> elements_;
  RowSet rows_;
  std::size_t row_ = 0;
  std::optional<std::uint64_t> executed_;  // the run that ExecSQL was; nothing when something else was done last
};

}  // namespace app::firebird
