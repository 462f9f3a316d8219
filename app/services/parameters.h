// Installation parameters: texts by group and number.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "app/firebird/database.h"

namespace app::services {

/// Keeps all parameters of the installation in memory after the first read, because a roll asks for half a dozen of
/// them. What another station changed is seen after Forget, which the host calls whenever a screen is opened from the
/// menu.
class Parameters {
 public:
  explicit Parameters(firebird::Database& database) : database_(database) {}

  /// The parameter's text; empty when it was never set.
  std::string Read(std::string_view group, int number);
  /// Stores the text; the caller makes it durable. Throws host::DatabaseError, nothing is changed then.
  void Write(std::string_view group, int number, std::string_view value);
  void Forget() { values_.reset(); }

 private:
  using Key = std::pair<std::string, int>;
  firebird::Database& database_;
  std::optional<std::map<Key, std::string>> values_;
};

}  // namespace app::services
