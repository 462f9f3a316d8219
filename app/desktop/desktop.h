// The program with windows, from sign-in to the last window closed.
#pragma once

#include <string>

#include "app/firebird/database.h"
#include "host/module.h"

namespace app::desktop {

struct DesktopOptions {
  firebird::ConnectOptions connect;  // user and password are asked for when the password is not given
  std::string user;                  // proposed at sign-in
  bool signed_in = false;            // user and password were given and are to be taken without asking
};

/// Runs the desktop; the exit code of the program. Whatever goes wrong is told in a box.
int RunDesktop(const DesktopOptions& options, const host::Module& module);

}  // namespace app::desktop
