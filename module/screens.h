// The module's list of screens, and the module as a whole.
#pragma once

#include "host/module.h"

namespace tecelagem {

/// Every screen class of the module, in the order of the menu, and every report.
const host::Module& TheModule();

}  // namespace tecelagem
