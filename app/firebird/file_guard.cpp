#include "app/firebird/file_guard.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <fstream>
#include <string>
#include <system_error>
#include <thread>

#include "host/errors.h"

namespace app::firebird {
namespace {

namespace fs = std::filesystem;

// Far beyond any page of the file; a mark is a lock on one byte from here on.
constexpr off_t kRegion = off_t{1} << 61;
constexpr off_t kRegionSize = off_t{1} << 32;

struct flock Bytes(short type, off_t first, off_t count) {
  struct flock bytes {};
  bytes.l_type = type;
  bytes.l_whence = SEEK_SET;
  bytes.l_start = kRegion + first;
  bytes.l_len = count;
  return bytes;
}

// The same number for all processes of this computer that use the directory.
off_t MarkOf(int directory) {
  struct stat info {};
  fstat(directory, &info);
  std::string boot;
  std::ifstream("/proc/sys/kernel/random/boot_id") >> boot;
  std::uint64_t hash = 14695981039346656037u;
  const std::string key = boot + "/" + std::to_string(info.st_dev) + "/" + std::to_string(info.st_ino);
  for (const char letter : key) hash = (hash ^ static_cast<unsigned char>(letter)) * 1099511628211u;
  return static_cast<off_t>((hash ^ (hash >> 32)) & 0x7fffffff) + 1;
}

bool AnyoneElse(int file, off_t first, off_t count) {
  struct flock bytes = Bytes(F_WRLCK, first, count);
  return fcntl(file, F_OFD_GETLK, &bytes) == 0 && bytes.l_type != F_UNLCK;
}

}  // namespace

FileGuard::FileGuard(const fs::path& file) : file_(file), path_(file.string() + ".lock") { OpenDirectory(); }

FileGuard::~FileGuard() {
  if (mark_ >= 0) {
    struct flock alone = Bytes(F_WRLCK, 0, kRegionSize);
    // Whoever comes now waits for this lock and then finds that its directory is gone.
    if (fcntl(mark_, F_OFD_SETLK, &alone) == 0 && StillThere()) {
      std::error_code ignored;
      fs::remove_all(path_, ignored);
    }
    close(mark_);
  }
  if (directory_ >= 0) close(directory_);
}

void FileGuard::OpenDirectory() {
  std::error_code error;
  fs::create_directory(path_, error);
  directory_ = open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (directory_ < 0 || faccessat(directory_, ".", W_OK | X_OK, AT_EACCESS) != 0) {
    if (directory_ >= 0) close(directory_);
    throw host::DatabaseError(
        "A pasta \"" + file_.parent_path().string() + "\" não permite gravação; o banco de dados precisa dela.", 0, "");
  }
}

bool FileGuard::StillThere() const {
  struct stat by_name {};
  struct stat by_descriptor {};
  return stat(path_.c_str(), &by_name) == 0 && fstat(directory_, &by_descriptor) == 0 &&
         by_name.st_ino == by_descriptor.st_ino && by_name.st_dev == by_descriptor.st_dev;
}

bool FileGuard::TryMark() const {
  const off_t own = MarkOf(directory_);
  struct flock bytes = Bytes(F_RDLCK, own, 1);
  if (fcntl(mark_, F_OFD_SETLK, &bytes) != 0) return false;  // the last one is just leaving
  if (!AnyoneElse(mark_, 0, own) && !AnyoneElse(mark_, own + 1, kRegionSize - own - 1)) return true;
  struct flock off = Bytes(F_UNLCK, 0, kRegionSize);
  fcntl(mark_, F_OFD_SETLK, &off);
  return false;
}

void FileGuard::Mark() {
  mark_ = open(file_.c_str(), O_RDWR | O_CLOEXEC);
  if (mark_ < 0) {
    throw host::DatabaseError("O arquivo \"" + file_.string() + "\" não permite gravação.", 0, "");
  }
  constexpr int kAttempts = 100;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (TryMark()) {
      if (StillThere()) return;
      struct flock off = Bytes(F_UNLCK, 0, kRegionSize);
      fcntl(mark_, F_OFD_SETLK, &off);
      close(directory_);
      directory_ = -1;
      OpenDirectory();
      continue;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (!StillThere()) {
      close(directory_);
      directory_ = -1;
      OpenDirectory();
    }
  }
  throw host::DatabaseError(
      "O banco de dados \"" + file_.string() + "\" está em uso por outro caminho ou por outro computador.", 0, "");
}

}  // namespace app::firebird
