// Which screens a Mill offers.
#pragma once

#include "host/module.h"

namespace test {

/// All screens of the module. A test program that brings screens of its own defines this function itself.
const host::Module& ModuleUnderTest();

}  // namespace test
