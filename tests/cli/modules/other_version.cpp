// A module that was built for another version of the contract, and says so.
#include "host/module.h"

extern "C" const host::Module* tecelagem_module(std::uint32_t) {
  static const host::Module kModule = {host::kContractVersion + 1, nullptr, 0};
  return &kModule;
}
