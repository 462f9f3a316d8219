#include "tests/firebird/private_server.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "app/firebird/embedded_root.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using std::chrono::seconds;

constexpr const char* kServer = "/usr/sbin/firebird";
constexpr const char* kUsers =
    "CREATE USER SYSDBA PASSWORD 'chave' USING PLUGIN Srp;\n"
    "CREATE USER \"ADMIN\" PASSWORD 'demo' USING PLUGIN Srp;\n"
    "CREATE USER MARIA PASSWORD 'maria' USING PLUGIN Srp;\n"
    "COMMIT;\n"
    "GRANT CREATE DATABASE TO USER \"ADMIN\";\n"
    "COMMIT;\n";

sockaddr_in Local(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

int FreePort() {
  const int any = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = Local(0);
  socklen_t size = sizeof(address);
  const bool bound = bind(any, reinterpret_cast<sockaddr*>(&address), size) == 0 &&
                     getsockname(any, reinterpret_cast<sockaddr*>(&address), &size) == 0;
  close(any);
  if (!bound) throw std::runtime_error("no free port");
  return ntohs(address.sin_port);
}

bool Answers(int port) {
  const int call = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = Local(port);
  const bool answers = connect(call, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
  close(call);
  return answers;
}

// True when the process has ended within the time; it is then no longer to be waited for.
bool Ends(pid_t process, seconds patience, int& status) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (waitpid(process, &status, WNOHANG) != process) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

std::string Read(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

}  // namespace

// Not in the memory file system: the server loads its collations from here, which may be forbidden there.
PrivateServer::PrivateServer() {
  std::string name = (fs::temp_directory_path() / "tecelagem-servidor-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  folder_ = name;
  try {
    app::firebird::PrepareLibrary();
    fs::create_directories(folder_ / "tmp");
    fs::create_directories(folder_ / "lock");
    fs::copy(app::firebird::EmbeddedRoot() / "intl", folder_ / "intl");
    fs::copy(app::firebird::EmbeddedRoot() / "firebird.msg", folder_ / "firebird.msg");
    WriteSettings();
    CreateUsers();
    Start();
  } catch (...) {
    fs::remove_all(folder_);
    throw;
  }
}

PrivateServer::~PrivateServer() {
  Kill();
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

std::string PrivateServer::Database(const std::string& name) const {
  return "127.0.0.1/" + std::to_string(port_) + ":" + (folder_ / name).string();
}

app::firebird::ConnectOptions PrivateServer::Options(const std::string& name, const std::string& user,
                                                     const std::string& password) const {
  app::firebird::ConnectOptions options;
  options.database = Database(name);
  options.user = user;
  options.password = password;
  options.lock_timeout_seconds = 5;
  return options;
}

void PrivateServer::WriteSettings() {
  std::ofstream(folder_ / "firebird.conf") << "ServerMode = Super\n"
                                           << "RemoteServicePort = " << port_ << "\n"
                                           << "RemoteBindAddress = 127.0.0.1\n"
                                           << "SecurityDatabase = " << (folder_ / "security.fdb").string() << "\n"
                                           << "AuthServer = Srp\nUserManager = Srp\nWireCrypt = Enabled\n"
                                           << "TempDirectories = " << (folder_ / "tmp").string() << "\n"
                                           << "DefaultDbCachePages = 2048\n";
}

void PrivateServer::CreateUsers() {
  const std::string file = (folder_ / "security.fdb").string();
  const std::string typed = "CREATE DATABASE '" + file + "';\nCOMMIT;\n" + kUsers;
  std::ofstream(folder_ / "users.sql") << typed;
  int status = 0;
  const pid_t process = Spawn({"isql-fb", "-q", "-b", "-user", "SYSDBA"}, folder_ / "users.sql");
  if (!Ends(process, seconds(30), status)) {
    kill(process, SIGKILL);
    waitpid(process, &status, 0);
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) throw std::runtime_error("no users: " + Said());
}

void PrivateServer::Start() {
  constexpr int kAttempts = 3;  // somebody else may take the port first
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (port_ == 0) {
      port_ = FreePort();
      WriteSettings();
    }
    process_ = Spawn({kServer}, "/dev/null");
    if (ComesUp()) return;
    Kill();
    port_ = 0;
  }
  throw std::runtime_error("the server does not come up: " + Said());
}

bool PrivateServer::ComesUp() {
  const auto deadline = std::chrono::steady_clock::now() + seconds(15);
  int status = 0;
  while (std::chrono::steady_clock::now() < deadline) {
    if (waitpid(process_, &status, WNOHANG) == process_) {
      process_ = -1;
      return false;
    }
    if (Answers(port_)) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return false;
}

void PrivateServer::Kill() {
  if (process_ <= 0) return;
  int status = 0;
  kill(process_, SIGKILL);
  waitpid(process_, &status, 0);
  process_ = -1;
}

void PrivateServer::Pause() const { kill(process_, SIGSTOP); }

void PrivateServer::Continue() const { kill(process_, SIGCONT); }

pid_t PrivateServer::Spawn(const std::vector<std::string>& words, const fs::path& input) const {
  // Nothing of this process's own settings may reach it.
  std::vector<std::string> settings = {"FIREBIRD=" + folder_.string(), "FIREBIRD_MSG=" + folder_.string(),
                                       "FIREBIRD_LOCK=" + (folder_ / "lock").string(),
                                       "FIREBIRD_TMP=" + (folder_ / "tmp").string(), "PATH=/usr/sbin:/usr/bin:/bin"};
  std::vector<std::string> copies = words;
  std::vector<char*> arguments;
  std::vector<char*> environment;
  arguments.reserve(copies.size() + 1);
  environment.reserve(settings.size() + 1);
  for (std::string& word : copies) arguments.push_back(word.data());
  for (std::string& setting : settings) environment.push_back(setting.data());
  arguments.push_back(nullptr);
  environment.push_back(nullptr);
  const std::string output = (folder_ / "said.txt").string();
  const pid_t parent = getpid();
  const pid_t process = fork();
  if (process != 0) return process;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(125);
  dup2(open(input.c_str(), O_RDONLY | O_CLOEXEC), STDIN_FILENO);
  const int said = open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  dup2(said, STDOUT_FILENO);
  dup2(said, STDERR_FILENO);
  execvpe(arguments.front(), arguments.data(), environment.data());
  _exit(126);
}

std::string PrivateServer::Said() const { return Read(folder_ / "said.txt") + Read(folder_ / "firebird.log"); }

}  // namespace test
