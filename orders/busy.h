// The busy indicator around what may take a moment.
#pragma once

#include "host/kit/busy.h"

namespace orders {

using host::Busy;

}  // namespace orders
