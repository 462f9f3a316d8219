// Where a command's paper goes when nobody said where.
#pragma once

#include <filesystem>
#include <string>

namespace app::cli {

/// A folder for the files of print jobs.
class JobsFolder {
 public:
  /// The folder named, made where it does not exist; without a name a fresh one among the temporary files, which goes
  /// with the object. Throws host::InputError, one sentence, when it cannot be made or is no folder.
  explicit JobsFolder(const std::string& named);
  ~JobsFolder();
  JobsFolder(const JobsFolder&) = delete;
  JobsFolder& operator=(const JobsFolder&) = delete;

  std::string Path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
  bool fresh_ = false;
};

}  // namespace app::cli
