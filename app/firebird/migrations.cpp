#include "app/firebird/migrations.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "app/firebird/rights.h"
#include "app/firebird/sql_script.h"
#include "host/errors.h"

namespace app::firebird {
namespace {

int NumberOf(const Migration& migration) {
  int number = 0;
  const std::string& name = migration.name;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  if (error != std::errc() || number <= 0 || end == name.data() + name.size() || *end != '_') {
    throw host::DatabaseError("A migração \"" + name + "\" não começa por um número.", 0, "");
  }
  return number;
}

bool RecordExists(Database& database) {
  const auto query =
      database.Query("SELECT COUNT(*) AS QTDE FROM RDB$RELATIONS WHERE RDB$RELATION_NAME = 'TEC_MIGRACAO'", {});
  return query->FieldByName("QTDE").AsInteger() > 0;
}

// Runs `work` as one action that is undone whole when it fails.
template <typename Function>
void Whole(Database& database, const Function& work) {
  database.BeginAction();
  try {
    work();
  } catch (...) {
    database.EndAction(Database::Outcome::kFailed);
    throw;
  }
  database.EndAction(Database::Outcome::kOk);
}

void CreateRecord(Database& database) {
  if (RecordExists(database)) return;
  try {
    Whole(database, [&] {
      database.Execute(
          "CREATE TABLE TEC_MIGRACAO (NUMERO INTEGER NOT NULL, NOME VARCHAR(120) NOT NULL, APLICADA_EM TIMESTAMP NOT "
          "NULL, CONSTRAINT PK_TEC_MIGRACAO PRIMARY KEY (NUMERO))",
          {});
    });
  } catch (const host::DatabaseError&) {
    if (!RecordExists(database)) throw;  // else another program was faster
  }
}

bool IsRecorded(Database& database, int number) {
  return !database.Query("SELECT NUMERO FROM TEC_MIGRACAO WHERE NUMERO = ?", {number})->IsEmpty();
}

// The record is written first: its key makes a second program that migrates at the same time wait for the outcome.
void Apply(Database& database, const Migration& migration, int number) {
  try {
    Whole(database, [&] {
      database.Execute("INSERT INTO TEC_MIGRACAO (NUMERO, NOME, APLICADA_EM) VALUES (?, ?, CURRENT_TIMESTAMP)",
                       {number, migration.name});
      for (const std::string& statement : SplitScript(migration.sql)) database.Execute(statement, {});
    });
  } catch (const host::DatabaseError& error) {
    if (IsRecorded(database, number)) return;  // the other program did it
    throw host::DatabaseError("A migração " + migration.name + " falhou: " + error.what(), error.Code(), error.Sql());
  }
}

}  // namespace

int SchemaVersion(Database& database) {
  if (!RecordExists(database)) return 0;
  const auto query = database.Query("SELECT MAX(NUMERO) AS NUMERO FROM TEC_MIGRACAO", {});
  return static_cast<int>(query->FieldByName("NUMERO").AsInteger());
}

void Migrate(Database& database, const std::vector<Migration>& migrations) {
  std::vector<const Migration*> ordered;
  ordered.reserve(migrations.size());
  int highest = 0;
  for (const Migration& migration : migrations) {
    ordered.push_back(&migration);
    highest = std::max(highest, NumberOf(migration));
  }
  std::sort(ordered.begin(), ordered.end(),
            [](const Migration* left, const Migration* right) { return NumberOf(*left) < NumberOf(*right); });
  const int recorded = SchemaVersion(database);
  if (recorded > highest) {
    throw host::DatabaseError("O banco de dados é de uma versão mais nova deste programa (estrutura " +
                                  std::to_string(recorded) + ", o programa conhece até " + std::to_string(highest) +
                                  ").",
                              0, "");
  }
  CreateRecord(database);
  for (const Migration* migration : ordered) {
    const int number = NumberOf(*migration);
    if (!IsRecorded(database, number)) Apply(database, *migration, number);
  }
  GrantStationRights(database);
}

}  // namespace app::firebird
