#include "host/value.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "host/decimal.h"
#include "host/text.h"

namespace host {
namespace {

// Beyond this a double no longer is a whole number of 64 bits.
constexpr double kLimit = 9.2e18;

}  // namespace

const Value& Value::Null() {
  static const Value kNull;
  return kNull;
}

std::string Value::AsText() const {
  if (const auto* text = std::get_if<std::string>(&data_)) return *text;
  if (const auto* integer = std::get_if<std::int64_t>(&data_)) return std::to_string(*integer);
  if (const auto* number = std::get_if<double>(&data_)) return PointText(*number);
  if (const auto* date = std::get_if<Date>(&data_)) return date->ToDisplay();
  return {};
}

std::int64_t Value::AsInteger() const {
  if (const auto* integer = std::get_if<std::int64_t>(&data_)) return *integer;
  if (const auto* text = std::get_if<std::string>(&data_)) {
    const std::string trimmed = Trim(*text);
    std::int64_t integer = 0;
    const auto end = std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), integer);
    if (end.ec == std::errc() && end.ptr == trimmed.data() + trimmed.size()) return integer;
  }
  const double number = AsFloat();
  if (!std::isfinite(number)) return 0;
  if (number >= kLimit) return std::numeric_limits<std::int64_t>::max();
  if (number <= -kLimit) return std::numeric_limits<std::int64_t>::min();
  return std::llround(number);
}

double Value::AsFloat() const {
  if (const auto* number = std::get_if<double>(&data_)) return *number;
  if (const auto* integer = std::get_if<std::int64_t>(&data_)) return static_cast<double>(*integer);
  if (const auto* text = std::get_if<std::string>(&data_)) return ParseTyped(*text).value_or(0.0);
  return 0;
}

Date Value::AsDate() const {
  if (const auto* date = std::get_if<Date>(&data_)) return *date;
  if (const auto* text = std::get_if<std::string>(&data_)) {
    if (const auto shown = Date::FromDisplay(*text)) return *shown;
    if (const auto iso = Date::FromIso(*text)) return *iso;
  }
  return {};
}

bool operator==(const Value& left, const Value& right) {
  if (left.IsInteger() && right.IsInteger()) return left.AsInteger() == right.AsInteger();
  if (left.IsNumber() && right.IsNumber()) return left.AsFloat() == right.AsFloat();
  return left.data_ == right.data_;
}

}  // namespace host
