// How the module writes a statement: SQL as it is read, its tables in braces, its values by name.
//
//   statements.Open(R"(
//   SELECT QTDE FROM {MAT_RESERVA}
//   WHERE NUMERO = :order AND :kind)",
//                   {{"order", order}, {"kind", YarnReservations()}});
//
// What reaches the database is this text with the company's tables and the values as literals, line breaks included.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "host/database.h"
#include "host/date.h"
#include "host/host.h"

namespace weaving {

/// A statement, or a piece of one, that can be sent as it stands.
class Sql {
 public:
  Sql() = default;
  explicit Sql(std::string text) : text_(std::move(text)) {}

  const std::string& Text() const { return text_; }
  /// With `line` as one line more.
  Sql& Add(const Sql& line) {
    if (!text_.empty()) text_ += '\n';
    text_ += line.text_;
    return *this;
  }

 private:
  std::string text_;
};

/// What a name in a statement stands for: a text or a date (written in quotes), a number (with a point), or a piece of
/// SQL (written as it is).
using Term = std::variant<std::string_view, double, std::int64_t, host::Date, Sql>;

/// A name as it stands behind the colon, small letters, digits and "_", and its value.
struct Named {
  // One constructor for each kind of value: a braced list must not have to guess.
  Named(std::string_view a_name, const char* text) : name(a_name), value(std::string_view(text)) {}
  Named(std::string_view a_name, const std::string& text) : name(a_name), value(std::string_view(text)) {}
  Named(std::string_view a_name, std::string_view text) : name(a_name), value(text) {}
  Named(std::string_view a_name, double number) : name(a_name), value(number) {}
  Named(std::string_view a_name, int number) : name(a_name), value(std::int64_t{number}) {}
  Named(std::string_view a_name, std::int64_t number) : name(a_name), value(number) {}
  Named(std::string_view a_name, host::Date date) : name(a_name), value(date) {}
  Named(std::string_view a_name, Sql piece) : name(a_name), value(std::move(piece)) {}

  std::string_view name;
  Term value;
};

/// Lives only as long as the texts that it names.
using Values = std::initializer_list<Named>;

class Statements {
 public:
  explicit Statements(host::Host& host);

  /// `text` ready to be sent. A line break at its beginning is left out, so that the SQL may begin on a line of its
  /// own; "{TABLE}" and ":name" inside quotes stay as they are, and so do names in capitals: parameters of a batch.
  /// Throws std::logic_error for a name without value and for a value that no name asks for; InputError for a number
  /// that is not finite.
  Sql Write(std::string_view text, Values values = {}) const;

  /// Runs a SELECT. Throws DatabaseError.
  std::unique_ptr<host::TTIQuery> Open(std::string_view text, Values values = {}) const;
  std::unique_ptr<host::TTIQuery> Open(const Sql& statement) const;
  /// Runs a statement without result. Throws DatabaseError; earlier work of the action stays pending.
  void Execute(std::string_view text, Values values = {}) const;
  void Execute(const Sql& statement) const;
  /// Hands over statements whose results nobody waits for, to be run in this order. Throws DatabaseError at the first
  /// that fails, and Sql() of the error is the statement that it belongs to; those before it stay pending.
  void ExecuteTogether(const std::vector<Sql>& statements) const;

  /// A statement of which a batch is to be run: its parameters, names in capitals, are for the caller to set.
  std::unique_ptr<host::TTIQuery> Batch(std::string_view text, Values values = {}) const;

  /// The text as a literal, for conditions that are no statement (filters of lookups and of shared datasets).
  std::string Quoted(std::string_view text) const { return funcoes_.Aspas(text); }

 private:
  std::string Literal(const Term& value) const;

  host::Funcoes& funcoes_;
  host::Database& database_;
};

}  // namespace weaving
