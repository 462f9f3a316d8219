// A small database of its own for every test.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/firebird/database.h"

namespace test {

/// An empty folder that goes with the object.
class Folder {
 public:
  Folder();
  ~Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// A migration of the program's own database.
std::string SchemaText(std::string_view name);

/// Table {T}: a row per kind of column, two rows: 'A' and 'B'. Made once per run of the program and copied.
class FreshDatabase : public ::testing::Test {
 protected:
  FreshDatabase();

  std::string File() const { return (folder_ / "fiacao.fdb").string(); }
  app::firebird::ConnectOptions Options() const;
  std::unique_ptr<app::firebird::Database> OpenAnother() const { return app::firebird::Database::Open(Options()); }
  app::firebird::Database& Db() { return *database_; }
  void Close() { database_.reset(); }
  void Reopen() { database_ = OpenAnother(); }

  void Exec(const std::string& sql) { Exec(*database_, sql); }
  static void Exec(app::firebird::Database& database, const std::string& sql);
  /// First column of the first row, "null" for null.
  std::string Get(const std::string& sql) { return Get(*database_, sql); }
  static std::string Get(app::firebird::Database& database, const std::string& sql);
  /// The same as another connection sees it, which is what is durable.
  std::string Durable(const std::string& sql);
  /// The sentence with which a statement fails; empty when it does not.
  std::string Refusal(const std::string& sql);

 private:
  Folder folder_;
  std::unique_ptr<app::firebird::Database> database_;
};

}  // namespace test
