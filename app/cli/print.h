// The command `print`: one report on paper, without a window.
#pragma once

#include <string>
#include <vector>

#include "app/application.h"
#include "app/cli/arguments.h"
#include "app/operator/scripted_person.h"

namespace app::cli {

struct ReportToPrint {
  const host::ListedReport& report;
  char kind;             // 'W' or 'T'
  GivenArguments given;  // as its print script finds them
};

/// What the command line asks for. Throws host::InputError, one sentence: the module has no such report, or the report
/// no such layout; a file that does not go with it. Throws UsageError as CheckedArguments does.
ReportToPrint Printable(const host::Module& module, const Arguments& arguments);

/// Where the report is to go, as printing::FileEquipment wants it.
std::string PrintTo(const Arguments& arguments);

/// Does at the screens what a person does to print the report. Throws host::InputError, one sentence, when they refuse
/// or nothing was printed.
std::vector<PrintJob> Print(Application& application, ScriptedPerson& person, const ReportToPrint& wanted);

}  // namespace app::cli
