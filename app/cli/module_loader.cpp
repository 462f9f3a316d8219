#include "app/cli/module_loader.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <string>
#include <system_error>

#include "host/errors.h"

namespace app::cli {
namespace {

namespace fs = std::filesystem;

#ifdef _WIN32

constexpr const char* kModuleFile = "tecelagem.dll";

fs::path ProgramFile() {
  wchar_t path[32768];
  const DWORD length = GetModuleFileNameW(nullptr, path, 32768);
  return fs::path(path, path + length);
}

void* OpenLibrary(const fs::path& file) { return LoadLibraryW(file.c_str()); }
void* FindEntry(void* library) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), host::kModuleEntry));
}
void Close(void* library) { FreeLibrary(static_cast<HMODULE>(library)); }
std::string Reason() { return std::system_category().message(static_cast<int>(GetLastError())); }

#else

constexpr const char* kModuleFile = "libtecelagem.so";

fs::path ProgramFile() { return fs::read_symlink("/proc/self/exe"); }

// Every symbol is bound now, so that a library that cannot work is refused here and not in the middle of a roll; its
// names stay its own.
void* OpenLibrary(const fs::path& file) { return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL); }
void* FindEntry(void* library) { return dlsym(library, host::kModuleEntry); }
void Close(void* library) { dlclose(library); }
std::string Reason() {
  const char* text = dlerror();
  return text == nullptr ? "motivo desconhecido" : text;
}

#endif

[[noreturn]] void Refuse(const fs::path& file, const std::string& why) {
  throw host::InputError("O módulo das telas " + file.string() + " não pôde ser carregado: " + why + ".");
}

bool Complete(const host::Module& module) {
  if (module.screens == nullptr || module.screen_count == 0) return false;
  for (std::size_t at = 0; at < module.screen_count; ++at) {
    if (module.screens[at].class_name == nullptr || module.screens[at].create == nullptr) return false;
  }
  return true;
}

}  // namespace

void LoadedModule::CloseLibrary::operator()(void* library) const { Close(library); }

LoadedModule LoadedModule::Load(const fs::path& file) {
  std::error_code ignored;
  if (!fs::exists(file, ignored)) Refuse(file, "o arquivo não existe");
  Library library(OpenLibrary(file));
  if (library == nullptr) Refuse(file, Reason());
  void* const found = FindEntry(library.get());
  if (found == nullptr) Refuse(file, std::string("não tem a entrada ") + host::kModuleEntry);
  const auto entry = reinterpret_cast<host::ModuleEntry>(found);
  const host::Module* module = entry(host::kContractVersion);
  if (module == nullptr || module->contract_version != host::kContractVersion) {
    Refuse(file, "é de outra versão; este programa usa o contrato " + std::to_string(host::kContractVersion));
  }
  if (!Complete(*module)) Refuse(file, "a lista de telas está vazia ou incompleta");
  return LoadedModule(std::move(library), *module);
}

fs::path ModuleFileBesideProgram() { return ProgramFile().parent_path() / kModuleFile; }

}  // namespace app::cli
