// What stays of a module after it was refused, used or let go.
#include "app/cli/module_loader.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

#include "host/errors.h"

namespace {

std::string Built(const std::string& library) { return std::string(TECELAGEM_BINARY_DIR) + "/" + library; }

bool IsLoaded(const std::string& file) {
  void* const library = dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (library == nullptr) return false;
  dlclose(library);
  return true;
}

TEST(ModuleLoader, ARefusedModuleLeavesNothingBehind) {
  for (const char* kind : {"other_version", "refuses", "empty", "incomplete_report", "no_entry", "unresolved"}) {
    const std::string file = Built("libtest_module_" + std::string(kind) + ".so");
    EXPECT_THROW(app::cli::LoadedModule::Load(file), host::InputError) << kind;
    EXPECT_FALSE(IsLoaded(file)) << kind;
  }
}

TEST(ModuleLoader, AModuleIsLoadedAsLongAsItsObjectLives) {
  const std::string file = Built("libtecelagem.so");
  {
    const app::cli::LoadedModule module = app::cli::LoadedModule::Load(file);
    EXPECT_TRUE(IsLoaded(file));
    ASSERT_GT(module.Get().screen_count, 0u);
    EXPECT_EQ(module.Get().contract_version, host::kContractVersion);
  }
  EXPECT_FALSE(IsLoaded(file));
}

TEST(ModuleLoader, ItsNamesStayItsOwn) {
  const app::cli::LoadedModule module = app::cli::LoadedModule::Load(Built("libtecelagem.so"));
  EXPECT_EQ(dlsym(RTLD_DEFAULT, host::kModuleEntry), nullptr);
}

}  // namespace
