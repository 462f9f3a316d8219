#include "app/mill/cell.h"

#include <algorithm>
#include <regex>

#include "app/firebird/storable_text.h"
#include "app/services/rule_formula.h"
#include "app/tables/import_rules.h"
#include "host/decimal.h"
#include "host/errors.h"
#include "host/text.h"

namespace app::mill {
namespace {

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

bool IsTime(const std::string& text) {
  static const std::regex time_pattern("([01]?[0-9]|2[0-3]):[0-5][0-9](:[0-5][0-9])?");
  return std::regex_match(text, time_pattern);
}

Cell Refused(std::string objection) { return {{}, std::move(objection)}; }

Cell ReadNothing(const tables::TableShape& shape, const tables::Column& column) {
  const bool is_key =
      std::find(shape.key_columns.begin(), shape.key_columns.end(), column.name) != shape.key_columns.end();
  if (column.fills) return {*column.fills};
  if (column.required || is_key) return Refused("o valor é obrigatório.");
  return {};
}

Cell ReadText(const tables::TableShape& shape, const tables::Column& column, const std::string& text,
              const FormulaCheck& check_formula) {
  if (auto reason = firebird::WhyNotStorable(text)) return Refused(std::move(*reason));
  if (column.kind == tables::ColumnKind::kText && host::Length(text) > static_cast<std::size_t>(column.width)) {
    return Refused(Quoted(text) + " tem " + std::to_string(host::Length(text)) + " caracteres; cabem " +
                   std::to_string(column.width) + ".");
  }
  if (tables::IsFlag(column.name) && text != "S" && text != "N") return Refused(Quoted(text) + " não é S nem N.");
  if (shape.table == "TNG_REGRA" && column.name == "FORMULA") {
    try {
      check_formula(text);
    } catch (const host::InputError& error) {
      return Refused(error.what());
    }
  }
  return {text};
}

Cell ReadNumber(const tables::TableShape& shape, const tables::Column& column, const std::string& text) {
  const bool whole = column.kind == tables::ColumnKind::kInteger;
  const std::optional<double> number = host::ParseTyped(text);
  if (!number) return Refused(Quoted(text) + " não é um número.");
  if (whole && !host::ParseTypedInteger(text)) return Refused(Quoted(text) + " não é um número inteiro.");
  if (const auto limits = tables::LimitsOf(shape.table, column.name)) {
    const auto shown = [](double limit) { return host::FormatNumber("0.##", limit, ','); };
    if (*number < limits->lowest) return Refused(Quoted(text) + " é menor que " + shown(limits->lowest) + ".");
    if (*number > limits->highest) return Refused(Quoted(text) + " é maior que " + shown(limits->highest) + ".");
  }
  if (whole) return {*host::ParseTypedInteger(text)};
  return {*number};
}

}  // namespace

void CheckRuleFormula(std::string_view formula) { services::RuleFormula::Parse(formula); }

Cell ReadCell(const tables::TableShape& shape, const tables::Column& column, const std::string& text,
              const FormulaCheck& check_formula) {
  if (text.empty()) return ReadNothing(shape, column);
  switch (column.kind) {
    case tables::ColumnKind::kInteger:
    case tables::ColumnKind::kNumber:
      return ReadNumber(shape, column, text);
    case tables::ColumnKind::kDate:
      if (const auto date = host::Date::FromDisplay(text)) return {*date};
      return Refused(Quoted(text) + " não é uma data (DD/MM/AAAA).");
    case tables::ColumnKind::kTime:
      if (IsTime(text)) return {text};
      return Refused(Quoted(text) + " não é uma hora (HH:MM).");
    case tables::ColumnKind::kTimestamp:
      if (host::DateTime::FromIso(text)) return {text};
      return Refused(Quoted(text) + " não é data e hora (AAAA-MM-DD HH:MM:SS).");
    default:
      return ReadText(shape, column, text, check_formula);
  }
}

}  // namespace app::mill
