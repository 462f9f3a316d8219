// The screens of this folder, for the menu.
#pragma once

#include <vector>

#include "app/own_screen.h"

namespace app::admin {

std::vector<OwnScreenClass> Screens();

}  // namespace app::admin
