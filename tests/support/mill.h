// A fresh mill database per test, the program started on it, and a person to act.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/application.h"
#include "app/operator/scripted_person.h"
#include "host/kit/desk.h"
#include "support/fake_equipment.h"

namespace test {

using Row = std::map<std::string, host::Value>;  // column name in capitals to value

/// A statement cache switched off for a whole run by the environment variable TECELAGEM_TEST_STATEMENT_CACHE=0 is off
/// whatever the options say. Structure and host data (administrator "ADMIN" with all rights) are there, the company's
/// tables are empty. The database file is removed with the object.
class Mill {
 public:
  struct Options {
    bool statement_cache = true;
    std::string database;  // an existing one to open instead of a fresh copy; it is not removed
    std::string user = "ADMIN";
    std::string password;                 // of the server, where `database` is one's ("host/port:path")
    std::string settings_file;            // of the user's settings; beside the database without one
    app::Equipment* equipment = nullptr;  // printers and scale; the mill's own fake ones without it
    app::Person* person = nullptr;        // who sits before the program; the mill's own scripted person without one
  };
  Mill() : Mill(Options()) {}
  explicit Mill(const Options& options);
  ~Mill();

  app::Application& App() { return *app_; }
  host::Desk& Desk() { return app_->GetDesk(); }
  app::ScriptedPerson& Person() { return person_; }
  FakeEquipment& Equipment() { return equipment_; }
  app::firebird::Database& Db() { return app_->GetDatabase(); }
  const std::string& Path() const { return path_; }
  void SetClock(std::string_view iso) { app_->GetProgramClock().Set(host::DateTime::FromIso(iso).value()); }

  // --- rows, on the program's own connection (table names in braces), durable at once ---------------------------
  void Exec(std::string_view sql);
  std::vector<Row> Rows(std::string_view sql);
  host::Value Scalar(std::string_view sql);  // first column of the first row; null without rows
  void SetParameter(std::string_view group, int number, std::string_view value);
  /// Takes every right of the current user on a screen class away, or one letter of it.
  void TakeRight(std::string_view screen_class, std::string_view operation);
  /// Inserts one row; numbers and texts as given.
  void Insert(std::string_view table, const std::vector<std::pair<std::string, host::Value>>& values);

  // --- what was sent -------------------------------------------------------------------------------------------
  /// Statements since the last call (the screens' and the services', not the test's own, savepoints and commits left
  /// out), line breaks and runs of blanks as one blank, physical table names turned back into logical ones; only those
  /// that contain the text given, the others are dropped.
  std::vector<std::string> TakeStatements(std::string_view containing = {});
  /// The Nth statement from now (1 for the next) fails with a DatabaseError of this text.
  void FailStatement(int n, std::string_view text = "falha provocada");
  /// No statement fails any more; true when the planned failure happened.
  bool StopFailing();

  // --- acting, by component name; unknown names throw -----------------------------------------------------------
  host::Screen& Open(std::string_view screen_class);
  host::ActResult Type(host::Screen& screen, std::string_view edit, std::string_view text);
  host::ActResult Click(host::Screen& screen, std::string_view button);
  host::ActResult Append(host::Screen& screen, std::string_view dataset,
                         const std::vector<std::pair<std::string, std::string>>& cells);
  host::ActResult Set(host::Screen& screen, std::string_view dataset,
                      const std::vector<std::pair<std::string, std::string>>& cells);
  std::string Text(host::Screen& screen, std::string_view edit_or_label);
  host::Dataset& Data(host::Screen& screen, std::string_view dataset);
  host::Grid& GridOf(host::Screen& screen, std::string_view dataset);
  /// Texts of the boxes since the last call.
  std::vector<std::string> Messages();

 private:
  app::ScriptedPerson person_;
  FakeEquipment equipment_;
  std::string path_;
  bool remove_ = false;
  std::unique_ptr<app::Application> app_;
  std::vector<std::string> statements_;
  bool listening_ = true;
  int fail_in_ = 0;
  bool failed_ = false;
  std::string fail_text_;
};

/// A small mill that most tests start from; small_mill.cpp lists its figures.
void FillSmallMill(Mill& mill);

}  // namespace test
