// The library of the windows and of printing, loaded when it is first wanted.
#pragma once

#include <memory>
#include <string>

#include "app/cli/library.h"
#include "app/equipment.h"

namespace app::cli {

/// Stays loaded until the program ends: the toolkit leaves work for then. Throws host::InputError, one sentence.
const Library& WindowsLibrary();

/// Printing and the serial port for a command; everything is printed to `to`, and `in_text` where that can be, see
/// printing::FileEquipment. To be called before anything else of the toolkit runs, and to go after the program that
/// uses it. Where the library is missing the command still works: only printing, and the scale, are refused with the
/// reason.
std::unique_ptr<Equipment> NewCommandEquipment(const std::string& to, bool in_text);

}  // namespace app::cli
