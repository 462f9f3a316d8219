// The module's list of screens.
#pragma once

#include "host/module.h"

namespace tecelagem {

/// Every screen class of the module, in the order of the menu.
const host::Module& ScreenList();

}  // namespace tecelagem
