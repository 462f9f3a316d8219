// What a file brought in from outside must keep to, beyond what the database itself demands.
#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace app::tables {

/// The tables that may be imported, each after those it refers to.
std::span<const std::string_view> ImportOrder();

/// Columns whose values, when given, must exist as these columns of another table.
struct Reference {
  std::string_view table;
  std::vector<std::string_view> columns;
  std::string_view target;
  std::vector<std::string_view> target_columns;
  std::string_view exempt;  // a value that stands for "none in particular"; "*" exempts whatever holds an asterisk
};
const std::vector<Reference>& References();
/// True for a value that stands for "none in particular" there.
bool IsExempt(const Reference& reference, std::string_view value);

struct Limits {
  double lowest;
  double highest;
};
/// Limits of a number column, when it has any; "" as table stands for every table.
std::optional<Limits> LimitsOf(std::string_view table, std::string_view column);

/// True for columns that hold "S" or "N" only.
bool IsFlag(std::string_view column);

}  // namespace app::tables
