// Values kept per user in the registry of Windows.
#pragma once

#ifdef _WIN32

#include <optional>
#include <string>
#include <string_view>

#include "host/host.h"

namespace app::services {

/// HKEY_CURRENT_USER, key and section as the path ("Venda\Parametros"), name as the value. Whole numbers are kept as
/// numbers (REG_DWORD), as other programs of the mill keep them there, everything else as text; both are read.
class RegistryUserSettings : public host::UserSettings {
 public:
  std::optional<std::string> Read(std::string_view key, std::string_view section, std::string_view name) override;
  /// Throws host::InputError, one sentence, when the registry does not take it.
  void Write(std::string_view key, std::string_view section, std::string_view name, std::string_view value) override;
};

}  // namespace app::services

#endif
