// The module's reports, as the program looks them up.
#pragma once

#include <span>
#include <string_view>

#include "host/module.h"

namespace app {

/// Both live as long as the module is loaded.
std::span<const host::ListedReport> ReportsOf(const host::Module& module);
std::span<const host::ReportArgument> ArgumentsOf(const host::ListedReport& report);

/// Null when the list has no report of that name.
const host::ListedReport* FindReport(std::span<const host::ListedReport> reports, std::string_view name);

}  // namespace app
