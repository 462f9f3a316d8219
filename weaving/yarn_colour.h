// The colour of a yarn in a composition, where it may be missing.
#pragma once

#include <string>
#include <string_view>

#include "weaving/statement.h"

namespace weaving {

/// Stored in place of a yarn colour that nobody gave.
inline constexpr std::string_view kNoYarnColour = "*****";

/// The condition that a composition row tells its yarn's colour. `prefix` ("COMP.") stands before the column. Any
/// asterisk makes a placeholder of a colour: a row with one is never woven from, and alone it is no composition.
inline Sql YarnColourGiven(std::string_view prefix) { return Sql("NOT (" + std::string(prefix) + "COR_I LIKE '%*%')"); }

}  // namespace weaving
