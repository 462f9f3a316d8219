// The general services of the host application.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/database.h"
#include "host/date.h"
#include "host/estoque.h"
#include "host/value.h"

namespace host {

class Component;
class Report;
class Screen;

enum class LogOperation { kInclusion = 0, kAlteration = 1, kDeletion = 2, kOther = 3 };

/// How a report is asked for; see Funcoes::Chama_Relatorio.
struct ReportFlags {
  bool preview = true;       // show before printing; a report of print type "T" goes to its printer at once
  bool show_dialog = false;  // ask for printer and copies even when this station has a printer for the report
};

/// Who did something last, and when.
struct LogMark {
  std::string user;
  DateTime moment;
};

/// A row of the audit log.
struct LogRow {
  std::string user;
  DateTime moment;
  LogOperation operation = LogOperation::kOther;
  std::string text;
};

/// A "quoted" argument is a value that has passed through Aspas; other texts are plain. All operations that reach the
/// database throw DatabaseError when it refuses; nothing is changed then.
class Funcoes {
 public:
  virtual ~Funcoes() = default;

  /// Name and code of the person who signed in.
  virtual std::string vUsuario() const = 0;
  virtual std::string vUsuarioCodigo() const = 0;

  /// The text as an SQL literal in single quotes, quotes inside doubled.
  virtual std::string Aspas(std::string_view text) const = 0;
  /// The number with "." as decimal sign and no exponent. Throws InputError for a value that is not finite.
  virtual std::string PermanecePonto(double number) const = 0;
  /// The physical name of a logical table for the current company. `company` is true for every table of the module.
  virtual std::string DBLocal(std::string_view table, bool company) const = 0;
  /// The statement with every "{TABLE}" replaced by its physical name.
  virtual std::string DBLocal_SQL(std::string_view statement) const = 0;

  /// True when a row has these values. `columns` and `quoted` are joined by ","; separators inside quotes do not
  /// count.
  virtual bool Existe(std::string_view table, std::string_view columns, std::string_view quoted,
                      Database& database) = 0;
  /// `result` of the first row, by the table's key, whose `columns` have the `quoted` values (both joined by ";"); null
  /// when there is none. `company` as in DBLocal; `trim` takes blanks off a text result.
  virtual Value Busca_Valor(std::string_view table, std::string_view columns, std::string_view result,
                            std::string_view quoted, bool company, bool trim) = 0;
  /// The next free number of a column as text, zero-padded to `width`. Never the same twice, whatever other stations
  /// do; numbers may be skipped. `company` as in DBLocal.
  virtual std::string Proximo(std::string_view table, std::string_view column, int width, bool company) = 0;
  /// The next roll sequence of a weaving order as text, counted from 1; never the same twice.
  virtual std::string ProximaOrdemTecelB(std::string_view order) = 0;
  /// The installation parameter's text; empty when it was never set.
  virtual std::string BuscaParametro(std::string_view group, int number) = 0;

  /// True when the current user holds the right on a screen class: "A" includes and alters, "E" deletes. Shows nothing
  /// and writes no audit row: windows ask as well, for buttons that name the right they need.
  virtual bool Acessa(std::string_view screen_class, std::string_view operation, std::string_view option) = 0;
  /// Writes one audit row, with user and moment. `key` is the order number or other key; `object` may be null.
  virtual void GeraLog(std::string_view subject, std::string_view text, LogOperation operation, std::string_view key,
                       const Component* object) = 0;
  /// The newest audit row of a subject and key; nothing when there is none.
  virtual std::optional<LogMark> UltimoLog(std::string_view subject, std::string_view key) = 0;
  /// The audit rows of a subject and key, newest first, `count` at most; empty when there is none, or when the host
  /// keeps them out of reach.
  virtual std::vector<LogRow> UltimosLogs(std::string_view /*subject*/, std::string_view /*key*/,
                                          std::size_t /*count*/) {
    return {};
  }
  /// The stock movements that name roll number `roll` of a weaving order, in the order in which they were written.
  /// Empty when there is none: for roll 0, for a roll of before movements named theirs, and in a host whose ledger does
  /// not tell.
  virtual std::vector<LedgerRow> MovimentosDaPeca(std::string_view /*order*/, int /*roll*/) { return {}; }
  /// The percentage of a yarn in a fabric by a stored rule; throws InputError when the rule does not exist or cannot
  /// be worked out for this fabric.
  virtual double CalculaPercRegra(std::string_view rule, std::string_view fabric) = 0;

  /// Asks for a date; its text as typed, empty when the person gave up.
  virtual std::string InputBoxData(std::string_view caption, std::string_view prompt) = 0;
  /// Shows or hides the busy indicator.
  virtual void Ocupado(bool on, const Screen& screen, std::string_view text) = 0;
  /// Moves the focus to the next input of the screen, or with `back` to the one before.
  virtual void pSetFocus(Screen& screen, bool back) = 0;
  /// Creates the screen of that class, or brings the open one forward. The host owns it. Throws InputError for a
  /// class that the module does not have.
  virtual Screen& Carrega_Form(std::string_view screen_class) = 0;

  /// Runs the report layout of that name over the datasets of `owner`: print type "W" graphic, "T" text. Functions
  /// that the engine does not know are asked of `graphic` or `text` (either may be null: then of nobody). What is
  /// pending is made durable before paper moves. A person who turns the printer's choice down has not printed, which is
  /// no error. Throws InputError in one sentence: no such layout, a mistake in it (with file and line), no printer.
  virtual void Chama_Relatorio(Report* graphic, Report* text, std::string_view report, Screen& owner,
                               std::string_view print_type, const ReportFlags& flags) = 0;
  /// The weight that a frame received from the scale states, in kilograms, up to `terminator`. Throws InputError with
  /// the reason when it states none: empty, cut off, unstable, negative, overload.
  virtual double PegaPesoBalanca(std::string_view received, char terminator) = 0;
};

}  // namespace host
