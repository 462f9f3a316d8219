// The module's list of reports.
#pragma once

#include <span>

#include "host/module.h"

namespace tecelagem {

/// Every report that a screen of the module prints, by name.
std::span<const host::ListedReport> ReportList();

}  // namespace tecelagem
