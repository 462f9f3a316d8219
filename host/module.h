// The entry of the loadable module.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace host {

class Host;
class Screen;

/// Raised with every change that an older host or module would not survive.
inline constexpr std::uint32_t kContractVersion = 3;

struct ScreenClass {
  const char* class_name;  // "TfmCadLoteTec"
  const char* menu;        // menu heading, Portuguese; empty when only another screen opens it
  const char* caption;     // menu entry
  std::unique_ptr<Screen> (*create)(Host&);
};

struct Module {
  std::uint32_t contract_version;
  const ScreenClass* screens;
  std::size_t screen_count;
};

/// Name and type of the module's one exported function. It hands back the list of screen classes, which lives as long
/// as the module is loaded, or null when it does not speak the version asked for; nothing is created before that.
inline constexpr const char* kModuleEntry = "tecelagem_module";
using ModuleEntry = const Module* (*)(std::uint32_t contract_version);

}  // namespace host
