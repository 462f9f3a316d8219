// The checks that every row of an imported file passes before anything is written.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/firebird/database.h"
#include "app/mill/cell.h"
#include "app/mill/csv.h"
#include "app/tables/import_rules.h"
#include "app/tables/table_shape.h"
#include "host/value.h"

namespace app::mill {

/// One file against one table. Collects every error; rows are fit to be written when there is none.
class ImportCheck {
 public:
  ImportCheck(firebird::Database& database, const tables::TableShape& shape, const FormulaCheck& check_formula)
      : database_(database), shape_(shape), check_formula_(check_formula) {}

  void Run(const CsvFile& file);

  const std::vector<std::string>& Errors() const { return errors_; }
  /// The file's columns, in its order, and the values of each row in the same order.
  const std::vector<const tables::Column*>& Columns() const { return columns_; }
  const std::vector<std::vector<host::Value>>& Rows() const { return rows_; }
  /// Line of the file where a row of Rows() starts.
  int Line(std::size_t row) const { return lines_[row]; }

 private:
  void CheckHeader(const std::vector<std::string>& header);
  void CheckRow(const CsvRow& row);
  host::Value CheckCell(int line, const tables::Column& column, const std::string& cell);
  void CheckKey(int line, const std::vector<host::Value>& values);
  void CheckReferences(int line, const std::vector<host::Value>& values);
  bool Exists(std::string_view table, const std::vector<std::string_view>& columns,
              const std::vector<host::Value>& values);
  std::size_t Position(std::string_view column) const;  // in columns_; npos when the file lacks it
  void Error(int line, const std::string& text);
  void Error(int line, const tables::Column& column, const std::string& text);

  firebird::Database& database_;
  const tables::TableShape& shape_;
  const FormulaCheck& check_formula_;
  std::vector<const tables::Column*> columns_;
  std::vector<std::vector<host::Value>> rows_;
  std::vector<int> lines_;
  std::vector<std::string> errors_;
  std::map<std::string, int> keys_;    // of the file, to the line that has it first
  std::map<std::string, bool> known_;  // answers of Exists
};

}  // namespace app::mill
