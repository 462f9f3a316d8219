// The command `scale-simulator`: a scale for those who have none at hand.
#pragma once

#include "app/cli/arguments.h"

namespace app::cli {

/// Throws UsageError for a value that no scale has.
void CheckSimulator(const Arguments& arguments);

/// Tells the port's name and is a scale until Ctrl+C or until its time is over; 0. Throws host::InputError, one
/// sentence, when there can be no such port.
int SimulateScale(const Arguments& arguments);

}  // namespace app::cli
