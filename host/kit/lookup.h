// The lookup dialog: a person picks a row of a table.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/kit/component.h"
#include "host/value.h"

namespace host {

/// The row a person picked: column name in capitals to value.
using LookupRow = std::map<std::string, Value>;

class TPesquisa : public Component {
 public:
  /// `table` is a logical name and `key` its key column; both may stay while `SetStatement` gives a whole statement.
  /// Where only several columns together name a row they are joined by ";" ("CODIGO;CODCLI;COR"): rows are offered in
  /// their order.
  TPesquisa(Screen& owner, std::string name, std::string table, std::string_view key);

  const std::string& Table() const { return table_; }
  /// The first of the key columns: what stands in the input that the lookup serves, and what rows are searched by.
  const std::string& KeyColumn() const { return keys_.front(); }
  /// At least one.
  const std::vector<std::string>& KeyColumns() const { return keys_; }
  /// A condition over the table's columns; empty for none.
  const std::string& FilterText() const { return filter_; }
  void SetFilter(std::string_view condition) { filter_ = condition; }
  /// A whole SELECT (physical table names) that takes the place of table and filter; empty for none.
  const std::string& Statement() const { return statement_; }
  void SetStatement(std::string_view sql) { statement_ = sql; }

  /// Shows the dialog and waits. When a row was picked, it answers RetornoPesquisa and OnFechaPesquisa is fired;
  /// otherwise nothing happens.
  void Open();
  /// A column of the row picked last, without regard to case; null when there was none.
  Value RetornoPesquisa(std::string_view column) const;

  Handler OnFechaPesquisa;

 private:
  std::string table_;
  std::vector<std::string> keys_;
  std::string filter_;
  std::string statement_;
  LookupRow row_;
};

}  // namespace host
