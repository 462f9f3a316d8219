// The windows as a library of their own, so that the commands of the program do not wait for a toolkit that they never
// use. Built with the program, of the same sources; no contract for anybody else.
#pragma once

#include "app/desktop/desktop.h"
#include "host/module.h"

namespace app::windows {

/// Name and type of the library's one exported function: app::desktop::RunDesktop.
inline constexpr const char* kEntry = "tecelagem_windows";
using Entry = int (*)(const desktop::DesktopOptions* options, const host::Module* module);

}  // namespace app::windows
