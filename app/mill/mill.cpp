#include "app/mill/mill.h"

#include <string>
#include <vector>

#include "app/embedded.h"
#include "app/firebird/migrations.h"
#include "app/mill/fill.h"
#include "app/mill/import.h"
#include "app/services/parameters.h"
#include "app/services/passwords.h"
#include "app/tables/import_rules.h"
#include "host/errors.h"

namespace app::mill {
namespace {

constexpr std::string_view kAdministrator = "ADMIN";

using DatabasePtr = std::unique_ptr<firebird::Database>;

void Prepare(firebird::Database& database, std::string_view admin_password) {
  MigrateToCurrent(database);
  services::SetPassword(database, kAdministrator, admin_password);
}

void CheckNotEmpty(std::string_view password) {
  if (password.empty()) throw host::InputError("A senha do administrador não pode ficar vazia.");
}

const EmbeddedFile* FindDemoFile(const std::string& name) {
  for (const auto& file : DemoFiles()) {
    if (file.name == name) return &file;
  }
  return nullptr;
}

}  // namespace

void MigrateToCurrent(firebird::Database& database) {
  std::vector<firebird::Migration> migrations;
  for (const auto& file : SchemaFiles()) migrations.push_back({std::string(file.name), std::string(file.text)});
  firebird::Migrate(database, migrations);
}

DatabasePtr InitDatabase(const firebird::ConnectOptions& options, std::string_view admin_password) {
  CheckNotEmpty(admin_password);
  return FillAtOnce(options, FillStart::kNewFile,
                    [&](firebird::Database& database) { Prepare(database, admin_password); });
}

DatabasePtr CreateDemo(const firebird::ConnectOptions& options, std::string_view admin_password) {
  CheckNotEmpty(admin_password);
  return FillAtOnce(options, FillStart::kNewFile, [&](firebird::Database& database) {
    Prepare(database, admin_password);
    ImportDemo(database);
    services::Parameters(database).Write("SIS", 10, "TÊXTIL SANTA CLARA");
    database.MakeDurable();
  });
}

void ImportDemo(firebird::Database& database) {
  for (const auto table : tables::ImportOrder()) {
    const std::string name = std::string(table) + ".csv";
    const EmbeddedFile* file = FindDemoFile(name);
    if (file == nullptr) continue;
    const ImportResult result = Import(database, table, file->text);
    if (!result.Ok()) throw host::InputError(name + ": " + result.errors.front());
  }
}

}  // namespace app::mill
