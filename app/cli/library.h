// A library that is loaded while the program runs. All that differs between systems in this stands in library.cpp.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

namespace app::cli {

/// Loaded as long as the object lives; its names stay its own.
class Library {
 public:
  /// Every symbol is bound now, so that a library that cannot work is refused here and not in the middle of the work.
  /// `what` names it in the sentence of the host::InputError that is thrown when the file is missing or cannot be
  /// loaded
  /// ("O módulo das telas"); nothing stays loaded then.
  static Library Open(const std::string& what, const std::filesystem::path& file);

  /// The function of that name; throws host::InputError, one sentence, when there is none.
  void* Find(const char* name) const;
  /// Throws host::InputError: "`what` `file` não pôde ser carregado: `why`."
  [[noreturn]] void Refuse(const std::string& why) const;

  /// The file of a library, named without what the system adds ("tecelagem"), beside the running program.
  static std::filesystem::path BesideProgram(const std::string& name);

 private:
  struct Close {
    void operator()(void* library) const;
  };
  Library(std::string what, std::filesystem::path file) : what_(std::move(what)), file_(std::move(file)) {}

  std::string what_;
  std::filesystem::path file_;
  std::unique_ptr<void, Close> library_;
};

}  // namespace app::cli
