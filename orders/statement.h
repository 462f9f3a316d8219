// The words that every statement of the orders is put together from, and how one is run.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "host/database.h"
#include "host/date.h"
#include "host/host.h"

namespace orders {

/// Turns names and values into the words of a statement.
class Words {
 public:
  explicit Words(host::Funcoes& funcoes) : funcoes_(funcoes) {}

  /// Physical name of a logical table.
  std::string Table(std::string_view name) const { return funcoes_.DBLocal(name, true); }
  /// The same with the logical name as its alias, so that columns can be named by it.
  std::string Named(std::string_view name) const { return Table(name) + " " + std::string(name); }
  std::string Text(std::string_view text) const { return funcoes_.Aspas(text); }
  std::string Number(double number) const { return funcoes_.PermanecePonto(number); }
  std::string Day(host::Date date) const { return funcoes_.Aspas(date.ToSql()); }

  /// Keeps reservations of kind "F", which other modules write, out of sight. The first term adds nothing to the
  /// second; it stays because every module that reads reservations words the condition like this.
  std::string ReservationKind() const {
    return "AND (TIPO = " + Text("T") + " OR TIPO <> " + Text("F") + " OR TIPO IS NULL)";
  }

 private:
  host::Funcoes& funcoes_;
};

using Lines = std::initializer_list<std::string>;

/// Opens a SELECT given line by line. Throws DatabaseError.
std::unique_ptr<host::TTIQuery> OpenQuery(host::Database& database, Lines lines);
/// Runs a statement without result given line by line. Throws DatabaseError.
void Execute(host::Database& database, Lines lines);

}  // namespace orders
