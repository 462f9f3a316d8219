#include "mill/own_database.h"

#include <unistd.h>

#include <filesystem>

#include "support/template_database.h"

namespace test {
namespace {

std::string NewName() {
  static int counter = 0;
  const std::filesystem::path folder = std::filesystem::path(TECELAGEM_BINARY_DIR) / "test-databases";
  std::filesystem::create_directories(folder);
  return (folder / ("own-" + std::to_string(getpid()) + "-" + std::to_string(++counter) + ".fdb")).string();
}

}  // namespace

OwnDatabase::OwnDatabase(Start start) : path_(start == Start::kStructure ? FreshDatabase() : NewName()) {}

OwnDatabase::~OwnDatabase() {
  database_.reset();
  RemoveDatabase(path_);
}

app::firebird::ConnectOptions OwnDatabase::Options() const {
  app::firebird::ConnectOptions options;
  options.database = path_;
  return options;
}

app::firebird::Database& OwnDatabase::Db() {
  if (!database_) database_ = app::firebird::Database::Open(Options());
  return *database_;
}

void OwnDatabase::Exec(std::string_view sql, const std::vector<host::Value>& params) {
  Db().Execute(sql, params);
  Db().CommitRetaining();
}

host::Value OwnDatabase::Scalar(std::string_view sql) {
  const auto rows = Db().Query(sql, {});
  return rows->IsEmpty() ? host::Value() : rows->FieldByName(rows->FieldName(0));
}

std::vector<std::string> OwnDatabase::Column(std::string_view sql) {
  std::vector<std::string> values;
  const auto rows = Db().Query(sql, {});
  for (; !rows->Eof(); rows->Next()) values.push_back(rows->FieldByName(rows->FieldName(0)).AsText());
  return values;
}

}  // namespace test
