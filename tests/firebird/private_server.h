// A Firebird server that belongs to one test: its own folder, its own users, this computer only.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

#include "app/firebird/database.h"

namespace test {

/// Runs as long as the object lives; a test that dies takes it along. Users: "ADMIN" (password "demo"), who may create
/// databases, "MARIA" ("maria"), who may not, and "SYSDBA" ("chave").
class PrivateServer {
 public:
  /// Throws std::runtime_error with what the server said when it does not come up.
  PrivateServer();
  ~PrivateServer();
  PrivateServer(const PrivateServer&) = delete;
  PrivateServer& operator=(const PrivateServer&) = delete;

  /// The server's name of a database: "127.0.0.1/port:folder/name".
  std::string Database(const std::string& name) const;
  app::firebird::ConnectOptions Options(const std::string& name, const std::string& user = "ADMIN",
                                        const std::string& password = "demo") const;

  /// The computer loses power: nothing of the server is left but its files.
  void Kill();
  void Start();
  /// It takes connections but says nothing.
  void Pause() const;
  void Continue() const;

 private:
  void WriteSettings();
  void CreateUsers();
  bool ComesUp();
  pid_t Spawn(const std::vector<std::string>& words, const std::filesystem::path& input) const;
  std::string Said() const;

  std::filesystem::path folder_;
  int port_ = 0;
  pid_t process_ = -1;
};

}  // namespace test
