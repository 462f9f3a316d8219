// Bringing a mill's registers and opening stock in from files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/database.h"
#include "app/mill/cell.h"

namespace app::mill {

struct ImportResult {
  std::size_t rows = 0;  // written
  std::vector<std::string>
      errors;  // Portuguese, one sentence each with its line; nothing was written when there are any
  bool Ok() const { return errors.empty(); }
};

/// Brings a file into a logical table of the company ("MATERIAL"): "CsvFile" tells the form, the header names the
/// columns, numbers take a decimal comma or point, dates are DD/MM/YYYY, times HH:MM. An empty cell takes the column's
/// default. Every row is checked before the first is written, and all are written or none; they are durable when the
/// call returns. Each balance of MAT_ITEN also opens the stock ledger with a movement of that quantity.
ImportResult Import(firebird::Database& database, std::string_view table, std::string_view csv_text,
                    const FormulaCheck& check_formula);

/// The same, formulas checked by the language that the rules are worked out with.
ImportResult Import(firebird::Database& database, std::string_view table, std::string_view csv_text);

}  // namespace app::mill
