// Which literal means the same as a parameter of which type.
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

#include "app/firebird/literals.h"
#include "host/text.h"

namespace app::firebird {
namespace {

constexpr unsigned kUtf8 = 4;             // the engine's number of the connection's character set
constexpr unsigned kBytesPerLetter = 4;   // of a text in it
constexpr std::size_t kExactDigits = 15;  // so many decimal digits survive in a double
constexpr std::size_t kWholeDigits = 18;  // so many fit 64 bits

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A number taken apart: digits without leading zeros, and how many of them are decimals.
struct Decimal {
  bool negative = false;
  std::string digits;
  int decimals = 0;
};

// Nothing for a text that is not plainly a number (blanks, exponent, two points).
std::optional<Decimal> Parse(std::string_view text) {
  Decimal decimal;
  if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
    decimal.negative = text[0] == '-';
    text.remove_prefix(1);
  }
  const std::size_t point = text.find('.');
  const std::string_view whole = text.substr(0, point);
  const std::string_view rest = point == std::string_view::npos ? std::string_view() : text.substr(point + 1);
  decimal.digits = std::string(whole) + std::string(rest);
  if (decimal.digits.empty() || !std::all_of(decimal.digits.begin(), decimal.digits.end(), IsDigit)) return {};
  decimal.decimals = static_cast<int>(rest.size());
  while (decimal.decimals > 0 && decimal.digits.back() == '0') {
    decimal.digits.pop_back();
    --decimal.decimals;
  }
  decimal.digits.erase(0, decimal.digits.find_first_not_of('0'));
  return decimal;
}

bool FitsWhole(const Decimal& decimal, const Column& parameter) {
  if (decimal.decimals > -parameter.scale) return false;
  std::string digits = decimal.digits;
  digits.append(static_cast<std::size_t>(-parameter.scale - decimal.decimals), '0');
  if (digits.size() > kWholeDigits) return false;
  std::int64_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (parameter.type == SQL_SHORT) return number <= INT16_MAX;
  if (parameter.type == SQL_LONG) return number <= INT32_MAX;
  return true;
}

// "M/D/YYYY" with nothing else around: words like 'TODAY' and other forms are left to the engine.
bool IsPlainDate(std::string_view text) {
  int part = 0;
  int digits = 0;
  for (const char c : text) {
    if (IsDigit(c)) {
      ++digits;
    } else {
      if (c != '/' || digits < 1 || digits > 2) return false;
      ++part;
      digits = 0;
    }
  }
  return part == 2 && digits == 4;
}

Fit FitOfText(const Literal& literal, const Column& parameter) {
  if (parameter.charset != kUtf8) return Fit::kNever;
  // A number beside a text column compares as numbers, not as texts.
  if (literal.kind == Literal::Kind::kNumber) return Fit::kNever;
  const bool fits = host::Length(literal.text) * kBytesPerLetter <= parameter.length;
  return fits ? Fit::kYes : Fit::kNotThisValue;
}

Fit FitOfDate(const Literal& literal) {
  if (literal.kind == Literal::Kind::kNumber) return Fit::kNever;
  return IsPlainDate(literal.text) ? Fit::kYes : Fit::kNotThisValue;
}

Fit FitOfNumber(const Literal& literal, const Column& parameter) {
  const std::optional<Decimal> decimal = Parse(literal.text);
  if (!decimal) return Fit::kNotThisValue;
  if (parameter.type == SQL_DOUBLE) {
    const bool exact = decimal->digits.size() <= kExactDigits && decimal->decimals <= static_cast<int>(kExactDigits);
    return exact ? Fit::kYes : Fit::kNotThisValue;
  }
  return FitsWhole(*decimal, parameter) ? Fit::kYes : Fit::kNotThisValue;
}

// A parameter that computes as the literal does: whole numbers and those with decimals divide differently.
std::string OperandText(const Literal& literal) {
  if (literal.decimals == 0) return "CAST(? AS BIGINT)";
  return "CAST(? AS NUMERIC(18," + std::to_string(literal.decimals) + "))";
}

}  // namespace

std::string WithParameters(std::string_view sql, const std::vector<Literal>& literals, const std::vector<bool>& kept) {
  std::string text;
  text.reserve(sql.size());
  std::size_t copied = 0;
  for (std::size_t i = 0; i < literals.size(); ++i) {
    if (!kept.empty() && kept[i]) continue;
    text += sql.substr(copied, literals[i].begin - copied);
    text += literals[i].operand ? OperandText(literals[i]) : "?";
    copied = literals[i].end;
  }
  text += sql.substr(copied);
  return text;
}

Fit FitOf(const Literal& literal, const Column& parameter) {
  switch (parameter.type) {
    case SQL_TEXT:
    case SQL_VARYING:
      return FitOfText(literal, parameter);
    case SQL_TYPE_DATE:
    case SQL_TIMESTAMP:
      return FitOfDate(literal);
    case SQL_SHORT:
    case SQL_LONG:
    case SQL_INT64:
    case SQL_DOUBLE:
      return FitOfNumber(literal, parameter);
    default:
      return Fit::kNever;
  }
}

host::Value ValueOf(const Literal& literal, const Column& parameter) {
  const bool whole = parameter.type == SQL_SHORT || parameter.type == SQL_LONG || parameter.type == SQL_INT64;
  // Dates go as text, and so do numbers too long for a double: the engine reads them as it reads the literal.
  if (!whole && parameter.type != SQL_DOUBLE) return literal.text;
  const char* begin = literal.text.data() + (literal.text.starts_with('+') ? 1 : 0);
  const char* end = literal.text.data() + literal.text.size();
  if (whole && parameter.scale == 0) {
    std::int64_t integer = 0;
    std::from_chars(begin, end, integer);
    return integer;
  }
  if (whole && literal.text.size() > kExactDigits) return literal.text;
  double number = 0;
  std::from_chars(begin, end, number);
  return number;
}

}  // namespace app::firebird
