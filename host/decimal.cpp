#include "host/decimal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "host/errors.h"
#include "host/text.h"

namespace host {
namespace {

constexpr std::size_t kMostWholeDigits = 15;  // what a double still tells apart

// A number as decimal digits, which is what people round.
struct Digits {
  bool negative = false;
  std::string whole;     // without leading zeros, "0" for none
  std::string fraction;  // as long as it is
};

Digits DigitsOf(double value) {
  if (!std::isfinite(value)) throw InputError("O cálculo não resultou em um número válido.");
  std::array<char, 1100> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed).ptr;
  std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  Digits digits;
  if (text.front() == '-') {
    digits.negative = true;
    text.remove_prefix(1);
  }
  const std::size_t point = text.find('.');
  digits.whole = text.substr(0, point);
  if (point != std::string_view::npos) digits.fraction = text.substr(point + 1);
  return digits;
}

void RoundHalfAway(Digits& digits, std::size_t decimals) {
  if (digits.fraction.size() <= decimals) return;
  const bool up = digits.fraction[decimals] >= '5';
  digits.fraction.resize(decimals);
  if (!up) return;
  for (std::string* part : {&digits.fraction, &digits.whole}) {
    const std::size_t last = part->find_last_not_of('9');
    const std::size_t nines = last == std::string::npos ? 0 : last + 1;
    std::fill(part->begin() + static_cast<std::ptrdiff_t>(nines), part->end(), '0');
    if (last == std::string::npos) continue;  // carried into the part before
    ++(*part)[last];
    return;
  }
  digits.whole.insert(digits.whole.begin(), '1');
}

bool IsZero(const Digits& digits) {
  const auto zero = [](char c) { return c == '0'; };
  return std::all_of(digits.whole.begin(), digits.whole.end(), zero) &&
         std::all_of(digits.fraction.begin(), digits.fraction.end(), zero);
}

struct Pattern {
  std::string_view before;
  std::string_view after;
  std::size_t least_whole = 0;
  std::size_t least_decimals = 0;
  std::size_t most_decimals = 0;
};

Pattern ReadPattern(std::string_view text) {
  Pattern pattern;
  const std::size_t start = std::min(text.find_first_of("0#."), text.size());
  const std::size_t end = std::min(text.find_first_not_of("0#.", start), text.size());
  pattern.before = text.substr(0, start);
  pattern.after = text.substr(end);
  const std::string_view number = text.substr(start, end - start);
  const std::size_t point = std::min(number.find('.'), number.size());
  const std::string_view whole = number.substr(0, point);
  const std::string_view decimals = point < number.size() ? number.substr(point + 1) : std::string_view();
  pattern.least_whole = static_cast<std::size_t>(std::count(whole.begin(), whole.end(), '0'));
  pattern.most_decimals = decimals.size();
  const std::size_t last_zero = decimals.rfind('0');
  pattern.least_decimals = last_zero == std::string_view::npos ? 0 : last_zero + 1;
  return pattern;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The digits of the whole part without what separates the thousands; nothing when that stands at the wrong places.
std::optional<std::string> WithoutThousands(std::string_view whole) {
  const std::size_t first = whole.find_first_of(". ");
  if (first == std::string_view::npos) return std::string(whole);
  if (first == 0 || first > 3) return std::nullopt;
  std::string digits(whole.substr(0, first));
  for (std::size_t at = first; at < whole.size(); at += 4) {
    if (whole[at] != whole[first] || whole.size() - at < 4) return std::nullopt;
    digits += whole.substr(at + 1, 3);
  }
  return digits;
}

}  // namespace

std::string FormatNumber(std::string_view pattern, double value, char sign) {
  const Pattern shape = ReadPattern(pattern);
  Digits digits = DigitsOf(value);
  RoundHalfAway(digits, shape.most_decimals);
  const bool negative = digits.negative && !IsZero(digits);
  if (digits.whole == "0") digits.whole.clear();
  if (digits.whole.size() < shape.least_whole) digits.whole.insert(0, shape.least_whole - digits.whole.size(), '0');
  while (digits.fraction.size() > shape.least_decimals && digits.fraction.back() == '0') digits.fraction.pop_back();
  while (digits.fraction.size() < shape.least_decimals) digits.fraction += '0';
  std::string text(shape.before);
  if (negative) text += '-';
  text += digits.whole;
  if (!digits.fraction.empty()) {
    text += sign;
    text += digits.fraction;
  }
  text += shape.after;
  return text;
}

double RoundTo(double value, int decimals) {
  Digits digits = DigitsOf(value);
  RoundHalfAway(digits, static_cast<std::size_t>(std::max(decimals, 0)));
  const std::string text = (digits.negative ? "-" : "") + digits.whole + "." + digits.fraction + "0";
  double rounded = 0;
  std::from_chars(text.data(), text.data() + text.size(), rounded);
  return rounded == 0 ? 0.0 : rounded;  // never -0
}

double WithoutNoise(double value) { return RoundTo(value, 9); }

std::string PointText(double value) {
  const Digits digits = DigitsOf(value);
  std::string text = digits.negative && !IsZero(digits) ? "-" : "";
  text += digits.whole;
  if (!digits.fraction.empty()) text += "." + digits.fraction;
  return text;
}

std::optional<double> ParseTyped(std::string_view text) {
  const std::string trimmed = Trim(text);
  std::string_view rest = trimmed;
  if (rest.empty()) return 0.0;
  const bool negative = rest.front() == '-';
  if (negative || rest.front() == '+') rest.remove_prefix(1);

  const bool comma = rest.find(',') != std::string_view::npos;
  const std::size_t sign = std::min(rest.find(comma ? ',' : '.'), rest.size());
  std::string whole(rest.substr(0, sign));
  const std::string_view fraction = sign < rest.size() ? rest.substr(sign + 1) : std::string_view();
  if (comma) {
    const auto digits = WithoutThousands(whole);
    if (!digits) return std::nullopt;
    whole = *digits;
  }
  if (whole.empty() && fraction.empty()) return std::nullopt;
  if (!std::all_of(whole.begin(), whole.end(), IsDigit)) return std::nullopt;
  if (!std::all_of(fraction.begin(), fraction.end(), IsDigit)) return std::nullopt;
  const std::size_t significant = whole.size() - std::min(whole.find_first_not_of('0'), whole.size());
  if (significant > kMostWholeDigits) return std::nullopt;

  const std::string number = "0" + whole + "." + std::string(fraction) + "0";
  double value = 0;
  std::from_chars(number.data(), number.data() + number.size(), value);
  return negative && value != 0 ? -value : value;
}

std::optional<int> ParseTypedInteger(std::string_view text) {
  const auto number = ParseTyped(text);
  if (!number || *number != std::trunc(*number)) return std::nullopt;
  if (*number < std::numeric_limits<int>::min() || *number > std::numeric_limits<int>::max()) return std::nullopt;
  return static_cast<int>(*number);
}

}  // namespace host
