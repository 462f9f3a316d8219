// From a screen and the name of a report to its pages.
#pragma once

#include <chrono>

#include "app/equipment.h"
#include "app/printing/page/printout.h"

namespace app::printing {

/// How long a layout may keep the program busy in one go.
inline constexpr std::chrono::milliseconds kLayoutTimeLimit{10'000};

/// Finds the layout (the installation's own before the program's), runs it over the datasets of `request.owner` and
/// places everything on pages. The program must have a QGuiApplication. Throws host::InputError in one sentence that
/// names file and line: no such layout, a mistake in it, more than `limit` without an end, more output than paper is
/// for. The datasets' cursors stay where they are.
Printout MakePrintout(const PrintRequest& request, std::chrono::milliseconds limit = kLayoutTimeLimit);

}  // namespace app::printing
