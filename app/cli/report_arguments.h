// The arguments of a report on the command line.
#pragma once

#include <map>
#include <span>
#include <string>

#include "host/module.h"

namespace app::cli {

/// By the argument's name, as typed.
using GivenArguments = std::map<std::string, std::string>;

/// The report of that name. Throws host::InputError, which names those there are.
const host::ListedReport& ReportNamed(std::span<const host::ListedReport> reports, const std::string& name);

/// Throws host::InputError, one sentence, when the report has no layout of that print type, 'W' or 'T'.
void CheckHasLayout(const host::ListedReport& report, char kind);

/// The arguments as the report's print script finds them: a number without blanks, a date as DD/MM/YYYY with its
/// century. Throws UsageError, one line that names the argument: a required one is missing, one that this report does
/// not have, a value that is none of its kind.
GivenArguments CheckedArguments(const host::ListedReport& report, const GivenArguments& given);

/// Reports with their arguments, for the help of the command: Portuguese, each on a line of its own.
std::string HelpOnReports(std::span<const host::ListedReport> reports);

}  // namespace app::cli
