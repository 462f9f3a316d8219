// From nothing to a program somebody works in: which database, who.
#pragma once

#include <QString>
#include <memory>
#include <string>

#include "app/application.h"
#include "app/desktop/shell/desktop.h"
#include "host/host.h"

namespace app::desktop {

/// Asks for the database when none is known, and for name and password until they are right.
class Entrance {
 public:
  /// `settings` tells the database and the user of last time; `folder` is where the program keeps its databases.
  /// `module` and `equipment` outlive the object and the programs it starts; without equipment nothing is printed and
  /// weighed.
  Entrance(const DesktopOptions& options, const host::Module& module, host::UserSettings& settings, QString folder,
           Equipment* equipment = nullptr);

  /// The program started for whoever signed in, acting before `person`; null when the person gave up.
  std::unique_ptr<Application> Enter(Person& person);
  /// From now on everybody is asked, and nothing is proposed but the name of the one before.
  void AskAgain();

 private:
  void FindDatabase(host::UserSettings& settings);
  bool AskDatabase(const QString& wanted);
  std::unique_ptr<Application> Start(const std::string& name, const std::string& password, Person& person) const;
  void Remember(host::UserSettings& settings) const;

  DesktopOptions options_;
  const host::Module& module_;
  QString folder_;
  Equipment* equipment_;
};

}  // namespace app::desktop
