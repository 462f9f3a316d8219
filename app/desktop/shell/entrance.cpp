#include "app/desktop/shell/entrance.h"

#include <QFileInfo>
#include <exception>
#include <utility>

#include "app/desktop/basics/settings.h"
#include "app/desktop/basics/text.h"
#include "app/desktop/shell/database_dialog.h"
#include "app/desktop/shell/sign_in_dialog.h"
#include "app/firebird/attachment.h"
#include "app/mill/mill.h"
#include "app/services/sign_in.h"
#include "host/errors.h"
#include "host/text.h"

namespace app::desktop {
namespace {

bool IsThere(const std::string& database) {
  return firebird::IsServerPath(database) || QFileInfo::exists(ToQt(database));
}

}  // namespace

Entrance::Entrance(const DesktopOptions& options, const host::Module& module, host::UserSettings& settings,
                   QString folder, Equipment* equipment)
    : options_(options), module_(module), folder_(std::move(folder)), equipment_(equipment) {
  FindDatabase(settings);
  if (options_.user.empty()) options_.user = settings.Read(kSettingsKey, kEntrySection, kUserName).value_or("");
}

// The one that was named, the one of last time, the one in its usual place.
void Entrance::FindDatabase(host::UserSettings& settings) {
  if (!options_.connect.database.empty()) return;
  const std::string last = settings.Read(kSettingsKey, kEntrySection, kDatabaseName).value_or("");
  const std::string usual = FromQt(DatabaseDialog::MillFile(folder_));
  if (!last.empty() && IsThere(last)) {
    options_.connect.database = last;
  } else if (IsThere(usual)) {
    options_.connect.database = usual;
  }
}

bool Entrance::AskDatabase(const QString& wanted) {
  DatabaseDialog dialog(folder_, wanted);
  if (dialog.exec() != QDialog::Accepted) return false;
  options_.connect.database = dialog.Database();
  if (!dialog.User().empty()) options_.user = dialog.User();
  options_.connect.password = dialog.Password();
  options_.signed_in = false;
  return true;
}

std::unique_ptr<Application> Entrance::Enter(Person& person) {
  for (;;) {
    std::string& database = options_.connect.database;
    if ((database.empty() || !IsThere(database)) && !AskDatabase(ToQt(database))) return nullptr;
    std::unique_ptr<Application> application;
    const auto enter = [&](const QString& user, const QString& password) {
      application = Start(FromQt(user), FromQt(password), person);
      options_.user = FromQt(user);
      Remember(application->GetUserSettings());
    };
    SignInDialog dialog(ToQt(database), enter);
    dialog.Propose(ToQt(options_.user), ToQt(options_.connect.password));
    if (std::exchange(options_.signed_in, false)) {
      try {
        enter(ToQt(options_.user), ToQt(options_.connect.password));
        return application;
      } catch (const std::exception& error) {
        dialog.Object(QString::fromUtf8(error.what()));
      }
    }
    const int result = dialog.exec();
    if (result == QDialog::Accepted) return application;
    if (result != SignInDialog::kOtherDatabase) return nullptr;
    AskDatabase({});  // given up: back to signing in
  }
}

void Entrance::AskAgain() {
  options_.signed_in = false;
  options_.connect.password.clear();
}

std::unique_ptr<Application> Entrance::Start(const std::string& name, const std::string& password,
                                             Person& person) const {
  ApplicationOptions start;
  start.connect = options_.connect;
  start.settings_file = options_.settings_file;
  start.equipment = equipment_;
  if (firebird::IsServerPath(start.connect.database)) {
    // The server asks for the password; its users are the program's, by their names in capitals.
    start.connect.user = name;
    start.connect.password = password;
    start.user = host::UpperAscii(name);
    return Application::Start(start, module_, person);
  }
  auto database = firebird::Database::Open(start.connect);
  mill::MigrateToCurrent(*database);
  start.user = services::SignIn(*database, name, password, ProgramClock().Now()).code;
  return Application::Start(std::move(database), start, module_, person);
}

// A settings file that cannot be written is no reason to keep anybody out.
void Entrance::Remember(host::UserSettings& settings) const {
  try {
    settings.Write(kSettingsKey, kEntrySection, kUserName, options_.user);
    settings.Write(kSettingsKey, kEntrySection, kDatabaseName, options_.connect.database);
  } catch (const host::InputError&) {
  }
}

}  // namespace app::desktop
