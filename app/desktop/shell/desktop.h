// The program with windows, from sign-in to the last window closed.
#pragma once

#include <string>

#include "app/firebird/database.h"
#include "host/module.h"

namespace app::desktop {

struct DesktopOptions {
  // The database, or none for the one used last; a password without `signed_in` is proposed at sign-in.
  firebird::ConnectOptions connect;
  std::string user;           // proposed at sign-in; empty for who signed in last
  bool signed_in = false;     // user and password were given and are to be taken without asking
  std::string version;        // of the program, for the about box
  std::string settings_file;  // of the user's settings; empty for the place that the operating system keeps
};

/// Told where there is nothing to open windows on.
inline constexpr const char* kNoWindows =
    "não há tela para abrir janelas: defina DISPLAY ou WAYLAND_DISPLAY, ou use os comandos (veja tecelagem --help).";

/// Runs the desktop; the exit code of the program. Whatever goes wrong is told in a box.
int RunDesktop(const DesktopOptions& options, const host::Module& module);

}  // namespace app::desktop
