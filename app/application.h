// The reference host put together: database, services, desk, module.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/equipment.h"
#include "app/firebird/database.h"
#include "app/person.h"
#include "host/host.h"
#include "host/kit/desk.h"
#include "host/module.h"

namespace app {

/// The program's clock: the computer's, until it is set; a set clock stands still.
class ProgramClock : public host::Clock {
 public:
  host::DateTime Now() const override;
  void Set(host::DateTime moment) { set_ = moment; }
  void Reset() { set_.reset(); }

 private:
  std::optional<host::DateTime> set_;
};

struct ApplicationOptions {
  firebird::ConnectOptions connect;
  std::string user = "ADMIN";      // who works; must exist in the database
  std::string settings_file = {};  // of the user's settings; empty for the place that the operating system keeps
  // Of the installation's own report layouts; empty for "layouts" beside the database file, or beside the settings file
  // when the database is a server's.
  std::string layouts_folder = {};
  Equipment* equipment = nullptr;  // outlives the application; without one nothing is printed and weighed
};

/// A screen of the program's menu.
struct MenuScreen {
  std::string class_name;
  std::string menu;     // heading; empty when only another screen opens it
  std::string caption;  // entry
};

class Application : public host::Host {
 public:
  /// Opens the database (bringing its structure up to date) and stands ready. `module` and `person` outlive it.
  /// Throws host::DatabaseError or host::InputError in one sentence.
  static std::unique_ptr<Application> Start(const ApplicationOptions& options, const host::Module& module,
                                            Person& person);
  /// The same on a database that is open already; `options.connect` is not used.
  static std::unique_ptr<Application> Start(std::unique_ptr<firebird::Database> database,
                                            const ApplicationOptions& options, const host::Module& module,
                                            Person& person);

  virtual host::Desk& GetDesk() = 0;
  virtual firebird::Database& GetDatabase() = 0;
  virtual ProgramClock& GetProgramClock() = 0;
  /// The module's screens and then the host's own that the person may use, in the order of the menu.
  virtual std::vector<MenuScreen> MenuScreens() = 0;
  /// The module's reports, by name; they live as long as the module is loaded.
  virtual std::span<const host::ListedReport> Reports() const { return {}; }
  /// The person does not hold the right that the button names. Asked between two acts, by whoever shows the button;
  /// false when the database cannot be asked, because a press will find that out by itself.
  virtual bool Lacks(const host::Button& /*button*/) { return false; }
  /// Sets an installation parameter; seen by the screens at once. Throws host::DatabaseError, nothing is changed then.
  virtual void WriteParameter(std::string_view group, int number, std::string_view value) = 0;
  /// What was printed since the last call.
  virtual std::vector<PrintJob> TakeJobs() = 0;
  /// Where the installation's own report layouts are looked for; need not exist. Empty for nowhere.
  virtual std::string LayoutsFolder() const { return {}; }
  /// Person::AskFile, for the host's own screens: whatever is pending is made durable first.
  virtual std::optional<std::string> AskFile(const FileQuestion& question) = 0;
};

}  // namespace app
