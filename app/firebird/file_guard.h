// Makes all processes that use one database file agree on its lock directory.
#pragma once

#include <filesystem>

namespace app::firebird {

/// Processes that share a file through different lock directories overwrite each other's work without an error. The
/// directory is "<file>.lock" beside the file; besides, every process holds a mark on the file itself that names the
/// directory and the computer, and refuses the file where it meets another mark (the file reached by a second name, or
/// from a second computer over the network).
class FileGuard {
 public:
  /// Creates the lock directory of `file` (which need not exist yet). Throws host::DatabaseError when that fails.
  explicit FileGuard(const std::filesystem::path& file);
  /// Takes the mark off; the last one to leave removes the lock directory.
  ~FileGuard();
  FileGuard(const FileGuard&) = delete;
  FileGuard& operator=(const FileGuard&) = delete;

  /// Marks the file, which exists by now. Throws host::DatabaseError when it is used through another lock directory.
  void Mark();
  /// The lock directory, for the engine's next attach or detach.
  int Directory() const { return directory_; }

 private:
  void OpenDirectory();
  bool StillThere() const;
  bool TryMark() const;

  std::filesystem::path file_;
  std::filesystem::path path_;
  int directory_ = -1;
  int mark_ = -1;
};

}  // namespace app::firebird
