// The arithmetic of a composition's percentage rules (TNG_REGRA.FORMULA).
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace app::services {

/// A parsed formula over a fabric's data, such as "MIN(100; GRAMATURA * 0,25 + 10)". docs/rules.md tells the language.
class RuleFormula {
 public:
  /// Throws host::InputError, one Portuguese sentence that says what is wrong and where, when the text is no formula.
  static RuleFormula Parse(std::string_view text);

  /// Names of a fabric's data that a formula may use, in capitals; each is a column of MATERIAL.
  static const std::vector<std::string>& KnownNames();

  /// The formula's value. `value_of` gives the fabric's data by name and may throw. Throws host::InputError for a
  /// division by zero and for a result too large to be a number.
  double Evaluate(const std::function<double(std::string_view name)>& value_of) const;

  /// The names the formula uses, each once.
  const std::vector<std::string>& Names() const { return names_; }

 private:
  friend class RuleFormulaParser;
  enum class Op { kNumber, kName, kAdd, kSubtract, kMultiply, kDivide, kNegate, kMin, kMax };
  struct Step {
    Op op;
    double number = 0;     // of kNumber
    std::size_t name = 0;  // of kName, into names_
  };
  std::vector<Step> steps_;  // operands before their operator
  std::vector<std::string> names_;
};

}  // namespace app::services
