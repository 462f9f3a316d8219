// What the program does for each of its commands.
#pragma once

#include "app/cli/arguments.h"

namespace app::cli {

/// Carries the command out. 0 when all went well; 1 when what was asked for found something wrong (an import's rows,
/// the books, a script), already told. Throws what the program could not do, one sentence for standard error.
int Carry(const Arguments& arguments);

}  // namespace app::cli
