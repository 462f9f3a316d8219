// One value as a file or a person gives it, against the column it is for.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "app/tables/table_shape.h"
#include "host/value.h"

namespace app::mill {

/// Says what is wrong with a rule's formula by throwing host::InputError.
using FormulaCheck = std::function<void(std::string_view formula)>;

/// The check by the language that the rules are worked out with.
void CheckRuleFormula(std::string_view formula);

struct Cell {
  host::Value value;  // null when there is an objection or nothing was given
  std::optional<std::string> objection = {};
};

/// Reads the text for that column of the table: numbers with a decimal comma or point, dates DD/MM/YYYY, times HH:MM,
/// nothing as the column's default. The objection is one Portuguese sentence that begins in small letters; it does not
/// name the column.
Cell ReadCell(const tables::TableShape& shape, const tables::Column& column, const std::string& text,
              const FormulaCheck& check_formula);

}  // namespace app::mill
