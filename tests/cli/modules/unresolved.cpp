// A module that needs what nobody has.
#include "host/module.h"

extern "C" const host::Module* what_nobody_has(std::uint32_t version);

extern "C" const host::Module* tecelagem_module(std::uint32_t version) { return what_nobody_has(version); }
