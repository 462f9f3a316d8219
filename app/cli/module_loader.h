// Loads the screens' module.
#pragma once

#include <filesystem>
#include <utility>

#include "app/cli/library.h"
#include "host/module.h"

namespace app::cli {

/// The module's library, loaded as long as the object lives; everything made by its screens must be gone before.
class LoadedModule {
 public:
  /// Throws host::InputError, one sentence, when the file is missing, is no library, lacks the module's entry or
  /// speaks another contract version; nothing stays loaded then.
  static LoadedModule Load(const std::filesystem::path& file);

  const host::Module& Get() const { return *module_; }

 private:
  LoadedModule(Library library, const host::Module& module) : library_(std::move(library)), module_(&module) {}

  Library library_;
  const host::Module* module_;
};

/// The module beside the program, loaded when it is first asked for and until the program ends. Throws as
/// LoadedModule::Load does, and may be asked again then.
const host::Module& ProgramModule();

/// Where the module belongs: beside the running program.
std::filesystem::path ModuleFileBesideProgram();

}  // namespace app::cli
