#include "app/cli/library.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <system_error>
#include <utility>

#include "host/errors.h"

namespace app::cli {
namespace {

namespace fs = std::filesystem;

#ifdef _WIN32

std::string FileName(const std::string& name) { return name + ".dll"; }

fs::path ProgramFile() {
  wchar_t path[32768];
  const DWORD length = GetModuleFileNameW(nullptr, path, 32768);
  return fs::path(path, path + length);
}

void* OpenLibrary(const fs::path& file) { return LoadLibraryW(file.c_str()); }
void* FindIn(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}
void CloseLibrary(void* library) { FreeLibrary(static_cast<HMODULE>(library)); }
std::string Reason() { return std::system_category().message(static_cast<int>(GetLastError())); }

#else

std::string FileName(const std::string& name) { return "lib" + name + ".so"; }

fs::path ProgramFile() { return fs::read_symlink("/proc/self/exe"); }

void* OpenLibrary(const fs::path& file) { return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL); }
void* FindIn(void* library, const char* name) { return dlsym(library, name); }
void CloseLibrary(void* library) { dlclose(library); }
std::string Reason() {
  const char* text = dlerror();
  return text == nullptr ? "motivo desconhecido" : text;
}

#endif

}  // namespace

void Library::Close::operator()(void* library) const { CloseLibrary(library); }

Library Library::Open(const std::string& what, const fs::path& file) {
  Library library(what, file);
  std::error_code ignored;
  if (!fs::exists(file, ignored)) library.Refuse("o arquivo não existe");
  library.library_.reset(OpenLibrary(file));
  if (library.library_ == nullptr) library.Refuse(Reason());
  return library;
}

void* Library::Find(const char* name) const {
  void* const found = FindIn(library_.get(), name);
  if (found == nullptr) Refuse(std::string("não tem a entrada ") + name);
  return found;
}

void Library::Refuse(const std::string& why) const {
  throw host::InputError(what_ + " " + file_.string() + " não pôde ser carregado: " + why + ".");
}

fs::path Library::BesideProgram(const std::string& name) { return ProgramFile().parent_path() / FileName(name); }

}  // namespace app::cli
