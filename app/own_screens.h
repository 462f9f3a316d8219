// The host's own screens: registers that a mill without another application needs, and its administration.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string_view>

#include "host/kit/screen.h"

namespace app {

class Application;

struct OwnScreenClass {
  std::string_view class_name;  // "TfmMateriais"
  std::string_view menu;        // heading
  std::string_view caption;     // entry
  bool for_administrator;       // in nobody else's menu
  std::function<std::unique_ptr<host::Screen>(Application&)> create;
};

/// In the order of the menu; lives as long as the program.
std::span<const OwnScreenClass> OwnScreens();

}  // namespace app
