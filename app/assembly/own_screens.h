// The host's own screens: registers that a mill without another application needs, and its administration.
#pragma once

#include <span>

#include "app/own_screen.h"

namespace app {

/// In the order of the menu; lives as long as the program.
std::span<const OwnScreenClass> OwnScreens();

}  // namespace app
