// One value of a row: of a query's result, of an in-memory dataset, of a lookup's answer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "host/date.h"

namespace host {

/// Null, text (UTF-8), integer, floating-point number or date.
class Value {
 public:
  Value() = default;
  Value(std::string text) : data_(std::move(text)) {}              // NOLINT(google-explicit-constructor)
  Value(std::string_view text) : data_(std::string(text)) {}       // NOLINT(google-explicit-constructor)
  Value(const char* text) : data_(std::string(text)) {}            // NOLINT(google-explicit-constructor)
  Value(int number) : data_(static_cast<std::int64_t>(number)) {}  // NOLINT(google-explicit-constructor)
  Value(std::int64_t number) : data_(number) {}                    // NOLINT(google-explicit-constructor)
  Value(double number) : data_(number) {}                          // NOLINT(google-explicit-constructor)
  Value(Date date) : data_(date) {}                                // NOLINT(google-explicit-constructor)

  /// A null that is there as long as the program, for whoever hands out references.
  static const Value& Null();

  bool IsNull() const { return std::holds_alternative<std::monostate>(data_); }
  bool IsText() const { return std::holds_alternative<std::string>(data_); }
  bool IsNumber() const { return std::holds_alternative<double>(data_) || std::holds_alternative<std::int64_t>(data_); }
  bool IsInteger() const { return std::holds_alternative<std::int64_t>(data_); }
  bool IsDate() const { return std::holds_alternative<Date>(data_); }

  /// Null is empty text; a number its shortest text with a point; a date "DD/MM/YYYY".
  std::string AsText() const;
  /// Null and text that is no number are 0; a fraction goes to the nearest whole number, halves away from zero.
  std::int64_t AsInteger() const;
  /// Null and text that is no number are 0.
  double AsFloat() const;
  /// Null and anything that is no date are the zero date.
  Date AsDate() const;

  /// Equal in kind and value; 1 and 1.0 are equal.
  friend bool operator==(const Value& left, const Value& right);

 private:
  std::variant<std::monostate, std::string, std::int64_t, double, Date> data_;
};

}  // namespace host
