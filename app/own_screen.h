// A screen that the host brings itself, as it stands in the menu.
#pragma once

#include <functional>
#include <memory>
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

}  // namespace app
