// One shared dataset: rows of a table, looked up one at a time.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/database.h"
#include "host/tabela.h"

namespace app::services {

/// One screen's view of a table: row, filter and edit belong to it. Locating is one statement by key; the row found is
/// kept, the table never read whole. The datasets that no screen edits refuse Append, Edit and Delete with
/// std::logic_error, as does SetField outside Append and Edit: a mistake of whoever calls.
class TableDataset : public host::SharedDataset {
 public:
  /// `table` is a logical name.
  TableDataset(firebird::Database& database, std::string table, bool editable);

  bool Locate(std::string_view columns, const std::vector<host::Value>& values) override;
  void SetFilter(std::string_view condition) override { filter_ = condition; }
  host::Value FieldByName(std::string_view column) const override;

  bool HasRow() const override { return row_ && state_ != host::SharedState::kInsert; }
  host::SharedState State() const override { return state_; }

  void Append() override;
  void Edit() override;
  void SetField(std::string_view column, const host::Value& value) override;
  void Post() override;
  void Cancel() override;
  void Delete() override;

 private:
  using Row = std::map<std::string, host::Value, std::less<>>;  // column name in capitals to value

  struct Condition {
    std::string text;
    std::vector<host::Value> values;
  };
  static Condition Match(const std::vector<std::string>& columns, const std::vector<host::Value>& values);
  std::optional<Row> Read(const Condition& condition, std::string_view filter) const;
  void Insert();
  void Update();
  void ReadBack();
  Condition KeyOf(const Row& row) const;
  void NeedColumn(const std::string& column) const;
  const std::vector<std::string>& Columns() const;
  const std::vector<std::string>& KeyColumns() const;
  void NeedEditable() const;

  firebird::Database& database_;
  std::string table_;
  bool editable_;
  std::string filter_;
  host::SharedState state_ = host::SharedState::kBrowse;
  std::optional<Row> row_;  // as stored
  Row changes_;             // of kEdit and kInsert
  mutable std::vector<std::string> columns_;
  mutable std::vector<std::string> key_;
};

}  // namespace app::services
