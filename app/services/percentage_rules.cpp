#include "app/services/percentage_rules.h"

#include "app/services/rule_formula.h"
#include "host/decimal.h"
#include "host/errors.h"

namespace app::services {
namespace {

std::string FabricColumns() {
  std::string columns;
  for (const auto& name : RuleFormula::KnownNames()) columns += (columns.empty() ? "" : ", ") + name;
  return columns;
}

}  // namespace

double PercentageByRule(firebird::Database& database, std::string_view rule, std::string_view fabric) {
  const std::string code(rule);
  const std::string material(fabric);
  const auto stored = database.Query("SELECT FORMULA FROM {TNG_REGRA} WHERE CODIGO = ?", {rule});
  if (stored->IsEmpty()) throw host::InputError("Regra de cálculo \"" + code + "\" não cadastrada.");
  const auto data = database.Query("SELECT " + FabricColumns() + " FROM {MATERIAL} WHERE CODIGO = ?", {fabric});
  if (data->IsEmpty()) throw host::InputError("Material \"" + material + "\" não cadastrado.");

  const auto value_of = [&](std::string_view name) {
    // The columns are never null: 0 is how a register shows what was not filled in.
    const double value = data->FieldByName(name).AsFloat();
    if (value == 0) throw host::InputError("O material não tem " + std::string(name) + ".");
    return value;
  };
  double percentage = 0;
  try {
    percentage = RuleFormula::Parse(stored->FieldByName("FORMULA").AsText()).Evaluate(value_of);
    if (percentage < 0 || percentage > 100) {
      throw host::InputError("O resultado " + host::FormatNumber("0.####", percentage, ',') + " não é um percentual.");
    }
  } catch (const host::InputError& error) {
    throw host::InputError("Regra \"" + code + "\", material \"" + material + "\": " + error.what());
  }
  return host::RoundTo(percentage, 4);
}

}  // namespace app::services
