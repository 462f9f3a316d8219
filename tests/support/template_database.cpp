#include "support/template_database.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "app/embedded.h"
#include "app/firebird/database.h"
#include "app/firebird/migrations.h"

namespace test {
namespace {

namespace fs = std::filesystem;

const fs::path& Folder() {
  static const fs::path kFolder = [] {
    fs::path folder = fs::path(TECELAGEM_BINARY_DIR) / "test-databases";
    fs::create_directories(folder);
    return folder;
  }();
  return kFolder;
}

// FNV-1a over names and texts: another structure is another original.
std::string StructureName() {
  std::uint64_t hash = 14695981039346656037U;
  const auto add = [&](std::string_view text) {
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
  };
  for (const app::EmbeddedFile& file : app::SchemaFiles()) {
    add(file.name);
    add(file.text);
  }
  char name[40];
  std::snprintf(name, sizeof name, "original-%016llx.fdb", static_cast<unsigned long long>(hash));
  return name;
}

void Build(const fs::path& path) {
  std::vector<app::firebird::Migration> migrations;
  for (const app::EmbeddedFile& file : app::SchemaFiles()) {
    migrations.push_back({std::string(file.name), std::string(file.text)});
  }
  const fs::path draft = path.string() + ".draft";
  RemoveDatabase(draft.string());
  app::firebird::ConnectOptions options;
  options.database = draft.string();
  app::firebird::Migrate(*app::firebird::Database::Create(options), migrations);
  fs::rename(draft, path);
}

// Where the copies live: in memory where the system offers it, because forced writes to a disk are most of a test's
// time and no test takes the power away. Copies of programs that were killed are cleared.
const fs::path& CopyFolder() {
  static const fs::path kFolder = [] {
    const fs::path memory = "/dev/shm";
    if (access(memory.c_str(), W_OK) != 0) return Folder();
    fs::path folder = memory / ("tecelagem-tests-" + std::to_string(getuid()));
    fs::create_directories(folder);
    for (const auto& entry : fs::directory_iterator(folder)) {
      const pid_t owner = std::atoi(entry.path().filename().c_str());
      std::error_code ignored;
      if (owner > 0 && kill(owner, 0) != 0 && errno == ESRCH) fs::remove_all(entry.path(), ignored);
    }
    return folder;
  }();
  return kFolder;
}

class FileLock {
 public:
  explicit FileLock(const fs::path& path) : descriptor_(open(path.c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0600)) {
    if (descriptor_ < 0 || flock(descriptor_, LOCK_EX) != 0) throw std::runtime_error("cannot lock " + path.string());
  }
  ~FileLock() { close(descriptor_); }
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

 private:
  int descriptor_;
};

fs::path Original() {
  const fs::path path = Folder() / StructureName();
  const FileLock lock(Folder() / "original.guard");
  if (!fs::exists(path)) Build(path);
  return path;
}

}  // namespace

std::string FreshDatabase() {
  static const fs::path kOriginal = Original();
  static std::atomic<int> counter = 0;
  const fs::path path = CopyFolder() / (std::to_string(getpid()) + "-" + std::to_string(++counter) + ".fdb");
  fs::copy_file(kOriginal, path, fs::copy_options::overwrite_existing);
  return path.string();
}

void RemoveDatabase(const std::string& path) {
  for (const char* ending : {"", ".lock", ".settings"}) {
    std::error_code ignored;
    fs::remove_all(path + ending, ignored);
  }
}

}  // namespace test
