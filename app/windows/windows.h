// The windows and the printing as a library of their own, so that the commands of the program do not wait for a toolkit
// that they never use. Built with the program, of the same sources; no contract for anybody else.
#pragma once

#include <string>

#include "app/desktop/shell/desktop.h"
#include "app/equipment.h"
#include "host/module.h"

namespace app::windows {

/// Name and type of the function that opens the windows: app::desktop::RunDesktop.
inline constexpr const char* kEntry = "tecelagem_windows";
using Entry = int (*)(const desktop::DesktopOptions* options, const host::Module* module);

/// Name and type of the function that lends a command what printing/delivery/file_equipment.h has, printing to `to`, in
/// text where `in_text` and the report allow it. The command deletes it, on the thread that asked for it, before it
/// ends; no toolkit may be running yet. No display is needed.
inline constexpr const char* kEquipmentEntry = "tecelagem_equipment";
using EquipmentEntry = Equipment* (*)(const std::string* to, bool in_text);

}  // namespace app::windows
