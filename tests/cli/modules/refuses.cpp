// A module that does not speak the program's version.
#include "host/module.h"

extern "C" const host::Module* tecelagem_module(std::uint32_t) { return nullptr; }
