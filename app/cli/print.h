// The command `print`: one report on paper, without a window.
#pragma once

#include <string>
#include <vector>

#include "app/application.h"
#include "app/cli/arguments.h"
#include "app/operator/scripted_person.h"

namespace app::cli {

/// Throws host::InputError, one sentence, when the report is not one of those that the command knows, or does not go
/// with the options.
void CheckPrintable(const Arguments& arguments);

/// Where the report is to go, as printing::FileEquipment wants it.
std::string PrintTo(const Arguments& arguments);

/// Does at the screens what a person does to print the report. Throws host::InputError, one sentence, when they refuse
/// or nothing was printed.
std::vector<PrintJob> Print(Application& application, ScriptedPerson& person, const Arguments& arguments);

}  // namespace app::cli
