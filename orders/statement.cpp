#include "orders/statement.h"

namespace orders {
namespace {

std::unique_ptr<host::TTIQuery> Prepare(host::Database& database, Lines lines) {
  auto query = database.NewQuery();
  query->SQL.Clear();
  for (const std::string& line : lines) query->SQL.Add(line);
  return query;
}

}  // namespace

std::unique_ptr<host::TTIQuery> OpenQuery(host::Database& database, Lines lines) {
  auto query = Prepare(database, lines);
  query->Open();
  return query;
}

void Execute(host::Database& database, Lines lines) { Prepare(database, lines)->ExecSQL(); }

}  // namespace orders
