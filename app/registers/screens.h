// The screens of this folder, for the menu.
#pragma once

#include <vector>

#include "app/own_screen.h"

namespace app::registers {

std::vector<OwnScreenClass> Screens();

}  // namespace app::registers
