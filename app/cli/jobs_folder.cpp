#include "app/cli/jobs_folder.h"

#include <random>
#include <system_error>

#include "host/errors.h"

namespace app::cli {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Refuse(const fs::path& folder, const std::string& why) {
  throw host::InputError("A pasta " + folder.string() + " das impressões " + why + ".");
}

// Only the person who runs the program reads what is printed there.
fs::path Fresh() {
  std::random_device random;
  for (;;) {
    fs::path folder = fs::temp_directory_path() / ("tecelagem-jobs-" + std::to_string(random()));
    std::error_code error;
    if (fs::create_directory(folder, error)) {
      fs::permissions(folder, fs::perms::owner_all, error);
      return folder;
    }
    if (error) Refuse(folder, "não pôde ser criada");
  }
}

}  // namespace

JobsFolder::JobsFolder(const std::string& named) : path_(named), fresh_(named.empty()) {
  if (fresh_) {
    path_ = Fresh();
    return;
  }
  std::error_code error;
  if (fs::exists(path_, error) && !fs::is_directory(path_, error)) Refuse(path_, "é um arquivo");
  fs::create_directories(path_, error);
  if (error) Refuse(path_, "não pôde ser criada");
}

JobsFolder::~JobsFolder() {
  std::error_code ignored;
  if (fresh_) fs::remove_all(path_, ignored);
}

}  // namespace app::cli
