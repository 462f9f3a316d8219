#include "app/assembly/own_screens.h"

#include <vector>

#include "app/admin/screens.h"
#include "app/registers/screens.h"

namespace app {

std::span<const OwnScreenClass> OwnScreens() {
  static const std::vector<OwnScreenClass> kScreens = [] {
    std::vector<OwnScreenClass> screens = registers::Screens();
    for (OwnScreenClass& screen : admin::Screens()) screens.push_back(std::move(screen));
    return screens;
  }();
  return kScreens;
}

}  // namespace app
