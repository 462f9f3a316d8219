#include "app/services/rule_formula.h"

#include <algorithm>
#include <cmath>

#include "host/decimal.h"
#include "host/errors.h"
#include "host/text.h"

namespace app::services {
namespace {

// Deep enough for any real rule; a longer chain of parentheses would only exhaust the stack.
constexpr int kDeepest = 50;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; }

}  // namespace

const std::vector<std::string>& RuleFormula::KnownNames() {
  static const std::vector<std::string> names = {"LARGURA", "GRAMATURA", "PESO", "NE", "CONCENTRACAO"};
  return names;
}

class RuleFormulaParser {
 public:
  explicit RuleFormulaParser(std::string_view text) : text_(text) {}

  RuleFormula Parse() {
    SkipBlanks();
    if (AtEnd()) throw host::InputError("A fórmula da regra está vazia.");
    ParseSum(0);
    if (!AtEnd()) Fail("sobra texto");
    return std::move(formula_);
  }

 private:
  using Op = RuleFormula::Op;

  bool AtEnd() const { return position_ >= text_.size(); }
  char Next() const { return AtEnd() ? '\0' : text_[position_]; }
  void SkipBlanks() {
    while (!AtEnd() && (Next() == ' ' || Next() == '\t' || Next() == '\n' || Next() == '\r')) ++position_;
  }
  bool Take(char c) {
    if (Next() != c) return false;
    ++position_;
    SkipBlanks();
    return true;
  }
  [[noreturn]] void Fail(const std::string& what) const {
    throw host::InputError("Fórmula inválida na posição " + std::to_string(position_ + 1) + ": " + what + ".");
  }
  void Emit(Op op) { formula_.steps_.push_back({op, 0, 0}); }

  void ParseSum(int depth) {
    if (depth > kDeepest) Fail("parênteses demais");
    ParseProduct(depth);
    while (true) {
      if (Take('+')) {
        ParseProduct(depth);
        Emit(Op::kAdd);
      } else if (Take('-')) {
        ParseProduct(depth);
        Emit(Op::kSubtract);
      } else {
        return;
      }
    }
  }

  void ParseProduct(int depth) {
    ParseFactor(depth);
    while (true) {
      if (Take('*')) {
        ParseFactor(depth);
        Emit(Op::kMultiply);
      } else if (Take('/')) {
        ParseFactor(depth);
        Emit(Op::kDivide);
      } else {
        return;
      }
    }
  }

  void ParseFactor(int depth) {
    if (Take('-')) {
      if (depth > kDeepest) Fail("sinais demais");
      ParseFactor(depth + 1);
      Emit(Op::kNegate);
    } else if (Take('(')) {
      ParseSum(depth + 1);
      if (!Take(')')) Fail("falta fechar parênteses");
    } else if (IsDigit(Next())) {
      ParseNumber();
    } else if (IsLetter(Next())) {
      ParseName(depth);
    } else {
      Fail("era esperado um número, um dado do material ou parênteses");
    }
  }

  void ParseNumber() {
    const std::size_t start = position_;
    while (IsDigit(Next())) ++position_;
    if (Next() == '.' || Next() == ',') {
      ++position_;
      if (!IsDigit(Next())) Fail("faltam as casas decimais");
      while (IsDigit(Next())) ++position_;
    }
    const auto number = host::ParseTyped(text_.substr(start, position_ - start));
    if (!number) Fail("número grande demais");
    SkipBlanks();
    formula_.steps_.push_back({Op::kNumber, *number, 0});
  }

  void ParseName(int depth) {
    const std::size_t start = position_;
    while (IsLetter(Next()) || IsDigit(Next())) ++position_;
    const std::string name = host::UpperAscii(text_.substr(start, position_ - start));
    SkipBlanks();
    if (name == "MIN" || name == "MAX") {
      ParseArguments(name == "MIN" ? Op::kMin : Op::kMax, depth);
      return;
    }
    const auto& known = RuleFormula::KnownNames();
    if (std::find(known.begin(), known.end(), name) == known.end()) {
      position_ = start;
      Fail("\"" + name + "\" não é um dado do material");
    }
    auto& names = formula_.names_;
    const auto index = static_cast<std::size_t>(std::find(names.begin(), names.end(), name) - names.begin());
    if (index == names.size()) names.push_back(name);
    formula_.steps_.push_back({Op::kName, 0, index});
  }

  void ParseArguments(Op op, int depth) {
    if (!Take('(')) Fail("faltam os parênteses de MIN ou MAX");
    ParseSum(depth + 1);
    if (Next() != ';') Fail("MIN e MAX pedem dois valores ou mais, separados por \";\"");
    while (Take(';')) {
      ParseSum(depth + 1);
      Emit(op);
    }
    if (!Take(')')) Fail("falta fechar parênteses");
  }

  std::string_view text_;
  std::size_t position_ = 0;
  RuleFormula formula_;
};

RuleFormula RuleFormula::Parse(std::string_view text) { return RuleFormulaParser(text).Parse(); }

double RuleFormula::Evaluate(const std::function<double(std::string_view name)>& value_of) const {
  std::vector<double> values;
  values.reserve(names_.size());
  for (const auto& name : names_) values.push_back(value_of(name));

  std::vector<double> stack;
  for (const Step& step : steps_) {
    if (step.op == Op::kNumber || step.op == Op::kName) {
      stack.push_back(step.op == Op::kNumber ? step.number : values[step.name]);
      continue;
    }
    if (step.op == Op::kNegate) {
      stack.back() = -stack.back();
      continue;
    }
    const double right = stack.back();
    stack.pop_back();
    double& left = stack.back();
    switch (step.op) {
      case Op::kAdd:
        left += right;
        break;
      case Op::kSubtract:
        left -= right;
        break;
      case Op::kMultiply:
        left *= right;
        break;
      case Op::kDivide:
        if (right == 0) throw host::InputError("A fórmula da regra divide por zero.");
        left /= right;
        break;
      case Op::kMin:
        left = std::min(left, right);
        break;
      default:
        left = std::max(left, right);
        break;
    }
  }
  if (!std::isfinite(stack.back())) throw host::InputError("A fórmula da regra não dá um número.");
  return stack.back();
}

}  // namespace app::services
