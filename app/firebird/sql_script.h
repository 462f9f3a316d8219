// A file of statements taken apart.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace app::firebird {

/// The statements of a script in order, without terminators and without those that hold only comments. They end at
/// ";", or at the terminator that "SET TERM x" changed it to; terminators inside texts and comments end nothing.
std::vector<std::string> SplitScript(std::string_view script);

}  // namespace app::firebird
