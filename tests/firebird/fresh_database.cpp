#include "tests/firebird/fresh_database.h"

#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <stdexcept>

#include "app/embedded.h"
#include "app/firebird/migrations.h"
#include "host/errors.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using app::firebird::Database;

constexpr const char* kStructure = R"(
CREATE TABLE {T} (
  NUMERO VARCHAR(6) NOT NULL PRIMARY KEY,
  NOME VARCHAR(10) COLLATE WIN_PTBR,
  COR VARCHAR(5),
  FLAG CHAR(1),
  CODIGO CHAR(8),
  CURTO SMALLINT,
  INTEIRO INTEGER,
  LONGO BIGINT,
  PRECO NUMERIC(15, 2),
  FINO NUMERIC(9, 4),
  QTDE DOUBLE PRECISION,
  RASO FLOAT,
  DATA DATE,
  HORA TIME,
  MOMENTO TIMESTAMP,
  OBS BLOB SUB_TYPE TEXT,
  ATIVO BOOLEAN);
CREATE INDEX IX_T_NOME ON {T} (NOME);
)";

constexpr const char* kRows = R"(
INSERT INTO {T} VALUES ('A', 'Ação', '01', 'S', 'AB', 1, 10, 9000000000, 12.34, 1.2345, 0.1, 0.5, '03/10/2026',
  '10:20:30', '03/10/2026 10:20:30', 'observação longa', TRUE);
INSERT INTO {T} (NUMERO) VALUES ('B');
)";

}  // namespace

std::string SchemaText(std::string_view name) {
  for (const app::EmbeddedFile& file : app::SchemaFiles()) {
    if (file.name == name) return std::string(file.text);
  }
  throw std::logic_error("no migration of that name");
}

namespace {

fs::path Template() {
  static const Folder kFolder;
  const fs::path file = kFolder / "modelo.fdb";
  if (!fs::exists(file)) {
    app::firebird::ConnectOptions options;
    options.database = file.string();
    Migrate(*Database::Create(options), {{"0001_t.sql", kStructure + SchemaText("0011_locks.sql")},
                                         {"0002_linhas.sql", kRows + SchemaText("0012_lock_rows.sql")}});
  }
  return file;
}

}  // namespace

Folder::Folder() {
  // In memory where the computer offers it: a forced write on a busy disk takes longer than the whole test.
  std::error_code ignored;
  const fs::path memory = "/dev/shm";
  const fs::path where = fs::is_directory(memory, ignored) ? memory : fs::temp_directory_path();
  std::string name = (where / "tecelagem-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) std::abort();
  path_ = name;
}

Folder::~Folder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

FreshDatabase::FreshDatabase() {
  fs::copy_file(Template(), File());
  Reopen();
}

app::firebird::ConnectOptions FreshDatabase::Options() const {
  app::firebird::ConnectOptions options;
  options.database = File();
  options.lock_timeout_seconds = 2;
  return options;
}

void FreshDatabase::Exec(Database& database, const std::string& sql) {
  const auto query = database.NewQuery();
  query->SQL.Add(database.ReplaceNames(sql));
  query->ExecSQL();
}

std::string FreshDatabase::Get(Database& database, const std::string& sql) {
  const auto query = database.NewQuery();
  query->SQL.Add(database.ReplaceNames(sql));
  query->Open();
  if (query->IsEmpty()) return "no row";
  const host::Value& value = query->FieldByName(query->FieldName(0));
  return value.IsNull() ? "null" : value.AsText();
}

std::string FreshDatabase::Durable(const std::string& sql) { return Get(*OpenAnother(), sql); }

std::string FreshDatabase::Refusal(const std::string& sql) {
  try {
    Exec(sql);
  } catch (const host::DatabaseError& error) {
    return error.what();
  }
  return {};
}

}  // namespace test
