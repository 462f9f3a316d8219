#include "app/mill/fill.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "app/firebird/attachment.h"

namespace app::mill {
namespace {

// A server looks after its own files.
void BringToDisk(const std::string& database) {
  if (firebird::IsServerPath(database)) return;
  const int file = open(database.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return;
  fsync(file);
  close(file);
}

void Remove(const std::string& database) {
  std::error_code ignored;
  if (!firebird::IsServerPath(database)) std::filesystem::remove(database, ignored);
}

std::unique_ptr<firebird::Database> OpenForced(firebird::ConnectOptions options) {
  BringToDisk(options.database);
  options.forced_writes = true;
  return firebird::Database::Open(options);
}

}  // namespace

std::unique_ptr<firebird::Database> FillAtOnce(const firebird::ConnectOptions& options, FillStart start,
                                               const std::function<void(firebird::Database&)>& fill) {
  firebird::ConnectOptions unforced = options;
  unforced.forced_writes = false;
  auto database =
      start == FillStart::kNewFile ? firebird::Database::Create(unforced) : firebird::Database::Open(unforced);
  try {
    fill(*database);
  } catch (...) {
    database.reset();
    if (start == FillStart::kNewFile) {
      Remove(options.database);
    } else {
      OpenForced(options);
    }
    throw;
  }
  database.reset();
  return OpenForced(options);
}

}  // namespace app::mill
