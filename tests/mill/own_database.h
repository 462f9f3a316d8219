// A database file of a test's own, removed with the object.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/database.h"

namespace test {

class OwnDatabase {
 public:
  enum class Start { kStructure, kNoFile };
  /// kStructure: the structure and the host's data are there. kNoFile: only the name of a file that does not exist.
  explicit OwnDatabase(Start start = Start::kStructure);
  ~OwnDatabase();
  OwnDatabase(const OwnDatabase&) = delete;
  OwnDatabase& operator=(const OwnDatabase&) = delete;

  app::firebird::ConnectOptions Options() const;
  const std::string& Path() const { return path_; }
  /// Opened at the first call.
  app::firebird::Database& Db();
  void Close() { database_.reset(); }
  /// Takes over a connection that a function under test opened.
  void Adopt(std::unique_ptr<app::firebird::Database> database) { database_ = std::move(database); }

  void Exec(std::string_view sql, const std::vector<host::Value>& params = {});
  host::Value Scalar(std::string_view sql);
  /// First column of every row, as text.
  std::vector<std::string> Column(std::string_view sql);

 private:
  std::string path_;
  std::unique_ptr<app::firebird::Database> database_;
};

}  // namespace test
