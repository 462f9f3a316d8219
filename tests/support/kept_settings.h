// A user's settings that are nowhere but here.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "host/host.h"

namespace test {

/// Values kept as long as the object lives.
class KeptSettings : public host::UserSettings {
 public:
  std::optional<std::string> Read(std::string_view key, std::string_view section, std::string_view name) override;
  void Write(std::string_view key, std::string_view section, std::string_view name, std::string_view value) override;
  /// From now on nothing can be written.
  void Lock() { locked_ = true; }

 private:
  std::map<std::string, std::string> values_;
  bool locked_ = false;
};

}  // namespace test
