#include "app/cli/module_loader.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "app/reports.h"

namespace app::cli {
namespace {

bool Complete(const host::Module& module) {
  if (module.screens == nullptr || module.screen_count == 0) return false;
  for (std::size_t at = 0; at < module.screen_count; ++at) {
    if (module.screens[at].class_name == nullptr || module.screens[at].create == nullptr) return false;
  }
  const auto reports = ReportsOf(module);
  return std::all_of(reports.begin(), reports.end(), [](const host::ListedReport& report) {
    return report.name != nullptr && report.caption != nullptr && report.print_script != nullptr;
  });
}

}  // namespace

LoadedModule LoadedModule::Load(const std::filesystem::path& file) {
  Library library = Library::Open("O módulo das telas", file);
  const auto entry = reinterpret_cast<host::ModuleEntry>(library.Find(host::kModuleEntry));
  const host::Module* module = entry(host::kContractVersion);
  if (module == nullptr || module->contract_version != host::kContractVersion) {
    library.Refuse("é de outra versão; este programa usa o contrato " + std::to_string(host::kContractVersion));
  }
  if (!Complete(*module)) library.Refuse("a lista de telas está vazia, ou uma lista está incompleta");
  return LoadedModule(std::move(library), *module);
}

const host::Module& ProgramModule() {
  static const auto* const kModule = new LoadedModule(LoadedModule::Load(ModuleFileBesideProgram()));
  return kModule->Get();
}

std::filesystem::path ModuleFileBesideProgram() { return Library::BesideProgram("tecelagem"); }

}  // namespace app::cli
