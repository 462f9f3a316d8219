// Values kept per user on this computer, in a plain text file.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/host.h"

namespace app::services {

/// One line per value, "key/section/name=value"; line breaks and backslashes in a value are written "\n" and "\\".
/// Whoever edits it by hand may end lines as Windows does. The file is read at the first use and written whole at each
/// Write, first under another name, so that a crash never leaves half of it.
class FileUserSettings : public host::UserSettings {
 public:
  /// `path` need not exist yet; its folder is made at the first Write.
  explicit FileUserSettings(std::string path) : path_(std::move(path)) {}

  std::optional<std::string> Read(std::string_view key, std::string_view section, std::string_view name) override;
  /// Throws host::InputError, one sentence, when the file cannot be written; the value then holds for this run only.
  void Write(std::string_view key, std::string_view section, std::string_view name, std::string_view value) override;

  /// The file of the person who runs the program, in the place that the operating system keeps for it.
  static std::string DefaultPath();

 private:
  void Load();
  void Save() const;

  std::string path_;
  bool loaded_ = false;
  std::map<std::string, std::string, std::less<>> values_;
};

/// The settings in that file; with an empty path those of the person who runs the program, in the place that the
/// operating system keeps for them: the registry of Windows, elsewhere the file at DefaultPath.
std::unique_ptr<host::UserSettings> OpenUserSettings(const std::string& path);

}  // namespace app::services
