// Finds the literals of a statement that may become parameters, so that statements that differ only in their values
// share one prepared statement.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/message.h"
#include "host/value.h"

namespace app::firebird {

struct Literal {
  enum class Kind { kText, kNumber };
  Kind kind;
  std::size_t begin;  // in the statement, a sign included
  std::size_t end;
  std::string text;  // the text without quotes, or the digits with sign and point
  bool operand;      // of + - * /: its type decides the type of the result, so its parameter is cast to just that type
  int decimals;      // as written, trailing zeros included
};

/// The literals of a SELECT, INSERT, UPDATE or DELETE at places where a parameter means the same; none for any other
/// statement and for one that already has parameters.
std::vector<Literal> FindLiterals(std::string_view sql);

/// The statement with "?" (an operand as "CAST(? AS type)") for each literal except those marked in `kept` (empty: none
/// is kept).
std::string WithParameters(std::string_view sql, const std::vector<Literal>& literals, const std::vector<bool>& kept);

enum class Fit {
  kYes,
  kNotThisValue,  // this value would be changed by the parameter's type; another one may fit
  kNever,         // with a parameter of this type the statement would mean something else
};

/// Whether the literal as a parameter of this type gives the same result as in the text.
Fit FitOf(const Literal& literal, const Column& parameter);

/// The value to bind for a literal that fits.
host::Value ValueOf(const Literal& literal, const Column& parameter);

}  // namespace app::firebird
