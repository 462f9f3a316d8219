#include "support/kept_settings.h"

#include "host/errors.h"

namespace test {

std::optional<std::string> KeptSettings::Read(std::string_view key, std::string_view section, std::string_view name) {
  const auto found = values_.find(std::string(key) + "/" + std::string(section) + "/" + std::string(name));
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

void KeptSettings::Write(std::string_view key, std::string_view section, std::string_view name,
                         std::string_view value) {
  if (locked_) throw host::InputError("Não foi possível gravar as preferências.");
  values_[std::string(key) + "/" + std::string(section) + "/" + std::string(name)] = value;
}

}  // namespace test
