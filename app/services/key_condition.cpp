#include "app/services/key_condition.h"

#include <stdexcept>

#include "host/text.h"

namespace app::services {

std::string QuoteText(std::string_view text) {
  std::string literal = "'";
  for (const char c : text) {
    if (c == '\'') literal += '\'';
    literal += c;
  }
  literal += '\'';
  return literal;
}

std::string KeyCondition(std::string_view columns, std::string_view quoted, char separator) {
  const auto names = host::SplitOutsideQuotes(columns, separator);
  const auto values = host::SplitOutsideQuotes(quoted, separator);
  if (names.size() != values.size()) {
    throw std::invalid_argument("key columns \"" + std::string(columns) + "\" and values differ in number");
  }
  std::string condition;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string name = host::Trim(names[i]);
    const std::string value = host::Trim(values[i]);
    if (name.empty() || value.empty()) throw std::invalid_argument("empty key column or value");
    if (i > 0) condition += " AND ";
    condition += name;
    condition += " = ";
    condition += value;
  }
  return condition;
}

}  // namespace app::services
