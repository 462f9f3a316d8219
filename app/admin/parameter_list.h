// What the installation's parameters mean, and which values they take.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace app::admin {

struct AllowedValue {
  std::string_view value;  // empty: the parameter may stay empty
  std::string_view meaning;
};

struct ParameterInfo {
  std::string_view group;
  int number;
  std::string_view meaning;
  std::vector<AllowedValue> allowed;  // empty: any text
};

/// Those that the program reads, by group and number.
std::span<const ParameterInfo> KnownParameters();
/// Null for a parameter that only other programs read; it takes any value.
const ParameterInfo* FindParameter(std::string_view group, int number);

/// Why the parameter does not take this value, as one sentence that names those it takes; nothing when it does.
std::optional<std::string> ParameterObjection(const ParameterInfo& parameter, std::string_view value);

}  // namespace app::admin
