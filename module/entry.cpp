// The one function that libtecelagem.so exports.
#include "host/module.h"
#include "module/screens.h"

extern "C" __attribute__((visibility("default"))) const host::Module* tecelagem_module(std::uint32_t contract_version) {
  if (contract_version != host::kContractVersion) return nullptr;
  return &tecelagem::TheModule();
}
