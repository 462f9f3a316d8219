#include "app/firebird/embedded_root.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "app/firebird/engine.h"
#include "host/errors.h"

namespace app::firebird {
namespace {

namespace fs = std::filesystem;

// Several processes of one computer share a file only in this mode. A station that waits for another learns of a true
// deadlock, and that its time is over, after DeadlockTimeout seconds.
constexpr const char* kSettings =
    "ServerMode = SuperClassic\n"
    "Providers = Remote,Engine12,Loopback\n"
    "DefaultDbCachePages = 2048\n"
    "DeadlockTimeout = 1\n"
    "RemoteAccess = false\n"
    "WireCrypt = Enabled\n"
    "AuthClient = Srp256,Srp,Legacy_Auth\n";

[[noreturn]] void Refuse(const fs::path& root) {
  throw host::DatabaseError("A pasta \"" + root.string() + "\" do banco de dados não pôde ser preparada.", 0, "");
}

// Several programs may start at once: a file is written under a name of this process and then takes its place whole.
fs::path Temporary(const fs::path& target) { return target.string() + "." + std::to_string(getpid()) + ".tmp"; }

std::string Read(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

void WriteText(const fs::path& target, const std::string& text) {
  std::error_code ignored;
  if (fs::exists(target, ignored) && Read(target) == text) return;
  const fs::path temporary = Temporary(target);
  std::ofstream(temporary, std::ios::binary) << text;
  fs::rename(temporary, target);
}

// A copy, not a link: the engine refuses to load the collations through a link.
void CopyFile(const fs::path& source, const fs::path& target) {
  std::error_code ignored;
  if (fs::exists(target, ignored) && fs::file_size(target) == fs::file_size(source) &&
      fs::last_write_time(target) == fs::last_write_time(source)) {
    return;
  }
  const fs::path temporary = Temporary(target);
  fs::copy_file(source, temporary, fs::copy_options::overwrite_existing);
  fs::last_write_time(temporary, fs::last_write_time(source));
  fs::rename(temporary, target);
}

// Where the installed engine may keep its files, seen from the client library.
std::vector<fs::path> InstalledFolders() {
  std::vector<fs::path> folders;
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&api::fb_get_master_interface), &info) == 0) return folders;
  std::error_code error;
  const fs::path library = fs::canonical(info.dli_fname, error).parent_path();
  folders.push_back(library.parent_path());
  for (const auto& entry : fs::directory_iterator(library / "firebird", error)) folders.push_back(entry.path());
  return folders;
}

void CopyInstalled(const fs::path& root) {
  for (const fs::path& folder : InstalledFolders()) {
    std::error_code ignored;
    if (!fs::exists(folder / "intl" / "libfbintl.so", ignored)) continue;
    fs::create_directories(root / "intl");
    CopyFile(folder / "intl" / "libfbintl.so", root / "intl" / "libfbintl.so");
    CopyFile(folder / "intl" / "fbintl.conf", root / "intl" / "fbintl.conf");
    if (fs::exists(folder / "firebird.msg", ignored)) CopyFile(folder / "firebird.msg", root / "firebird.msg");
    return;
  }
  throw host::DatabaseError("O Firebird instalado neste computador não está completo: falta libfbintl.", 0, "");
}

// The engine reads the name of its lock directory once per process, but every database has its own: the name is that
// of an open descriptor, and the descriptor is changed.
int LockSlot() {
  static const int kSlot = [] {
    const int any = open("/", O_PATH | O_DIRECTORY | O_CLOEXEC);
    return any < 0 ? any : fcntl(any, F_DUPFD_CLOEXEC, 100);
  }();
  return kSlot;
}

}  // namespace

fs::path EmbeddedRoot() {
  const auto variable = [](const char* name) {
    const char* value = std::getenv(name);
    return std::string(value == nullptr ? "" : value);
  };
  if (const std::string own = variable("TECELAGEM_FIREBIRD"); !own.empty()) return own;
  if (const std::string cache = variable("XDG_CACHE_HOME"); !cache.empty())
    return fs::path(cache) / "tecelagem/firebird";
  if (const std::string home = variable("HOME"); !home.empty()) return fs::path(home) / ".cache/tecelagem/firebird";
  return fs::temp_directory_path() / ("tecelagem-" + std::to_string(getuid())) / "firebird";
}

void PrepareLibrary() {
  static bool prepared = false;
  if (prepared) return;
  const fs::path root = fs::absolute(EmbeddedRoot());
  try {
    fs::create_directories(root / "tmp");
    WriteText(root / "firebird.conf", std::string(kSettings) + "TempDirectories = " + (root / "tmp").string() + "\n");
    CopyInstalled(root);
  } catch (const fs::filesystem_error&) {
    Refuse(root);
  }
  setenv("FIREBIRD", root.c_str(), 1);
  setenv("FIREBIRD_TMP", (root / "tmp").c_str(), 1);
  setenv("FIREBIRD_MSG", root.c_str(), 1);
  setenv("FIREBIRD_LOCK", ("/proc/self/fd/" + std::to_string(LockSlot())).c_str(), 1);
  prepared = true;
}

void UseLockDirectory(int directory) { dup3(directory, LockSlot(), O_CLOEXEC); }

}  // namespace app::firebird
